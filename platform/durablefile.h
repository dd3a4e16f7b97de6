// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "filelock.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <sys/stat.h>

namespace dravelin {

/// A file that several processes read and replace as a whole. Whoever reads it finds one complete version, whatever is
/// killed and whenever the power fails. A symbolic link stays, the file behind it is replaced.
///
///     DurableFile file(path);
///     if (file.lock()) {
///         const bool done = file.replace("new content");
///         file.unlock();
///     }
class DurableFile
{
public:
    explicit DurableFile(const QString &path);

    [[nodiscard]] QString path() const { return m_path; }

    /// Whether the file is another one than that last read or written here; true before the first read.
    /// \cost four system calls
    [[nodiscard]] bool isChanged();

    enum class Content { Present, Absent, Unreadable };

    /// Reads the whole file; needs no lock.
    [[nodiscard]] Content read(QByteArray *content);

    /// Keeps other writers out until unlock(); creates the directory when absent.
    /// \return false with errorString() set
    [[nodiscard]] bool lock();
    void unlock() noexcept;

    /// Replaces the content under the lock; it is on the disk, with its name, when this returns true. Permissions and
    /// owner are kept; a new file is the user's alone. A file that the user may not write is left alone.
    /// \return false with errorString() set; the file then holds the old content or, if only the last flush failed, the
    /// new
    [[nodiscard]] bool replace(const QByteArray &content);

    /// Renames the file, under the lock, to `<name>.damaged-<UTC time>`, with a number behind it when that exists.
    /// \return the new name, absent with errorString() set when it could not be renamed
    [[nodiscard]] QString setAside();

    [[nodiscard]] QString errorString() const { return m_error; }

private:
    struct Version
    {
        quint64 generation = 0;
        struct stat status = {};
        bool known = false;

        [[nodiscard]] bool operator==(const Version &other) const noexcept;
    };

    void resolve();
    [[nodiscard]] Version currentVersion();
    [[nodiscard]] bool mayReplace();
    [[nodiscard]] bool writeBeside(const FileDescriptor &file, const QByteArray &content);
    bool failed(const char *what);

    QString m_path;
    QByteArray m_target; // the file behind m_path when that is a symbolic link
    FileLock m_lock;
    bool m_locked = false;
    Version m_seen;
    QString m_error;
};

} // namespace dravelin
