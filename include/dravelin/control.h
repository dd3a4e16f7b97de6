// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Control flow: observation proxies, state machines, timers, undo records.

#include <dravelin/control/proxies.h>
#include <dravelin/control/statehandler.h>
#include <dravelin/control/statemachine.h>
#include <dravelin/control/statemachinemutex.h>
#include <dravelin/control/timers.h>
#include <dravelin/control/transitions.h>
#include <dravelin/control/undoitem.h>
