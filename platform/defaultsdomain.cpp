// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "defaultsdomain.h"

#include <dravelin/platform/log.h>
#include <dravelin/platform/propertylist.h>

#include "propertylist_p.h"

#include <QtCore/QScopeGuard>

#include <utility>

namespace dravelin {

namespace {

using namespace Qt::StringLiterals;

constexpr char Open[] = "<dict>\n";
constexpr char Close[] = "</dict>\n";

} // namespace

DefaultsDomain::DefaultsDomain(const QString &filePath) : m_file(filePath) {}

void DefaultsDomain::mergeInto(QVariantMap *all) const
{
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry)
        all->insert(entry.key(), entry->value);
}

DefaultsDomain::Entry DefaultsDomain::makeEntry(const QString &key, const QVariant &value)
{
    Entry entry{value, {}};
    propertylist::appendEntry(entry.lines, key, value, 1);
    return entry;
}

bool DefaultsDomain::set(const QString &key, const QVariant &value)
{
    const auto present = m_entries.constFind(key);
    const bool exists = present != m_entries.cend();
    if (!value.isValid()) {
        if (!exists)
            return false;
        m_entries.erase(present);
    } else {
        Entry entry = makeEntry(key, value);
        // The lines tell apart what == does not: 1 and 1.0 and true, 0.0 and -0.0.
        if (exists && present->lines == entry.lines)
            return false;
        m_entries.insert(key, std::move(entry));
    }
    m_pending.insert(key);
    return true;
}

std::optional<QVariantMap> DefaultsDomain::parsed(const QByteArray &content, QString *error)
{
    const QVariant root = propertyListFromData(content, error);
    if (root.typeId() == QMetaType::QVariantMap)
        return root.toMap();
    if (root.isValid())
        *error = u"the value is no dictionary"_s;
    return {};
}

bool DefaultsDomain::refresh(QStringList *changed)
{
    if (!m_file.isChanged())
        return !m_damaged;
    QByteArray content;
    const DurableFile::Content found = m_file.read(&content);
    if (found == DurableFile::Content::Unreadable) {
        m_damaged = false;
        return failed(m_file.errorString());
    }
    QString error;
    const auto values = found == DurableFile::Content::Absent ? QVariantMap() : parsed(content, &error);
    m_damaged = !values;
    if (values)
        replaceEntries(*values, changed);
    return m_damaged ? failed(u"%1 is not a property list and is not used: %2"_s.arg(filePath(), error)) : true;
}

/// Takes over the file's values, except where a change of ours is pending.
void DefaultsDomain::replaceEntries(const QVariantMap &values, QStringList *changed)
{
    Entries entries;
    for (auto value = values.cbegin(); value != values.cend(); ++value)
        entries.insert(entries.cend(), value.key(), makeEntry(value.key(), *value));
    for (const QString &key : std::as_const(m_pending)) {
        entries.remove(key);
        if (const auto ours = m_entries.constFind(key); ours != m_entries.cend())
            entries.insert(key, *ours);
    }
    m_entries.swap(entries);
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry) {
        if (entries.take(entry.key()).lines != entry->lines)
            changed->append(entry.key());
    }
    changed->append(entries.keys());
}

QByteArray DefaultsDomain::content() const
{
    qsizetype size = 0;
    for (const Entry &entry : m_entries)
        size += entry.lines.size();
    QByteArray result;
    result.reserve(size
                   + qsizetype(sizeof propertylist::Header + sizeof propertylist::Footer + sizeof Open + sizeof Close));
    result.append(propertylist::Header).append(Open);
    for (const Entry &entry : m_entries)
        result.append(entry.lines);
    return result.append(Close).append(propertylist::Footer);
}

bool DefaultsDomain::write(QStringList *changed)
{
    if (!m_file.lock()) {
        return failed(m_file.errorString());
    }
    const auto unlock = qScopeGuard([this] { m_file.unlock(); });
    return writeLocked(changed);
}

bool DefaultsDomain::writeLocked(QStringList *changed)
{
    if (!refresh(changed) && (!m_damaged || !setAside()))
        return false;
    if (!m_file.replace(content())) {
        return failed(m_file.errorString());
    }
    m_pending.clear();
    return true;
}

bool DefaultsDomain::failed(const QString &reason)
{
    logWarning(reason);
    m_failure = reason;
    return false;
}

bool DefaultsDomain::setAside()
{
    const QString name = m_file.setAside();
    if (name.isNull())
        return failed(m_file.errorString());
    logWarning(u"%1 was damaged and has been set aside as %2"_s.arg(filePath(), name));
    m_damaged = false;
    // No file holds them any more.
    for (auto entry = m_entries.cbegin(); entry != m_entries.cend(); ++entry)
        m_pending.insert(entry.key());
    return true;
}

} // namespace dravelin
