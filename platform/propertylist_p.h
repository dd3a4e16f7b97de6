// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVariant>

/// The pieces of a property list, for the user-defaults store, which keeps each entry's bytes.
namespace dravelin::propertylist {

inline constexpr int MaximumLevels = 256;
inline constexpr char16_t EscapePrefix[] = u"$u:";
inline constexpr char Header[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n";
inline constexpr char Footer[] = "</plist>\n";

/// A reference to an entry of an archive's table. Written as a dictionary with the one key "CF$UID".
struct Uid
{
    quint64 index = 0;
};

/// As propertyListFromData(), but with a Uid in place of each dictionary that is one.
[[nodiscard]] QVariant readWithUids(const QByteArray &data, QString *error);

/// The value in the types that a reader gives; invalid with `error` set when it cannot be stored.
/// \param level how many lists and maps it may hold inside each other
[[nodiscard]] QVariant canonical(const QVariant &value, int levels, QString *error);

/// Appends the lines of a value that canonical() gave, or that readWithUids() did, indented by `indent` tabs.
void appendValue(QByteArray &out, const QVariant &value, int indent);

/// Appends the lines of one entry of a dictionary.
void appendEntry(QByteArray &out, const QString &key, const QVariant &value, int indent);

} // namespace dravelin::propertylist

Q_DECLARE_METATYPE(dravelin::propertylist::Uid)
