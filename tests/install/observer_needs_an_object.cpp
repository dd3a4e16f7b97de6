// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/proxies.h>

struct Saved
{
    void documentSaved(dravelin::Notification *) {}
};

void use(dravelin::ObserverProxy *observer, Saved *saved)
{
    observer->addObserverForKey("documentSaved", [saved](dravelin::Notification *n) { saved->documentSaved(n); });
#ifdef MUST_NOT_COMPILE
    observer->addObserverForKey("documentSaved", &Saved::documentSaved); // no QObject can be a Saved
#endif
}
