// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Everything of the library in one include. The header of a single subsystem compiles faster.

#include <dravelin/version.h>

#include <dravelin/control.h>
#include <dravelin/diagnostics.h>
#include <dravelin/encoding.h>
#include <dravelin/files.h>
#include <dravelin/imaging.h>
#include <dravelin/interface.h>
#include <dravelin/platform.h>
#include <dravelin/preferences.h>
#include <dravelin/sound.h>
#include <dravelin/values.h>
