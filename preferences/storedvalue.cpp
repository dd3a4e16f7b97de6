// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "preferences/storedvalue.h"

#include <dravelin/values/conversions.h>

#include <cmath>
#include <limits>

namespace dravelin::detail {

namespace {

bool isText(const QVariant &value) { return value.metaType() == QMetaType::fromType<QString>(); }

bool isReal(const QVariant &value)
{
    return value.metaType() == QMetaType::fromType<double>() || value.metaType() == QMetaType::fromType<float>();
}

/// Cuts the fraction off; what 64 bits cannot hold becomes the nearest limit, NaN 0.
qint64 truncated(double number)
{
    if (std::isnan(number))
        return 0;
    if (number >= 0x1p63)
        return std::numeric_limits<qint64>::max();
    return number < -0x1p63 ? std::numeric_limits<qint64>::min() : qint64(number);
}

} // namespace

bool boolValue(const QVariant &value)
{
    if (isText(value))
        return strToBool(value.toString());
    return isReal(value) ? value.toDouble() != 0 : value.toLongLong() != 0;
}

qint64 integerValue(const QVariant &value)
{
    if (isText(value))
        return strToInt(value.toString());
    return isReal(value) ? truncated(value.toDouble()) : value.toLongLong();
}

int intValue(const QVariant &value) { return int(integerValue(value)); }

float floatValue(const QVariant &value) { return isText(value) ? strToFloat(value.toString()) : value.toFloat(); }

double doubleValue(const QVariant &value) { return isText(value) ? strToDouble(value.toString()) : value.toDouble(); }

} // namespace dravelin::detail
