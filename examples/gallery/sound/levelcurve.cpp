// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/levelcurve.h"

#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr QMarginsF frame(56, 120, 20, 34); // left, top, right, bottom

} // namespace

LevelCurve::LevelCurve(SoundLevels levels, QList<SoundMark> marks)
    : m_levels(std::move(levels)),
      m_marks(std::move(marks)),
      m_loudest(std::max(0.1, std::ceil(double(m_levels.loudest(0, m_levels.duration())) * 10) / 10))
{
    setAccessibleName(tr("Level of the recording"));
    resize(1400, 520);
}

double LevelCurve::across(double time) const
{
    const QRectF area = QRectF(rect()).marginsRemoved(frame);
    return area.left() + area.width() * time / std::max(1.0, m_levels.duration());
}

double LevelCurve::up(double level) const
{
    const QRectF area = QRectF(rect()).marginsRemoved(frame);
    return area.bottom() - area.height() * level / m_loudest;
}

void LevelCurve::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), Qt::white);
    paintScale(painter);
    paintLevels(painter);
    paintMarks(painter);
}

void LevelCurve::paintScale(QPainter &painter) const
{
    const double left = across(0), right = across(m_levels.duration());
    for (int i = 0; i <= qRound(m_loudest * 20); ++i) {
        painter.setPen(i % 2 ? QColor(238, 238, 238) : QColor(215, 215, 215));
        painter.drawLine(QPointF(left, up(i / 20.0)), QPointF(right, up(i / 20.0)));
        painter.setPen(Qt::darkGray);
        if (i % 2 == 0)
            painter.drawText(QRectF(0, up(i / 20.0) - 10, left - 8, 20), Qt::AlignRight | Qt::AlignVCenter,
                             QString::number(i / 20.0, 'f', 1));
    }
    for (int second = 0; second <= m_levels.duration(); ++second)
        painter.drawText(QRectF(across(second) - 25, up(0) + 6, 50, 20), Qt::AlignCenter, tr("%1 s").arg(second));
}

void LevelCurve::paintLevels(QPainter &painter) const
{
    QPolygonF curve;
    for (qsizetype i = 0; i < m_levels.levels().size(); ++i)
        curve << QPointF(across(double(i) * SoundLevels::step), up(double(m_levels.levels()[i])));
    QPolygonF area = curve;
    area << QPointF(across(m_levels.duration()), up(0)) << QPointF(across(0), up(0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(60, 120, 200, 60));
    painter.drawPolygon(area);
    painter.setPen(QPen(QColor(30, 80, 160), 1.3));
    painter.drawPolyline(curve);
}

/// The texts stand aslant above the curve, so that those of moments close together do not cover each other.
void LevelCurve::paintMarks(QPainter &painter) const
{
    for (const SoundMark &mark : m_marks) {
        painter.setPen(QPen(QColor(190, 60, 30), 1, Qt::DashLine));
        painter.drawLine(QPointF(across(mark.time), frame.top() - 4), QPointF(across(mark.time), up(0)));
        painter.setPen(QColor(150, 40, 20));
        painter.save();
        painter.translate(across(mark.time) + 2, frame.top() - 8);
        painter.rotate(-38);
        painter.drawText(QPointF(0, 0), mark.text);
        painter.restore();
    }
}
