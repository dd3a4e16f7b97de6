// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

/// \file
/// Chains of filters over pictures, and overlays that keep a picture's transparency.

#include <dravelin/platform/filterimage.h>
#include <dravelin/platform/pixelkernel.h>
