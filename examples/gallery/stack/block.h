// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets/QWidget>

/// A coloured child for a stack view. Its lower right corner can be dragged; with the focus, the arrow keys resize it
/// and Delete removes it.
class Block : public QWidget
{
    Q_OBJECT

public:
    explicit Block(QWidget *parent = nullptr);

    /// Shows a frame.
    void setSelected(bool isSelected);

Q_SIGNALS:
    void resizedByUser();
    void removedByUser();
    void selected();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    void resizeTo(const QSizeF &size);
    [[nodiscard]] QColor color() const;

    QPointF m_pressed; ///< on the desktop
    QSizeF m_sizeThen;
    bool m_isSelected = false;
};
