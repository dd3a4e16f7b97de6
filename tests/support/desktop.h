// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>
#include <QtTest/QTest>

#include <algorithm>

/// Whether all of these programs are installed.
inline bool arePrograms(const QStringList &names)
{
    return std::all_of(names.begin(), names.end(),
                       [](const QString &name) { return !QStandardPaths::findExecutable(name).isEmpty(); });
}

/// Waits for it while events are handled.
bool becomes(const auto &condition) { return QTest::qWaitFor(condition, 30'000); }

/// A program that runs while this lives and says by a line that it is ready.
class Server
{
public:
    Server(const QString &program, const QStringList &arguments)
    {
        m_process.start(program, arguments);
        while (!m_process.canReadLine() && m_process.waitForReadyRead(30'000)) {
        }
        m_line = m_process.readLine().trimmed();
    }
    ~Server() { stop(); }
    Q_DISABLE_COPY_MOVE(Server)

    /// Empty when it did not start.
    [[nodiscard]] QByteArray line() const { return m_line; }
    [[nodiscard]] QProcess &process() { return m_process; }
    void stop()
    {
        m_process.terminate(); // so that it tidies up
        if (!m_process.waitForFinished(10'000))
            m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
    QByteArray m_line;
};

/// An X server.
class XServer : public Server
{
public:
    /// \param display ":7" for a certain number; by default the server picks a free one
    explicit XServer(const QString &size = QStringLiteral("800x600"), const QString &display = {})
        : Server(QStringLiteral("Xvfb"), arguments(size, display))
    {}

    /// For `DISPLAY`; empty when it does not run.
    [[nodiscard]] QByteArray name() const { return line().isEmpty() ? line() : ':' + line(); }

private:
    static QStringList arguments(const QString &size, const QString &display)
    {
        const QString own = QStringLiteral("-displayfd 1 -noreset -screen 0 ") + size + QStringLiteral("x24");
        return (display.isEmpty() ? own : display + QLatin1Char(' ') + own).split(QLatin1Char(' '));
    }
};

/// A window manager on the X server of `DISPLAY`. It manages windows as soon as it is made.
class WindowManager : public Server
{
public:
    WindowManager() : Server(QStringLiteral("openbox"), {QStringLiteral("--startup"), QStringLiteral("echo ready")}) {}
};
