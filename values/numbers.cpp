// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values/conversions.h>

#include <platform/whitespace.h>
#include <values/fixed.h>
#include <values/scanfloat.h>

#include <QtCore/QVarLengthArray>

#include <algorithm>
#include <limits>

namespace dravelin {

namespace {

bool isDigit(QChar c) { return c >= u'0' && c <= u'9'; }
bool isSign(QChar c) { return c == u'+' || c == u'-'; }

QStringView withoutLeadingSpace(QStringView text)
{
    const auto start = std::find_if_not(text.begin(), text.end(), detail::isWhiteSpace);
    return text.sliced(start - text.begin());
}

bool startsWithSign(QStringView text) { return !text.empty() && isSign(text.front()); }

/// Behind the digits that start at the position.
qsizetype skipDigits(QStringView text, qsizetype position)
{
    while (position < text.size() && isDigit(text[position]))
        ++position;
    return position;
}

/// Behind the digits before and after a point; 0 when there are none.
qsizetype skipMantissa(QStringView text)
{
    const qsizetype integer = skipDigits(text, 0);
    if (integer == text.size() || text[integer] != u'.')
        return integer;
    const qsizetype fraction = skipDigits(text, integer + 1);
    return fraction > 1 ? fraction : 0;
}

/// Behind the exponent that starts at the position; the position itself when there is none.
qsizetype skipExponent(QStringView text, qsizetype position)
{
    if (position == text.size() || text[position].toLower() != u'e')
        return position;
    const qsizetype digits = position + (startsWithSign(text.sliced(position + 1)) ? 2 : 1);
    const qsizetype end = skipDigits(text, digits);
    return end > digits ? end : position;
}

using Bytes = QVarLengthArray<char, 64>;

void appendAscii(Bytes &bytes, QStringView text)
{
    const qsizetype start = bytes.size();
    bytes.resize(start + text.size());
    std::transform(text.begin(), text.end(), bytes.begin() + start, [](QChar c) { return char(c.unicode()); });
}

/// The number at the start of the text as the C functions write it, with a final 0 byte; only that when there is none.
Bytes leadingNumber(const QString &text)
{
    Bytes number;
    QStringView rest = withoutLeadingSpace(text);
    if (startsWithSign(rest)) {
        if (rest.front() == u'-')
            number.append('-');
        rest = rest.sliced(1);
    }
    const qsizetype mantissa = skipMantissa(rest);
    if (mantissa == 0)
        number.clear();
    else
        appendAscii(number, rest.first(skipExponent(rest, mantissa)));
    number.append('\0');
    return number;
}

} // namespace

qint64 strToInt(const QString &text)
{
    constexpr qint64 Largest = std::numeric_limits<qint32>::max();
    QStringView rest = withoutLeadingSpace(text);
    const bool negative = rest.startsWith(u'-');
    if (startsWithSign(rest))
        rest = rest.sliced(1);
    qint64 value = 0;
    for (const QChar c : rest.first(skipDigits(rest, 0)))
        value = std::min(value * 10 + (c.unicode() - u'0'), Largest + 1);
    return negative ? -value : std::min(value, Largest);
}

bool strToBool(const QString &text)
{
    QStringView rest = withoutLeadingSpace(text);
    if (startsWithSign(rest))
        rest = rest.sliced(1);
    const auto first = std::find_if(rest.begin(), rest.end(), [](QChar c) { return c != u'0'; });
    return first != rest.end() && (isDigit(*first) || QStringView(u"YyTt").contains(*first));
}

float strToFloat(const QString &text)
{
    const auto number = leadingNumber(text);
    return detail::toFloat(number.begin(), number.end() - 1);
}

double strToDouble(const QString &text)
{
    const auto number = leadingNumber(text);
    return detail::toDouble(number.begin(), number.end() - 1);
}

QString intToStr(qint64 value) { return QString::number(static_cast<qint32>(value)); }

QString boolToStr(int value) { return value ? QStringLiteral("YES") : QStringLiteral("NO"); }

QString floatToStr(float value, qint64 decimals) { return doubleToStr(double(value), decimals); }

QString doubleToStr(double value, qint64 decimals)
{
    QString text;
    detail::appendFixed(text, value, decimals);
    return text;
}

} // namespace dravelin
