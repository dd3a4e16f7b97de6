// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/soundinput.h>

#include <QtCore/QDateTime>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstring>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

qint64 nanoseconds(const timespec &time) { return qint64(time.tv_sec) * 1'000'000'000 + time.tv_nsec; }

QString systemError() { return QString::fromLocal8Bit(std::strerror(errno)); }

} // namespace

SoundInput::SoundInput(const QString &path, QString &cause)
{
    if (path.startsWith(u':'))
        openResource(path, cause);
    else
        openFile(path, cause);
}

SoundInput::SoundInput(const QByteArray &bytes) : m_bytes(bytes) { m_stamp.size = bytes.size(); }

void SoundInput::openFile(const QString &path, QString &cause)
{
    // Without waiting: a pipe nobody writes to would hold the caller up for ever.
    const int flags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    FileDescriptor file(retried([&] { return ::open(QFile::encodeName(path).constData(), flags); }));
    struct stat status;
    if (!file.isOpen() || fstat(file.get(), &status) != 0) {
        cause = systemError();
    } else if (!S_ISREG(status.st_mode)) {
        cause = S_ISDIR(status.st_mode) ? u"it is a folder"_s : u"it is no ordinary file"_s;
    } else if (status.st_size == 0) {
        cause = u"it is empty"_s;
    } else {
        m_file = std::move(file);
        m_stamp = {
            {}, status.st_dev, status.st_ino, nanoseconds(status.st_mtim), nanoseconds(status.st_ctim), status.st_size};
    }
}

void SoundInput::openResource(const QString &path, QString &cause)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        cause = file.errorString();
        return;
    }
    m_bytes = file.readAll();
    if (m_bytes.isEmpty()) {
        m_bytes = {};
        cause = u"it is empty"_s;
    }
    m_stamp.resource = path;
    m_stamp.modified = QFileInfo(path).lastModified().toMSecsSinceEpoch();
    m_stamp.size = m_bytes.size();
}

QByteArray SoundInput::part(qint64 offset, qint64 size) const
{
    if (!m_file.isOpen())
        return m_bytes.mid(offset, size);
    QByteArray bytes(qsizetype(size), Qt::Uninitialized);
    const auto count = retried([&] { return ::pread(m_file.get(), bytes.data(), size_t(size), offset); });
    bytes.truncate(std::max<qsizetype>(count, 0));
    return bytes;
}

} // namespace dravelin::detail
