// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <encoding/base64_kernels.h>
#include <platform/streamcopy.h>

#include <algorithm>

namespace dravelin::detail {

/// The vectorised pieces of Base64Decoder. Where they find little to take, as in text with white space all over, they
/// are asked less often.
template <typename Char>
class FastPieces
{
public:
    void takeGroups(Base64Cursor<Char> &at)
    {
        if (m_pause > 0) {
            --m_pause;
            takeFewGroups(at);
            return;
        }
        const Char *const start = at.in;
        decodeBase64Groups(at);
        if (at.in - start < worthwhile && at.in != at.end)
            m_pause = pause;
    }

    [[nodiscard]] bool isPaused() const { return m_pause > 0; }

    void takeLines(Base64Cursor<Char> &at, std::size_t length, std::size_t separatorLength) const
    {
        if (length >= worthwhile)
            decodeBase64Lines(at, length, separatorLength);
    }

private:
    static constexpr int worthwhile = 16, pause = 16;

    static void takeFewGroups(Base64Cursor<Char> &at)
    {
        for (int i = 0; i < worthwhile && at.end - at.in >= 4 && decodeBase64Group(at.in, at.out); ++i) {
            at.in += 4;
            at.out += 3;
        }
    }

    int m_pause = 0;
};

/// The same for large results: piece by piece through memory that stays in the cache.
template <typename Char>
class StreamedPieces
{
public:
    StreamedPieces() = default;
    ~StreamedPieces() { finishStreamCopies(); }
    Q_DISABLE_COPY_MOVE(StreamedPieces)

    void takeGroups(Base64Cursor<Char> &at)
    {
        if (m_pieces.isPaused())
            m_pieces.takeGroups(at);
        else
            takePieces(at, [this](Base64Cursor<Char> &piece) { m_pieces.takeGroups(piece); });
    }

    void takeLines(Base64Cursor<Char> &at, std::size_t length, std::size_t separatorLength)
    {
        if (!m_pieces.isPaused())
            takePieces(at, [&](Base64Cursor<Char> &piece) { m_pieces.takeLines(piece, length, separatorLength); });
    }

private:
    static constexpr std::ptrdiff_t pieceChars = 16384;

    /// Until one of them is left untouched.
    template <typename Take>
    void takePieces(Base64Cursor<Char> &at, Take take)
    {
        for (bool any = true; any && at.in != at.end;) {
            const Char *const end = at.in + std::min(pieceChars, at.end - at.in);
            Base64Cursor<Char> piece{at.in, end, m_bytes, at.isWholeText && end == at.end};
            take(piece);
            const auto size = piece.out - m_bytes;
            streamCopy(at.out, m_bytes, std::size_t(size));
            any = piece.in != at.in;
            at.in = piece.in;
            at.out += size;
        }
    }

    alignas(64) uchar m_bytes[pieceChars / 4 * 3];
    FastPieces<Char> m_pieces;
};

} // namespace dravelin::detail
