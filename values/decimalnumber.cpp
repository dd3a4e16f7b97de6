// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values/conversions.h>
#include <dravelin/values/decimal.h>

#include <QtCore/QPointer>

#include <cmath>
#include <limits>

namespace dravelin {

namespace {

/// Cut towards 0 and to the limits of the type; 0 for what is not a number.
template <typename Integer>
Integer truncated(double value)
{
    using Limits = std::numeric_limits<Integer>;
    const double beyond = std::ldexp(1.0, Limits::digits); // the largest itself is not a double
    if (value >= beyond)
        return Limits::max();
    if (value <= double(Limits::min()))
        return Limits::min();
    return std::isnan(value) ? Integer(0) : Integer(value);
}

} // namespace

DecimalNumber::DecimalNumber(QObject *parent) : Object(parent) {}
DecimalNumber::~DecimalNumber() = default;

std::shared_ptr<DecimalNumber> DecimalNumber::withPrecision(quint64 precision)
{
    auto number = std::make_shared<DecimalNumber>();
    number->setPrecision(precision);
    return number;
}

void DecimalNumber::setIntegerDigits(qint64 digits)
{
    const bool changed = std::exchange(m_integerDigits, digits) != digits;
    announce({{changed, &DecimalNumber::integerDigitsChanged}, {changed, &DecimalNumber::valueChanged}});
}

void DecimalNumber::setFractionalDigits(quint64 digits)
{
    const bool changed = std::exchange(m_fractionalDigits, digits) != digits;
    announce({{changed, &DecimalNumber::fractionalDigitsChanged}, {changed, &DecimalNumber::valueChanged}});
}

void DecimalNumber::setPrecision(quint64 precision)
{
    const quint64 possible = std::min(precision, MaximumPrecision);
    m_scale = std::pow(10.0, double(possible));
    const bool changed = std::exchange(m_precision, possible) != possible;
    announce({{changed, &DecimalNumber::precisionChanged}, {changed, &DecimalNumber::valueChanged}});
}

QString DecimalNumber::getStringValue() const
{
    QString text = QString::number(m_integerDigits);
    if (m_precision != 0)
        text += u'.' + QString::number(m_fractionalDigits).rightJustified(qsizetype(m_precision), u'0');
    return text;
}

void DecimalNumber::setStringValue(const QString &text) { setDoubleValue(strToDouble(text)); }

float DecimalNumber::getFloatValue() const
{
    const float whole = float(m_integerDigits);
    return m_precision == 0 ? whole : float(double(m_fractionalDigits) / m_scale) + whole;
}

void DecimalNumber::setFloatValue(float value)
{
    const auto whole = truncated<qint64>(double(value));
    setParts(whole, double(value - float(whole)));
}

double DecimalNumber::getDoubleValue() const
{
    const double whole = double(m_integerDigits);
    return m_precision == 0 ? whole : double(m_fractionalDigits) / m_scale + whole;
}

void DecimalNumber::setDoubleValue(double value)
{
    const auto whole = truncated<qint64>(value);
    setParts(whole, value - double(whole));
}

void DecimalNumber::setParts(qint64 whole, double fraction)
{
    const auto units = truncated<quint64>(fraction * m_scale);
    const bool wholeChanged = std::exchange(m_integerDigits, whole) != whole;
    const bool fractionChanged = std::exchange(m_fractionalDigits, units) != units;
    announce({{wholeChanged, &DecimalNumber::integerDigitsChanged},
              {fractionChanged, &DecimalNumber::fractionalDigitsChanged},
              {wholeChanged || fractionChanged, &DecimalNumber::valueChanged}});
}

/// Emits the signals of what has changed. A slot may delete the number.
void DecimalNumber::announce(std::initializer_list<std::pair<bool, Signal>> changes)
{
    const QPointer<DecimalNumber> self = this;
    for (const auto &[changed, signal] : changes) {
        if (changed && self)
            Q_EMIT(this->*signal)();
    }
}

} // namespace dravelin
