// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Diagnostics: dumps of windows, screens and page layouts, the object tracker.

#include <dravelin/diagnostics/dumps.h>
#include <dravelin/diagnostics/objecttracker.h>
