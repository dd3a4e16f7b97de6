// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/archivereader.h"
#include "platform/archivewriter.h"

#include <QtCore/QMetaType>

#include <initializer_list>
#include <optional>

namespace dravelin::detail {

/// How archives hold the values of one type: as a record with a class name and fields.
struct ValueClass
{
    QMetaType type; ///< invalid when the class is only read
    const char *name;
    const char *standIn; ///< the class to read it as where `name` is not known; null when there is none
    /// The fields; nothing when this value cannot be archived.
    std::optional<QVariantMap> (*encode)(ArchiveWriter &writer, const QVariant &value);
    /// The value; invalid when the fields make none.
    QVariant (*decode)(ArchiveReader &reader, const QVariantMap &fields);
    int height = 0; ///< levels that it adds to those of the values it holds: 1 of lists and maps
};

/// The class for values of the type; null when there is none.
[[nodiscard]] const ValueClass *valueClassOf(QMetaType type);
/// The class of that name; null when there is none.
[[nodiscard]] const ValueClass *valueClassNamed(const QString &name);

/// The number that a field holds; nothing when it holds none.
[[nodiscard]] std::optional<double> realIn(const QVariant &field);
[[nodiscard]] std::optional<qint64> integerIn(const QVariant &field);

/// Points, sizes, rectangles, ranges and colours.
[[nodiscard]] const std::vector<ValueClass> &graphicsValueClasses();

} // namespace dravelin::detail
