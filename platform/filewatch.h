// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QFileSystemWatcher>
#include <QtCore/QStringList>
#include <QtCore/QTimer>

#include <functional>

namespace dravelin {

/// Calls back, through the event loop, after files have been written, replaced, removed or created, even where their
/// directories do not exist yet. Calls that change nothing do happen.
class FileWatch
{
public:
    FileWatch(QStringList files, std::function<void()> changed);

private:
    void arm();
    [[nodiscard]] QStringList wanted() const;

    QStringList m_files;
    QFileSystemWatcher m_watcher;
    QTimer m_settle;
};

} // namespace dravelin
