// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qglobal.h>

#include <algorithm>
#include <charconv>
#include <string_view>

namespace dravelin {

/// A line that is put together in a signal handler: a fixed size, no heap, no locale. What does not fit is left out.
class LineBuffer
{
public:
    LineBuffer &append(std::string_view text) noexcept
    {
        const std::size_t count = std::min(text.size(), sizeof m_text - m_length);
        std::copy_n(text.data(), count, m_text + m_length);
        m_length += count;
        return *this;
    }
    LineBuffer &appendNumber(quint64 value, int base = 10) noexcept
    {
        char digits[64];
        const auto result = std::to_chars(digits, digits + sizeof digits, value, base);
        return append(std::string_view(digits, std::size_t(result.ptr - digits)));
    }
    [[nodiscard]] std::string_view view() const noexcept { return {m_text, m_length}; }

private:
    char m_text[1000];
    std::size_t m_length = 0;
};

} // namespace dravelin
