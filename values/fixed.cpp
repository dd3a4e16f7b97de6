// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <values/fixed.h>

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <optional>

namespace dravelin::detail {

namespace {

__extension__ using Wide = unsigned __int128;

constexpr int DefaultDecimals = 6;
constexpr int MaximumDecimals = 1074; // 2^-1074, the least double, needs that many
constexpr int MaximumExactDecimals = 19;

constexpr auto powersOfTen = [] {
    std::array<quint64, MaximumExactDecimals + 1> powers{1};
    for (std::size_t i = 1; i < powers.size(); ++i)
        powers[i] = powers[i - 1] * 10;
    return powers;
}();

// "00" to "99", so that two digits cost one division.
constexpr auto digitPairs = [] {
    std::array<std::array<char16_t, 2>, 100> pairs{};
    for (std::size_t i = 0; i < pairs.size(); ++i)
        pairs[i] = {char16_t(u'0' + i / 10), char16_t(u'0' + i % 10)};
    return pairs;
}();

/// A rounded number as its two sides of the decimal point.
struct Parts
{
    quint64 integer = 0;
    quint64 fraction = 0; ///< in units of the last decimal
};

/// value * 10^decimals for mantissa * 2^-shift, rounded half to even on the exact value.
Parts roundedParts(quint64 mantissa, int shift, int decimals)
{
    Parts parts;
    parts.integer = shift < 64 ? mantissa >> shift : 0;
    const quint64 below = shift < 64 ? mantissa & ((quint64(1) << shift) - 1) : mantissa;
    if (shift > 120) // less than 2^117 remains even after scaling: below half a unit
        return parts;
    const Wide scaled = Wide(below) * powersOfTen[decimals];
    const Wide half = Wide(1) << (shift - 1);
    const Wide rest = scaled & (half + (half - 1));
    parts.fraction = quint64(scaled >> shift);
    const bool odd = (decimals > 0 ? parts.fraction : parts.integer) & 1;
    if ((rest > half || (rest == half && odd)) && ++parts.fraction == powersOfTen[decimals]) {
        parts.fraction = 0;
        ++parts.integer;
    }
    return parts;
}

/// Nothing when the number does not fit 64 bits on either side of the point.
std::optional<Parts> exactParts(double magnitude, int decimals)
{
    if (decimals > MaximumExactDecimals || !(magnitude < 0x1p63))
        return {};
    const auto bits = std::bit_cast<quint64>(magnitude);
    const int biased = int(bits >> 52);
    const quint64 stored = bits & ((quint64(1) << 52) - 1);
    const quint64 mantissa = biased ? stored | quint64(1) << 52 : stored;
    const int shift = 1075 - std::max(biased, 1);
    return shift <= 0 ? Parts{mantissa << -shift, 0} : roundedParts(mantissa, shift, decimals);
}

int digitCount(quint64 value)
{
    // log10(2) is about 1233 / 4096; the estimate is one too high at most.
    const int estimate = std::bit_width(value | 1) * 1233 >> 12;
    return estimate + (value >= powersOfTen[estimate] || value == 0);
}

/// Writes the `count` last digits of the value, leading zeros included, ending before `end`.
void writeDigits(char16_t *end, quint64 value, int count)
{
    for (; count >= 2; count -= 2, value /= 100) {
        end -= 2;
        std::memcpy(end, digitPairs[value % 100].data(), sizeof digitPairs[0]);
    }
    if (count)
        end[-1] = char16_t(u'0' + value % 10);
}

void appendParts(QString &text, bool negative, Parts parts, int decimals)
{
    const int integerDigits = digitCount(parts.integer);
    const qsizetype start = text.size();
    text.resize(start + negative + integerDigits + (decimals ? 1 + decimals : 0));
    auto *out = reinterpret_cast<char16_t *>(text.data()) + start;
    if (negative)
        *out++ = u'-';
    out += integerDigits;
    writeDigits(out, parts.integer, integerDigits);
    if (decimals) {
        *out++ = u'.';
        writeDigits(out + decimals, parts.fraction, decimals);
    }
}

void appendLarge(QString &text, double value, int decimals)
{
    std::array<char, 320 + MaximumDecimals> buffer; // 309 digits at most before the point
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed, decimals).ptr;
    text.append(QLatin1String(buffer.data(), end - buffer.data()));
}

} // namespace

void appendFixed(QString &text, double value, qint64 decimals)
{
    const int count = decimals < 0 ? DefaultDecimals : int(std::min<qint64>(decimals, MaximumDecimals));
    if (std::isnan(value))
        text.append(QLatin1String("nan"));
    else if (const auto parts = exactParts(std::fabs(value), count))
        appendParts(text, std::signbit(value), *parts, count);
    else
        appendLarge(text, value, count);
}

} // namespace dravelin::detail
