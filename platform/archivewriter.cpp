// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/archivewriter.h"

#include "platform/archivedvalues.h"
#include "platform/codingregistry.h"

#include <dravelin/platform/log.h>

#include <QtCore/QScopeGuard>
#include <QtCore/QStringList>

#include <cxxabi.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <utility>

namespace dravelin::detail {

using namespace Qt::StringLiterals;

namespace {

QVariant field(propertylist::Uid uid) { return QVariant::fromValue(uid); }

/// Keys of the archive's own begin with a single "$".
QString escaped(const QString &key) { return key.startsWith(u'$') ? u'$' + key : key; }

/// Where the data of a list or map is that copies share; null for values without such.
const void *sharedData(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QVariantList: {
        const auto &list = *static_cast<const QVariantList *>(value.constData());
        return list.isEmpty() ? nullptr : list.constData();
    }
    case QMetaType::QVariantMap: {
        const auto &map = *static_cast<const QVariantMap *>(value.constData());
        return map.isEmpty() ? nullptr : &map.constBegin().key();
    }
    case QMetaType::QVariantHash: {
        const auto &hash = *static_cast<const QVariantHash *>(value.constData());
        return hash.isEmpty() ? nullptr : &hash.constBegin().key();
    }
    default:
        return nullptr;
    }
}

/// The bytes that tell a plain entry from others of its type; of doubles these tell -0.0 from 0.0.
QByteArray bytesOf(const QVariant &entry)
{
    if (entry.typeId() == QMetaType::QByteArray)
        return entry.toByteArray();
    return {static_cast<const char *>(entry.constData()), entry.metaType().sizeOf()};
}

bool isObject(const QVariant &value)
{
    return value.metaType() == QMetaType::fromType<CodingPointer>()
           || QMetaType::hasRegisteredConverterFunction(value.metaType(), QMetaType::fromType<CodingPointer>());
}

/// The name of a class as the source has it.
QString nameOf(const std::type_info &type)
{
    const std::unique_ptr<char, void (*)(void *)> name(abi::__cxa_demangle(type.name(), nullptr, nullptr, nullptr),
                                                       std::free);
    return QString::fromLatin1(name ? name.get() : type.name());
}

} // namespace

ArchiveWriter::Uid ArchiveWriter::refused(const QString &what)
{
    const QString cause =
        what + u" cannot be archived"_s + (m_key.isNull() ? m_key : u" under the key \"%1\""_s.arg(m_key));
    logWarning(u"KeyedArchiver: "_s + cause);
    if (m_error.isNull())
        m_error = cause;
    return {};
}

void ArchiveWriter::put(const QString &key, const QVariant &value)
{
    const QString where = m_record == &m_top ? u"the archive"_s : m_className;
    if (m_finished)
        return logWarning(u"KeyedArchiver: key \"%1\" of %2 comes after the end of encoding"_s.arg(key, where));
    const QString name = escaped(key);
    if (m_record->contains(name))
        logWarning(u"KeyedArchiver: key \"%1\" of %2 is used twice, the last value counts"_s.arg(key, where));
    m_record->insert(name, value);
}

ArchiveWriter::Uid ArchiveWriter::encode(const QString &key, const QVariant &value)
{
    m_key = key;
    const Uid uid = m_finished ? Uid() : reference(value);
    put(key, field(uid));
    if (m_record == &m_top)
        writePending();
    return uid;
}

bool ArchiveWriter::isWritten(Uid uid) const
{
    return m_objects[qsizetype(uid.index)].typeId() != QMetaType::QString
           || m_objects[qsizetype(uid.index)] != m_objects.constFirst();
}

ArchiveWriter::Uid ArchiveWriter::append(const QVariant &entry)
{
    m_objects.append(entry);
    return {quint64(m_objects.size()) - 1};
}

ArchiveWriter::Uid ArchiveWriter::reference(const QVariant &value)
{
    if (!value.isValid())
        return {};
    if (isObject(value))
        return object(value.value<CodingPointer>());
    if (const ValueClass *valueClass = valueClassOf(value.metaType()))
        return this->value(value, *valueClass);
    return leaf(value);
}

QVariantList ArchiveWriter::references(const QVariantList &values)
{
    QVariantList result;
    result.reserve(values.size());
    for (const QVariant &item : values)
        result.append(field(reference(item)));
    return result;
}

