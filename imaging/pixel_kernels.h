// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/QRgb>

#include <cstddef>

namespace dravelin::detail {

/// Factors from 0 to 1 of the colour samples.
struct ChannelFactors
{
    float red, green, blue;
};

/// Writes the pixels with their colour samples multiplied, rounded to the nearest; alpha stays.
void multiplyPixels(QRgb *to, const QRgb *from, std::size_t count, const ChannelFactors &factors);

/// Whether the alpha samples of all pixels are 255.
[[nodiscard]] bool areOpaque(const QRgb *pixels, std::size_t count);

/// Adds 1 to each count whose pixel's alpha is below 255.
void countTranslucent(const QRgb *pixels, std::size_t count, quint32 *counts);

} // namespace dravelin::detail
