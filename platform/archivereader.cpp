// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/archivereader.h"

#include "platform/archivedvalues.h"
#include "platform/codingregistry.h"

#include <dravelin/platform/log.h>

#include <QtCore/QScopeGuard>
#include <QtCore/QStringList>

#include <algorithm>

namespace dravelin::detail {

using namespace Qt::StringLiterals;
using propertylist::Uid;

namespace {

constexpr int MaximumDepth = 512; ///< beyond it, objects are filled later
constexpr int MaximumFaults = 10; ///< beyond it, faults of one archive are not logged

QString tooDeep() { return u"lists and maps nested deeper than %1 levels"_s.arg(propertylist::MaximumLevels); }

bool isUid(const QVariant &field) { return field.metaType() == QMetaType::fromType<Uid>(); }

bool isContainer(const QVariant &field)
{
    return field.typeId() == QMetaType::QVariantList || field.typeId() == QMetaType::QVariantMap;
}

} // namespace

ArchiveReader::ArchiveReader(KeyedUnarchiver &coder, const QByteArray &data) : m_coder(coder)
{
    const QString cause = load(data);
    m_valid = cause.isNull();
    if (!m_valid)
        failed(u"not an archive: "_s + cause);
}

/// \return why the data is no archive; absent when it is one
QString ArchiveReader::load(const QByteArray &data)
{
    QString error;
    const QVariant list = propertylist::readWithUids(data, &error);
    if (!list.isValid())
        return error;
    const QVariantMap archive = list.toMap();
    const QVariant version = archive.value(u"$version"_s);
    if (version.typeId() != QMetaType::LongLong || version.toLongLong() != 100000
        || archive.value(u"$archiver"_s).typeId() != QMetaType::QString)
        return u"no $archiver of $version 100000"_s;
    const QVariant objects = archive.value(u"$objects"_s), top = archive.value(u"$top"_s);
    if (objects.typeId() != QMetaType::QVariantList || top.typeId() != QMetaType::QVariantMap)
        return u"no $objects or no $top"_s;
    m_objects = objects.toList();
    m_record = top.toMap();
    m_states.resize(std::size_t(m_objects.size()));
    return {};
}

QVariant ArchiveReader::failed(const QString &cause)
{
    if (m_error.isNull())
        m_error = cause;
    if (++m_faults <= MaximumFaults)
        logWarning(u"KeyedUnarchiver: "_s + cause);
    if (m_faults == MaximumFaults)
        logWarning(u"KeyedUnarchiver: further faults of this archive are not logged"_s);
    return {};
}

QVariant ArchiveReader::field(const QString &key) const
{
    return m_record.value(key.startsWith(u'$') ? u'$' + key : key);
}

QVariant ArchiveReader::decode(const QString &key)
{
    QVariant result = resolved(field(key));
    if (m_depth == 0)
        fillPending();
    return result;
}

QVariant ArchiveReader::resolved(const QVariant &field)
{
    if (isUid(field))
        return entry(field.value<Uid>().index);
    return isContainer(field) ? failed(u"a list or map in place of a reference"_s) : field;
}

QVariant ArchiveReader::resolvedList(const QVariant &field)
{
    if (field.typeId() != QMetaType::QVariantList)
        return {};
    const QVariantList references = field.toList();
    const quint64 index = m_index;
    QVariantList result;
    for (const QVariant &reference : references) {
        // An object in the list may hold the same list, and then has read all of it.
        if (m_states[index].done)
            break;
        result.append(resolved(reference));
    }
    return result;
}

QVariant ArchiveReader::entry(quint64 index)
{
    if (index == 0)
        return {};
    if (index >= m_states.size())
        return failed(u"a reference to entry %1 of %2"_s.arg(index).arg(m_states.size()));
    if (m_states[index].done)
        return known(m_states[index]);
    const QVariant &stored = m_objects[qsizetype(index)];
    if (stored.typeId() == QMetaType::QVariantMap)
        return record(index, stored.toMap());
    if (isUid(stored) || isContainer(stored))
        return failed(u"entry %1 is no object"_s.arg(index));
    const bool isNothing = stored.typeId() == QMetaType::QString && stored.toString() == "$null"_L1;
    return isNothing ? QVariant() : stored;
}

/// A value that was read before; absent where it would reach too deep.
QVariant ArchiveReader::known(const State &state)
{
    if (m_levels + state.height > propertylist::MaximumLevels)
        return failed(tooDeep());
    m_height = std::max(m_height, state.height);
    return state.value;
}

/// The name of the record's class, and the names of those that may stand in.
QStringList ArchiveReader::classNames(const QVariantMap &fields) const
{
    const QVariant reference = fields.value(u"$class"_s);
    const quint64 index = isUid(reference) ? reference.value<Uid>().index : 0;
    if (index >= m_states.size())
        return {};
    const QVariantMap names = m_objects[qsizetype(index)].toMap();
    const QString name = names.value(u"$classname"_s).toString();
    return name.isEmpty() ? QStringList() : QStringList(name) + names.value(u"$classhints"_s).toStringList();
}

QVariant ArchiveReader::record(quint64 index, const QVariantMap &fields)
{
    const QStringList names = classNames(fields);
    for (const QString &name : names) {
        if (const ValueClass *valueClass = valueClassNamed(name))
            return value(index, fields, *valueClass);
        if (const auto create = codingClassCreator(name))
            return object(index, create());
    }
    m_states[index].done = true;
    return failed(names.isEmpty() ? u"entry %1 has no class"_s.arg(index)
                                  : u"entry %1 is of the unknown class \"%2\""_s.arg(index).arg(names.constFirst()));
}

QVariant ArchiveReader::value(quint64 index, const QVariantMap &fields, const ValueClass &valueClass)
{
    State &state = m_states[index];
    // With a new object on the way the list can be read once more: the object is known by now, and ends the circle.
    if (state.openedAt == m_made)
        return failed(u"entry %1 holds itself"_s.arg(index));
    if (m_levels + valueClass.height > propertylist::MaximumLevels)
        return failed(tooDeep());
    const auto leave = qScopeGuard([this, &state, opened = state.openedAt, outer = m_index, height = m_height] {
        --m_depth;
        --m_levels;
        m_height = std::max(height, state.height);
        state.openedAt = opened;
        m_index = outer;
    });
    ++m_depth;
    ++m_levels;
    state.openedAt = m_made;
    m_index = index;
    m_height = 0;
    QVariant result = valueClass.decode(*this, fields);
    if (state.done)
        return state.value;
    if (!result.isValid())
        failed(u"entry %1 is no %2"_s.arg(index).arg(QLatin1StringView(valueClass.name)));
    state.value = result;
    state.height = m_height + valueClass.height;
    state.done = true;
    return result;
}

QVariant ArchiveReader::object(quint64 index, const CodingPointer &object)
{
    ++m_made;
    m_states[index].done = true;
    m_states[index].value = QVariant::fromValue(object);
    if (m_depth < MaximumDepth)
        fill(index, object);
    else
        m_pending.emplace_back(index, object);
    return m_states[index].value;
}

void ArchiveReader::fill(quint64 index, const CodingPointer &object)
{
    const auto leave = qScopeGuard([this, record = m_record, levels = m_levels, height = m_height] {
        --m_depth;
        m_height = height;
        m_levels = levels;
        m_record = record;
    });
    ++m_depth;
    m_levels = 0;
    m_record = m_objects[qsizetype(index)].toMap();
    if (!object->initWithCoder(m_coder)) {
        failed(u"entry %1: %2 refuses its fields"_s.arg(index).arg(classNames(m_record).value(0)));
        m_states[index].value = {};
    }
}

void ArchiveReader::fillPending()
{
    while (!m_pending.empty()) {
        const auto [index, object] = m_pending.front();
        m_pending.pop_front();
        fill(index, object);
    }
}

} // namespace dravelin::detail
