// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/pixelrow.h>

namespace dravelin::detail {

/// \file
/// What filters do to a block of pixels, compiled for each kind of processor. Formulas: docs/filters.md.

/// Fills the first `row.count` pixels.
void loadPixels(const QRgb *from, PixelFormat format, PixelRow &row);
/// Rounded to the nearest of 256 levels, clamped.
void storePixels(const PixelRow &row, PixelFormat format, QRgb *to);

/// \param matrix as in ColorMatrix
void applyMatrix(PixelRow &row, const float (&matrix)[12]);
/// \param gain the factor in linear light; the result is clamped
void applyExposure(PixelRow &row, float gain);
void applyVibrance(PixelRow &row, float amount);
/// \param radius of the place where it is full, in half diagonals of the picture
void applyVignette(PixelRow &row, float intensity, float radius);
/// \param light the luminance that decides, of each pixel; null for that of the pixel itself
void applyHighlightShadow(PixelRow &row, float highlight, float shadow, const float *light);
/// Alpha falls from its value where luminance is 0 by `dark`, and rises to `light` where it is 1.
void applyFalseAlpha(PixelRow &row, float dark, float light);
/// The luminance of clamped colours.
void luminance(const PixelRow &row, float *to);

enum class BlendMode { Multiply, Hue, Saturation, Color, Luminosity };

/// The row over `backdrop`, both with alpha.
void applyBlend(PixelRow &row, const PixelRow &backdrop, BlendMode mode);
/// From `other` at 0 to the row at 1.
void applyMix(PixelRow &row, const PixelRow &other, float amount);
/// The same by the mask's luminance, darkened where the mask is transparent.
void applyMask(PixelRow &row, const PixelRow &other, const PixelRow &mask);

/// Four bytes to four bytes at once, for opaque pixels.
class ByteMatrix
{
public:
    /// \param matrix as in ColorMatrix
    explicit ByteMatrix(const float (&matrix)[12]);
    /// Whether its numbers fit; if not, it must not be applied.
    [[nodiscard]] bool isValid() const { return m_shift > 0; }
    /// \param streams past the caches, for results so large that they would not stay there; then finishStreamCopies()
    void apply(const QRgb *from, QRgb *to, int count, bool streams) const;

private:
    qint32 m_pairs[6] = {}; ///< of each channel, the factors of blue and red, and of green and alpha
    int m_shift = 0;
};

} // namespace dravelin::detail
