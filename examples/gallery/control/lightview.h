// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets/QWidget>

class TrafficLight;

/// The lamps of a traffic light.
class LightView : public QWidget
{
    Q_OBJECT

public:
    explicit LightView(const TrafficLight *light);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const TrafficLight *m_light;
};
