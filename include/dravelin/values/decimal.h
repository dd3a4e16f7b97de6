// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/object.h>

#include <QtCore/QRectF>
#include <QtCore/QString>

#include <array>
#include <initializer_list>
#include <memory>
#include <utility>

namespace dravelin {

/// A number as a whole part and a fixed count of decimals, to be shown and edited with exactly that many.
///
///     const auto price = dravelin::DecimalNumber::withPrecision(2);
///     price->setStringValue("12.5");
///     label->setText(price->getStringValue());                // "12.50"
///
/// The value is integerDigits + fractionalDigits / 10^precision. Both parts are cut, never rounded, and the fraction has
/// no sign: a negative number keeps its whole part only, -1.5 is -1.
///
/// Setters are silent when nothing changes. All of it is fit for QML.
class DRAVELIN_EXPORT DecimalNumber : public Object
{
    Q_OBJECT
    Q_PROPERTY(qint64 integerDigits READ integerDigits WRITE setIntegerDigits NOTIFY integerDigitsChanged)
    Q_PROPERTY(quint64 fractionalDigits READ fractionalDigits WRITE setFractionalDigits NOTIFY fractionalDigitsChanged)
    Q_PROPERTY(quint64 precision READ precision WRITE setPrecision NOTIFY precisionChanged)
    Q_PROPERTY(QString stringValue READ getStringValue WRITE setStringValue NOTIFY valueChanged)
    Q_PROPERTY(float floatValue READ getFloatValue WRITE setFloatValue NOTIFY valueChanged)
    /// Writing this property changes nothing, see setdoubleValue().
    Q_PROPERTY(double doubleValue READ getDoubleValue WRITE setdoubleValue NOTIFY valueChanged)

public:
    /// The largest precision: 10 to a higher power is beyond a double.
    static constexpr quint64 MaximumPrecision = 308;

    /// 0 with precision 0 and without a scale: whatever is set keeps its whole part only, until setPrecision().
    explicit DecimalNumber(QObject *parent = nullptr);
    ~DecimalNumber() override;

    /// 0 with that many decimals.
    /// \operation{withPrecision:}
    [[nodiscard]] static std::shared_ptr<DecimalNumber> withPrecision(quint64 precision);

    /// \operation{integerDigits}
    [[nodiscard]] qint64 integerDigits() const noexcept { return m_integerDigits; }
    /// \operation{setIntegerDigits:}
    void setIntegerDigits(qint64 digits);

    /// The decimals as a count of units of 10^-precision: 5 at precision 3 is 0.005.
    /// \operation{fractionalDigits}
    [[nodiscard]] quint64 fractionalDigits() const noexcept { return m_fractionalDigits; }
    /// Takes any count, also one with more digits than the precision has.
    /// \operation{setFractionalDigits:}
    void setFractionalDigits(quint64 digits);

    /// \operation{precision}
    [[nodiscard]] quint64 precision() const noexcept { return m_precision; }
    /// The parts stay as they are: 45 units at precision 2 are 45 smaller units at precision 3. From 20 decimals on, more
    /// than 64 bits hold, the fraction of a number that is set may become 2^64 - 1.
    /// \param precision cut to MaximumPrecision
    /// \operation{setPrecision:}
    void setPrecision(quint64 precision);

    /// The whole part, a point and the decimals: "12.045". Without the point at precision 0; a fraction with more digits
    /// than the precision is written in full.
    /// \operation{getStringValue}
    [[nodiscard]] QString getStringValue() const;
    /// As setDoubleValue() of strToDouble(): what follows the number is ignored, text without one is 0.
    /// \operation{setStringValue:}
    void setStringValue(const QString &text);

    /// The fraction rounded to a float and added to the whole part in single precision.
    /// \operation{getFloatValue}
    [[nodiscard]] float getFloatValue() const;
    /// As setDoubleValue(), but the whole part is taken off in single precision.
    /// \operation{setFloatValue:}
    void setFloatValue(float value);

    /// \operation{getDoubleValue}
    [[nodiscard]] double getDoubleValue() const;
    /// Sets both parts. The whole part is cut towards 0, to the limits of 64 bits; what is left, times 10^precision, is
    /// cut to the fraction, and is 0 when negative. 12.045 at precision 3 is 12.044, for the nearest double lies below
    /// it. What is not a number becomes 0.
    /// \operation{setDoubleValue:}
    Q_INVOKABLE void setDoubleValue(double value);
    /// The setter of the property doubleValue, with a small d: notes the value and leaves the number as it is.
    /// \operation{setdoubleValue:}
    void setdoubleValue(double value) noexcept { m_doubleValue = value; }

Q_SIGNALS:
    void integerDigitsChanged();
    void fractionalDigitsChanged();
    void precisionChanged();
    /// Any of the parts or the precision is another, and so may be the number as text, float and double.
    void valueChanged();

private:
    using Signal = void (DecimalNumber::*)();
    void announce(std::initializer_list<std::pair<bool, Signal>> changes);
    void setParts(qint64 whole, double fraction);

    double m_scale = 0;
    qint64 m_integerDigits = 0;
    quint64 m_fractionalDigits = 0;
    quint64 m_precision = 0;
    double m_doubleValue = 0;
};

/// A rectangle of four decimal numbers of one precision.
///
///     const auto frame = dravelin::DecimalRect::withPercision(1);
///     frame->setRectValue({1.25, 2, 10.99, 0.5});
///     frame->width()->getStringValue();                       // "10.9"
class DRAVELIN_EXPORT DecimalRect : public Object
{
    Q_OBJECT
    Q_PROPERTY(dravelin::DecimalNumber *x READ x CONSTANT)
    Q_PROPERTY(dravelin::DecimalNumber *y READ y CONSTANT)
    Q_PROPERTY(dravelin::DecimalNumber *width READ width CONSTANT)
    Q_PROPERTY(dravelin::DecimalNumber *height READ height CONSTANT)
    Q_PROPERTY(QRectF rectValue READ getRectValue WRITE setRectValue NOTIFY rectValueChanged)

public:
    /// Four zeros.
    explicit DecimalRect(quint64 precision = 0, QObject *parent = nullptr);
    ~DecimalRect() override;

    /// \operation{initWithPercision:}
    [[nodiscard]] static std::shared_ptr<DecimalRect> initWithPercision(quint64 precision);
    /// \operation{withPercision:}
    [[nodiscard]] static std::shared_ptr<DecimalRect> withPercision(quint64 precision);

    /// \name The numbers
    /// The rectangle owns them; retain() makes a further owner.
    /// @{
    /// \operation{x}
    [[nodiscard]] DecimalNumber *x() const { return m_numbers[0].get(); }
    /// \operation{y}
    [[nodiscard]] DecimalNumber *y() const { return m_numbers[1].get(); }
    /// \operation{width}
    [[nodiscard]] DecimalNumber *width() const { return m_numbers[2].get(); }
    /// \operation{height}
    [[nodiscard]] DecimalNumber *height() const { return m_numbers[3].get(); }
    /// @}

    /// The four numbers in single precision.
    /// \operation{getRectValue}
    [[nodiscard]] QRectF getRectValue() const;
    /// Sets x, y, width and height, in this order and in single precision.
    /// \operation{setRectValue:}
    void setRectValue(const QRectF &rect);

Q_SIGNALS:
    /// Some of the numbers are others; once for a setRectValue().
    void rectValueChanged();

private:
    void numberChanged();

    std::array<std::shared_ptr<DecimalNumber>, 4> m_numbers;
    bool m_isBeingSet = false;
    bool m_hasChanged = false;
};

} // namespace dravelin
