// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "durablefile.h"

#include "fileflush.h"

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <fcntl.h>

#include <cerrno>
#include <climits>
#include <cstdio>

namespace dravelin {

namespace {

using namespace Qt::StringLiterals;

QByteArray directoryOf(const QByteArray &path) { return path.left(path.lastIndexOf('/') + 1); }

/// The file behind a chain of symbolic links, which need not exist.
QByteArray linkTarget(QByteArray path)
{
    char link[PATH_MAX];
    for (int links = 0; links < 40; ++links) {
        const ssize_t length = ::readlink(path.constData(), link, sizeof link);
        if (length <= 0 || length == sizeof link)
            break;
        path = link[0] == '/' ? QByteArray(link, length) : directoryOf(path) + QByteArray(link, length);
    }
    return path;
}

bool syncDirectory(const QByteArray &path)
{
    const FileDescriptor directory(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some network file systems cannot flush a directory and have no need to.
    return directory.isOpen() && (retried([&] { return ::fsync(directory.get()); }) == 0 || errno == EINVAL);
}

/// Makes the directory `path`, which ends with a slash, and those above it, for the user alone.
bool makeDirectories(const QByteArray &path)
{
    if (::access(path.constData(), F_OK) == 0 || path.size() <= 1)
        return true;
    const QByteArray above = directoryOf(path.chopped(1));
    if (!makeDirectories(above))
        return false;
    if (::mkdir(path.constData(), 0700) != 0)
        return errno == EEXIST;
    const FileDescriptor made(::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    adoptOwner(made.get(), above);
    return syncDirectory(above);
}

bool isRegular(const struct stat &status)
{
    errno = ENOTSUP;
    return S_ISREG(status.st_mode);
}

/// Opens a new file; what a killed writer left under its name goes.
FileDescriptor createAnew(const QByteArray &path)
{
    constexpr int flags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    int fd = ::open(path.constData(), flags, 0600);
    if (fd < 0 && errno == EEXIST && ::unlink(path.constData()) == 0)
        fd = ::open(path.constData(), flags, 0600);
    return FileDescriptor(fd);
}

bool writeAll(int fd, const QByteArray &content)
{
    for (qsizetype written = 0; written < content.size();) {
        const ssize_t count =
            retried([&] { return ::write(fd, content.constData() + written, size_t(content.size() - written)); });
        if (count < 0)
            return false;
        written += count;
    }
    return true;
}

bool readAll(int fd, qint64 expectedSize, QByteArray *content)
{
    *content = QByteArray("");
    for (qsizetype size = 0;;) {
        content->resize(qMax(expectedSize, size) + 1); // one more, so that the end shows without another round
        const ssize_t count =
            retried([&] { return ::read(fd, content->data() + size, size_t(content->size() - size)); });
        size += qMax<ssize_t>(count, 0);
        content->truncate(size);
        if (count <= 0)
            return count == 0;
        expectedSize = qMax<qint64>(expectedSize, 2 * size);
    }
}

/// Renames without ever replacing; on file systems that cannot promise that, as long as nobody else creates the name.
bool renameFresh(const QByteArray &from, const QByteArray &to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    if (::access(to.constData(), F_OK) == 0) {
        errno = EEXIST;
        return false;
    }
    return ::rename(from.constData(), to.constData()) == 0;
}

bool sameTime(const timespec &a, const timespec &b) noexcept { return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec; }

} // namespace

/// The generation tells replacements by stores apart even when inode and clock tick recur, the status those by other
/// tools.
bool DurableFile::Version::operator==(const Version &other) const noexcept
{
    const struct stat &a = status, &b = other.status;
    return known && other.known && generation == other.generation && a.st_dev == b.st_dev && a.st_ino == b.st_ino
           && a.st_size == b.st_size && sameTime(a.st_mtim, b.st_mtim) && sameTime(a.st_ctim, b.st_ctim);
}

DurableFile::DurableFile(const QString &path) : m_path(QFileInfo(path).absoluteFilePath()) { resolve(); }

/// Under the lock the target stays: a link that changes now must not lead to a file that is not locked.
void DurableFile::resolve()
{
    if (m_locked)
        return;
    m_target = linkTarget(QFile::encodeName(m_path));
    m_lock.setPath(m_target + ".lock");
}

/// The generation is read first: a replacement after that shows in the status.
DurableFile::Version DurableFile::currentVersion()
{
    Version version;
    version.generation = m_lock.generation();
    version.known = ::stat(m_target.constData(), &version.status) == 0 || errno == ENOENT;
    return version;
}

bool DurableFile::isChanged()
{
    resolve();
    return !(currentVersion() == m_seen);
}

DurableFile::Content DurableFile::read(QByteArray *content)
{
    resolve();
    m_seen = {};
    Version version;
    version.generation = m_lock.generation();
    // Not blocking, as the name may be that of a pipe.
    const FileDescriptor file(::open(m_target.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file.isOpen() && errno != ENOENT)
        return failed("cannot be opened"), Content::Unreadable;
    if (file.isOpen()) {
        if (::fstat(file.get(), &version.status) != 0 || !isRegular(version.status)
            || !readAll(file.get(), version.status.st_size, content))
            return failed("cannot be read"), Content::Unreadable;
    }
    version.known = true;
    m_seen = version;
    return file.isOpen() ? Content::Present : Content::Absent;
}

bool DurableFile::lock()
{
    resolve();
    if (!makeDirectories(directoryOf(m_target)))
        return failed("has no directory");
    m_locked = m_lock.acquire();
    return m_locked || failed("cannot be locked");
}

void DurableFile::unlock() noexcept
{
    m_lock.release();
    m_locked = false;
}

bool DurableFile::mayReplace()
{
    struct stat status;
    if (::stat(m_target.constData(), &status) != 0)
        return errno == ENOENT;
    return isRegular(status) && ::faccessat(AT_FDCWD, m_target.constData(), R_OK | W_OK, AT_EACCESS) == 0;
}

/// Writes the new version to `file`, with permissions and owner of the present one, and flushes it.
bool DurableFile::writeBeside(const FileDescriptor &file, const QByteArray &content)
{
    if (!file.isOpen())
        return false;
    struct stat present;
    const bool exists = ::stat(m_target.constData(), &present) == 0;
    adoptOwner(file.get(), exists ? m_target : directoryOf(m_target));
    if (exists && (present.st_mode & 07777) != 0600 && ::fchmod(file.get(), present.st_mode & 07777) != 0)
        return false;
    return writeAll(file.get(), content) && flushBeforeRename(file.get());
}

bool DurableFile::replace(const QByteArray &content)
{
    if (!mayReplace())
        return failed("may not be replaced");
    const QByteArray beside = m_target + ".new";
    const FileDescriptor file = createAnew(beside);
    Version version;
    const bool renamed = writeBeside(file, content) && (version.generation = m_lock.advance()) != 0
                         && ::rename(beside.constData(), m_target.constData()) == 0;
    if (!renamed) {
        failed("cannot be written");
        ::unlink(beside.constData());
        return false;
    }
    version.known = ::fstat(file.get(), &version.status) == 0;
    m_seen = version;
    return syncDirectory(directoryOf(m_target)) || failed("cannot be flushed");
}

QString DurableFile::setAside()
{
    if (!mayReplace())
        return failed("may not be set aside"), QString();
    const QByteArray stem =
        m_target + ".damaged-" + QDateTime::currentDateTimeUtc().toString(u"yyyyMMdd'T'HHmmss'Z'").toLatin1();
    QByteArray name = stem;
    for (int n = 2; !renameFresh(m_target, name); ++n) {
        if (errno != EEXIST || n > 1000)
            return failed("cannot be set aside"), QString();
        name = stem + '-' + QByteArray::number(n);
    }
    return QFile::decodeName(name);
}

bool DurableFile::failed(const char *what)
{
    m_error = m_path + u' ' + QLatin1String(what) + u": "_s + qt_error_string(errno);
    return false;
}

} // namespace dravelin
