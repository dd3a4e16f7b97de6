// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <memory>

namespace dravelin {

/// A command of the shell, `/bin/sh -c`, that runs beside the event loop and hands over its output as it comes.
///
///     auto *command = new dravelin::ShellCommand(this);
///     connect(command, &dravelin::ShellCommand::outputRead, view, &QPlainTextEdit::insertPlainText);
///     connect(command, &dravelin::ShellCommand::finished, this, &Window::buildEnded);
///     command->setTimeLimit(60);
///     command->start("make 2>&1 -C project");
///
/// Standard output and standard error share one pipe. The command has finished when the shell has ended and everything
/// that it started has closed the pipe. Without input() it reads an empty standard input. Environment, working folder
/// and signals are as with runShellCommand().
///
/// Every command is a process group of its own. cancel(), and the time limit, end the whole group: with SIGTERM, and
/// with SIGKILL a second later. What left the group by `setsid` lives on, but is not waited for.
///
/// Destroying the object while the command runs kills the group at once, waits for the shell to be gone, and emits
/// nothing. Slots may cancel, start anew once it has finished, and delete the object.
///
/// Use it on a thread with an event loop; it has no thread of its own.
class DRAVELIN_EXPORT ShellCommand : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    Q_PROPERTY(double timeLimit READ timeLimit WRITE setTimeLimit NOTIFY timeLimitChanged)
    Q_PROPERTY(QByteArray input READ input WRITE setInput NOTIFY inputChanged)
    Q_PROPERTY(bool keepsOutput READ keepsOutput WRITE setKeepsOutput NOTIFY keepsOutputChanged)

public:
    /// How the last command ended.
    enum Ending {
        NotEnded,   ///< it still runs, or none was started
        NotStarted, ///< the shell could not be started
        Exited,     ///< the shell exited with a status, or was ended by a signal from elsewhere
        TimedOut,   ///< the time limit ended it
        Cancelled,  ///< cancel() ended it
    };
    Q_ENUM(Ending)

    explicit ShellCommand(QObject *parent = nullptr);
    ~ShellCommand() override;

    /// Seconds that a command may take; 0, as at first, sets no limit. Counts from the next start.
    [[nodiscard]] double timeLimit() const noexcept { return m_timeLimit; }
    void setTimeLimit(double seconds);

    /// What the next commands read as standard input, as from a file. It is copied when a command starts.
    [[nodiscard]] QByteArray input() const { return m_input; }
    void setInput(const QByteArray &input);

    /// Whether the next command's output is kept for output(); false at first, so that memory stays bounded.
    [[nodiscard]] bool keepsOutput() const noexcept { return m_keepsOutput; }
    void setKeepsOutput(bool keeps);

    /// Starts a command and returns at once. Absent text is the command "(null)".
    /// \return false while another one runs, which goes on, and when the shell could not be started, as
    /// runShellCommand() says: a line in the log, and no signal
    Q_INVOKABLE bool start(const QString &command);

    /// Ends the command, see above. finished() follows from the event loop. Nothing when none runs.
    Q_INVOKABLE void cancel();

    [[nodiscard]] bool isRunning() const noexcept;

    /// The process group of the running command, which is the shell's process; 0 when none runs.
    [[nodiscard]] qint64 processGroup() const noexcept;

    /// All output of the last command so far if it is kept, otherwise absent.
    [[nodiscard]] QByteArray output() const { return m_output; }

    [[nodiscard]] Ending ending() const noexcept { return m_ending; }

Q_SIGNALS:
    /// Output as it comes, at most 64 KiB at a time.
    void bytesRead(const QByteArray &bytes);

    /// The same as text. A character that is cut between two readings comes whole with the second one; what is not valid
    /// UTF-8 comes as U+FFFD.
    void outputRead(const QString &text);

    /// The command has finished and all output was handed over; isRunning() is false by now.
    /// \param exitStatus the shell's, 0 to 255; -1 when a signal ended it, and when this process ignores SIGCHLD or
    /// something else in it waited for the shell, so that the status is lost
    /// \param signal that ended the shell, such as 15; 0 when none did
    void finished(int exitStatus, int signal);

    void runningChanged();
    void timeLimitChanged();
    void inputChanged();
    void keepsOutputChanged();

private:
    class Run;

    void watch(std::unique_ptr<Run> run);
    void readOutput();
    void deliver(const QByteArray &bytes);
    void deliverText();
    void outputEnded();
    void timeIsUp();
    void end(Ending why);
    void finish();

    std::unique_ptr<Run> m_run; ///< null when none runs
    QByteArray m_input;
    QByteArray m_output;
    double m_timeLimit = 0;
    bool m_keepsOutput = false;
    Ending m_ending = NotEnded;
};

} // namespace dravelin
