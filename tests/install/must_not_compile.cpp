// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Compiles as it is, and not with MUST_NOT_COMPILE defined as the number of a case.

#include <dravelin/control/proxies.h>
#include <dravelin/preferences/data.h>

using namespace dravelin;

struct Ruler : Object
{
    void changed() {}
    void marginChanged(KVOProxy *) {}
    void documentSaved(Notification *) {}
};

struct Saved
{
    void documentSaved(Notification *) {}
};

class Settings : public PreferenceData
{
    Q_OBJECT

public:
    double zoom = 1;

Q_SIGNALS:
    void zoomChanged();
};

void use(QObject *document, Ruler *ruler, ObserverProxy *observer, Saved *saved, Settings *settings)
{
    const Object original;
    const KVOProxy observation(document, "margin", ruler, &Ruler::marginChanged);
    const Action<QObject *> action(ruler, &Ruler::changed);
    observer->addObserverForKey("documentSaved", [saved](Notification *n) { saved->documentSaved(n); });
    settings->addPreference(&Settings::zoomChanged);
#if MUST_NOT_COMPILE == 1
    Object copy(original);
#elif MUST_NOT_COMPILE == 2
    const KVOProxy wrong(document, "margin", ruler, &Ruler::documentSaved);
#elif MUST_NOT_COMPILE == 3
    const Action<QObject *> wrong(ruler, &Settings::zoomChanged);
#elif MUST_NOT_COMPILE == 4
    observer->addObserverForKey("documentSaved", &Saved::documentSaved); // no QObject can be a Saved
#elif MUST_NOT_COMPILE == 5
    settings->addPreference(&Settings::zoom);
#endif
}
