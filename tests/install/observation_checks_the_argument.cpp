// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/proxies.h>

struct Ruler : dravelin::Object
{
    void marginChanged(dravelin::KVOProxy *) {}
    void documentSaved(dravelin::Notification *) {}
};

void use(QObject *document, Ruler *ruler)
{
    const dravelin::KVOProxy right(document, "margin", ruler, &Ruler::marginChanged);
#ifdef MUST_NOT_COMPILE
    const dravelin::KVOProxy wrong(document, "margin", ruler, &Ruler::documentSaved);
#endif
}
