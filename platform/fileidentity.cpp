// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/fileidentity.h>

#include <fcntl.h>
#include <sys/stat.h>

namespace dravelin::detail {

namespace {

quint64 deviceOf(const struct statx &status) { return quint64(status.stx_dev_major) << 32 | status.stx_dev_minor; }

/// Type and bytes of the kernel's handle for the item, absent where the file system has none.
QByteArray handleOf(const QByteArray &path)
{
    alignas(file_handle) char buffer[sizeof(file_handle) + MAX_HANDLE_SZ] = {};
    auto *handle = reinterpret_cast<file_handle *>(buffer);
    handle->handle_bytes = MAX_HANDLE_SZ;
    int mount = 0;
    if (name_to_handle_at(AT_FDCWD, path.constData(), handle, &mount, 0) != 0)
        return {};
    const char *bytes = buffer + sizeof(file_handle);
    return QByteArray::number(handle->handle_type) + QByteArray(bytes, qsizetype(handle->handle_bytes));
}

} // namespace

bool FileIdentity::isSameItem(const FileIdentity &other) const noexcept
{
    if (inode != other.inode || type != other.type || hasBirthTime() != other.hasBirthTime())
        return false;
    if (!handle.isNull() && !other.handle.isNull() && handle != other.handle)
        return false;
    if (!hasBirthTime())
        return device == other.device;
    return birthSeconds == other.birthSeconds && birthNanoseconds == other.birthNanoseconds;
}

std::optional<FileIdentity> identityOf(const QByteArray &path)
{
    struct statx status = {};
    constexpr unsigned Wanted = STATX_TYPE | STATX_INO | STATX_BTIME | STATX_SIZE;
    if (statx(AT_FDCWD, path.constData(), AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, Wanted, &status) != 0)
        return {};
    FileIdentity identity;
    identity.device = deviceOf(status);
    identity.inode = status.stx_ino;
    identity.size = status.stx_size;
    identity.type = status.stx_mode & S_IFMT;
    if (status.stx_mask & STATX_BTIME) {
        identity.birthSeconds = status.stx_btime.tv_sec;
        identity.birthNanoseconds = status.stx_btime.tv_nsec;
    }
    identity.handle = handleOf(path);
    return identity;
}

} // namespace dravelin::detail
