// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/colormatrix.h>

#include <dravelin/platform/color.h>

#include <QtCore/QHash>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace dravelin::detail {

using namespace Qt::StringLiterals;

namespace {

constexpr double huge = 1e4; // keeps what is computed in floats finite

/// The same for all three channels.
constexpr ColorMatrix evenly(double factor, double added)
{
    return {{factor, 0, 0, added, 0, factor, 0, added, 0, 0, factor, added}};
}

constexpr ColorMatrix greyMatrix(double red, double green, double blue)
{
    return {{red, green, blue, 0, red, green, blue, 0, red, green, blue, 0}};
}

constexpr ColorMatrix luminance = greyMatrix(redWeight, greenWeight, blueWeight);

/// From `from` at 0 to `to` at 1, and beyond.
constexpr ColorMatrix mix(const ColorMatrix &from, const ColorMatrix &to, double amount)
{
    ColorMatrix result;
    for (std::size_t i = 0; i < result.v.size(); ++i)
        result.v[i] = from.v[i] + (to.v[i] - from.v[i]) * amount;
    return result;
}

constexpr ColorMatrix saturation(double amount) { return mix(luminance, ColorMatrix(), amount); }

/// About mid-grey.
constexpr ColorMatrix contrast(double amount) { return evenly(amount, 0.5 - 0.5 * amount); }

constexpr ColorMatrix scaled(double red, double green, double blue, double added)
{
    return {{red, 0, 0, added, 0, green, 0, added, 0, 0, blue, added}};
}

ColorMatrix sepia(const QVariantMap &values)
{
    constexpr ColorMatrix full{{0.393, 0.769, 0.189, 0, 0.349, 0.686, 0.168, 0, 0.272, 0.534, 0.131, 0}};
    return mix(ColorMatrix(), full, filterNumber(values, u"inputIntensity"_s, 1, 0, 1));
}

ColorMatrix colorControls(const QVariantMap &values)
{
    const double brightness = filterNumber(values, u"inputBrightness"_s, 0, -1, huge);
    const ColorMatrix first = saturation(filterNumber(values, u"inputSaturation"_s, 1, 0, huge));
    return contrast(filterNumber(values, u"inputContrast"_s, 1, 0, huge)) * (evenly(1, brightness) * first);
}

ColorMatrix hue(const QVariantMap &values)
{
    constexpr std::array<double, 12> sine = {-redWeight,    -greenWeight, 1 - blueWeight, 0, 0.143, 0.140, -0.283, 0,
                                             redWeight - 1, greenWeight,  blueWeight,     0};
    const double angle = filterNumber(values, u"inputAngle"_s, 0, -1e6, 1e6);
    ColorMatrix result = mix(luminance, ColorMatrix(), std::cos(angle));
    for (std::size_t i = 0; i < sine.size(); ++i)
        result.v[i] += sine[i] * std::sin(angle);
    return angle == 0 ? ColorMatrix() : result;
}

ColorMatrix falseColor(const QVariantMap &values)
{
    const auto [dark, light] = falseColors(values);
    const auto row = [](double from, double to) {
        return std::array{(to - from) * redWeight, (to - from) * greenWeight, (to - from) * blueWeight, from};
    };
    ColorMatrix result;
    for (std::size_t i = 0; i < 3; ++i)
        std::ranges::copy(row(dark[i], light[i]), result.v.begin() + std::ptrdiff_t(i * 4));
    return result;
}

using MatrixOf = ColorMatrix (*)(const QVariantMap &values);

const QHash<QString, MatrixOf> &matrices()
{
    static const QHash<QString, MatrixOf> all = {
        {u"CISepiaTone"_s, sepia},
        {u"CIColorControls"_s, colorControls},
        {u"CIHueAdjust"_s, hue},
        {u"CIFalseColor"_s, falseColor},
        {u"CIColorInvert"_s, [](const QVariantMap &) { return evenly(-1, 1); }},
        {u"CIPhotoEffectFade"_s, [](const QVariantMap &) { return evenly(0.8, 0.12) * saturation(0.7); }},
        {u"CIPhotoEffectChrome"_s, [](const QVariantMap &) { return contrast(1.15) * saturation(1.3); }},
        {u"CIPhotoEffectInstant"_s,
         [](const QVariantMap &) { return scaled(0.95, 0.88, 0.72, 0.08) * saturation(0.75); }},
        {u"CIPhotoEffectProcess"_s, [](const QVariantMap &) { return scaled(0.9, 1, 1.08, 0.02) * saturation(0.85); }},
        {u"CIPhotoEffectTransfer"_s,
         [](const QVariantMap &) { return scaled(1.06, 0.98, 0.84, 0.03) * saturation(0.9); }},
        {u"CIPhotoEffectTonal"_s, [](const QVariantMap &) { return greyMatrix(1 / 3.0, 1 / 3.0, 1 / 3.0); }},
        {u"CIPhotoEffectMono"_s, [](const QVariantMap &) { return evenly(0.88, 0.06) * luminance; }},
        {u"CIPhotoEffectNoir"_s, [](const QVariantMap &) { return contrast(1.5) * luminance; }},
    };
    return all;
}

} // namespace

bool ColorMatrix::isIdentity() const
{
    return std::ranges::equal(v, ColorMatrix().v, [](double a, double b) { return std::abs(a - b) < 1e-9; });
}

ColorMatrix operator*(const ColorMatrix &second, const ColorMatrix &first)
{
    ColorMatrix result;
    for (std::size_t row = 0; row < 12; row += 4) {
        for (std::size_t column = 0; column < 4; ++column) {
            result.v[row + column] = column == 3 ? second.v[row + 3] : 0;
            for (std::size_t i = 0; i < 3; ++i)
                result.v[row + column] += second.v[row + i] * first.v[i * 4 + column];
        }
    }
    return result;
}

double filterNumber(const QVariantMap &values, const QString &key, double fallback, double low, double high)
{
    bool isNumber = false;
    const double value = values.value(key).toDouble(&isNumber);
    return isNumber && !std::isnan(value) ? std::clamp(value, low, high) : fallback;
}

std::pair<FalseColor, FalseColor> falseColors(const QVariantMap &values)
{
    const auto read = [&values](const QString &key, const Color &fallback) {
        const Color given = values.value(key).value<Color>();
        const Color &color = given.isValid() ? given : fallback;
        FalseColor result = {color.red(), color.green(), color.blue(), std::clamp(color.alpha(), 0.0, 1.0)};
        for (double &value : result)
            value = std::isnan(value) ? 0 : std::clamp(value, -huge, huge);
        return result;
    };
    return {read(u"inputColor0"_s, Color::srgb(0.3, 0, 0)), read(u"inputColor1"_s, Color::srgb(1, 0.9, 0.8))};
}

std::optional<ColorMatrix> filterMatrix(const QString &filter, const QVariantMap &values)
{
    const MatrixOf matrix = matrices().value(filter);
    return matrix ? std::optional(matrix(values)) : std::nullopt;
}

} // namespace dravelin::detail
