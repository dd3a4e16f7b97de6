// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/objecttracker.h>

#include <map>
#include <optional>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

/// By class name.
using ClassList = std::map<QByteArray, DebugObjectContainer>;

/// Nothing while the tracker is off. Never destroyed: objects are tracked until the very end of the process.
std::optional<ClassList> &classList()
{
    static auto &list = *new std::optional<ClassList>;
    return list;
}

qint32 lookupKey(const QObject *object) { return qint32(quint32(quintptr(object))); }

} // namespace

void DebugObjectContainer::addObject(QObject *object)
{
    m_objectLookup.insert(lookupKey(object), DebugObjectTracker{object});
}

void DebugObjectContainer::takeSnapShotCount()
{
    trimObjects();
    m_snapShotCount = m_objectLookup.size();
}

void DebugObjectContainer::trimObjects()
{
    m_objectLookup.removeIf([](const auto &entry) { return entry.value().object.isNull(); });
}

QString DebugObjectContainer::report() const
{
    const QObject *first = m_objectLookup.isEmpty() ? nullptr : m_objectLookup.cbegin()->object.data();
    const qint64 count = m_objectLookup.size();
    return u"%1 - Snap:%2 Count:%3 Delta:%4"_s.arg(
        first ? QString::fromUtf8(first->metaObject()->className()) : u"(null)"_s, QString::number(m_snapShotCount),
        QString::number(count), QString::number(count - m_snapShotCount));
}

void _initializeObjectTracker()
{
    if (!classList())
        classList().emplace();
}

void _clearTrackedObjects()
{
    if (classList())
        classList()->clear();
}

void _trackObject(QObject *object)
{
    if (!classList() || !object)
        return;
    const char *name = object->metaObject()->className();
    auto container = classList()->find(QByteArray::fromRawData(name, qsizetype(qstrlen(name))));
    if (container == classList()->end())
        container = classList()->try_emplace(name).first;
    container->second.addObject(object);
}

void _trimObjectList()
{
    if (!classList())
        return;
    for (auto &[name, container] : *classList())
        container.trimObjects();
    std::erase_if(*classList(), [](const auto &entry) { return entry.second.objectLookup().isEmpty(); });
}

void _takeSnapCount()
{
    if (!classList())
        return;
    _trimObjectList();
    for (auto &[name, container] : *classList())
        container.setSnapShotCount(container.objectLookup().size());
}

QString _dumpTrackedObjects()
{
    if (!classList())
        return u"No class list."_s;
    _trimObjectList();
    QString dump;
    for (const auto &[name, container] : *classList())
        dump += container.report() + u'\r';
    return dump;
}

} // namespace dravelin
