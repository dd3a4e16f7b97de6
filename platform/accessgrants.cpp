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

AccessGrants::~AccessGrants()
{
    for (const auto &[path, grant] : m_grants)
        ::close(grant.descriptor);
}

bool AccessGrants::start(const QByteArray &path)
{
    if (::faccessat(AT_FDCWD, path.constData(), R_OK, AT_EACCESS) != 0)
        return false;
    const std::lock_guard lock(m_mutex);
    if (const auto known = m_grants.find(path); known != m_grants.end())
        return ++known->second.count > 0;
    // A path descriptor holds the inode without reading: pipes do not block, devices do not start.
    const int descriptor = ::open(path.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC);
    const auto identity = identityOf(path);
    if (descriptor >= 0 && identity)
        m_grants.emplace(path, Grant{descriptor, *identity, 1});
    else if (descriptor >= 0)
        ::close(descriptor);
    return descriptor >= 0 && identity;
}

void AccessGrants::stop(const QByteArray &path)
{
    const std::lock_guard lock(m_mutex);
    const auto known = m_grants.find(path);
    if (known == m_grants.end() || --known->second.count > 0)
        return;
    ::close(known->second.descriptor);
    m_grants.erase(known);
}

QByteArray AccessGrants::pathOf(const FileIdentity &identity) const
{
    const std::lock_guard lock(m_mutex);
    for (const auto &[path, grant] : m_grants) {
        if (!grant.identity.isSameItem(identity))
            continue;
        QByteArray now = nameOf(grant.descriptor);
        const auto present = identityOf(now); // none when it is deleted or beyond this process's root
        if (present && present->isSameItem(identity))
            return now;
    }
    return {};
}

} // namespace dravelin::detail
