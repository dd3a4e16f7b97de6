// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values/conversions.h>

#include <values/fixed.h>
#include <values/scanfloat.h>

#include <QtCore/QVarLengthArray>

#include <array>

namespace dravelin {

namespace {

/// The text as bytes with a final 0, up to its first character that cannot be part of a number: a NUL or a non-ASCII
/// one.
QVarLengthArray<char, 128> numberBytes(const QString &text)
{
    QVarLengthArray<char, 128> bytes(text.size() + 1);
    char *out = bytes.data();
    for (const QChar c : text) {
        if (c.isNull() || c.unicode() > 0x7F)
            break;
        *out++ = char(c.unicode());
    }
    *out = '\0';
    bytes.resize(out - bytes.data() + 1);
    return bytes;
}

double byteFraction(qint32 value) { return static_cast<float>(value) / 255.0F; }

} // namespace

QString colorToString(const Color &color)
{
    const Color rgb = color.converted(Color::CalibratedRGB).value_or(Color());
    QString text;
    text.reserve(23); // "0.500 0.000 0.000 1.000"
    detail::appendFixed(text, rgb.red(), 3);
    for (const double component : {rgb.green(), rgb.blue(), rgb.alpha()})
        detail::appendFixed(text.append(u' '), component, 3);
    return text;
}

Color stringToColor(const QString &text)
{
    const auto bytes = numberBytes(text);
    const char *position = bytes.begin();
    std::array<float, 4> components{};
    for (float &component : components) {
        if (!detail::scanFloat(position, bytes.end() - 1, component))
            break;
    }
    return Color::srgb(components[0], components[1], components[2], components[3]);
}

Color rgbColor(qint32 red, qint32 green, qint32 blue)
{
    return Color::srgb(byteFraction(red), byteFraction(green), byteFraction(blue), 1.0);
}

Color rgbaColor(qint32 red, qint32 green, qint32 blue, qint32 alpha)
{
    return Color::srgb(byteFraction(red), byteFraction(green), byteFraction(blue), byteFraction(alpha));
}

} // namespace dravelin
