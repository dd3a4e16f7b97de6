// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "photo/splitview.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <algorithm>

SplitView::SplitView(QWidget *parent) : QWidget(parent)
{
    setMinimumSize(200, 150);
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::SplitHCursor);
    setAccessibleName(tr("Before and after"));
}

void SplitView::setBefore(const QImage &image)
{
    m_before = image;
    update();
}

void SplitView::setAfter(const QImage &image)
{
    m_after = image;
    update();
}

QRectF SplitView::pictureRect() const
{
    const QSizeF size = QSizeF(m_before.size()).scaled(QSizeF(this->size()), Qt::KeepAspectRatio);
    return {QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), size};
}

void SplitView::moveLine(const QMouseEvent *event)
{
    setLine((event->position().x() - pictureRect().left()) / std::max(1.0, pictureRect().width()));
}

void SplitView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right)
        setLine(m_line + (event->key() == Qt::Key_Left ? -0.05 : 0.05));
    else
        QWidget::keyPressEvent(event);
}

void SplitView::setLine(double part)
{
    m_line = std::clamp(part, 0.0, 1.0);
    update();
}

void SplitView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QRectF all = pictureRect();
    const double line = all.left() + m_line * all.width();
    painter.drawImage(all, m_before);
    painter.setClipRect(QRectF(QPointF(line, all.top()), all.bottomRight()));
    painter.drawImage(all, m_after);
    painter.setClipping(false);
    painter.setPen(QPen(Qt::white, 2));
    painter.drawLine(QPointF(line, all.top()), QPointF(line, all.bottom()));
}
