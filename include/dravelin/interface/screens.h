// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QList>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QSizeF>
#include <QtCore/QString>

QT_BEGIN_NAMESPACE
class QScreen;
QT_END_NAMESPACE

/// \file
/// Which screen holds a point or the pointer, how large the screens are, and whether an application fills one.
///
///     if (auto *screen = dravelin::findMouseScreen(); screen && dravelin::isFullScreen(screen))
///         hideOverlay();
///
/// Frames and points have y upwards from the lower left corner of the primary screen, in Qt's device-independent pixels;
/// upwardPoint() converts. Every answer is that of now. A screen that is gone may be handed in: it is only compared.
/// DisplayService tells about screens, pointer and windows, and can be replaced in tests. From the main thread.

namespace dravelin {

/// A place in Qt's coordinates with y upwards, or such a place in Qt's coordinates: the conversion is its own inverse.
/// The same point without screens.
[[nodiscard]] DRAVELIN_EXPORT QPointF upwardPoint(const QPointF &point);

/// The whole area of a screen; null when there is no such screen.
[[nodiscard]] DRAVELIN_EXPORT QRectF frame(const QScreen *screen);

/// The area that panels leave of a screen; null when there is no such screen. Where Qt does not know it, beside other
/// monitors of an X server, the panels of that screen are asked.
/// \cost with several monitors, that of onScreenWindowList()
[[nodiscard]] DRAVELIN_EXPORT QRectF visibleFrame(const QScreen *screen);

/// The first screen whose frame contains the point; null when none does. The left and the upper edge belong to a frame,
/// the right and the lower one do not: every pixel's place, upwards, is that of its upper left corner.
/// \operation{findScreenForPoint}
[[nodiscard]] DRAVELIN_EXPORT QScreen *findScreenForPoint(const QPointF &point);

/// The screen that the pointer is on; null when it is on none.
/// \operation{findMouseScreen}
[[nodiscard]] DRAVELIN_EXPORT QScreen *findMouseScreen();

/// The smallest width and the smallest height among all screens, which may come from two of them. Without screens, and
/// where all are larger, 123455676 by 1234567.
/// \operation{findMinimumScreenDimensions}
[[nodiscard]] DRAVELIN_EXPORT QSizeF findMinimumScreenDimensions();

/// How far below the upper edge of a screen its visible frame starts; 0 when there is no such screen.
/// \cost that of visibleFrame()
/// \operation{getMenubarHeight}
[[nodiscard]] DRAVELIN_EXPORT float getMenubarHeight(const QScreen *screen);

/// A window on the screen, as the functions of the group FullScreen look at it.
struct WindowRecord
{
    QString ownerName; ///< the process's name; absent when it is unknown
    QString name;      ///< the title; absent when there is none
    QRectF bounds;     ///< frame included, y downwards from the upper left corner; see onScreenWindowList()
};

/// The windows on the screen, of all applications, those in front first, in Qt's coordinates. Beside them, or in place of
/// them, two kinds of records tell what the desktop does:
///
/// - A panel at the upper edge of a screen is "Menubar" of "Window Server", with that screen's origin, unless a window that
///   fills the screen is in front of it.
/// - A window that fills a screen is followed by "Fullscreen Backdrop" of "Dock", with that screen's frame. The window
///   either is in the full-screen state and covers the screen, perhaps with others, or is in front of all others there,
///   without frame, and exactly as large as the screen. Smaller windows in front of it do not matter; behind a window that
///   takes all the space between the panels it does not count.
///
/// The bounds of these records are in the coordinates of createScreensFrameList(), so that they compare with its frames.
/// Processes that happen to be called "Dock" or "Window Server" are listed without owner.
///
/// Empty where the windows of other applications cannot be seen: without an X server, on Wayland.
/// \param screen leaves out what the desktop does on all other screens; null leaves out nothing
/// \cost that of DisplayService::windowList()
[[nodiscard]] DRAVELIN_EXPORT QList<WindowRecord> onScreenWindowList(const QScreen *screen = nullptr);

inline namespace FullScreen {

/// Whether an application fills the screen: its full-screen window shows, and no panel at the upper edge does. False where
/// windows cannot be seen, and for a screen that is gone. What the other screens show does not matter.
/// \cost that of onScreenWindowList()
/// \operation{isFullScreen}
[[nodiscard]] DRAVELIN_EXPORT bool isFullScreen(const QScreen *screen);

/// The frames of all screens, the primary one first. From the second on, y is shifted by the difference of the heights,
/// y + first height - height. That is kept so although it does not turn the axis round: only of screens whose lower edges
/// are level it makes the distance from the upper edge of the primary screen, downwards.
/// \operation{createScreensFrameList}
[[nodiscard]] DRAVELIN_EXPORT QList<QRectF> createScreensFrameList();

/// The position in the list of screens, the primary one being 0; -1 when it is not there.
/// \operation{findScreenIndex}
[[nodiscard]] DRAVELIN_EXPORT qsizetype findScreenIndex(const QScreen *screen);

/// Whether the windows show a full-screen application: a backdrop of the "Dock" with exactly the frame, and no menu bar of
/// the "Window Server" at its origin. The last window of the "Dock" that is called "Fullscreen Backdrop", or has no name,
/// decides about the backdrop.
/// \param screenFrame of createScreensFrameList()
/// \operation{dockFullScreenMethod:windowList:}
[[nodiscard]] DRAVELIN_EXPORT bool dockFullScreenMethod(const QList<WindowRecord> &windowList,
                                                        const QRectF &screenFrame);

/// Whether the window's bounds are exactly the frame.
/// \operation{foundFullScreen:screenFrame:}
[[nodiscard]] DRAVELIN_EXPORT bool foundFullScreen(const WindowRecord &window, const QRectF &screenFrame);

/// Whether the window's origin is exactly that of the frame.
/// \operation{foundMenubar:screenFrame:}
[[nodiscard]] DRAVELIN_EXPORT bool foundMenubar(const WindowRecord &window, const QRectF &screenFrame);

} // namespace FullScreen

} // namespace dravelin
