// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "stack/block.h"

#include <dravelin/platform/frame.h>

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>

using namespace dravelin;

Block::Block(QWidget *parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::SizeFDiagCursor);
    setAccessibleName(tr("Block"));
    setAccessibleDescription(tr("The arrow keys resize it, Delete removes it."));
}

/// One of a few, by the block's place among the others.
QColor Block::color() const
{
    const auto place = parentWidget() ? int(parentWidget()->children().indexOf(this)) : 0;
    return QColor::fromHsv((200 + 67 * place) % 360, 150, 215);
}

void Block::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), color());
    if (m_isSelected) {
        painter.setPen(QPen(Qt::black, 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
    painter.setPen(Qt::black);
    for (const int inset : {3, 6, 9}) // the grip
        painter.drawLine(width() - inset, height() - 2, width() - 2, height() - inset);
}

void Block::keyPressEvent(QKeyEvent *event)
{
    const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? 10 : 1;
    const QSizeF size = frame(this).size();
    switch (event->key()) {
    case Qt::Key_Left:
        return resizeTo(size - QSizeF(step, 0));
    case Qt::Key_Right:
        return resizeTo(size + QSizeF(step, 0));
    case Qt::Key_Up:
        return resizeTo(size - QSizeF(0, step));
    case Qt::Key_Down:
        return resizeTo(size + QSizeF(0, step));
    case Qt::Key_Delete:
        Q_EMIT removedByUser();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void Block::mousePressEvent(QMouseEvent *event)
{
    m_pressed = event->globalPosition();
    m_sizeThen = frame(this).size();
}

void Block::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF way = event->globalPosition() - m_pressed;
    resizeTo(m_sizeThen + QSizeF(way.x(), way.y()));
}

void Block::focusInEvent(QFocusEvent *) { Q_EMIT selected(); }

void Block::setSelected(bool isSelected)
{
    m_isSelected = isSelected;
    update();
}

/// Not so small that nobody could take hold of it any more.
void Block::resizeTo(const QSizeF &size)
{
    setFrame(this, {frame(this).topLeft(), size.expandedTo({8, 8})});
    Q_EMIT resizedByUser();
}
