// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "undo/canvas.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <utility>

namespace {

constexpr int radius = 36;

QRect area(const Shape &shape) { return {shape.centre - QPoint(radius, radius), QSize(2 * radius, 2 * radius)}; }

} // namespace

Canvas::Canvas(dravelin::UndoManager &undo) : m_undo(undo)
{
    setAccessibleName(tr("Shapes"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void Canvas::insertShape(qsizetype index, const Shape &shape)
{
    m_undo.registerUndoWithTarget(this, [index](Canvas *canvas) { canvas->removeShape(index); });
    m_shapes.insert(index, shape);
    select(index);
    update();
}

void Canvas::removeShape(qsizetype index)
{
    m_undo.registerUndoWithTarget(
        this, [index, shape = m_shapes[index]](Canvas *canvas) { canvas->insertShape(index, shape); });
    m_shapes.removeAt(index);
    select(-1);
    update();
}

void Canvas::select(qsizetype index)
{
    m_selected = index;
    m_isDragging = false; // undone from the keyboard, a shape may go from under the mouse
}

void Canvas::setColor(qsizetype index, const QColor &color)
{
    m_undo.registerUndoWithTarget(
        this, [index, old = m_shapes[index].color](Canvas *canvas) { canvas->setColor(index, old); });
    m_shapes[index].color = color;
    update();
}

void Canvas::moveTo(qsizetype index, QPoint from, QPoint to, const QString &name)
{
    const auto item = dravelin::createUndoItem(&m_undo, this, "moveShape:", true, name);
    item->setDataInteger(index);
    item->addDictionaryPairItem1(from, to);
    m_shapes[index].centre = to;
    update();
}

void Canvas::moveShape(dravelin::UndoItem *item)
{
    const auto opposite = dravelin::createUndoItem(&m_undo, this, "moveShape:", !item->isUndo(), item->name());
    opposite->setDataInteger(item->dataInteger());
    opposite->swapDictionaryPairItems(item);
    select(item->dataInteger());
    m_shapes[m_selected].centre = item->getDictionaryPairItem1().toPoint();
    update();
}

void Canvas::shake()
{
    for (qsizetype i = 0; i < m_shapes.size(); ++i) {
        const QPoint place = m_shapes[i].centre;
        moveTo(i, place, place + QPoint(i % 2 ? 30 : -30, i % 3 ? 24 : -24), tr("Shake"));
    }
}

void Canvas::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), palette().base());
    for (qsizetype i = 0; i < m_shapes.size(); ++i) {
        painter.setPen(i == m_selected ? QPen(palette().highlight(), 4) : QPen(Qt::darkGray, 1));
        painter.setBrush(m_shapes[i].color);
        m_shapes[i].isRound ? painter.drawEllipse(area(m_shapes[i])) : painter.drawRect(area(m_shapes[i]));
    }
}

void Canvas::mousePressEvent(QMouseEvent *event)
{
    const QPoint mouse = event->position().toPoint();
    m_selected = m_shapes.size() - 1;
    while (m_selected >= 0 && !area(m_shapes[m_selected]).contains(mouse))
        --m_selected;
    m_isDragging = m_selected >= 0;
    if (m_isDragging) {
        m_dragStart = m_shapes[m_selected].centre;
        m_grip = mouse - m_dragStart;
    }
    update();
}

void Canvas::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_isDragging)
        return;
    m_shapes[m_selected].centre = event->position().toPoint() - m_grip;
    update();
}

void Canvas::mouseReleaseEvent(QMouseEvent *)
{
    if (std::exchange(m_isDragging, false) && m_shapes[m_selected].centre != m_dragStart)
        moveTo(m_selected, m_dragStart, m_shapes[m_selected].centre, tr("Move"));
}
