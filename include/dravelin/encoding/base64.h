// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

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
/// \operation{decodeBase64ToData}
[[nodiscard]] DRAVELIN_EXPORT QByteArray decodeBase64ToData(const QString &text);

/// The decoded bytes as UTF-8 text.
/// \return absent text where decodeBase64ToData() fails or its bytes are not valid UTF-8
/// \operation{decodeBase64ToString}
[[nodiscard]] DRAVELIN_EXPORT QString decodeBase64ToString(const QString &text);

} // namespace dravelin
