// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/geometry.h>

#include <charconv>

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

} // namespace

QString NSStringFromPoint(const QPointF &point) { return pair(number(point.x()), number(point.y())); }

QString NSStringFromSize(const QSizeF &size) { return pair(number(size.width()), number(size.height())); }

QString NSStringFromRect(const QRectF &rect)
{
    return pair(NSStringFromPoint(rect.topLeft()), NSStringFromSize(rect.size()));
}

QString NSStringFromRange(Range range) { return pair(QString::number(range.location), QString::number(range.length)); }

} // namespace dravelin
