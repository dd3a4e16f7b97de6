// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <encoding/base64_kernels.h>

#include <dravelin/encoding/base64.h>

#include <algorithm>

namespace dravelin::detail {

/// Decodes character by character. What can be taken faster is left to `Pieces`:
///
///     void takeGroups(Base64Cursor<Char> &);                                             whole groups of the alphabet
///     void takeLines(Base64Cursor<Char> &, std::size_t length, std::size_t separator);   lines like the one before
///
/// which may do nothing.
template <typename Char, typename Pieces>
class Base64Decoder
{
public:
    /// \param out room for three bytes per four characters, the last ones rounded up
    /// \param isLarge whether the bytes had better go past the caches
    Base64Decoder(const Char *text, std::size_t size, uchar *out, bool isLarge = false)
        : m_at{text, text + size, out, true, isLarge}, m_line(text)
    {}

    /// \return behind the last byte written, null on failure
    uchar *decode()
    {
        for (;;) {
            if (m_accepted == 0)
                m_pieces.takeGroups(m_at);
            if (m_at.in == m_at.end)
                return finish();
            if (m_accepted == 0 && valueOf(*m_at.in) == whiteSpace) {
                takeLineEnd();
                continue;
            }
            const Char c = *m_at.in++;
            if (c == 0)
                return isAscii() ? finish() : nullptr;
            if (!take(c))
                return nullptr;
        }
    }

private:
    static constexpr int whiteSpace = -1, invalid = -2;

    static int valueOf(Char c) { return c < 128 ? _base64DecodingTable[c] : invalid; }

    [[nodiscard]] bool isAscii() const
    {
        return std::all_of(m_at.in, m_at.end, [](Char c) { return c < 128; });
    }

    void takeLineEnd()
    {
        const Char *const end = m_at.in;
        while (m_at.in != m_at.end && valueOf(*m_at.in) == whiteSpace)
            ++m_at.in;
        m_pieces.takeLines(m_at, std::size_t(end - m_line), std::size_t(m_at.in - end));
        m_line = m_at.in;
    }

    bool take(Char c)
    {
        if (c == '=')
            return m_accepted != 1;
        const int value = valueOf(c);
        if (value < 0)
            return value == whiteSpace;
        m_bits = m_bits << 6 | quint32(value);
        if (++m_accepted == 4) {
            writeBytes(16, 3);
            m_accepted = 0;
            m_bits = 0;
        }
        return true;
    }

    void writeBytes(int shift, int count)
    {
        for (; count > 0; --count, shift -= 8)
            *m_at.out++ = uchar(m_bits >> shift);
    }

    /// The whole bytes of an incomplete last group.
    uchar *finish()
    {
        if (m_accepted == 3)
            writeBytes(10, 2);
        else if (m_accepted == 2)
            writeBytes(4, 1);
        return m_at.out;
    }

    Base64Cursor<Char> m_at;
    const Char *m_line; ///< where the current line starts
    Pieces m_pieces;
    quint32 m_bits = 0;
    int m_accepted = 0; ///< characters of the current group
};

} // namespace dravelin::detail
