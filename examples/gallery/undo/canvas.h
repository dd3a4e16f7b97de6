// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/control/undoitem.h>

#include <QtCore/QList>
#include <QtGui/QColor>
#include <QtWidgets/QWidget>

struct Shape
{
    QPoint centre;
    QColor color;
    bool isRound = false;

    friend bool operator==(const Shape &, const Shape &) = default;
};

/// Shapes to drag about. Every change registers its opposite with the undo manager.
class Canvas : public QWidget
{
    Q_OBJECT

public:
    explicit Canvas(dravelin::UndoManager &undo);

    [[nodiscard]] const QList<Shape> &shapes() const noexcept { return m_shapes; }
    /// The index of the selected shape; -1 for none.
    [[nodiscard]] qsizetype selected() const noexcept { return m_selected; }

    void insertShape(qsizetype index, const Shape &shape);
    void removeShape(qsizetype index);
    void setColor(qsizetype index, const QColor &color);
    void moveTo(qsizetype index, QPoint from, QPoint to, const QString &name);
    /// Moves every shape a little; one step to undo.
    void shake();

    /// Undoes and redoes moveTo().
    Q_INVOKABLE void moveShape(dravelin::UndoItem *item);

    [[nodiscard]] QSize minimumSizeHint() const override { return {420, 320}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void select(qsizetype index);

    dravelin::UndoManager &m_undo;
    QList<Shape> m_shapes;
    qsizetype m_selected = -1;
    bool m_isDragging = false;
    QPoint m_dragStart; ///< the selected shape's place when the mouse was pressed
    QPoint m_grip;      ///< from the shape's centre to the mouse
};
