// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "control/trafficlight.h"
#include "page.h"

#include <dravelin/control/timers.h>

class GraphView;
class QDoubleSpinBox;
class QLabel;
class QPlainTextEdit;
class QVBoxLayout;
class TimerPanel;

/// A traffic light driven by a state machine, with its transitions as a live graph and as text, and timers.
class ControlPage : public Page
{
    Q_OBJECT

public:
    ControlPage();
    ~ControlPage() override;

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    class TourSteps;

    QWidget *makeControls();
    void addButtons(QVBoxLayout *layout);
    QWidget *makeViews();
    [[nodiscard]] QString logText() const;
    /// Brings views that show the machine up to date.
    void refresh();

    TrafficLight m_light;
    dravelin::MutableTimer m_refresh;
    GraphView *m_graph = nullptr;
    QPlainTextEdit *m_log = nullptr;
    QLabel *m_cars = nullptr;
    QDoubleSpinBox *m_pace = nullptr;
    TimerPanel *m_timers = nullptr;
};
