// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QRect>
#include <QtCore/QString>

#include <memory>

QT_BEGIN_NAMESPACE
class QScreen;
QT_END_NAMESPACE

namespace dravelin {

/// A screen and its areas.
struct ScreenInfo
{
    QScreen *screen = nullptr; ///< Qt's own; it goes when the monitor does
    QRect geometry;            ///< in Qt's coordinates
    QRect availableGeometry;   ///< what Qt takes to be clear of panels; beside other monitors of an X server, all of it
    QRect pixels;              ///< in the X server's pixels; null when the screen is not the X server's

    friend bool operator==(const ScreenInfo &, const ScreenInfo &) = default;
};

/// A window that is on the screen, of whichever application.
struct WindowInfo
{
    quint32 identifier = 0; ///< the X server's
    qint64 processId = 0;   ///< 0 when the application does not tell
    QString ownerName;      ///< the process's name; absent when the process is unknown
    QString name;           ///< the title; absent when there is none
    QRect bounds;           ///< frame included, in the X server's pixels, y downwards
    bool isFullScreen = false;
    bool isDock = false;      ///< a panel
    bool isDesktop = false;   ///< the ground under all windows
    bool isMaximized = false; ///< in both directions
    bool isDecorated = false; ///< it has a frame
    QRect workArea{}; ///< what a panel leaves of the X server's whole area, in pixels; null when it claims nothing

    friend bool operator==(const WindowInfo &, const WindowInfo &) = default;
};

/// What the user sees: the screens and the windows of all applications. Tests put one of their own in its place.
///
///     for (const dravelin::WindowInfo &window : dravelin::DisplayService::current()->windowList())
///         qInfo() << window.ownerName << window.name << window.bounds;
///
/// From the main thread.
class DRAVELIN_EXPORT DisplayService
{
public:
    virtual ~DisplayService();

    /// The screens, the primary one first; by default those of QGuiApplication. Empty without one.
    [[nodiscard]] virtual QList<ScreenInfo> screenList();

    /// The areas of the screens in Qt's coordinates, the primary one first; by default those of screenList().
    [[nodiscard]] virtual QList<QRect> screens();

    /// Where the pointer is, in Qt's coordinates; by default QCursor::pos(), and the origin without a QGuiApplication.
    [[nodiscard]] virtual QPointF mouseLocation();

    /// The windows on the screen, those in front first; by default those of the X server that `DISPLAY` names. A window
    /// manager that keeps a list of its windows is asked for it; without one every mapped top-level window counts.
    /// Windows that are minimised or on another desktop are left out. That a process has changed its name shows with the
    /// next change of any window. Empty without an X server.
    /// \cost within an event loop of the main thread, one round trip when no window has changed since the last
    /// question; otherwise a few round trips and about 10 us a window, and a connection the first time
    [[nodiscard]] virtual QList<WindowInfo> windowList();

    /// The display in use.
    [[nodiscard]] static std::shared_ptr<DisplayService> current();

    /// Replaces the process's display; an empty pointer brings the default back.
    /// \return the display that was replaced, empty for the default one
    static std::shared_ptr<DisplayService> setCurrent(std::shared_ptr<DisplayService> display);
};

} // namespace dravelin
