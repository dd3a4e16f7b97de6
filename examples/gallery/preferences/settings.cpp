// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "preferences/settings.h"

#include <QtGui/QColor>

using namespace Qt::StringLiterals;

void Settings::resetDefaultValues()
{
    setProperty("showGrid", true);
    setProperty("author", u"Ada"_s);
    setProperty("pages", 12);
    setProperty("opacity", 0.75f);
    setProperty("zoom", 1.0);
    setProperty("paper", QVariant::fromValue(dravelin::Color(QColor(250, 245, 220))));
    setProperty("notes", "first sketch"_ba);
}

void Settings::installPreferenceItems()
{
    addPreference(&Settings::showGridChanged);
    addPreference(&Settings::authorChanged);
    addPreference(&Settings::pagesChanged);
    addPreference(&Settings::opacityChanged);
    addPreference(&Settings::zoomChanged);
    addPreference(&Settings::paperChanged);
    addPreference(&Settings::notesChanged);
}
