// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <array>
#include <optional>
#include <utility>

namespace dravelin::detail {

/// How bright each channel looks: the rounded weights of Rec. ITU-R BT.709 that the W3C's filters use.
inline constexpr double redWeight = 0.213, greenWeight = 0.715, blueWeight = 0.072;

/// Three rows for red, green and blue; in each the factors of red, green and blue, and what is added.
struct ColorMatrix
{
    std::array<double, 12> v = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0};

    /// But for rounding.
    [[nodiscard]] bool isIdentity() const;
};

/// What `second` does after `first`.
[[nodiscard]] ColorMatrix operator*(const ColorMatrix &second, const ColorMatrix &first);

/// The number at a key of a filter's values, made finite.
/// \param fallback where there is none, or it is not a number
[[nodiscard]] double filterNumber(const QVariantMap &values, const QString &key, double fallback, double low,
                                  double high);

using FalseColor = std::array<double, 4>; ///< red, green, blue, alpha

/// What black becomes and what white becomes.
[[nodiscard]] std::pair<FalseColor, FalseColor> falseColors(const QVariantMap &values);

/// What a filter does to colours when that is one matrix in encoded sRGB (docs/filters.md), and leaves alpha alone.
[[nodiscard]] std::optional<ColorMatrix> filterMatrix(const QString &filter, const QVariantMap &values);

} // namespace dravelin::detail
