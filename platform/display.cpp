// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/display.h>

#include "platform/xwindows.h"

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

} // namespace

DisplayService::~DisplayService() = default;

QList<QRect> DisplayService::screens()
{
    QList<QRect> areas;
    if (qGuiApp) {
        for (const QScreen *screen : QGuiApplication::screens())
            areas << screen->geometry();
    }
    return areas;
}

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
