// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "interface/screenareas.h"

namespace dravelin::detail {

namespace {

/// With y upwards from the lower edge of the primary screen.
QRectF frame(const QRect &area, const QRect &primary)
{
    return {double(area.x()), double(primary.bottom() - area.bottom()), double(area.width()), double(area.height())};
}

} // namespace

QList<QRectF> frameList(const QList<ScreenInfo> &screens)
{
    QList<QRectF> frames;
    for (const ScreenInfo &screen : screens) {
        frames << frame(screen.geometry, screens.constFirst().geometry);
        frames.back().translate(0, frames.constFirst().height() - frames.constLast().height());
    }
    return frames;
}

QRect pixelsBetweenPanels(const ScreenInfo &screen, const QList<WindowInfo> &windows)
{
    QRect area = screen.pixels;
    for (const WindowInfo &window : windows) {
        // A strip at an inner edge reaches through the screens beyond, which it does not mean.
        const bool isHere = window.bounds.intersects(screen.pixels);
        if (const QRect left = area & window.workArea; isHere && !left.isEmpty())
            area = left;
    }
    return area;
}

QRectF fromPixels(const QRect &area, const ScreenInfo &screen)
{
    const double scale = double(screen.geometry.width()) / screen.pixels.width();
    return {QPointF(screen.geometry.topLeft()) + QPointF(area.topLeft() - screen.pixels.topLeft()) * scale,
            QSizeF(area.size()) * scale};
}

} // namespace dravelin::detail
