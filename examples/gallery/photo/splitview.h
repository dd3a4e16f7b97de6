// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/QImage>
#include <QtWidgets/QWidget>

/// A picture before, on the left of a line that can be dragged or moved with the arrow keys, and after.
class SplitView : public QWidget
{
    Q_OBJECT

public:
    explicit SplitView(QWidget *parent = nullptr);

    void setBefore(const QImage &image);
    void setAfter(const QImage &image);

    [[nodiscard]] QSize sizeHint() const override { return {640, 400}; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override { moveLine(event); }
    void mouseMoveEvent(QMouseEvent *event) override { moveLine(event); }
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] QRectF pictureRect() const;
    void moveLine(const QMouseEvent *event);
    void setLine(double part);

    QImage m_before, m_after;
    double m_line = 0.5; ///< part of the width that is before
};
