// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QChar>

namespace dravelin::detail {

/// White space and line ends wherever text is trimmed or skipped: Unicode's spaces and separators, and the zero width
/// space.
[[nodiscard]] inline bool isWhiteSpace(QChar character) noexcept
{
    return character.isSpace() || character == QChar(0x200B);
}

} // namespace dravelin::detail
