// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "screens/desktopview.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace {

constexpr double margin = 12;

const QColor ground(45, 52, 64), panels(94, 104, 122), usable(122, 156, 190), filled(200, 120, 70);

void drawScreen(QPainter &painter, const DesktopView::Screen &screen, const QTransform &scale)
{
    painter.setPen(Qt::NoPen);
    painter.fillRect(scale.mapRect(screen.frame), panels);
    painter.fillRect(scale.mapRect(screen.visibleFrame), screen.isFullScreen ? filled : usable);
}

void drawWindow(QPainter &painter, const DesktopView::Window &window, const QTransform &scale)
{
    const QRectF area = scale.mapRect(window.bounds);
    painter.setPen(QColor(30, 30, 30));
    painter.setBrush(QColor(250, 250, 250, 210));
    painter.drawRect(area);
    const QRectF room = area.adjusted(4, 2, -4, -2);
    if (room.height() > painter.fontMetrics().height())
        painter.drawText(room, Qt::AlignTop | Qt::AlignLeft,
                         painter.fontMetrics().elidedText(window.title, Qt::ElideRight, int(room.width())));
}

void drawEdge(QPainter &painter, const DesktopView::Screen &screen, const QTransform &scale)
{
    const QRectF area = scale.mapRect(screen.frame);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(screen.hasPointer ? QColor(255, 210, 60) : QColor(20, 20, 20), 2));
    painter.drawRect(area);
    const QString text =
        DesktopView::tr("%1, %2 x %3").arg(screen.name).arg(screen.frame.width()).arg(screen.frame.height());
    const QRectF label = painter.boundingRect(area.adjusted(8, 6, -8, -6), Qt::AlignBottom | Qt::AlignRight, text);
    painter.fillRect(label.adjusted(-5, -3, 5, 3), ground);
    painter.setPen(Qt::white);
    painter.drawText(label, text);
}

void drawPointer(QPainter &painter, const QPointF &place)
{
    painter.setPen(Qt::black);
    painter.setBrush(Qt::white);
    painter.drawPolygon(QPolygonF({{0, 0}, {0, 14}, {4, 10}, {10, 10}}).translated(place));
}

} // namespace

DesktopView::DesktopView()
{
    setAccessibleName(tr("Screens and windows"));
    setMinimumSize(300, 160);
}

void DesktopView::setScene(const Scene &scene)
{
    if (scene == m_scene)
        return;
    m_scene = scene;
    update();
}

QTransform DesktopView::scale() const
{
    QRectF all;
    for (const Screen &screen : m_scene.screens)
        all |= screen.frame;
    const QRectF room = QRectF(rect()).adjusted(margin, margin, -margin, -margin);
    const double factor = std::min(room.width() / all.width(), room.height() / all.height());
    QTransform scale = QTransform::fromTranslate(room.center().x(), room.center().y());
    scale.scale(factor, factor);
    return scale.translate(-all.center().x(), -all.center().y());
}

void DesktopView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), ground);
    if (m_scene.screens.isEmpty())
        return;
    const QTransform toView = scale();
    for (const Screen &screen : m_scene.screens)
        drawScreen(painter, screen, toView);
    for (auto window = m_scene.windows.rbegin(); window != m_scene.windows.rend(); ++window)
        drawWindow(painter, *window, toView);
    for (const Screen &screen : m_scene.screens)
        drawEdge(painter, screen, toView);
    drawPointer(painter, toView.map(m_scene.pointer));
}
