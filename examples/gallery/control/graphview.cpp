// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "control/graphview.h"

#include "control/trafficlight.h"

#include <QtCore/QtMath>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <utility>

namespace {

constexpr qreal radius = 32;

using Edge = std::pair<qint64, qint64>;

QMap<Edge, int> countEdges(const QList<dravelin::StateTransition> &transitions)
{
    QMap<Edge, int> edges;
    for (const auto &entry : transitions) {
        if (entry.kind == dravelin::StateTransition::Change && entry.from != entry.to)
            ++edges[{entry.from, entry.to}];
    }
    return edges;
}

QPointF unit(QPointF vector) { return vector / std::hypot(vector.x(), vector.y()); }

void paintArrowHead(QPainter &painter, QPointF tip, QPointF direction)
{
    const QPointF side(-direction.y(), direction.x());
    QPainterPath head(tip);
    head.lineTo(tip - 11 * direction + 5 * side);
    head.lineTo(tip - 11 * direction - 5 * side);
    head.closeSubpath();
    painter.fillPath(head, painter.pen().color());
}

/// Bent to the left, so that both directions can be told apart.
void paintEdge(QPainter &painter, QPointF from, QPointF to, int count)
{
    const QPointF along = unit(to - from);
    const QPointF bend = (from + to) / 2 + 36 * QPointF(along.y(), -along.x());
    const QPointF start = from + radius * unit(bend - from);
    const QPointF end = to + radius * unit(bend - to);
    QPainterPath path(start);
    path.quadTo(bend, end);
    painter.strokePath(path, painter.pen());
    paintArrowHead(painter, end, unit(end - bend));
    const QRectF label(path.pointAtPercent(0.5) - QPointF(13, 9), QSizeF(26, 18));
    painter.fillRect(label, painter.background());
    painter.drawText(label, Qt::AlignCenter, QString::number(count));
}

} // namespace

GraphView::GraphView(const TrafficLight *light) : m_light(light)
{
    setMinimumSize(360, 330);
    setAccessibleName(tr("Transitions"));
}

/// On a circle, the first at the top.
QMap<qint64, QPointF> GraphView::places() const
{
    QMap<qint64, QPointF> result;
    const QList<qint64> states = TrafficLight::names().keys();
    const qreal reach = qMin(width(), height()) / 2.0 - radius - 8;
    for (const qint64 state : states) {
        const qreal angle = 2 * M_PI * qreal(result.size()) / qreal(states.size()) - M_PI_2;
        result.insert(state, QRectF(rect()).center() + reach * QPointF(qCos(angle), qSin(angle)));
    }
    return result;
}

void GraphView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBackground(palette().window());
    painter.setPen(QPen(palette().color(QPalette::WindowText), 1.4));
    const auto place = places();
    const auto edges = countEdges(m_light->machine().transitions());
    for (const auto &[edge, count] : edges.asKeyValueRange())
        paintEdge(painter, place.value(edge.first), place.value(edge.second), count);
    paintStates(painter);
}

void GraphView::paintStates(QPainter &painter) const
{
    const auto place = places();
    const auto names = TrafficLight::names();
    const auto &machine = m_light->machine();
    for (const auto &[state, center] : place.asKeyValueRange()) {
        const bool isCurrent = state == machine.currentState();
        const QColor fill = !isCurrent           ? palette().color(QPalette::Base)
                            : machine.isKilled() ? palette().color(QPalette::Mid)
                                                 : palette().color(QPalette::Highlight);
        painter.setBrush(fill);
        painter.drawEllipse(center, radius, radius);
        const QRectF box(center - QPointF(radius, radius), QSizeF(2 * radius, 2 * radius));
        painter.save();
        painter.setPen(palette().color(isCurrent ? QPalette::HighlightedText : QPalette::Text));
        painter.drawText(box, Qt::AlignCenter, names.value(state));
        painter.restore();
    }
}
