// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "encoding/plotview.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <utility>

PlotView::PlotView(QWidget *parent) : QWidget(parent)
{
    setMinimumSize(200, 120);
    setAccessibleName(tr("Plot of the numbers"));
}

void PlotView::setValues(QList<double> values, qsizetype done)
{
    m_values = std::move(values);
    m_done = done;
    update();
}

void PlotView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    if (m_values.isEmpty())
        return;
    const auto [least, greatest] = std::minmax_element(m_values.cbegin(), m_values.cend());
    const double span = std::max(*greatest - *least, 1e-300), bottom = *least;
    QList<QPointF> sorted, open;
    for (qsizetype i = 0; i < m_values.size(); ++i) {
        const QPointF dot(4 + double(i) * (width() - 8) / double(m_values.size()),
                          height() - 4 - (m_values[i] - bottom) / span * (height() - 8));
        (i < m_done ? sorted : open) << dot;
    }
    painter.setPen(QPen(palette().mid(), 2));
    painter.drawPoints(open.constData(), int(open.size()));
    painter.setPen(QPen(palette().highlight(), 2));
    painter.drawPoints(sorted.constData(), int(sorted.size()));
}
