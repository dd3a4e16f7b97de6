// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/control/timers.h>

#include <QtWidgets/QGroupBox>

class QCheckBox;
class QDoubleSpinBox;
class QLabel;

/// A stopwatch, and a timer to restart with other intervals.
class TimerPanel : public QGroupBox
{
    Q_OBJECT

public:
    TimerPanel();
    /// Ends what runs: destroying a MutableTimer does not.
    ~TimerPanel() override;

    void startStopwatch();
    void readStopwatch();
    void startTimer(double interval, bool repeats);
    void stopTimer();

    [[nodiscard]] int ticks() const { return m_ticks; }
    [[nodiscard]] QString reading() const;

private:
    void tick(dravelin::Timer *timer);
    void showTicks();

    dravelin::ElapsedTimer m_stopwatch;
    dravelin::MutableTimer m_timer;
    int m_ticks = 0;
    QLabel *m_reading;
    QLabel *m_ticksLabel;
    QDoubleSpinBox *m_interval;
    QCheckBox *m_repeats;
};
