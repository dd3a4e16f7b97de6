// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/action.h>

struct Ruler : dravelin::Object
{
    void changed() {}
};

struct Window : dravelin::Object
{
    void changed() {}
};

void use(Ruler *ruler)
{
    const dravelin::Action<QObject *> right(ruler, &Ruler::changed);
#ifdef MUST_NOT_COMPILE
    const dravelin::Action<QObject *> wrong(ruler, &Window::changed);
#endif
}