ArchiveWriter::Uid ArchiveWriter::leaf(const QVariant &value)
{
    const bool isText = value.typeId() == QMetaType::QString;
    if ((isText && value.toString().isNull())
        || (value.typeId() == QMetaType::QByteArray && value.toByteArray().isNull()))
        return {};
    QString cause;
    const QVariant entry = propertylist::canonical(value, 0, &cause);
    if (!entry.isValid())
        return refused(cause);
    Uid &known = isText ? m_texts[entry.toString()] : m_leaves[{entry.typeId(), bytesOf(entry)}];
    if (known.index == 0)
        known = entry == m_objects.constFirst() && isText
                    // As a plain entry, this text would read as nothing.
                    ? append(QVariantMap{{u"$class"_s, field(classRecord(u"NSString"_s))}, {u"NS.string"_s, entry}})
                    : append(entry);
    return known;
}

ArchiveWriter::Uid ArchiveWriter::value(const QVariant &value, const ValueClass &valueClass)
{
    const std::pair identity(value.typeId(), sharedData(value));
    const Shared known = m_shared.value(identity);
    if (m_levels + std::max(known.height, valueClass.height) > propertylist::MaximumLevels)
        return refused(u"lists and maps nested deeper than %1 levels"_s.arg(propertylist::MaximumLevels));
    if (known.height > 0) {
        m_height = std::max(m_height, known.height);
        return known.uid;
    }
    const int outer = std::exchange(m_height, 0);
    ++m_levels;
    std::optional<QVariantMap> fields = valueClass.encode(*this, value);
    --m_levels;
    const int height = m_height + valueClass.height;
    m_height = std::max(outer, height);
    if (!fields)
        return refused(u"this value of type "_s + QLatin1StringView(valueClass.name));
    fields->insert(u"$class"_s,
                   field(classRecord(QLatin1StringView(valueClass.name), QLatin1StringView(valueClass.standIn))));
    const Uid uid = append(*fields);
    if (identity.second) {
        m_shared.insert(identity, {uid, height});
        m_kept.append(value);
    }
    return uid;
}

ArchiveWriter::Uid ArchiveWriter::object(const CodingPointer &object)
{
    if (!object)
        return {};
    Uid &place = m_places[object.get()];
    if (place.index == 0) {
        place = append(m_objects.constFirst());
        m_queue.emplace_back(object, place);
    }
    return place;
}

ArchiveWriter::Uid ArchiveWriter::classRecord(const QString &name, const QString &standIn)
{
    if (const Uid known = m_classes.value(name); known.index != 0)
        return known;
    QVariantMap fields{{u"$classname"_s, name}, {u"$classes"_s, QVariantList{name, u"NSObject"_s}}};
    if (!standIn.isEmpty()) {
        fields[u"$classes"_s] = QVariantList{name, standIn, u"NSObject"_s};
        fields[u"$classhints"_s] = QVariantList{standIn};
    }
    return m_classes[name] = append(fields);
}

void ArchiveWriter::writePending()
{
    while (m_written < m_queue.size()) {
        const auto [object, uid] = m_queue[m_written++]; // a copy, since the queue grows meanwhile
        write(object, uid);
    }
}

void ArchiveWriter::write(const CodingPointer &object, Uid uid)
{
    const Coding &content = *object;
    m_key = {};
    m_className = codingClassName(typeid(content));
    if (m_className.isNull()) {
        refused(u"an object of the unregistered class "_s + nameOf(typeid(content)));
        return;
    }
    QVariantMap record;
    const auto leave = qScopeGuard([this] { m_record = &m_top; });
    m_record = &record;
    content.encodeWithCoder(m_coder);
    record.insert(u"$class"_s, field(classRecord(m_className)));
    m_objects[qsizetype(uid.index)] = record;
}

QByteArray ArchiveWriter::data() const
{
    QByteArray result = propertylist::Header;
    propertylist::appendValue(result,
                              QVariantMap{{u"$archiver"_s, u"NSKeyedArchiver"_s},
                                          {u"$version"_s, 100000LL},
                                          {u"$top"_s, m_top},
                                          {u"$objects"_s, m_objects}},
                              0);
    return result.append(propertylist::Footer);
}

} // namespace dravelin::detail
