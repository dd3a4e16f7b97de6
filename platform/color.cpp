// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/color.h>

#include <QtCore/QDebug>
#include <QtCore/QMetaEnum>

#include <algorithm>
#include <cmath>

namespace dravelin {

namespace {

float number(double component) { return std::isnan(component) ? 0.0F : static_cast<float>(component); }

void registerConverters()
{
    QMetaType::registerConverter<Color, QColor>(&Color::toQColor);
    QMetaType::registerConverter<QColor, Color>([](const QColor &color) { return Color(color); });
}
Q_CONSTRUCTOR_FUNCTION(registerConverters)

} // namespace

Color::Color(Space space, double red, double green, double blue, double alpha)
    : m_red(red), m_green(green), m_blue(blue), m_alpha(alpha), m_space(space)
{}

Color::Color(const QColor &color)
{
    if (!color.isValid())
        return;
    if (color.spec() == QColor::ExtendedRgb) {
        *this = srgb(color.redF(), color.greenF(), color.blueF(), color.alphaF());
    } else { // in doubles, since redF() has only a float's precision: n of 255 gives n / 255.0 exactly
        const QRgba64 c = color.rgba64();
        *this = srgb(c.red() / 65535.0, c.green() / 65535.0, c.blue() / 65535.0, c.alpha() / 65535.0);
    }
}

Color Color::calibratedRgb(double red, double green, double blue, double alpha)
{
    return {CalibratedRGB, red, green, blue, alpha};
}

Color Color::srgb(double red, double green, double blue, double alpha) { return {SRGB, red, green, blue, alpha}; }

Color Color::grey(double white, double alpha) { return {Grey, white, white, white, alpha}; }

Color Color::cmyk(double cyan, double magenta, double yellow, double black, double alpha)
{
    return {CMYK, (1 - cyan) * (1 - black), (1 - magenta) * (1 - black), (1 - yellow) * (1 - black), alpha};
}

Color Color::hsv(double hue, double saturation, double value, double alpha)
{
    const double sixths = (hue - std::floor(hue)) * 6;
    // How far the component that peaks `offset` sixths before a full turn falls below the value.
    const auto component = [=](double offset) {
        const double k = std::fmod(offset + sixths, 6);
        return value - value * saturation * std::clamp(std::min(k, 4 - k), 0.0, 1.0);
    };
    return srgb(component(5), component(3), component(1), alpha);
}

Color Color::pattern(const QImage &image)
{
    Color color;
    if (!image.isNull()) {
        color.m_space = Pattern;
        color.m_image = std::make_shared<const QImage>(image);
    }
    return color;
}

QImage Color::patternImage() const { return m_image ? *m_image : QImage(); }

std::optional<Color> Color::converted(Space to) const
{
    if (!isValid())
        return {};
    if (to == m_space)
        return *this;
    if (m_space == Pattern || (to != CalibratedRGB && to != SRGB))
        return {};
    return Color(to, m_red, m_green, m_blue, m_alpha);
}

QColor Color::toQColor() const
{
    if (!isValid() || m_space == Pattern)
        return {};
    return QColor::fromRgbF(number(m_red), number(m_green), number(m_blue), std::clamp(number(m_alpha), 0.0F, 1.0F));
}

bool operator==(const Color &a, const Color &b)
{
    return a.m_space == b.m_space && a.m_red == b.m_red && a.m_green == b.m_green && a.m_blue == b.m_blue
           && a.m_alpha == b.m_alpha
           && (a.m_image == b.m_image || (a.m_image && b.m_image && *a.m_image == *b.m_image));
}

QDebug operator<<(QDebug debug, const Color &color)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "Color(" << QMetaEnum::fromType<Color::Space>().valueToKey(color.space());
    if (color.space() == Color::Pattern)
        debug << ' ' << color.patternImage().size();
    else if (color.isValid())
        debug << ' ' << color.red() << ' ' << color.green() << ' ' << color.blue() << ' ' << color.alpha();
    return debug << ')';
}

} // namespace dravelin
