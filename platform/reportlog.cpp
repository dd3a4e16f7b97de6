// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/reportlog.h"

#include "platform/linebuffer.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace dravelin {

namespace {

constexpr int momentInMilliseconds = 500;
constexpr std::size_t pipeTakesAtOnce = 4000; // without blocking, when it is ready at all

int logSocket = -1;
LineBuffer logPrefix;

/// \return a connected socket, -1 when nobody listens
int connectTo(const char *path)
{
    const int fd = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
    if (fd >= 0 && ::connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0)
        return fd;
    if (fd >= 0)
        ::close(fd);
    return -1;
}

/// Under a service manager standard error is the journal, which then needs no second copy.
bool standardErrorIsJournal()
{
    const char *stream = std::getenv("JOURNAL_STREAM");
    struct stat status
    {};
    unsigned long device = 0;
    unsigned long inode = 0;
    return stream && std::sscanf(stream, "%lu:%lu", &device, &inode) == 2 && ::fstat(STDERR_FILENO, &status) == 0
           && status.st_dev == device && status.st_ino == inode;
}

/// A pipe without a reader is not written to: that would raise the very signal that may be being reported.
bool takesMore(int fd) noexcept
{
    pollfd state{fd, POLLOUT, 0};
    int ready = 0;
    do
        ready = ::poll(&state, 1, momentInMilliseconds);
    while (ready < 0 && errno == EINTR);
    return ready == 1 && (state.revents & (POLLOUT | POLLERR | POLLNVAL)) == POLLOUT;
}

iovec vector(std::string_view text) noexcept { return {const_cast<char *>(text.data()), text.size()}; }

void send(std::string_view line) noexcept
{
    iovec parts[] = {vector(logPrefix.view()), vector(line), vector("\n")};
    msghdr message{};
    message.msg_iov = parts;
    message.msg_iovlen = std::size(parts);
    ::sendmsg(logSocket, &message, MSG_DONTWAIT | MSG_NOSIGNAL);
}

} // namespace

void ReportLog::prepare(const char *journal, const char *syslog)
{
    if (logSocket >= 0 || standardErrorIsJournal())
        return;
    const std::string_view program = program_invocation_short_name;
    if (logSocket = connectTo(journal); logSocket >= 0) {
        logPrefix.append("PRIORITY=2\nSYSLOG_IDENTIFIER=").append(program).append("\nMESSAGE=");
    } else if (logSocket = connectTo(syslog); logSocket >= 0) {
        logPrefix.append("<10>").append(program).append("[").appendNumber(quint64(::getpid())).append("]: ");
    }
}

void ReportLog::writeLine(std::string_view line) noexcept
{
    for (bool first = true; first || !line.empty(); first = false) {
        const std::string_view piece = line.substr(0, pipeTakesAtOnce);
        writeToStandardError(piece);
        if (logSocket >= 0)
            send(piece);
        line.remove_prefix(piece.size());
    }
}

void ReportLog::writeToStandardError(std::string_view text) noexcept
{
    m_standardErrorTakesMore = m_standardErrorTakesMore && takesMore(STDERR_FILENO);
    if (!m_standardErrorTakesMore)
        return;
    const iovec parts[] = {vector(text), vector("\n")};
    m_standardErrorTakesMore = ::writev(STDERR_FILENO, parts, int(std::size(parts))) >= 0;
}

} // namespace dravelin
