// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <values/scanfloat.h>

#include <QtCore/QVarLengthArray>

#include <charconv>
#include <string_view>

#include <locale.h>
#include <stdlib.h>

namespace dravelin::detail {

namespace {

locale_t classicLocale()
{
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c; }
bool isHexDigit(char c) { return isDigit(c) || (lower(c) >= 'a' && lower(c) <= 'f'); }

// At the end stands a 0 byte, which no test below takes for part of a number.
bool takeWord(const char *&p, std::string_view word)
{
    for (const char c : word) {
        if (lower(*p) != c)
            return false;
        ++p;
    }
    return true;
}

/// "inf" or "infinity" or "nan"; once "infi" is there all of "infinity" must be.
bool takeName(const char *&p)
{
    if (lower(*p) == 'n')
        return takeWord(p, "nan");
    return takeWord(p, "inf") && (lower(*p) != 'i' || takeWord(p, "inity"));
}

/// Digits, one point and one exponent. A point alone, and an exponent without digits, are taken too.
bool takeDigits(const char *&p)
{
    const bool hexadecimal = *p == '0' && lower(p[1]) == 'x';
    if (hexadecimal)
        p += 2;
    const char *const start = p;
    const char exponentMark = hexadecimal ? 'p' : 'e';
    bool digits = false, point = false, exponent = false;
    for (;; ++p) {
        if (isDigit(*p) || (hexadecimal && !exponent && isHexDigit(*p)))
            digits = true;
        else if (exponent && lower(p[-1]) == exponentMark && (*p == '-' || *p == '+'))
            continue;
        else if (digits && !exponent && lower(*p) == exponentMark)
            exponent = point = true;
        else if (*p == '.' && !point)
            point = true;
        else
            return p != start;
    }
}

bool scanAny(const char *&p, float &value)
{
    const char *const start = p;
    if (*p == '-' || *p == '+')
        ++p;
    const bool named = lower(*p) == 'n' || lower(*p) == 'i';
    if (!(named ? takeName(p) : takeDigits(p)))
        return false;
    // A copy, because what follows in the text must not lengthen the number: "nan" before "(7)", for instance.
    QVarLengthArray<char, 64> taken(p - start + 1, '\0');
    std::copy(start, p, taken.begin());
    char *stop = nullptr;
    const float number = strtof_l(taken.data(), &stop, classicLocale());
    if (stop == taken.data())
        return false;
    value = number;
    return true;
}

/// The usual case: a plain decimal number that nothing odd follows.
bool scanPlain(const char *&p, const char *end, float &value)
{
    const char first = *p == '-' ? p[1] : *p;
    if (!isDigit(first) && first != '.')
        return false;
    float number;
    const auto [stop, error] = std::from_chars(p, end, number);
    const char next = lower(*stop);
    if (error != std::errc() || next == 'e' || next == 'x')
        return false;
    p = stop;
    value = number;
    return true;
}

} // namespace

float toFloat(const char *first, const char *last)
{
    float value = 0;
    const bool beyond = std::from_chars(first, last, value).ec == std::errc::result_out_of_range;
    return beyond ? strtof_l(first, nullptr, classicLocale()) : value;
}

double toDouble(const char *first, const char *last)
{
    double value = 0;
    const bool beyond = std::from_chars(first, last, value).ec == std::errc::result_out_of_range;
    return beyond ? strtod_l(first, nullptr, classicLocale()) : value;
}

bool scanFloat(const char *&position, const char *end, float &value)
{
    while (isSpace(*position))
        ++position;
    return scanPlain(position, end, value) || scanAny(position, value);
}

} // namespace dravelin::detail
