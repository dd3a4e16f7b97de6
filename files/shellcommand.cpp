// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/shellcommand.h>

#include "platform/childprocess.h"
#include "platform/commandoutput.h"
#include "platform/utf8pieces.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QPointer>
#include <QtCore/QSocketNotifier>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <algorithm>
#include <array>
#include <csignal>
#include <limits>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace dravelin {

namespace {

constexpr auto Grace = 1s;      ///< between SIGTERM and SIGKILL
constexpr auto Interval = 10ms; ///< between questions whether the shell has ended

int milliseconds(double seconds) { return int(std::min(seconds * 1000, double(std::numeric_limits<int>::max()))); }

} // namespace

/// What there is while a command runs. The end of the shell is not looked for before its output has ended: until it is
/// reaped, its process number and so that of the group stay its own.
class ShellCommand::Run
{
public:
    Run(ChildProcess &&child, bool keeps)
        : process(std::move(child)), output(process.output(), QSocketNotifier::Read), keepsOutput(keeps)
    {
        timer.setSingleShot(true);
    }

    /// Where the system does not tell when the shell has ended, it is asked.
    void watchEnd()
    {
        if (process.ended() < 0)
            question.start(Interval);
        else
            ended.setSocket(process.ended());
        ended.setEnabled(process.ended() >= 0);
    }

    ChildProcess process; ///< before the notifiers, which stop watching before its files are closed
    QSocketNotifier output;
    QSocketNotifier ended{QSocketNotifier::Read};
    QTimer question;
    QTimer timer;
    QByteArray cut; ///< the beginning of a character
    QString text;   ///< that outputRead() has not told of
    bool keepsOutput;
    Ending why = Exited;
};

ShellCommand::ShellCommand(QObject *parent) : QObject(parent) {}

ShellCommand::~ShellCommand()
{
    if (!m_run)
        return;
    m_run->process.signalGroup(SIGKILL);
    m_run->process.reap();
}

void ShellCommand::setTimeLimit(double seconds)
{
    const double limit = seconds > 0 ? seconds : 0;
    if (limit == m_timeLimit)
        return;
    m_timeLimit = limit;
    Q_EMIT timeLimitChanged();
}

void ShellCommand::setInput(const QByteArray &input)
{
    if (input == m_input)
        return;
    m_input = input;
    Q_EMIT inputChanged();
}

void ShellCommand::setKeepsOutput(bool keeps)
{
    if (keeps == m_keepsOutput)
        return;
    m_keepsOutput = keeps;
    Q_EMIT keepsOutputChanged();
}

bool ShellCommand::isRunning() const noexcept { return m_run != nullptr; }

qint64 ShellCommand::processGroup() const noexcept { return m_run ? m_run->process.id() : 0; }

bool ShellCommand::start(const QString &command)
{
    if (m_run) {
        ChildProcess::reportNotStarted(command, u"another one is running"_s);
        return false;
    }
    m_output = m_keepsOutput ? ""_ba : QByteArray();
    m_ending = NotStarted;
    if (!QAbstractEventDispatcher::instance(thread())) {
        ChildProcess::reportNotStarted(command, u"this thread has no event loop"_s);
        return false;
    }
    auto process = ChildProcess::runInShell(command, {.ownGroup = true, .input = m_input});
    if (!process)
        return false;
    m_ending = NotEnded;
    watch(std::make_unique<Run>(*std::move(process), m_keepsOutput));
    Q_EMIT runningChanged();
    return true;
}

void ShellCommand::watch(std::unique_ptr<Run> run)
{
    connect(&run->output, &QSocketNotifier::activated, this, &ShellCommand::readOutput);
    connect(&run->ended, &QSocketNotifier::activated, this, &ShellCommand::finish);
    connect(&run->question, &QTimer::timeout, this, [this] {
        if (m_run->process.hasEnded())
            finish();
    });
    connect(&run->timer, &QTimer::timeout, this, &ShellCommand::timeIsUp);
    if (m_timeLimit > 0)
        run->timer.start(milliseconds(m_timeLimit));
    m_run = std::move(run);
}

void ShellCommand::cancel() { end(Cancelled); }

void ShellCommand::end(Ending why)
{
    if (!m_run || m_run->why != Exited)
        return;
    m_run->why = why;
    m_run->process.signalGroup(SIGTERM);
    m_run->timer.start(Grace);
}

void ShellCommand::timeIsUp()
{
    if (m_run->why == Exited)
        return end(TimedOut);
    m_run->process.signalGroup(SIGKILL);
    m_run->watchEnd(); // who left the group may have the pipe open for ever
}

/// Once for each time that there is something, so that the event loop goes on in between.
void ShellCommand::readOutput()
{
    std::array<char, 65536> buffer;
    const ssize_t count = retried([&] { return read(m_run->process.output(), buffer.data(), buffer.size()); });
    if (count > 0)
        deliver(QByteArray(buffer.data(), count));
    else
        outputEnded();
}

void ShellCommand::deliver(const QByteArray &bytes)
{
    if (m_run->keepsOutput)
        m_output += bytes;
    const QByteArray whole = m_run->cut + bytes;
    const qsizetype cut = detail::cutCharacter(whole);
    m_run->cut = whole.last(cut);
    m_run->text += detail::toText(QByteArrayView(whole).chopped(cut));
    const QPointer<ShellCommand> self(this);
    Q_EMIT bytesRead(bytes);
    if (self)
        deliverText();
}

/// All there is, in order: a slot of bytesRead() that runs the event loop has more read meanwhile.
void ShellCommand::deliverText()
{
    if (m_run && !m_run->text.isEmpty())
        Q_EMIT outputRead(std::exchange(m_run->text, {}));
}

void ShellCommand::outputEnded()
{
    m_run->output.setEnabled(false);
    m_run->process.closeOutput();
    m_run->watchEnd();
    m_run->text += detail::toText(std::exchange(m_run->cut, {}));
    deliverText();
}

void ShellCommand::finish()
{
    std::unique_ptr<Run> run = std::move(m_run);
    if (run->why != Exited)
        run->process.signalGroup(SIGKILL); // who paid no heed to SIGTERM and had no part in the output
    const ChildProcess::Status status = run->process.reap();
    m_ending = run->why;
    run.reset(); // slots may run the event loop
    const QPointer<ShellCommand> self(this);
    Q_EMIT runningChanged();
    if (self)
        Q_EMIT finished(status.exitStatus, status.signal);
}

} // namespace dravelin
