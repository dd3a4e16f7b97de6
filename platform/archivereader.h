// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/propertylist_p.h"

#include <dravelin/platform/coding.h>

#include <QtCore/QVariant>

#include <deque>
#include <utility>
#include <vector>

namespace dravelin {

class KeyedUnarchiver;

namespace detail {

struct ValueClass;

/// Makes values and objects of an archive's table, each once.
class ArchiveReader
{
public:
    ArchiveReader(KeyedUnarchiver &coder, const QByteArray &data);

    [[nodiscard]] bool isValid() const { return m_valid; }
    [[nodiscard]] QString error() const { return m_error; }
    /// Forgets the fields of the archive.
    void finish() { m_record.clear(); }

    /// A field of the object being filled, or of the archive, as it is stored; invalid when there is none.
    [[nodiscard]] QVariant field(const QString &key) const;

    /// The value of such a field. Outside all objects also fills those that are pending.
    [[nodiscard]] QVariant decode(const QString &key);

    /// The value that a stored field refers to, or is.
    [[nodiscard]] QVariant resolved(const QVariant &field);
    /// The values that a stored list refers to; invalid when the field is no list.
    [[nodiscard]] QVariant resolvedList(const QVariant &field);

    /// Logs a fault of the archive. \return an absent value
    QVariant failed(const QString &cause);

private:
    struct State
    {
        QVariant value;
        bool done = false;
        int height = 0;       ///< of a list or map: the levels it has, 1 when it holds no others
        qint64 openedAt = -1; ///< while a list or map is being read: how many objects had been made then
    };

    QString load(const QByteArray &data);
    QVariant entry(quint64 index);
    QVariant known(const State &state);
    QVariant record(quint64 index, const QVariantMap &fields);
    QVariant value(quint64 index, const QVariantMap &fields, const ValueClass &valueClass);
    QVariant object(quint64 index, const CodingPointer &object);
    QStringList classNames(const QVariantMap &fields) const;
    void fill(quint64 index, const CodingPointer &object);
    void fillPending();

    KeyedUnarchiver &m_coder;
    QVariantList m_objects;
    QVariantMap m_record; ///< what field() reads
    std::vector<State> m_states;
    std::deque<std::pair<quint64, CodingPointer>> m_pending; ///< made, but not filled yet
    quint64 m_index = 0;                                     ///< of the value being read
    qint64 m_made = 0;                                       ///< objects so far
    int m_depth = 0;                                         ///< values and objects being read
    int m_levels = 0;                                        ///< values being read since the last object
    int m_height = 0;                                        ///< of the highest value read for the one being read
    int m_faults = 0;
    bool m_valid = false;
    QString m_error;
};

} // namespace detail

} // namespace dravelin
