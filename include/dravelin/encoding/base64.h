// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>
#include <QtCore/QString>

#include <span>

/// \file
/// Base64 of the standard alphabet, padded and without line breaks when written; forgiving about white space and
/// padding, and about nothing else, when read. From any thread.
///
///     dravelin::encodeBase64WithData("A");                // "QQ=="
///     dravelin::decodeBase64ToData(u"Q Q"_s);             // "A"
///     dravelin::decodeBase64ToData(u"Q-"_s).isNull();     // true

namespace dravelin {

/// The 64 characters of the alphabet in the order of their values.
/// \operation{_base64EncodingTable}
DRAVELIN_EXPORT extern const char _base64EncodingTable[64];

/// For each character code its value from 0 to 63; -1 for the white space that is skipped; -2 for everything else,
/// vertical tab and the padding character included.
/// \operation{_base64DecodingTable}
DRAVELIN_EXPORT extern const qint16 _base64DecodingTable[256];

/// \return absent text for empty or absent bytes: nothing has no Base64 form
/// \cost one pass, at a good part of memory speed; so has every other function here
/// \operation{encodeBase64WithData}
[[nodiscard]] DRAVELIN_EXPORT QString encodeBase64WithData(const QByteArray &data);

/// Encodes the text's UTF-8 bytes.
/// \return absent text for empty or absent text, and for text that has no UTF-8 form
/// \operation{encodeBase64WithString}
[[nodiscard]] DRAVELIN_EXPORT QString encodeBase64WithString(const QString &text);

/// Skips tabs, line feeds, form feeds, carriage returns and spaces anywhere. Padding may be missing, too much, or in
/// the middle, but must not follow the first character of a group of four. A NUL ends the text. Bits left over at the
/// end, a single last character among them, are dropped.
/// \return empty bytes for empty text; absent bytes for absent text, for any other character outside the alphabet,
/// vertical tab included, for misplaced padding, and for a non-ASCII character anywhere, even behind a NUL
/// \cost at memory speed for text without line breaks or with lines of equal length (a multiple of four, and at least 16
/// to 64 characters, by processor); a tenth of that where white space is all over
/// \operation{decodeBase64ToData}
[[nodiscard]] DRAVELIN_EXPORT QByteArray decodeBase64ToData(const QString &text);

/// The decoded bytes as UTF-8 text.
/// \return absent text where decodeBase64ToData() fails or its bytes are not valid UTF-8
/// \operation{decodeBase64ToString}
[[nodiscard]] DRAVELIN_EXPORT QString decodeBase64ToString(const QString &text);

/// \name Text as bytes
/// The same rules for Base64 that was read from a file or goes into one: no detour by UTF-16.
/// @{

/// encodeBase64WithData() with bytes for text.
[[nodiscard]] DRAVELIN_EXPORT QByteArray encodeBase64ToBytes(QByteArrayView data);

/// decodeBase64ToData() with bytes for text; one beyond 127 fails as a character that is not ASCII.
[[nodiscard]] DRAVELIN_EXPORT QByteArray decodeBase64FromBytes(QByteArrayView text);

/// The characters that so many bytes are encoded to, padding included.
[[nodiscard]] constexpr qsizetype encodedBase64Size(qsizetype bytes) noexcept { return (bytes + 2) / 3 * 4; }

/// Room for the bytes that so many characters decode to, whichever they are: three per four, rounded up.
[[nodiscard]] constexpr qsizetype decodedBase64Capacity(qsizetype characters) noexcept
{
    return (characters + 3) / 4 * 3;
}

/// Encodes into the caller's memory, which must have room for encodedBase64Size().
/// \return the characters written, 0 for no bytes \throws Exception NSRangeException when there is less room
DRAVELIN_EXPORT qsizetype encodeBase64Into(std::span<char> text, QByteArrayView data);

/// Decodes into the caller's memory, which must have room for decodedBase64Capacity() and must not overlap the text. All
/// of it may be written over.
/// \return the bytes decoded, 0 for no text; -1 where decodeBase64ToData() fails
/// \throws Exception NSRangeException when there is less room
[[nodiscard]] DRAVELIN_EXPORT qsizetype decodeBase64Into(std::span<char> bytes, QByteArrayView text);
/// @}

} // namespace dravelin
