// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/color.h>
#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <QtCore/QUrl>

#include <limits>

/// \file
/// Text forms of everyday values and back: numbers, truth values, bytes, colours, dates, bookmarks. The text is the
/// same in every locale. Nothing here logs or keeps state; unless said otherwise nothing throws, and bad input shows in
/// the result. From any thread.
///
///     dravelin::doubleToStr(2.5, 0);                              // "2": ties go to the even digit
///     dravelin::strToDouble(u" 1.5e3 apples"_s);                  // 1500
///     dravelin::colorToString(Qt::red);                           // "1.000 0.000 0.000 1.000"
///     qint64 month, day, year;
///     dravelin::getCurrentDate(month, day, year);

namespace dravelin {

/// \name Text to numbers
/// White space at the start is skipped and whatever follows the number is ignored. Text without a number at its start,
/// and absent text, give 0 or false.
/// @{

/// An optional sign and decimal digits. Beyond 32 bits the result is 2147483647 or -2147483648, so it always fits an
/// int.
/// \operation{strToInt}
[[nodiscard]] DRAVELIN_EXPORT qint64 strToInt(const QString &text);

/// True when `Y`, `y`, `T`, `t` or a digit from 1 to 9 follows an optional sign and any number of zeros: "YES", "true",
/// "+0007".
/// \operation{strToBool}
[[nodiscard]] DRAVELIN_EXPORT bool strToBool(const QString &text);

/// An optional sign, digits with an optional decimal point (never a comma), an optional exponent; rounded once, straight
/// to a float. Too large gives an infinity, too small 0. No infinities, no hexadecimal numbers.
/// \operation{strToFloat}
[[nodiscard]] DRAVELIN_EXPORT float strToFloat(const QString &text);

/// As strToFloat(), in double precision.
/// \operation{strToDouble}
[[nodiscard]] DRAVELIN_EXPORT double strToDouble(const QString &text);
/// @}

/// \name Numbers to text
/// @{

/// The low 32 bits as a signed decimal; the upper ones are dropped: 4294967297 gives "1".
/// \operation{intToStr}
[[nodiscard]] DRAVELIN_EXPORT QString intToStr(qint64 value);

/// "YES" for anything but 0, else "NO".
/// \operation{boolToStr}
[[nodiscard]] DRAVELIN_EXPORT QString boolToStr(int value);

/// As doubleToStr() of the float's exact value: 0.1f with 9 decimals is "0.100000001".
/// \operation{floatToStr}
[[nodiscard]] DRAVELIN_EXPORT QString floatToStr(float value, qint64 decimals);

/// Fixed-point text of the exact binary value, rounded to nearest, ties to even; no point when there are no decimals.
/// Infinities are "inf" and "-inf", everything that is not a number is "nan".
/// \param decimals a negative count means 6; more than 1074, all that a double can have, are cut to 1074
/// \cost a few dozen nanoseconds up to 19 decimals below 2^63
/// \operation{doubleToStr}
[[nodiscard]] DRAVELIN_EXPORT QString doubleToStr(double value, qint64 decimals);
/// @}

/// \name Arithmetic
/// @{

/// Computed in double precision, then rounded to float.
/// \operation{degreesToRadians}
[[nodiscard]] DRAVELIN_EXPORT float degreesToRadians(float degrees) noexcept;

/// Computed in double precision, then rounded to float.
/// \operation{radiansToDegrees}
[[nodiscard]] DRAVELIN_EXPORT float radiansToDegrees(float radians) noexcept;

/// A uniformly random integer, both bounds included. The count of integers between the bounds is taken in 32 bits: when
/// it is 0 there, with `highest` one below `lowest` or with all 2^32 integers, the result is `lowest`.
/// \operation{randomValueBetween}
[[nodiscard]] DRAVELIN_EXPORT qint32 randomValueBetween(qint32 lowest, qint32 highest);
/// @}

/// \name Text and bytes
/// @{

/// The text in UTF-8, without terminator or byte-order mark.
/// \return absent bytes for absent text and for text that has no UTF-8 form (half of a surrogate pair)
/// \operation{strToData}
[[nodiscard]] DRAVELIN_EXPORT QByteArray strToData(const QString &text);

/// The text that the bytes are in UTF-8; a byte-order mark stays, as the character U+FEFF.
/// \return absent text for absent bytes and for bytes that are not valid UTF-8
/// \operation{dataToStr}
[[nodiscard]] DRAVELIN_EXPORT QString dataToStr(const QByteArray &data);

/// A copy.
/// \throws Exception NSInvalidArgumentException for absent text
/// \operation{mstrToStr}
[[nodiscard]] DRAVELIN_EXPORT QString mstrToStr(const QString &text);

/// A copy to be changed.
/// \throws Exception NSInvalidArgumentException for absent text
/// \operation{strToMstr}
[[nodiscard]] DRAVELIN_EXPORT QString strToMstr(const QString &text);
/// @}

/// \name Colours
/// Written from the calibrated RGB space and read back into sRGB: a colour keeps its numbers on the way there and back,
/// but not its space.
/// @{

/// Red, green, blue and alpha with three decimals each: "0.500 0.000 0.000 1.000". A colour without RGB form, such as a
/// pattern, and no colour give four zeros.
/// \operation{colorToString}
[[nodiscard]] DRAVELIN_EXPORT QString colorToString(const Color &color);

/// Up to four numbers, as the C library's `sscanf` reads them with "%f %f %f %f", into an sRGB colour, not clamped.
/// Components from the first unreadable number on are 0.
/// \operation{stringToColor}
[[nodiscard]] DRAVELIN_EXPORT Color stringToColor(const QString &text);

/// Opaque sRGB of components in 255ths, divided in single precision; not clamped.
/// \operation{rgbColor}
[[nodiscard]] DRAVELIN_EXPORT Color rgbColor(qint32 red, qint32 green, qint32 blue);

/// sRGB of components in 255ths, alpha too, divided in single precision; not clamped.
/// \operation{rgbaColor}
[[nodiscard]] DRAVELIN_EXPORT Color rgbaColor(qint32 red, qint32 green, qint32 blue, qint32 alpha);
/// @}

/// \name Bookmarks
/// By the BookmarkService in use. Not for access grants; those need a SecurityScopedBookmark.
/// @{

/// Where the bookmark's item is now; an empty URL when the data is no bookmark or the item is not found.
/// \operation{bookmarkToUrl}
[[nodiscard]] DRAVELIN_EXPORT QUrl bookmarkToUrl(const QByteArray &bookmark);

/// \return absent bytes when nothing is there or the URL is no local file
/// \operation{urlToBookmark}
[[nodiscard]] DRAVELIN_EXPORT QByteArray urlToBookmark(const QUrl &url);
/// @}

/// \name Dates
/// In the user's time zone; by the Gregorian calendar, before 15 October 1582 the Julian one.
/// @{

/// What a date's field reads when it has no value.
inline constexpr qint64 NSDateComponentUndefined = std::numeric_limits<qint64>::max();

/// Month from 1 to 12, day of the month from 1, and the year of its era (44 for 44 BC). An invalid date writes
/// NSDateComponentUndefined three times.
/// \operation{convertDateToMDY}
DRAVELIN_EXPORT void convertDateToMDY(const QDateTime &date, qint64 &month, qint64 &day, qint64 &year);

/// Writes NSDateComponentUndefined three times, whatever the date: callers receive no hour, minute or second from here.
/// Kept for programs that rely on it; use QDateTime::time().
/// \operation{convertDateToHMS}
DRAVELIN_EXPORT void convertDateToHMS(const QDateTime &date, qint64 &hour, qint64 &minute, qint64 &second);

/// convertDateToMDY() of now.
/// \operation{getCurrentDate}
DRAVELIN_EXPORT void getCurrentDate(qint64 &month, qint64 &day, qint64 &year);

/// convertDateToHMS() of now, and so three times NSDateComponentUndefined.
/// \operation{getCurrentTime}
DRAVELIN_EXPORT void getCurrentTime(qint64 &hour, qint64 &minute, qint64 &second);
/// @}

} // namespace dravelin
