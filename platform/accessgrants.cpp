// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/accessgrants.h>

#include <climits>
#include <fcntl.h>
#include <unistd.h>

namespace dravelin::detail {

namespace {

/// The name that the kernel has for what is open.
QByteArray nameOf(int descriptor)
{
    QByteArray name(PATH_MAX, Qt::Uninitialized);
    const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
    const auto length = ::readlink(link.constData(), name.data(), size_t(name.size()));
    return length > 0 ? name.left(length) : QByteArray();
}

} // namespace

bool AccessGrants::start(const QByteArray &path)
{
    if (::faccessat(AT_FDCWD, path.constData(), R_OK, AT_EACCESS) != 0)
        return false;
    const std::lock_guard lock(m_mutex);
    Grant &grant = m_grants[path];
    if (grant.count++ > 0 || m_grants.size() > MaximumHeld)
        return true;
    // A path descriptor holds the inode without reading: pipes do not block, devices do not start. Nothing is lost but
    // the hold when the process has no descriptor left.
    grant.descriptor = FileDescriptor(::open(path.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    grant.identity = identityOf(path).value_or(FileIdentity());
    return true;
}

void AccessGrants::stop(const QByteArray &path)
{
    const std::lock_guard lock(m_mutex);
    const auto known = m_grants.find(path);
    if (known != m_grants.end() && --known->second.count == 0)
        m_grants.erase(known);
}

QByteArray AccessGrants::pathOf(const FileIdentity &identity) const
{
    const std::lock_guard lock(m_mutex);
    for (const auto &[path, grant] : m_grants) {
        if (!grant.descriptor.isOpen() || !grant.identity.isSameItem(identity))
            continue;
        QByteArray now = nameOf(grant.descriptor.get());
        const auto present = identityOf(now); // none when it is deleted or beyond this process's root
        if (present && present->isSameItem(identity))
            return now;
    }
    return {};
}

} // namespace dravelin::detail
