// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/proxies.h>
#include <dravelin/platform/action.h>
#include <dravelin/preferences/data.h>

using namespace dravelin;

struct Ruler : Object
{
    void marginChanged(KVOProxy *) {}
    void documentSaved(Notification *) {}
    void changed() {}
};

struct Window : Object
{
    void changed() {}
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
    const KVOProxy proxy(document, "margin", ruler, &Ruler::marginChanged);
    const Action<QObject *> action(ruler, &Ruler::changed);
    observer->addObserverForKey("documentSaved", [saved](Notification *n) { saved->documentSaved(n); });
    settings->addPreference(&Settings::zoomChanged);
#if defined object_cannot_be_copied
    const Object copy(original);
#elif defined observation_checks_the_argument
    const KVOProxy wrong(document, "margin", ruler, &Ruler::documentSaved);
#elif defined action_checks_the_class
    const Action<QObject *> wrong(ruler, &Window::changed);
#elif defined observer_needs_an_object
    observer->addObserverForKey("documentSaved", &Saved::documentSaved);
#elif defined preference_needs_a_signal
    settings->addPreference(&Settings::zoom);
#endif
}
