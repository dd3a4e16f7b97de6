// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Preferences: the application's record of settings, its items, their manager, and functions for single settings.

#include <dravelin/platform/color.h>
#include <dravelin/platform/userdefaults.h>
#include <dravelin/preferences/data.h>
#include <dravelin/preferences/defaults.h>
#include <dravelin/preferences/items.h>
#include <dravelin/preferences/manager.h>
