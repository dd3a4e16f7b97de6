// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Diagnostics: the console, error handlers, stack traces and memory reports, the object tracker, dumps of windows, screens
/// and page layouts.

#include <dravelin/diagnostics/console.h>
#include <dravelin/diagnostics/consolewindow.h>
#include <dravelin/diagnostics/dumps.h>
#include <dravelin/diagnostics/errorhandlers.h>
#include <dravelin/diagnostics/objecttracker.h>
