// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/preferences/data.h>

class Settings : public dravelin::PreferenceData
{
    Q_OBJECT

public:
    double zoom = 1;

Q_SIGNALS:
    void zoomChanged();
};

void use(Settings *settings)
{
    settings->addPreference(&Settings::zoomChanged);
#ifdef MUST_NOT_COMPILE
    settings->addPreference(&Settings::zoom);
#endif
}
