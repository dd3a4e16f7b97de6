// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/display.h>

#include "platform/xwindows.h"

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include <utility>

namespace dravelin {

namespace {

std::shared_ptr<DisplayService> &replacement()
{
    static std::shared_ptr<DisplayService> display;
    return display;
}

/// Qt scales the size of a screen, and leaves its upper left corner where the X server has it.
QRect pixels(const QRect &area, const QScreen &screen)
{
    return {area.topLeft(), area.size() * screen.devicePixelRatio()};
}

/// qGuiApp is not null for a plain QCoreApplication.
bool isGui() { return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) != nullptr; }

} // namespace

DisplayService::~DisplayService() = default;

QList<ScreenInfo> DisplayService::screenList()
{
    QList<ScreenInfo> list;
    if (!isGui())
        return list;
    const bool isX = QGuiApplication::platformName() == QLatin1String("xcb");
    for (QScreen *screen : QGuiApplication::screens()) {
        const QRect area = screen->geometry();
        list.append({screen, area, screen->availableGeometry(), isX ? pixels(area, *screen) : QRect()});
    }
    return list;
}

QList<QRect> DisplayService::screens()
{
    QList<QRect> areas;
    for (const ScreenInfo &screen : screenList())
        areas << screen.geometry;
    return areas;
}

QPointF DisplayService::mouseLocation() { return isGui() ? QPointF(QCursor::pos()) : QPointF(); }

QList<WindowInfo> DisplayService::windowList() { return xWindows(); }

std::shared_ptr<DisplayService> DisplayService::current()
{
    return replacement() ? replacement() : std::make_shared<DisplayService>();
}

std::shared_ptr<DisplayService> DisplayService::setCurrent(std::shared_ptr<DisplayService> display)
{
    return std::exchange(replacement(), std::move(display));
}

} // namespace dravelin
