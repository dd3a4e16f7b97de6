// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/timers.h>

#include <dravelin/diagnostics/console.h>

namespace dravelin {

bool debugTestFlag = false;
qint64 debugTestInteger = 0;
double debugTestFloat = 0;
std::shared_ptr<ElapsedTimer> debugTimer;

namespace {

ElapsedTimer &processTimer()
{
    if (!debugTimer)
        debugTimer = std::make_shared<ElapsedTimer>();
    return *debugTimer;
}

} // namespace

void startDebugTimer() { processTimer().startTimer(); }

void reportDebugTimer() { console(processTimer().elapsedTimeString()); }

} // namespace dravelin
