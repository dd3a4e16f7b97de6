// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QSize>
#include <QtGui/QColor>
#include <QtGui/QImage>

namespace dravelin::detail {

/// Some neighbouring pixels of a row on their way through the filters: sRGB-encoded, not premultiplied. Small enough for
/// the processor's first cache, with the block of a second picture beside it. Filters work on whole vectors: what
/// lies behind the last pixel is unspecified, but a number.
struct PixelRow
{
    static constexpr int capacity = 512; ///< whole vectors of any length that is used

    alignas(64) float red[capacity] = {};
    alignas(64) float green[capacity] = {};
    alignas(64) float blue[capacity] = {};
    alignas(64) float alpha[capacity] = {};
    int count = 0;
    int x = 0, y = 0; ///< of the first pixel
    QSize size;       ///< of the picture
};

/// How four bytes hold a pixel.
enum class PixelFormat { Opaque, Straight, Premultiplied };

/// \pre the image has 32 bits per pixel
[[nodiscard]] inline PixelFormat pixelFormat(const QImage &image)
{
    if (image.format() == QImage::Format_RGB32)
        return PixelFormat::Opaque;
    return image.format() == QImage::Format_ARGB32 ? PixelFormat::Straight : PixelFormat::Premultiplied;
}

} // namespace dravelin::detail
