// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/screens.h>

#include "interface/screenareas.h"

#include <algorithm>

namespace dravelin {

namespace {

QList<ScreenInfo> screenList() { return DisplayService::current()->screenList(); }

/// The lower edge of the primary screen in Qt's coordinates, where y starts upwards.
int ground(const QList<ScreenInfo> &screens) { return screens.constFirst().geometry.bottom() + 1; }

QRectF upward(const QRectF &area, const QList<ScreenInfo> &screens)
{
    return {area.x(), ground(screens) - area.bottom(), area.width(), area.height()};
}

qsizetype indexOf(const QScreen *screen, const QList<ScreenInfo> &screens)
{
    const auto found = std::find_if(screens.begin(), screens.end(), [&](auto &info) { return info.screen == screen; });
    return screen && found != screens.end() ? found - screens.begin() : -1;
}

/// In Qt's coordinates.
QRectF areaBetweenPanels(const ScreenInfo &screen, bool isAlone)
{
    const QRectF known = screen.availableGeometry;
    if (isAlone || screen.pixels.isEmpty())
        return known;
    const QList<WindowInfo> windows = DisplayService::current()->windowList();
    return known & detail::fromPixels(detail::pixelsBetweenPanels(screen, windows), screen);
}

/// The left and the upper edge count.
bool contains(const QRectF &frame, const QPointF &point)
{
    return frame.left() <= point.x() && point.x() < frame.right() && frame.top() < point.y()
           && point.y() <= frame.bottom();
}

} // namespace

QPointF upwardPoint(const QPointF &point)
{
    const QList<ScreenInfo> screens = screenList();
    return screens.isEmpty() ? point : QPointF(point.x(), ground(screens) - point.y());
}

QRectF frame(const QScreen *screen)
{
    const QList<ScreenInfo> screens = screenList();
    const qsizetype index = indexOf(screen, screens);
    return index < 0 ? QRectF() : upward(screens[index].geometry, screens);
}

QRectF visibleFrame(const QScreen *screen)
{
    const QList<ScreenInfo> screens = screenList();
    const qsizetype index = indexOf(screen, screens);
    return index < 0 ? QRectF() : upward(areaBetweenPanels(screens[index], screens.size() == 1), screens);
}

QScreen *findScreenForPoint(const QPointF &point)
{
    const QList<ScreenInfo> screens = screenList();
    const auto found = std::find_if(screens.begin(), screens.end(), [&](const ScreenInfo &info) {
        return contains(upward(info.geometry, screens), point);
    });
    return found == screens.end() ? nullptr : found->screen;
}

QScreen *findMouseScreen() { return findScreenForPoint(upwardPoint(DisplayService::current()->mouseLocation())); }

QSizeF findMinimumScreenDimensions()
{
    QSizeF least(123455676.0, 1234567.0);
    for (const ScreenInfo &info : screenList())
        least = least.boundedTo(info.geometry.size());
    return least;
}

float getMenubarHeight(const QScreen *screen)
{
    return float(frame(screen).bottom() - visibleFrame(screen).bottom()); // these are the upper edges
}

QList<QRectF> FullScreen::createScreensFrameList() { return detail::frameList(screenList()); }

qsizetype FullScreen::findScreenIndex(const QScreen *screen) { return indexOf(screen, screenList()); }

} // namespace dravelin
