// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/object.h>

void use()
{
    const dravelin::Object original;
#ifdef MUST_NOT_COMPILE
    dravelin::Object copy(original);
#endif
}
