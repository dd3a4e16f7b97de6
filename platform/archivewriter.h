// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/propertylist_p.h"

#include <dravelin/platform/coding.h>

#include <QtCore/QHash>
#include <QtCore/QVariant>

#include <utility>
#include <vector>

namespace dravelin {

class KeyedArchiver;

namespace detail {

struct ValueClass;

/// Builds an archive's table.
///
/// Values are written at once, below everything they hold. Objects get their place in the table at once, but their
/// fields are written one object after the other, so that long chains of objects take no stack.
class ArchiveWriter
{
public:
    using Uid = propertylist::Uid;

    explicit ArchiveWriter(KeyedArchiver &coder) : m_coder(coder) {}

    /// Sets a field of the object being written, or of the archive.
    void put(const QString &key, const QVariant &field);

    /// Sets a field to a reference to the value, and writes what is pending. \return the reference
    Uid encode(const QString &key, const QVariant &value);

    /// The place of a value in the table, where it is entered unless it is there; 0 when it cannot be.
    [[nodiscard]] Uid reference(const QVariant &value);
    /// The places of a list's items, as a field.
    [[nodiscard]] QVariantList references(const QVariantList &values);

    /// Whether the place that was kept for a value or an object has been filled.
    [[nodiscard]] bool isWritten(Uid uid) const;

    void finish() { m_finished = true; }
    [[nodiscard]] QByteArray data() const;
    [[nodiscard]] QString error() const { return m_error; }

private:
    Uid refused(const QString &cause);
    Uid append(const QVariant &entry);
    Uid leaf(const QVariant &value);
    Uid object(const CodingPointer &object);
    Uid value(const QVariant &value, const ValueClass &valueClass);
    Uid classRecord(const QString &name, const QString &standIn = {});
    void writePending();
    void write(const CodingPointer &object, Uid uid);

    KeyedArchiver &m_coder;
    QVariantMap m_top;
    QVariantList m_objects{QStringLiteral("$null")};
    QVariantMap *m_record = &m_top; ///< what put() writes to
    QString m_className;            ///< of the object being written
    QString m_key;                  ///< of the field being written
    QString m_error;
    int m_levels = 0; ///< values being written in each other
    int m_height = 0; ///< of the highest value written for the one being written
    bool m_finished = false;

    QHash<QString, Uid> m_classes;
    QHash<QString, Uid> m_texts;
    QHash<std::pair<int, QByteArray>, Uid> m_leaves; ///< other plain entries by type and bytes
    struct Shared
    {
        Uid uid;
        int height = 0; ///< the levels of lists and maps, 1 when it holds no others
    };
    QHash<std::pair<int, const void *>, Shared> m_shared; ///< lists and maps by type and where their data is
    QVariantList m_kept;                                  ///< those, so that the addresses stay theirs
    QHash<const Coding *, Uid> m_places;
    std::vector<std::pair<CodingPointer, Uid>> m_queue; ///< all objects, in the order of writing
    std::size_t m_written = 0;
};

} // namespace detail

} // namespace dravelin
