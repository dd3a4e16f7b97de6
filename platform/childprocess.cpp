// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/childprocess.h"

#include <dravelin/platform/log.h>

#include <QtCore/QDeadlineTimer>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <array>
#include <csignal>
#include <cstring>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

constexpr const char *Shell = "/bin/sh";

/// Standard streams that this process has closed leave their numbers to other files, which are overwritten when the
/// command gets its own streams. That does no harm to the pipe, whose turn comes first.
FileDescriptor aboveStandardStreams(FileDescriptor descriptor)
{
    if (!descriptor.isOpen() || descriptor.get() > STDERR_FILENO)
        return descriptor;
    return FileDescriptor(fcntl(descriptor.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

struct Pipe
{
    FileDescriptor reading;
    FileDescriptor writing;

    [[nodiscard]] bool open()
    {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0)
            return false;
        reading = FileDescriptor(ends[0]);
        writing = FileDescriptor(ends[1]);
        return true;
    }
};

bool writeAll(int file, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const ssize_t written = retried([&] { return write(file, bytes.data(), size_t(bytes.size())); });
        if (written <= 0)
            return false;
        bytes = bytes.sliced(written);
    }
    return true;
}

/// A file in memory: unlike a pipe it takes everything at once, and a command that does not read does no harm.
FileDescriptor inputFile(QByteArrayView input)
{
    if (input.isEmpty())
        return aboveStandardStreams(FileDescriptor(open("/dev/null", O_RDONLY | O_CLOEXEC)));
    FileDescriptor file = aboveStandardStreams(FileDescriptor(memfd_create("input", MFD_CLOEXEC)));
    if (!file.isOpen() || !writeAll(file.get(), input) || lseek(file.get(), 0, SEEK_SET) != 0)
        return FileDescriptor();
    return file;
}

/// By its number, for some C libraries declare the call wrongly and others not at all. Linux before 5.3 has no such call,
/// and some sandboxes refuse it.
FileDescriptor processHandle(pid_t id) { return FileDescriptor(int(syscall(SYS_pidfd_open, id, 0))); }

class FileActions
{
public:
    FileActions() { posix_spawn_file_actions_init(&m_actions); }
    ~FileActions() { posix_spawn_file_actions_destroy(&m_actions); }
    Q_DISABLE_COPY_MOVE(FileActions)

    void set(int stream, const FileDescriptor &file)
    {
        posix_spawn_file_actions_adddup2(&m_actions, file.get(), stream);
    }
    [[nodiscard]] const posix_spawn_file_actions_t *get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions;
};

/// What shells take for granted, and a program may have changed for itself: the signals that pipes and children send
/// do what they usually do, and none is held back.
class Attributes
{
public:
    explicit Attributes(bool ownGroup)
    {
        posix_spawnattr_init(&m_attributes);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        sigaddset(&signals, SIGPIPE);
        sigaddset(&signals, SIGCHLD);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
        posix_spawnattr_setpgroup(&m_attributes, 0);
        posix_spawnattr_setflags(&m_attributes, short(POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF
                                                      | (ownGroup ? POSIX_SPAWN_SETPGROUP : 0)));
    }
    ~Attributes() { posix_spawnattr_destroy(&m_attributes); }
    Q_DISABLE_COPY_MOVE(Attributes)

    [[nodiscard]] const posix_spawnattr_t *get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes;
};

/// \return 0, or the number of the error
int spawnShell(pid_t *id, QByteArray command, const FileActions &actions, const Attributes &attributes)
{
    QByteArray name(Shell);
    char option[] = "-c";
    const std::array<char *, 4> arguments{name.data(), option, command.data(), nullptr};
    return posix_spawn(id, Shell, actions.get(), attributes.get(), arguments.data(), environ);
}

} // namespace

std::optional<ChildProcess> ChildProcess::runInShell(const QString &command, const Options &options)
{
    const auto failed = [&command](const QString &cause) {
        reportNotStarted(command, cause);
        return std::nullopt;
    };
    const QByteArray bytes = command.isNull() ? "(null)"_ba : command.toUtf8();
    if (bytes.contains('\0'))
        return failed(u"it contains a null character"_s);

    Pipe pipe;
    const FileDescriptor input = options.input ? inputFile(*options.input) : FileDescriptor();
    if (!pipe.open() || (options.input && !input.isOpen()))
        return failed(qt_error_string());

    FileActions actions;
    actions.set(STDOUT_FILENO, pipe.writing);
    actions.set(STDERR_FILENO, pipe.writing);
    if (input.isOpen())
        actions.set(STDIN_FILENO, input);
    pid_t id = 0;
    if (const int error = spawnShell(&id, bytes, actions, Attributes(options.ownGroup)))
        return failed(qt_error_string(error));
    return ChildProcess(id, processHandle(id), std::move(pipe.reading));
}

void ChildProcess::reportNotStarted(const QString &command, const QString &cause)
{
    logWarning(u"Shell command \"%1\" was not started: %2"_s.arg(shortened(command), cause));
}

QString ChildProcess::shortened(const QString &command)
{
    constexpr qsizetype enough = 80;
    return command.size() > enough ? command.first(enough) + u"..."_s : command;
}

bool ChildProcess::hasEnded() const
{
    siginfo_t what{};
    return retried([&] { return waitid(P_PID, id_t(m_id), &what, WEXITED | WNOHANG | WNOWAIT); }) != 0
           || what.si_pid != 0;
}

bool ChildProcess::waitFor(std::chrono::milliseconds time) const
{
    const QDeadlineTimer end(time);
    pollfd handle{m_handle.get(), POLLIN, 0}; // what is not open is passed over
    while (!hasEnded() && !end.hasExpired())
        (void)poll(&handle, 1, m_handle.isOpen() ? int(end.remainingTime()) : 1);
    return hasEnded();
}

ChildProcess::Status ChildProcess::reap() const
{
    int status = 0;
    if (retried([&] { return waitpid(m_id, &status, 0); }) != m_id)
        return {};
    return WIFEXITED(status) ? Status{WEXITSTATUS(status), 0} : Status{-1, WTERMSIG(status)};
}

void ChildProcess::signalGroup(int signal) const { kill(-m_id, signal); }

} // namespace dravelin
