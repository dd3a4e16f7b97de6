// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/filedescriptor.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <sys/types.h>

#include <chrono>
#include <optional>

namespace dravelin {

/// A shell that runs a command, with one pipe as standard output and standard error. Waits for that one process only,
/// without a handler for SIGCHLD. One that is destroyed without having been reaped remains a zombie.
class ChildProcess
{
public:
    struct Options
    {
        /// The command becomes the leader of a process group of its own.
        bool ownGroup = false;
        /// What it reads as standard input, as from a file; otherwise it has this process's.
        std::optional<QByteArray> input;
    };

    struct Status
    {
        int exitStatus = -1; ///< -1 when a signal ended it, and when the status was lost
        int signal = 0;
    };

    /// Starts `/bin/sh -c command`.
    /// \param command absent text stands for "(null)"
    /// \return nothing when that does not work, which is a line in the log
    [[nodiscard]] static std::optional<ChildProcess> runInShell(const QString &command, const Options &options);

    /// Writes that line.
    static void reportNotStarted(const QString &command, const QString &cause);
    /// The beginning of a command, for log lines.
    [[nodiscard]] static QString shortened(const QString &command);

    [[nodiscard]] pid_t id() const noexcept { return m_id; }

    /// The end of the pipe to read from. Blocks.
    [[nodiscard]] int output() const noexcept { return m_output.get(); }
    void closeOutput() { m_output = FileDescriptor(); }

    /// Becomes readable when the shell has ended; -1 where the system has none such.
    [[nodiscard]] int ended() const noexcept { return m_handle.get(); }
    [[nodiscard]] bool hasEnded() const;
    /// \return whether it has ended by then
    [[nodiscard]] bool waitFor(std::chrono::milliseconds time) const;

    /// Waits until the shell has ended, and frees its process number.
    Status reap() const;

    /// To the process group, which the shell keeps reserved until it is reaped.
    void signalGroup(int signal) const;

private:
    ChildProcess(pid_t id, FileDescriptor handle, FileDescriptor output)
        : m_id(id), m_handle(std::move(handle)), m_output(std::move(output))
    {}

    pid_t m_id;
    FileDescriptor m_handle;
    FileDescriptor m_output;
};

} // namespace dravelin
