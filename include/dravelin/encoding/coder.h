// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/color.h>
#include <dravelin/platform/export.h>
#include <dravelin/platform/keyedarchiver.h>
#include <dravelin/platform/keyedunarchiver.h>
#include <dravelin/platform/range.h>

#include <QtCore/QString>

#include <memory>
#include <type_traits>

/// \file
/// Further kinds of fields for archives.
///
///     void Note::encodeWithCoder(dravelin::KeyedArchiver &coder) const
///     {
///         dravelin::encodeString(coder, m_title, "title");
///         dravelin::encodeEnum(coder, m_kind, "kind");
///         dravelin::encodeColor(coder, m_paper, "paper");
///     }
///     bool Note::initWithCoder(dravelin::KeyedUnarchiver &coder)
///     {
///         m_title = dravelin::decodeStringForKey(coder, "title");
///         m_kind = dravelin::decodeEnumForKey<Kind>(coder, "kind");
///         m_paper = dravelin::decodeColorForKey(coder, "paper");
///         return true;
///     }
///
/// What is missing in the archive, or of another kind, is read as absent text, 0, the range {0, 0} and the sRGB colour of
/// four zeros, which is transparent.

namespace dravelin {

inline namespace Utilities {

/// The text as an object; absent text stays absent.
/// \operation{encodeString:forKey:}
DRAVELIN_EXPORT void encodeString(KeyedArchiver &coder, const QString &text, const QString &forKey);

/// \return absent text when there is none
/// \operation{decodeStringForKey:}
[[nodiscard]] DRAVELIN_EXPORT QString decodeStringForKey(KeyedUnarchiver &coder, const QString &key);

/// The value as a 64-bit integer. Enumerators keep their numbers, so these must not change between versions.
/// \operation{encodeEnum:forKey:}
template <class Enum>
requires std::is_enum_v<Enum> || std::is_integral_v<Enum>
void encodeEnum(KeyedArchiver &coder, Enum value, const QString &forKey) { coder.encodeInteger(qint64(value), forKey); }

/// \return 0 when there is none. Whether the number is one of the enumerators is for the caller to check.
/// \operation{decodeEnumForKey:}
template <class Enum = qint64>
requires std::is_enum_v<Enum> || std::is_integral_v<Enum>
[[nodiscard]] Enum decodeEnumForKey(KeyedUnarchiver &coder, const QString &key)
{
    return static_cast<Enum>(coder.decodeIntegerForKey(key));
}

/// The range as the text "{location, length}".
/// \operation{encodeRange:forKey:}
DRAVELIN_EXPORT void encodeRange(KeyedArchiver &coder, Range range, const QString &forKey);

/// As NSRangeFromString() reads the text.
/// \operation{decodeRangeForKey:}
[[nodiscard]] DRAVELIN_EXPORT Range decodeRangeForKey(KeyedUnarchiver &coder, const QString &key);

/// The colour as the text of colorToString(): calibrated RGB and alpha with three decimals, "0.500 0.000 0.000 1.000".
/// To keep a colour exactly and in its space, use `coder.encodeObject(QVariant::fromValue(color), key)`.
/// \operation{encodeColor:forKey:}
DRAVELIN_EXPORT void encodeColor(KeyedArchiver &coder, const Color &color, const QString &forKey);

/// As stringToColor() reads the text: an sRGB colour of single-precision numbers, missing ones 0.
/// \operation{decodeColorForKey:}
[[nodiscard]] DRAVELIN_EXPORT Color decodeColorForKey(KeyedUnarchiver &coder, const QString &key);

/// A new archiver, of XML property lists.
/// \operation{createKeyedArchiver}
[[nodiscard]] DRAVELIN_EXPORT std::unique_ptr<KeyedArchiver> createKeyedArchiver();

/// An unarchiver of the text's UTF-8.
/// \return null when the text is no archive
/// \operation{createKeyedUnarchiver:}
[[nodiscard]] DRAVELIN_EXPORT std::unique_ptr<KeyedUnarchiver> createKeyedUnarchiver(const QString &text);

} // namespace Utilities

} // namespace dravelin
