// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVariant>

/// \file
/// Single settings by key, in the standard user-defaults store.
///
///     dravelin::setBOOLDefault("seenTour", true);
///     dravelin::savePreferences();
///     if (!dravelin::getBOOLdefault("seenTour", false))
///         showTour();
///
/// Typed values are stored as text; a stored number is read as one too. Text is parsed from its start: white space is
/// skipped, what follows the number is ignored, no number is 0 or false. The default given to a typed getter goes
/// through the text form like a stored value. Setters change the store in memory; savePreferences() writes it to disk,
/// and so does the event loop shortly after. From one thread, as UserDefaults.

namespace dravelin {

/// Whether any domain of the store has a value.
/// \operation{hasUserDefault}
[[nodiscard]] DRAVELIN_EXPORT bool hasUserDefault(const QString &key);

/// The stored value, or the empty text.
/// \operation{getUserDefault}
[[nodiscard]] DRAVELIN_EXPORT QVariant getUserDefault(const QString &key);

/// The stored value, or `defaultValue`, which is not stored.
/// \operation{getUserDefaultWithDefault}
[[nodiscard]] DRAVELIN_EXPORT QVariant getUserDefaultWithDefault(const QString &key, const QVariant &defaultValue);

/// Stores any value that UserDefaults takes; an absent one removes the entry.
/// \operation{setUserDefault}
DRAVELIN_EXPORT void setUserDefault(const QString &key, const QVariant &value);

/// Writes pending changes to disk.
/// \return false when that failed; the log says why
/// \operation{savePreferences}
DRAVELIN_EXPORT bool savePreferences();

/// Removes every entry of the application's own domain; values of other domains stay visible. Not written to disk at
/// once.
/// \operation{removeAllPreferences}
DRAVELIN_EXPORT void removeAllPreferences();

/// True for texts such as "YES", "true" and "1". The name is spelled as it is.
/// \operation{getBOOLdefault}
[[nodiscard]] DRAVELIN_EXPORT bool getBOOLdefault(const QString &key, bool defaultValue);

/// Stores "YES" or "NO".
/// \operation{setBOOLDefault}
DRAVELIN_EXPORT void setBOOLDefault(const QString &key, bool value);

/// 32 bits: a larger number reads as the nearest limit, a larger default loses its upper bits.
/// \operation{getIntegerDefault}
[[nodiscard]] DRAVELIN_EXPORT qint64 getIntegerDefault(const QString &key, qint64 defaultValue);

/// Stores the low 32 bits as a signed decimal.
/// \operation{setIntegerDefault}
DRAVELIN_EXPORT void setIntegerDefault(const QString &key, qint64 value);

/// The default is rounded to 7 decimals.
/// \operation{getFloatDefault}
[[nodiscard]] DRAVELIN_EXPORT float getFloatDefault(const QString &key, float defaultValue);

/// Stores 7 decimals. (A preference item stores 8; each reads the other's.)
/// \operation{setFloatDefault}
DRAVELIN_EXPORT void setFloatDefault(const QString &key, float value);

/// The stored value as it is, or the default.
/// \operation{getStringDefault}
[[nodiscard]] DRAVELIN_EXPORT QVariant getStringDefault(const QString &key, const QString &defaultValue);

/// \operation{setStringDefault}
DRAVELIN_EXPORT void setStringDefault(const QString &key, const QString &value);

/// The stored text in UTF-8. Absent bytes when there is none and the default is not UTF-8, or, with a line in the log,
/// when the stored value is not text.
/// \operation{getDataDefault}
[[nodiscard]] DRAVELIN_EXPORT QByteArray getDataDefault(const QString &key, const QByteArray &defaultValue);

/// Stores the text that the bytes are in UTF-8; bytes that are none remove the entry.
/// \operation{setDataDefault}
DRAVELIN_EXPORT void setDataDefault(const QString &key, const QByteArray &value);

} // namespace dravelin
