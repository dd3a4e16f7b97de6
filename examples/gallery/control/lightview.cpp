// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "control/lightview.h"

#include "control/trafficlight.h"

#include <QtGui/QPainter>

LightView::LightView(const TrafficLight *light) : m_light(light)
{
    setFixedSize(96, 250);
    setAccessibleName(tr("Traffic light"));
    connect(light, &TrafficLight::lampsChanged, this, qOverload<>(&QWidget::update));
}

void LightView::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(45, 45, 48));
    painter.drawRoundedRect(rect(), 16, 16);
    const QColor colors[] = {QColor(235, 60, 50), QColor(250, 195, 40), QColor(60, 200, 90)};
    for (int i = 0; i < 3; ++i) {
        const bool isOn = m_light->lamps() & (1 << i);
        painter.setBrush(isOn ? colors[i] : colors[i].darker(450));
        painter.drawEllipse(QPointF(48, 50 + 75 * i), 32, 32);
    }
}
