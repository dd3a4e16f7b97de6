// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/fileidentity.h>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <deque>
#include <memory>
#include <set>

namespace dravelin::detail {

namespace {

constexpr int LevelsAbove = 3;

QByteArray parentOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash > 0 ? path.left(slash) : QByteArrayLiteral("/");
}

QByteArray childOf(const QByteArray &directory, const char *name)
{
    return (directory.endsWith('/') ? directory : directory + '/') + name;
}

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

/// One search; directories are visited breadth first, each once.
class Search
{
public:
    Search(const FileIdentity &identity, int maximumEntries) : m_identity(identity), m_entriesLeft(maximumEntries) {}

    QByteArray below(const QByteArray &root)
    {
        std::deque<QByteArray> pending{root};
        QByteArray found;
        for (; !pending.empty() && found.isNull() && m_entriesLeft > 0; pending.pop_front()) {
            if (m_seen.insert(pending.front()).second)
                found = visit(pending.front(), pending);
        }
        return found;
    }

private:
    struct Close
    {
        void operator()(DIR *directory) const { closedir(directory); }
    };
    using Directory = std::unique_ptr<DIR, Close>;

    QByteArray visit(const QByteArray &path, std::deque<QByteArray> &pending)
    {
        const Directory directory(isOnSameFileSystem(path) ? opendir(path.constData()) : nullptr);
        if (!directory)
            return {};
        while (const dirent *entry = readdir(directory.get())) {
            const std::string_view name = entry->d_name;
            if (name == "." || name == "..")
                continue;
            if (m_entriesLeft-- <= 0)
                return {};
            QByteArray child = childOf(path, entry->d_name);
            if (isSought(*entry, child))
                return child;
            if (entry->d_type == DT_DIR)
                pending.push_back(std::move(child));
        }
        return {};
    }

    // The directory already knows the inode, so hardly any entry has to be looked at by itself.
    bool isSought(const dirent &entry, const QByteArray &path) const
    {
        if (entry.d_ino != m_identity.inode)
            return false;
        const auto identity = identityOf(path);
        return identity && identity->isSameItem(m_identity);
    }

    // Asked before it is opened, since that could mount something, or wait for a server that is gone.
    bool isOnSameFileSystem(const QByteArray &path)
    {
        struct statx status = {};
        constexpr int Flags = AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
        if (statx(AT_FDCWD, path.constData(), Flags, STATX_TYPE, &status) != 0)
            return false;
        if (!m_device)
            m_device = deviceOf(status);
        return *m_device == deviceOf(status);
    }

    const FileIdentity &m_identity;
    int m_entriesLeft;
    std::set<QByteArray> m_seen;
    std::optional<quint64> m_device;
};

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

QByteArray findMoved(const FileIdentity &identity, const QByteArray &oldPath, int maximumEntries)
{
    Search search(identity, maximumEntries);
    QByteArray directory = parentOf(oldPath);
    for (int level = 0; level <= LevelsAbove; ++level, directory = parentOf(directory)) {
        if (QByteArray found = search.below(directory); !found.isNull())
            return found;
        if (directory == "/")
            break;
    }
    return {};
}

bool isVolumePresent(const FileIdentity &identity, QByteArray path)
{
    auto nearest = identityOf(path);
    while (!nearest && path != "/") {
        path = parentOf(path);
        nearest = identityOf(path);
    }
    return nearest && nearest->device == identity.device;
}

} // namespace dravelin::detail
