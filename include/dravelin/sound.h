// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Sounds by identifier: categories, volume, mute, fades, ends that are reported.

#include <dravelin/sound/sound.h>
#include <dravelin/sound/sounddepot.h>
#include <dravelin/sound/soundhandler.h>
