// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/encoding/base64.h>

#include <QtCore/QtGlobal>

#include <cstddef>

namespace dravelin::detail {

/// Text still to decode and where its bytes go. There is room for three bytes per four characters of the text, the last
/// ones rounded up; kernels may write scratch anywhere in it behind what they decoded.
template <typename Char>
struct Base64Cursor
{
    const Char *in;
    const Char *end;
    uchar *out;
    bool isWholeText = true; ///< whether the text ends at `end`, so that there may be padding before it
    bool isLarge = false;    ///< whether the bytes had better go past the caches
};

/// \return whether the four characters are of the alphabet; their bytes are then written
template <typename Char>
bool decodeBase64Group(const Char *text, uchar *out)
{
    if ((text[0] | text[1] | text[2] | text[3]) > 127)
        return false;
    const int a = _base64DecodingTable[text[0]], b = _base64DecodingTable[text[1]];
    const int c = _base64DecodingTable[text[2]], d = _base64DecodingTable[text[3]];
    if ((a | b | c | d) < 0)
        return false;
    const auto bits = quint32(a << 18 | b << 12 | c << 6 | d);
    out[0] = uchar(bits >> 16);
    out[1] = uchar(bits >> 8);
    out[2] = uchar(bits);
    return true;
}

/// \name Vectorised pieces of the codec, chosen for the processor at run time
/// Text is bytes or UTF-16.
/// @{

/// Encodes all bytes, padding included; `text` has room for exactly that.
void encodeBase64(const uchar *bytes, std::size_t size, uchar *text);
void encodeBase64(const uchar *bytes, std::size_t size, char16_t *text);

/// Whether decoding takes note of Base64Cursor::isLarge; finishStreamCopies() ends it.
[[nodiscard]] bool decodesBase64PastCaches();

/// Takes groups of four characters of the alphabet and stops before the first group that has anything else. At the end of
/// the whole text an incomplete group and padding may be taken too.
void decodeBase64Groups(Base64Cursor<uchar> &cursor);
void decodeBase64Groups(Base64Cursor<char16_t> &cursor);

/// Takes lines of `length` characters of the alphabet, each followed by the `separatorLength` characters that stand
/// before the cursor, and stops before the first line that is different.
void decodeBase64Lines(Base64Cursor<uchar> &cursor, std::size_t length, std::size_t separatorLength);
void decodeBase64Lines(Base64Cursor<char16_t> &cursor, std::size_t length, std::size_t separatorLength);
/// @}

} // namespace dravelin::detail
