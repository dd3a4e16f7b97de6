// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "preferences/child.h"

#include "preferences/settings.h"

#include <dravelin/platform/keyvalue.h>
#include <dravelin/preferences/manager.h>

#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

int runSeries(Settings &settings)
{
    for (int round = 1;; ++round) {
        settings.setProperty("pages", pagesInRound(round));
        settings.setProperty("zoom", 1 + round / 100.0);
        if (std::printf("%d\n", round) < 0 || std::fflush(stdout) != 0)
            return 1; // nobody listens any more
    }
}

} // namespace

int runChild(const QStringList &arguments)
{
    const auto settings = std::make_shared<Settings>();
    const dravelin::PreferenceManager manager(settings);
    const QString job = arguments.value(0);
    if (job == u"series"_s)
        return runSeries(*settings);
    if (job == u"set"_s && arguments.size() == 3)
        dravelin::setValue(settings.get(), arguments.at(2), arguments.at(1));
    else if (job == u"report"_s)
        std::printf("%s", manager.dumpPreferences().replace(u'\r', u'\n').toUtf8().constData());
    else
        return 2;
    return 0;
}
