// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QStringView>

#include <cstring>

namespace dravelin::detail {

/// Whether the text has no lone surrogate, and so a form in UTF-8. Looks at four characters at once, for most text has no
/// surrogates at all; QString::isValidUtf16() goes one by one.
inline bool hasUtf8Form(QStringView text)
{
    constexpr quint64 ones = 0x0001'0001'0001'0001, upper = ones << 15;
    quint64 found = 0;
    const qsizetype whole = text.size() & ~qsizetype(3);
    for (qsizetype i = 0; i < whole; i += 4) {
        quint64 units;
        std::memcpy(&units, text.utf16() + i, sizeof units);
        const quint64 others = (units & ones * 0xF800) ^ ones * 0xD800; // 0 for a surrogate
        found |= (others - ones) & ~others & upper;
    }
    return (found == 0 && text.sliced(whole).isValidUtf16()) || text.isValidUtf16();
}

} // namespace dravelin::detail
