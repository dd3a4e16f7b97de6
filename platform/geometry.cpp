// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/geometry.h>

#include "platform/geometrytext.h"

#include <algorithm>
#include <charconv>
#include <limits>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

QString number(double value)
{
    char digits[32];
    const auto result = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, 17);
    return QString::fromLatin1(digits, result.ptr - digits);
}

QString pair(const QString &first, const QString &second) { return u'{' + first + u", "_s + second + u'}'; }

bool isDigit(char c) { return c >= '0' && c <= '9'; }

/// The next number in the text. \param position moves behind it
quint64 nextNumber(const char *&position, const char *end)
{
    quint64 value = 0;
    position = std::find_if(position, end, isDigit);
    const auto [behind, error] = std::from_chars(position, end, value);
    position = behind;
    return error == std::errc::result_out_of_range ? std::numeric_limits<quint64>::max() : value;
}

} // namespace

QList<double> geometryNumbers(QString text)
{
    QList<double> numbers;
    const QByteArrayList pieces = text.remove(u'{').remove(u'}').toLatin1().split(',');
    for (const QByteArray &piece : pieces) {
        const QByteArray digits = piece.trimmed();
        double value = 0;
        const auto [end, error] = std::from_chars(digits.cbegin(), digits.cend(), value);
        if (error != std::errc() || end != digits.cend())
            return {};
        numbers.append(value);
    }
    return numbers;
}

QString NSStringFromPoint(const QPointF &point) { return pair(number(point.x()), number(point.y())); }

QString NSStringFromSize(const QSizeF &size) { return pair(number(size.width()), number(size.height())); }

QString NSStringFromRect(const QRectF &rect)
{
    return pair(NSStringFromPoint(rect.topLeft()), NSStringFromSize(rect.size()));
}

QString NSStringFromRange(Range range) { return pair(QString::number(range.location), QString::number(range.length)); }

Range NSRangeFromString(const QString &text)
{
    const QByteArray characters = text.toLatin1();
    const char *position = characters.cbegin();
    const quint64 location = nextNumber(position, characters.cend());
    return {location, nextNumber(position, characters.cend())};
}

} // namespace dravelin
