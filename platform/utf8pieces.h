// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArrayView>

#include <algorithm>

namespace dravelin::detail {

/// How many bytes at the end begin a character in UTF-8 that they do not complete, 0 to 3.
inline qsizetype cutCharacter(QByteArrayView bytes)
{
    for (qsizetype length = 1; length <= std::min<qsizetype>(3, bytes.size()); ++length) {
        const auto byte = uchar(bytes[bytes.size() - length]);
        if ((byte & 0xC0) == 0x80)
            continue;
        const int whole = byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
        return whole > length ? length : 0;
    }
    return 0;
}

} // namespace dravelin::detail
