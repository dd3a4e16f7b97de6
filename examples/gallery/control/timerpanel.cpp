// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "control/timerpanel.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QGridLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

TimerPanel::TimerPanel()
    : QGroupBox(tr("Timers")),
      m_timer(this, &TimerPanel::tick),
      m_reading(new QLabel(tr("not started"))),
      m_ticksLabel(new QLabel),
      m_interval(new QDoubleSpinBox),
      m_repeats(new QCheckBox(tr("Repeat")))
{
    m_interval->setRange(0, 60);
    m_interval->setValue(0.5);
    m_interval->setSingleStep(0.1);
    m_interval->setSuffix(tr(" s"));
    m_interval->setAccessibleName(tr("Interval"));
    m_repeats->setChecked(true);
    auto *layout = new QGridLayout(this);
    const auto addButton = [&](const QString &text, int row, int column, auto action) {
        auto *button = new QPushButton(text);
        connect(button, &QPushButton::clicked, this, action);
        layout->addWidget(button, row, column);
    };
    addButton(tr("Start stop&watch"), 0, 0, &TimerPanel::startStopwatch);
    addButton(tr("R&ead it"), 0, 1, &TimerPanel::readStopwatch);
    layout->addWidget(m_reading, 0, 2);
    addButton(tr("(Re)start &timer"), 1, 0, [this] { startTimer(m_interval->value(), m_repeats->isChecked()); });
    addButton(tr("St&op timer"), 1, 1, &TimerPanel::stopTimer);
    layout->addWidget(m_ticksLabel, 1, 2);
    layout->addWidget(m_interval, 2, 0);
    layout->addWidget(m_repeats, 2, 1);
    layout->setColumnStretch(2, 1);
    connect(&m_timer, &dravelin::MutableTimer::runningChanged, this, &TimerPanel::showTicks);
    showTicks();
}

TimerPanel::~TimerPanel() { m_timer.stop(); }

QString TimerPanel::reading() const { return m_reading->text(); }

void TimerPanel::startStopwatch()
{
    m_stopwatch.startTimer();
    m_reading->setText(tr("running"));
}

void TimerPanel::readStopwatch() { m_reading->setText(tr("%1 s").arg(m_stopwatch.elapsedTimeString())); }

void TimerPanel::startTimer(double interval, bool repeats)
{
    m_ticks = 0;
    m_timer.start(interval, repeats);
    showTicks();
}

void TimerPanel::stopTimer() { m_timer.stop(); }

void TimerPanel::tick(dravelin::Timer *)
{
    ++m_ticks;
    showTicks();
}

void TimerPanel::showTicks()
{
    m_ticksLabel->setText(m_timer.isRunning() ? tr("running, %n tick(s)", nullptr, m_ticks)
                                              : tr("stopped, %n tick(s)", nullptr, m_ticks));
}
