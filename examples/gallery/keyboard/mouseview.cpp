// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "keyboard/mouseview.h"

#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

MouseView::MouseView()
{
    setMouseTracking(true);
    setAccessibleName(tr("Mouse"));
}

void MouseView::setButtons(quint64 buttons)
{
    if (buttons == m_buttons)
        return;
    m_buttons = buttons;
    update();
}

void MouseView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF body(width() / 2.0 - 55, height() / 2.0 - 85, 110, 170);
    QPainterPath outline;
    outline.addRoundedRect(body, 50, 55);
    painter.fillPath(outline, palette().button());
    painter.setPen(palette().mid().color());
    painter.setClipPath(outline);
    const QRectF left(body.topLeft(), QSizeF(55, 75));
    const QRectF places[] = {left, left.translated(55, 0), QRectF(body.center().x() - 9, body.y() + 20, 18, 38)};
    for (int i = 0; i < 3; ++i) {
        painter.setBrush(m_buttons >> i & 1 ? QColor(245, 166, 35) : palette().button().color());
        painter.drawRect(places[i]);
    }
    painter.setClipping(false);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(outline);
}
