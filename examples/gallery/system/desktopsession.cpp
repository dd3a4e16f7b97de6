// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "system/desktopsession.h"

#include <dravelin/platform/display.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QFile>
#include <QtCore/QtEndian>

using namespace Qt::StringLiterals;

namespace {

constexpr int Patience = 20'000; // ms

constexpr char BusConfiguration[] = R"(<busconfig>
<type>session</type>
<listen>unix:dir=%1</listen>
<policy context="default">
<allow send_destination="*" eavesdrop="true"/>
<allow eavesdrop="true"/>
<allow own="*"/>
</policy>
</busconfig>)";

constexpr char DaemonConfiguration[] = R"([global]
font = DejaVu Sans 11
format = "<b>%s</b>\n%b"
markup = full
width = 360
offset = 20x20
show_indicators = yes
mouse_left_click = close_current
mouse_middle_click = do_action, close_current
)";

/// The first line that a program prints.
QByteArray firstLine(QProcess &process)
{
    while (!process.canReadLine()) {
        if (!process.waitForReadyRead(Patience))
            return {};
    }
    return process.readLine().trimmed();
}

void restore(const char *variable, const QByteArray &value)
{
    value.isNull() ? qunsetenv(variable) : qputenv(variable, value);
}

void stop(QProcess &process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.kill();
    process.waitForFinished();
}

} // namespace

DesktopSession::DesktopSession() : m_addressBefore(qgetenv("DBUS_SESSION_BUS_ADDRESS"))
{
    write(u"bus.conf"_s, QString::fromLatin1(BusConfiguration).arg(m_folder.path()).toUtf8());
    m_bus.start(u"dbus-daemon"_s,
                {u"--nofork"_s, u"--print-address"_s, u"--config-file"_s, m_folder.filePath(u"bus.conf"_s)});
    const QByteArray address = firstLine(m_bus);
    // Without a bus, that of the user's session stays out of it.
    qputenv("DBUS_SESSION_BUS_ADDRESS", address.isEmpty() ? "unix:path=" + m_folder.path().toUtf8() : address);
}

DesktopSession::~DesktopSession()
{
    stop(m_daemon);
    stop(m_server);
    stop(m_bus);
    restore("DBUS_SESSION_BUS_ADDRESS", m_addressBefore);
}

void DesktopSession::write(const QString &name, const QByteArray &content) const
{
    QFile file(m_folder.filePath(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
}

bool DesktopSession::startServer()
{
    // It takes a free number and prints it, and keeps its screen in a file.
    m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"640x360x24"_s, u"-noreset"_s,
                               u"-fbdir"_s, m_folder.path()});
    m_display = ':' + firstLine(m_server);
    return m_display != ":";
}

QProcessEnvironment DesktopSession::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DISPLAY"_s, QString::fromLatin1(m_display));
    environment.remove(u"WAYLAND_DISPLAY"_s);
    return environment;
}

bool DesktopSession::startDesktop()
{
    if (!hasBus() || !startServer())
        return false;
    write(u"dunstrc"_s, DaemonConfiguration);
    m_daemon.setProcessEnvironment(environment());
    m_daemon.start(u"dunst"_s, {u"-conf"_s, m_folder.filePath(u"dunstrc"_s)});
    if (!m_daemon.waitForStarted())
        return false;
    const QDeadlineTimer deadline(Patience);
    while (askDaemon({u"is-paused"_s}).isNull() && m_daemon.state() == QProcess::Running && !deadline.hasExpired())
        m_daemon.waitForFinished(20);
    return m_daemon.state() == QProcess::Running;
}

QString DesktopSession::askDaemon(const QStringList &arguments)
{
    QProcess control;
    control.start(u"dunstctl"_s, arguments);
    const bool isDone = control.waitForFinished(Patience) && control.exitCode() == 0;
    return isDone ? QString::fromUtf8(control.readAllStandardOutput()) : QString();
}

QRect DesktopSession::notificationArea() const
{
    const QByteArray before = qgetenv("DISPLAY");
    qputenv("DISPLAY", m_display);
    const QList<dravelin::WindowInfo> windows = dravelin::DisplayService::current()->windowList();
    restore("DISPLAY", before);
    const QRect area = windows.value(0).bounds;
    return area.height() > 20 ? area : QRect(); // it is laid out once mapped
}

void DesktopSession::click(int button) const
{
    const QPoint place = notificationArea().center();
    QProcess pointer;
    pointer.setProcessEnvironment(environment());
    pointer.start(u"xdotool"_s, {u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s,
                                 QString::number(button)});
    pointer.waitForFinished(Patience);
}

/// The file is an X window dump: 25 big-endian numbers, a name, the colours, the pixels.
QImage DesktopSession::picture() const
{
    enum { HeaderSize = 0, Width = 4, Height = 5, BytesPerLine = 12, Colors = 19, Count = 25 };
    constexpr qsizetype ColorSize = 12;
    QFile file(m_folder.filePath(u"Xvfb_screen0"_s));
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    if (bytes.size() < Count * 4)
        return {};
    const auto number = [&](int index) { return qsizetype(qFromBigEndian<quint32>(bytes.constData() + 4 * index)); };
    const qsizetype pixels = number(HeaderSize) + number(Colors) * ColorSize;
    if (bytes.size() < pixels + number(Height) * number(BytesPerLine))
        return {};
    return QImage(reinterpret_cast<const uchar *>(bytes.constData()) + pixels, int(number(Width)), int(number(Height)),
                  number(BytesPerLine), QImage::Format_RGB32)
        .copy();
}
