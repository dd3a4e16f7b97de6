// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/movedfile.h>

#include <QtCore/QFile>
#include <QtCore/QStandardPaths>

#include <dirent.h>
#include <fcntl.h>
#include <mntent.h>
#include <sys/stat.h>

#include <array>
#include <climits>
#include <cstdio>
#include <deque>
#include <memory>
#include <set>

namespace dravelin::detail {

namespace {

constexpr int LevelsAbove = 3;

struct Close
{
    void operator()(DIR *directory) const { closedir(directory); }
    void operator()(std::FILE *table) const { endmntent(table); }
};

QByteArray parentOf(const QByteArray &path)
{
    const qsizetype slash = path.lastIndexOf('/');
    return slash > 0 ? path.left(slash) : QByteArrayLiteral("/");
}

QByteArray childOf(const QByteArray &directory, const char *name)
{
    return (directory.endsWith('/') ? directory : directory + '/') + name;
}

/// One search; directories are visited breadth first, each once.
class Search
{
public:
    Search(const FileIdentity &identity, int maximumEntries) : m_identity(identity), m_entriesLeft(maximumEntries) {}

    /// The first of these directories is read to its end.
    QByteArray below(const QByteArray &root)
    {
        m_pending.push_back(root);
        QByteArray found;
        for (int flags = 0; !m_pending.empty() && found.isNull() && m_entriesLeft > 0; flags = AT_SYMLINK_NOFOLLOW) {
            if (enters(m_pending.front(), flags))
                found = visit(m_pending.front());
            m_pending.pop_front();
        }
        return found;
    }

private:
    using Directory = std::unique_ptr<DIR, Close>;

    QByteArray visit(const QByteArray &path)
    {
        const Directory directory(opendir(path.constData()));
        const bool isHome = m_seen.size() == 1;
        while (const dirent *entry = directory ? readdir(directory.get()) : nullptr) {
            const std::string_view name = entry->d_name;
            if (name == "." || name == "..")
                continue;
            if (!isHome && m_entriesLeft-- <= 0)
                return {};
            QByteArray child = childOf(path, entry->d_name);
            if (isSought(*entry, child))
                return child;
            const bool mayBeDirectory = entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN;
            if (mayBeDirectory && m_pending.size() < size_t(m_entriesLeft))
                m_pending.push_back(std::move(child));
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

    /// Whether it is a directory of the first one's file system, not seen before. Asked before it is opened, since that
    /// could mount something, or wait for a server that is gone.
    bool enters(const QByteArray &path, int flags)
    {
        struct statx status = {};
        constexpr int Unhurried = AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
        if (statx(AT_FDCWD, path.constData(), flags | Unhurried, STATX_TYPE | STATX_INO, &status) != 0
            || !S_ISDIR(status.stx_mode))
            return false;
        const std::pair device(status.stx_dev_major, status.stx_dev_minor);
        if (!m_device)
            m_device = device;
        return m_device == device && m_seen.insert(status.stx_ino).second;
    }

    const FileIdentity &m_identity;
    int m_entriesLeft;
    std::deque<QByteArray> m_pending;
    std::set<quint64> m_seen;
    std::optional<std::pair<quint32, quint32>> m_device;
};

/// The item at the end of `path`, or of as much of its end as leads to it from `mountPoint`.
QByteArray findBelow(const QByteArray &mountPoint, const QByteArray &path, const FileIdentity &identity)
{
    for (qsizetype slash = 0; slash >= 0; slash = path.indexOf('/', slash + 1)) {
        QByteArray candidate = childOf(mountPoint, path.constData() + slash + 1);
        const auto present = identityOf(candidate);
        if (present && present->isSameItem(identity))
            return candidate;
    }
    return {};
}

} // namespace

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

QByteArray findOnMovedVolume(const FileIdentity &identity, const QByteArray &oldPath)
{
    const std::unique_ptr<std::FILE, Close> mounts(setmntent("/proc/self/mounts", "re"));
    std::array<char, 2 * PATH_MAX> line;
    mntent mount = {};
    QByteArray found;
    while (found.isNull() && mounts && getmntent_r(mounts.get(), &mount, line.data(), int(line.size()))) {
        // Servers and programs may not answer: only disks are asked.
        const QByteArrayView source(mount.mnt_fsname);
        if (source.startsWith("/dev/") && source != "/dev/fuse")
            found = findBelow(mount.mnt_dir, oldPath, identity);
    }
    return found;
}

bool isInTrash(const QByteArray &path)
{
    const QString home = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return path.contains("/.Trash/") || path.contains("/.Trash-")
           || path.startsWith(QFile::encodeName(home) + "/Trash/");
}

} // namespace dravelin::detail
