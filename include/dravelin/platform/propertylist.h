// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace dravelin {

/// \file
/// XML property lists: values as a text file that other tools read and write too.
///
///     const QByteArray data = dravelin::propertyListData(QVariantMap{{"name", "Sketch"}, {"pages", 12}});
///     QString error;
///     const QVariant copy = dravelin::propertyListFromData(data, &error);
///     if (!copy.isValid())
///         qWarning() << error;                        // "line 3: ..."
///
/// | Stored                               | Element                | Comes back as                             |
/// |--------------------------------------|------------------------|-------------------------------------------|
/// | QString                              | `string`               | QString                                   |
/// | bool                                 | `true`, `false`        | bool                                      |
/// | integers of every width, enumerators | `integer`              | qlonglong, or qulonglong beyond its range |
/// | double, float                        | `real`, shortest exact | double                                    |
/// | QDateTime                            | `date`                 | QDateTime in UTC, to the millisecond      |
/// | QByteArray                           | `data`, Base64         | QByteArray                                |
/// | QVariantList, QStringList            | `array`                | QVariantList                              |
/// | QVariantMap, QVariantHash            | `dict`                 | QVariantMap                               |
///
/// Every value comes back equal, infinities, NaN and white space at the ends of texts included. Absent text and bytes
/// inside a list or map come back empty. Milliseconds are written only when there are some.
///
/// Text and keys that XML cannot carry (control characters, lone surrogates, U+FFFE and U+FFFF) are written as `$u:`
/// and the hexadecimal UTF-16 units, four small digits each, and so is text that itself begins with `$u:`. Other
/// readers see that form.
///
/// Lists and maps nest at most 256 levels deep.

/// The value in the types in which a property list gives it back.
/// \return invalid when a property list cannot hold it: an unsuitable type, an invalid date, an invalid or null value
/// in a list or map, too many levels; `error` then names the cause
[[nodiscard]] DRAVELIN_EXPORT QVariant propertyListValue(const QVariant &value, QString *error = nullptr);

/// The property list in UTF-8.
/// \return absent when a property list cannot hold the value, as for propertyListValue()
[[nodiscard]] DRAVELIN_EXPORT QByteArray propertyListData(const QVariant &value, QString *error = nullptr);

/// Reads an XML property list. Document types are ignored, those that declare entities are refused; a key that occurs
/// twice keeps its last value.
/// \return invalid when `data` is none; `error` then holds one line with line number and cause
[[nodiscard]] DRAVELIN_EXPORT QVariant propertyListFromData(const QByteArray &data, QString *error = nullptr);

} // namespace dravelin
