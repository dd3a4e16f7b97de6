// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/dropmarker.h"

#include <QtGui/QPainter>

#include <algorithm>

namespace dravelin::detail {

namespace {

constexpr int reach = 4; ///< of the line's knob above and below the line
constexpr int lineWidth = 2;

void drawMark(QPainter &painter, const QRect &place, DropOperation operation)
{
    const qreal inset = reach / 2.0;
    if (operation == DropOperation::On) {
        painter.drawRoundedRect(QRectF(place).adjusted(inset, inset, -inset, -inset), reach, reach);
        return;
    }
    const QPointF knob(reach + inset, place.center().y() + 0.5);
    painter.drawEllipse(knob, inset + 0.5, inset + 0.5);
    painter.drawLine(knob + QPointF(inset + 0.5, 0), QPointF(place.right() - reach, knob.y()));
}

} // namespace

DropMarker::DropMarker(QWidget *viewport) : QWidget(viewport)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void DropMarker::showAt(const QRect &row, DropOperation operation)
{
    m_operation = operation;
    const QRect line(row.left(), std::max(row.top() - reach, 0), row.width(), 2 * reach); // whole above the first row
    setGeometry(operation == DropOperation::On ? row : line);
    raise();
    show();
    update();
}

void DropMarker::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isRightToLeft()) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    // The pale rim keeps it visible on selected rows, which have the same colour.
    painter.setPen(QPen(palette().color(QPalette::Base), lineWidth + 2));
    drawMark(painter, rect(), m_operation);
    painter.setPen(QPen(palette().color(QPalette::Highlight), lineWidth));
    drawMark(painter, rect(), m_operation);
}

} // namespace dravelin::detail
