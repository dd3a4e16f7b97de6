// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Diagnostics: the console, error handlers, stack traces and memory reports.

#include <dravelin/diagnostics/console.h>
#include <dravelin/diagnostics/consolewindow.h>
#include <dravelin/diagnostics/errorhandlers.h>
