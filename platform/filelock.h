// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "filedescriptor.h"

#include <QtCore/QByteArray>

namespace dravelin {

/// The right to replace a file, held by one store at a time among all processes, and a count of the replacements so
/// far. It lives in a small file that stays; the kernel gives the right back when a process dies. Functions that can
/// fail leave the cause in `errno`.
class FileLock
{
public:
    /// The small file is `path`; nothing is opened or created yet.
    void setPath(const QByteArray &path);

    /// How many replacements began; 0 when nobody ever wrote.
    /// \cost one read of 8 bytes once the file is open
    [[nodiscard]] quint64 generation();

    /// Waits three seconds at most, in case the holder has been suspended.
    [[nodiscard]] bool acquire();
    void release() noexcept;

    /// Counts a replacement; to be called before it, so that a reader who sees the new count and the old file looks
    /// again.
    /// \return the new count, 0 on failure
    [[nodiscard]] quint64 advance();

private:
    bool open(int flags);
    [[nodiscard]] bool isCurrent() const;

    QByteArray m_path;
    FileDescriptor m_file;
};

/// Gives a file that the administrator created in somebody's directory to that somebody, who could not write it
/// otherwise.
void adoptOwner(int fd, const QByteArray &pathOfOwned) noexcept;

} // namespace dravelin
