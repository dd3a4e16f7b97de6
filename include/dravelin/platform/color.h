// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QMetaType>
#include <QtGui/QColor>
#include <QtGui/QImage>

#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QDebug;
QT_END_NAMESPACE

namespace dravelin {

namespace detail {
struct ArchivedColor;
}

/// A colour: red, green, blue and alpha as doubles, and the colour space they were given in. Components are fractions,
/// 0 to 1 as a rule, but never clamped: what goes in comes out.
///
///     const auto paper = dravelin::Color::srgb(1, 0.98, 0.9);
///     painter.fillRect(page, paper.toQColor());
///     const auto ink = dravelin::Color::cmyk(1, 0.5, 0, 0.2);
///     qInfo() << ink.red() << *ink.converted(dravelin::Color::CalibratedRGB);
///
/// A default-constructed colour is no colour. Where a QVariant holds a Color, `value<QColor>()` works, and the other
/// way round; so a QColor property can be written with a Color.
class DRAVELIN_EXPORT Color
{
    Q_GADGET
    Q_PROPERTY(bool valid READ isValid CONSTANT)
    Q_PROPERTY(Space space READ space CONSTANT)
    Q_PROPERTY(double red READ red CONSTANT)
    Q_PROPERTY(double green READ green CONSTANT)
    Q_PROPERTY(double blue READ blue CONSTANT)
    Q_PROPERTY(double alpha READ alpha CONSTANT)

public:
    enum Space {
        NoSpace,       ///< no colour
        CalibratedRGB, ///< the device-independent generic RGB space
        SRGB,          ///< the same numbers as CalibratedRGB, but a space of its own: the two never compare equal
        Grey,
        CMYK,
        Pattern, ///< painted with an image; has no components
    };
    Q_ENUM(Space)

    Color() = default;
    /// In sRGB; no colour when `color` is invalid.
    Color(const QColor &color);
    Color(Qt::GlobalColor color) : Color(QColor(color)) {}

    [[nodiscard]] static Color calibratedRgb(double red, double green, double blue, double alpha = 1);
    [[nodiscard]] static Color srgb(double red, double green, double blue, double alpha = 1);
    /// \param white 0 for black, 1 for white
    [[nodiscard]] static Color grey(double white, double alpha = 1);
    [[nodiscard]] static Color cmyk(double cyan, double magenta, double yellow, double black, double alpha = 1);
    /// In sRGB.
    /// \param hue 0 to 1 once round the circle, from red over green and blue; beyond that it wraps
    [[nodiscard]] static Color hsv(double hue, double saturation, double value, double alpha = 1);
    /// No colour when the image is null.
    [[nodiscard]] static Color pattern(const QImage &image);

    [[nodiscard]] bool isValid() const noexcept { return m_space != NoSpace; }
    [[nodiscard]] Space space() const noexcept { return m_space; }

    /// \name Components
    /// Of a grey or CMYK colour, those of its RGB form; 0 of no colour and of a pattern.
    /// @{
    [[nodiscard]] double red() const noexcept { return m_red; }
    [[nodiscard]] double green() const noexcept { return m_green; }
    [[nodiscard]] double blue() const noexcept { return m_blue; }
    [[nodiscard]] double alpha() const noexcept { return m_alpha; }
    /// @}

    /// The pattern's image; null for other colours.
    [[nodiscard]] QImage patternImage() const;

    /// The colour in one of the two RGB spaces, with the components above, or in the space that it already is in.
    /// \return nothing for other spaces, for no colour, and for a pattern
    [[nodiscard]] std::optional<Color> converted(Space to) const;

    /// Components beyond 0 to 1 give an extended-range QColor, with alpha clamped; components that are no numbers count
    /// as 0.
    /// \return an invalid QColor for no colour and for a pattern
    [[nodiscard]] QColor toQColor() const;

    /// Same space, same components, same image.
    DRAVELIN_EXPORT friend bool operator==(const Color &a, const Color &b);

private:
    friend struct detail::ArchivedColor;
    Color(Space space, double red, double green, double blue, double alpha);

    double m_red = 0, m_green = 0, m_blue = 0, m_alpha = 0;
    std::shared_ptr<const QImage> m_image;
    Space m_space = NoSpace;
};

/// Prints as `Color(SRGB 1 0 0 0.5)`.
DRAVELIN_EXPORT QDebug operator<<(QDebug debug, const Color &color);

} // namespace dravelin

Q_DECLARE_METATYPE(dravelin::Color)
