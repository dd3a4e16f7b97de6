// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/dumps.h>

#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>

namespace dravelin {

DebugView::DebugView(QWidget *parent) : QWidget(parent) {}

DebugView::~DebugView() = default;

void DebugView::drawRect(QPainter &painter, const QRect &)
{
    painter.save();
    painter.fillRect(QRect(-5, -5, 10, 10), Qt::red);
    painter.setPen(Qt::green);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(0, 0, -1, -1)); // the pen covers the outermost pixels
    painter.restore();
}

void DebugView::paintEvent(QPaintEvent *event)
{
    QWidget::paintEvent(event);
    QPainter painter(this);
    drawRect(painter, event->rect());
}

} // namespace dravelin
