// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "diagnostics/crash.h"

#include <dravelin/diagnostics/errorhandlers.h>

#include <cstdlib>
#include <map>

using namespace Qt::StringLiterals;

namespace {

void openMissingPage()
{
    throw dravelin::Exception(QLatin1String(dravelin::NSRangeException), u"there is no page 13"_s,
                              {{u"page"_s, 13}, {u"document"_s, u"Sketch"_s}});
}

void writeToNowhere()
{
    volatile int *nowhere = nullptr;
    *nowhere = 1;
}

int measure(int depth)
{
    volatile int frame[256] = {depth};
    return depth < 0 ? 0 : measure(frame[0] + 1) + frame[0];
}

void measureForever() { measure(0); }

const std::map<QString, void (*)()> ways{
    {u"exception"_s, openMissingPage},
    {u"signal"_s, writeToNowhere},
    {u"overflow"_s, measureForever},
    {u"abort"_s, std::abort},
};

} // namespace

QStringList waysToCrash() { return {u"exception"_s, u"signal"_s, u"overflow"_s, u"abort"_s}; }

int runCrash(const QString &way)
{
    const auto found = ways.find(way);
    if (found == ways.end())
        return 2;
    dravelin::installErrorHandlers();
    found->second();
    return 0;
}
