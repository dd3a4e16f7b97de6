// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QList>
#include <QtCore/QRect>
#include <QtCore/QString>

#include <memory>

namespace dravelin {

/// A window that is on the screen, of whichever application.
struct WindowInfo
{
    quint32 identifier = 0; ///< the X server's
    qint64 processId = 0;   ///< 0 when the application does not tell
    QString ownerName;      ///< the process's name; absent when the process is unknown
    QString name;           ///< the title; absent when there is none
    QRect bounds;           ///< frame included, in the X server's pixels, y downwards
    bool isFullScreen = false;
    bool isDock = false; ///< a panel

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

    /// The areas of the screens in Qt's coordinates, the primary one first; by default those of QGuiApplication.
    [[nodiscard]] virtual QList<QRect> screens();

    /// The windows on the screen, those in front first; by default those of the X server that `DISPLAY` names. A window
    /// manager that keeps a list of its windows is asked for it; without one every mapped top-level window counts.
    /// Windows that are minimised or on another desktop are left out. Empty without an X server.
    /// \cost a connection and a few round trips, however many windows there are
    [[nodiscard]] virtual QList<WindowInfo> windowList();

    /// The display in use.
    [[nodiscard]] static std::shared_ptr<DisplayService> current();

    /// Replaces the process's display; an empty pointer brings the default back.
    /// \return the display that was replaced, empty for the default one
    static std::shared_ptr<DisplayService> setCurrent(std::shared_ptr<DisplayService> display);
};

} // namespace dravelin
