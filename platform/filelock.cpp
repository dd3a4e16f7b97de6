// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "filelock.h"

#include <QtCore/QDeadlineTimer>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>

namespace dravelin {

namespace {

constexpr int PatienceMilliseconds = 3000;

QByteArray directoryOf(const QByteArray &path) { return path.left(path.lastIndexOf('/') + 1); }

bool flockWithin(int fd, QDeadlineTimer deadline)
{
    while (retried([fd] { return ::flock(fd, LOCK_EX | LOCK_NB); }) != 0) {
        if (errno != EWOULDBLOCK || deadline.hasExpired())
            return false;
        ::usleep(300);
    }
    return true;
}

} // namespace

void adoptOwner(int fd, const QByteArray &pathOfOwned) noexcept
{
    struct stat owned;
    // Without success the file is still good for whoever created it.
    if (::geteuid() == 0 && ::stat(pathOfOwned.constData(), &owned) == 0 && owned.st_uid != 0
        && ::fchown(fd, owned.st_uid, owned.st_gid) != 0)
        errno = 0;
}

void FileLock::setPath(const QByteArray &path)
{
    if (path == m_path)
        return;
    m_path = path;
    m_file = FileDescriptor();
}

bool FileLock::open(int flags)
{
    m_file = FileDescriptor(::open(m_path.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | flags, 0600));
    return m_file.isOpen();
}

/// Whether the open file is still the one at the path; a directory may have been removed and made anew.
bool FileLock::isCurrent() const
{
    struct stat ours, theirs;
    return m_file.isOpen() && ::fstat(m_file.get(), &ours) == 0 && ::stat(m_path.constData(), &theirs) == 0
           && ours.st_ino == theirs.st_ino && ours.st_dev == theirs.st_dev;
}

quint64 FileLock::generation()
{
    if (!m_file.isOpen() && !open(0))
        return 0;
    quint64 count = 0;
    return ::pread(m_file.get(), &count, sizeof count, 0) == sizeof count ? count : 0;
}

bool FileLock::acquire()
{
    const QDeadlineTimer deadline(PatienceMilliseconds);
    for (;;) {
        if (!isCurrent() && !open(O_CREAT))
            return false;
        if (!flockWithin(m_file.get(), deadline))
            return false;
        if (isCurrent())
            return true;
    }
}

void FileLock::release() noexcept { ::flock(m_file.get(), LOCK_UN); }

quint64 FileLock::advance()
{
    const quint64 count = generation() + 1;
    if (count == 1)
        adoptOwner(m_file.get(), directoryOf(m_path));
    return ::pwrite(m_file.get(), &count, sizeof count, 0) == sizeof count ? count : 0;
}

} // namespace dravelin
