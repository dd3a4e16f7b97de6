// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/image.h>

/// Icons of 128 points and two pixels per point, drawn in light greys with soft edges, glass and shadows: what takes a
/// tint well.
[[nodiscard]] QList<dravelin::Image> drawIcons();

/// A dark plate with round corners to put under icons.
[[nodiscard]] dravelin::Image drawPlate();
