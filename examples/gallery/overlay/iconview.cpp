// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "overlay/iconview.h"

#include <QtGui/QPainter>

#include <algorithm>

void IconView::setImages(const QList<QImage> &images)
{
    m_images = images;
    update();
}

void IconView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), QColor(250, 250, 250));
    constexpr int square = 10;
    for (int y = 0; y < height(); y += square) {
        for (int x = y / square % 2 * square; x < width(); x += 2 * square)
            painter.fillRect(x, y, square, square, QColor(225, 225, 225));
    }
    const double step = double(width()) / double(std::max<qsizetype>(m_images.size(), 1));
    for (qsizetype i = 0; i < m_images.size(); ++i) {
        const QSizeF size = m_images[i].deviceIndependentSize();
        painter.drawImage(QPointF((double(i) + 0.5) * step - size.width() / 2, (height() - size.height()) / 2),
                          m_images[i]);
    }
}
