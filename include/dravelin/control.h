// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Control flow: observation proxies, undo records.

#include <dravelin/control/proxies.h>
#include <dravelin/control/undoitem.h>
