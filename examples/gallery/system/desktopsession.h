// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtGui/QImage>

/// A D-Bus session bus of this process's own, which is the session bus while it lives, and on demand an X server that
/// nobody sees, with a notification daemon.
class DesktopSession
{
public:
    /// Starts the bus. Nothing is activated on it.
    DesktopSession();
    ~DesktopSession();
    Q_DISABLE_COPY_MOVE(DesktopSession)

    [[nodiscard]] bool hasBus() const { return m_bus.state() == QProcess::Running; }

    /// Starts Xvfb and dunst.
    /// \return whether both run; they may not be installed
    [[nodiscard]] bool startDesktop();
    [[nodiscard]] QByteArray display() const { return m_display; }

    /// What `dunstctl` prints; absent when the daemon does not answer.
    [[nodiscard]] static QString askDaemon(const QStringList &arguments);

    /// Where the daemon's window is; null while it shows none.
    [[nodiscard]] QRect notificationArea() const;

    /// Clicks on the notification. The left button, 1, closes it; the middle one does its default action.
    void click(int button) const;

    /// What the X server shows.
    [[nodiscard]] QImage picture() const;

private:
    [[nodiscard]] QProcessEnvironment environment() const;
    void write(const QString &name, const QByteArray &content) const;
    [[nodiscard]] bool startServer();

    QTemporaryDir m_folder;
    QProcess m_bus, m_server, m_daemon;
    QByteArray m_display;
    QByteArray m_addressBefore;
};
