// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/image.h>

namespace dravelin {

/// Tinted copies of an image. They are new images of the image's size, of one bitmap representation whose pixels are
/// premultiplied if the image's are. Each colour sample c, 0 to 255, becomes c * f, rounded to the nearest, where f is
/// the factor of its channel; premultiplied samples likewise, so that the colour is tinted alike. Alpha stays: what is
/// clear stays clear. No image, and an image without representation, give no image.
inline namespace ImageTints {

/// Multiplies the image with a colour that is laid over it: f = 1 - a + a * t, where a is the alpha and t is the red,
/// green or blue part of the calibrated colour of that hue with saturation 1 and brightness 1. White thus becomes the
/// colour itself, mixed with 1 - a of white, and black stays black.
///
/// The formula is the multiply blend mode of the W3C's Compositing and Blending, clipped to the image (source-atop).
/// \param hue 0 to 1 once round the circle, from red over green and blue back to red; beyond that it wraps
/// \param saturation the colour's alpha a, from 0, the image as it is, to 1; clamped. No number counts as 0.
/// \cost one pass over the pixels by vectors
/// \operation{createMultiplyColorOverlay:saturation:}
[[nodiscard]] DRAVELIN_EXPORT Image createMultiplyColorOverlay(const Image &image, float hue, float saturation);

/// Lays black over the image, clipped to it: f = 1 - level.
/// \param level alpha of the black, from 0, the image as it is, to 1, black; clamped. No number counts as 0.
/// \operation{createGrayScaleOverlay:}
[[nodiscard]] DRAVELIN_EXPORT Image createGrayScaleOverlay(const Image &image, float level);

} // namespace ImageTints

} // namespace dravelin
