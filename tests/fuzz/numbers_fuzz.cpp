// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

void printsAsTheCLibrary(double value, int decimals)
{
    char expected[1500];
    std::snprintf(expected, sizeof expected, "%.*f", decimals, value);
    if (value == value && dravelin::doubleToStr(value, decimals) != QLatin1String(expected))
        std::abort();
}

QString withoutLeadingSpace(const QString &text)
{
    qsizetype start = 0;
    while (start < text.size() && (text[start].isSpace() || text[start] == QChar(0x200B)))
        ++start;
    return text.sliced(start);
}

} // namespace

// Text of all kinds, and its bytes as a double.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString text = QString::fromUtf8(bytes);
    (void)dravelin::strToInt(text);
    (void)dravelin::strToBool(text);
    (void)dravelin::strToFloat(text);
    // The C function reads more than the decimal numbers, but what is one it reads alike.
    const double value = dravelin::strToDouble(text);
    if (value != 0 && value != std::strtod(withoutLeadingSpace(text).toUtf8(), nullptr))
        std::abort();
    printsAsTheCLibrary(value, int(size % 24));
    if (size >= sizeof(double)) {
        double raw;
        std::memcpy(&raw, data, sizeof raw);
        printsAsTheCLibrary(raw, data[size - 1] % 24);
    }
    return 0;
}
