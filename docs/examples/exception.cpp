// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <cstdio>

int main()
{
    try {
        throw dravelin::Exception("NSRangeException", "page 3 of 2");
    } catch (const dravelin::Exception &e) {
        std::puts(e.what());
    }
    std::puts("Dravelin " DRAVELIN_VERSION);
}
