// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/screens.h>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

// Qt's own comparisons let small differences pass.
bool isSame(const QPointF &a, const QPointF &b)
{
    return !(a.x() < b.x() || a.x() > b.x() || a.y() < b.y() || a.y() > b.y());
}

bool isSame(const QRectF &a, const QRectF &b)
{
    return isSame(a.topLeft(), b.topLeft()) && isSame(QPointF(a.width(), a.height()), QPointF(b.width(), b.height()));
}

} // namespace

bool FullScreen::isFullScreen(const QScreen *screen)
{
    const qsizetype index = findScreenIndex(screen);
    return index >= 0 && dockFullScreenMethod(onScreenWindowList(screen), createScreensFrameList().value(index));
}

bool FullScreen::dockFullScreenMethod(const QList<WindowRecord> &windowList, const QRectF &screenFrame)
{
    bool isFilled = false;
    bool hasMenubar = false;
    for (const WindowRecord &window : windowList) {
        if (window.ownerName == "Window Server"_L1 && window.name == "Menubar"_L1)
            hasMenubar = hasMenubar || foundMenubar(window, screenFrame);
        if (window.ownerName == "Dock"_L1 && (window.name == "Fullscreen Backdrop"_L1 || window.name.isNull()))
            isFilled = foundFullScreen(window, screenFrame);
    }
    return isFilled && !hasMenubar;
}

bool FullScreen::foundFullScreen(const WindowRecord &window, const QRectF &screenFrame)
{
    return isSame(window.bounds, screenFrame);
}

bool FullScreen::foundMenubar(const WindowRecord &window, const QRectF &screenFrame)
{
    return isSame(window.bounds.topLeft(), screenFrame.topLeft());
}

} // namespace dravelin
