// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "filewatch.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <utility>

namespace dravelin {

namespace {

/// Several events of one change, and the halves of a tool's truncate and write, count as one.
constexpr int SettleMilliseconds = 20;

QString existingDirectoryOf(const QString &path)
{
    QFileInfo directory(QFileInfo(path).absolutePath());
    while (!directory.exists() && !directory.isRoot())
        directory.setFile(directory.absolutePath());
    return directory.absoluteFilePath();
}

} // namespace

FileWatch::FileWatch(QStringList files, std::function<void()> changed) : m_files(std::move(files))
{
    m_settle.setSingleShot(true);
    m_settle.setInterval(SettleMilliseconds);
    const auto settle = [this] { m_settle.start(); };
    QObject::connect(&m_watcher, &QFileSystemWatcher::fileChanged, &m_settle, settle);
    QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, &m_settle, settle);
    QObject::connect(&m_settle, &QTimer::timeout, &m_settle, [this, callback = std::move(changed)] {
        arm(); // first: what comes later is an event, what came before is there to be seen
        callback();
    });
    arm();
}

/// The files themselves, for tools that write in place, and their directories, for those that replace them.
QStringList FileWatch::wanted() const
{
    QStringList paths;
    for (const QString &file : m_files) {
        const QString target = QFileInfo(file).canonicalFilePath(); // empty while there is none
        if (!target.isEmpty())
            paths << target << existingDirectoryOf(target);
        paths << existingDirectoryOf(file);
    }
    paths.removeDuplicates();
    return paths;
}

void FileWatch::arm()
{
    const QStringList paths = wanted();
    const QStringList watched = m_watcher.files() + m_watcher.directories();
    for (const QString &path : watched) {
        if (!paths.contains(path))
            m_watcher.removePath(path);
    }
    for (const QString &path : paths) {
        if (!watched.contains(path))
            m_watcher.addPath(path);
    }
}

} // namespace dravelin
