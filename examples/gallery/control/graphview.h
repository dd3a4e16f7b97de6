// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QMap>
#include <QtCore/QPointF>
#include <QtWidgets/QWidget>

class QPainter;
class TrafficLight;

/// The transitions that a traffic light's machine has made, as a graph; the current state is filled.
class GraphView : public QWidget
{
    Q_OBJECT

public:
    explicit GraphView(const TrafficLight *light);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QMap<qint64, QPointF> places() const;
    void paintStates(QPainter &painter) const;

    const TrafficLight *m_light;
};
