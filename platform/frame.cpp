// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/frame.h>

#include <QtCore/QHash>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <cmath>

namespace dravelin {

namespace {

/// A frame, and the geometry that was asked for when it was set.
struct ExactFrame
{
    QRectF frame;
    QRect pixels;
};

/// Of the widgets whose geometry does not tell their frame. Dynamic properties would do as well, but they are found by
/// comparing the names of all properties, and Qt Designer and style sheets see them.
using ExactFrames = QHash<const QWidget *, ExactFrame>;
Q_GLOBAL_STATIC(ExactFrames, exactFrames)

/// A coordinate beyond what a widget may have is cut to it, twice over so that sums of two stay apart.
int nearestPixel(double coordinate)
{
    constexpr double limit = 2.0 * QWIDGETSIZE_MAX;
    return std::isnan(coordinate) ? 0 : int(std::floor(std::clamp(coordinate, -limit, limit) + 0.5));
}

QRect nearestPixels(const QRectF &frame)
{
    const QPoint topLeft(nearestPixel(frame.x()), nearestPixel(frame.y()));
    const QSize size(nearestPixel(frame.x() + frame.width()) - topLeft.x(),
                     nearestPixel(frame.y() + frame.height()) - topLeft.y());
    return {topLeft, size.expandedTo({0, 0})};
}

/// QRectF compares with a tolerance.
bool isSame(const QRectF &a, const QRectF &b)
{
    return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.height() == b.height();
}

void forget(const QWidget *widget)
{
    if (exactFrames.exists())
        exactFrames->remove(widget);
}

void keep(const QWidget *widget, const ExactFrame &exact)
{
    if (exactFrames.isDestroyed())
        return;
    if (const auto known = exactFrames->find(widget); known != exactFrames->end()) {
        *known = exact;
    } else if (!isSame(exact.frame, exact.pixels)) {
        exactFrames->insert(widget, exact);
        QObject::connect(widget, &QObject::destroyed, [widget] { forget(widget); });
    }
}

} // namespace

QRectF Frames::frame(const QWidget *widget)
{
    if (!widget)
        return {};
    const QRect pixels = widget->geometry();
    if (exactFrames.isDestroyed())
        return pixels;
    const auto exact = exactFrames->constFind(widget);
    if (exact == exactFrames->cend())
        return pixels;
    const bool moved = exact->pixels.topLeft() != pixels.topLeft(), resized = exact->pixels.size() != pixels.size();
    return {moved ? pixels.topLeft() : exact->frame.topLeft(), resized ? pixels.size() : exact->frame.size()};
}

void Frames::setFrame(QWidget *widget, const QRectF &frame)
{
    if (!widget)
        return;
    const QRect pixels = nearestPixels(frame);
    keep(widget, {frame, pixels}); // first: what is called on the move or resize asks for it
    widget->setGeometry(pixels);
}

} // namespace dravelin
