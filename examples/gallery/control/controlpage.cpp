// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "control/controlpage.h"

#include "control/graphview.h"
#include "control/lightview.h"
#include "control/timerpanel.h"

#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>

using namespace Qt::StringLiterals;

ControlPage::ControlPage() : m_refresh(this, &ControlPage::refresh)
{
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(makeControls());
    layout->addWidget(makeViews(), 1);
    m_refresh.start(0.1, true);
}

ControlPage::~ControlPage() { m_refresh.stop(); }

QString ControlPage::title() const { return tr("Control flow"); }

QWidget *ControlPage::makeControls()
{
    auto *controls = new QWidget;
    controls->setFixedWidth(230);
    auto *layout = new QVBoxLayout(controls);
    layout->addWidget(new LightView(&m_light), 0, Qt::AlignHCenter);
    addButtons(layout);
    m_pace = new QDoubleSpinBox;
    m_pace->setRange(0.05, 10);
    m_pace->setPrefix(tr("Longest phase: "));
    m_pace->setSuffix(tr(" s"));
    connect(m_pace, &QDoubleSpinBox::valueChanged, this, [this](double pace) { m_light.setPace(float(pace)); });
    m_pace->setValue(2);
    layout->addWidget(m_pace);
    m_cars = new QLabel;
    layout->addWidget(m_cars);
    auto *hint = new QLabel(tr("The filled state is the one last requested; its lamps follow when its delay is over."));
    hint->setWordWrap(true);
    layout->addWidget(hint);
    layout->addStretch();
    return controls;
}

void ControlPage::addButtons(QVBoxLayout *layout)
{
    const auto add = [&](const QString &text, void (TrafficLight::*action)()) {
        auto *button = new QPushButton(text);
        connect(button, &QPushButton::clicked, &m_light, action);
        connect(button, &QPushButton::clicked, this, &ControlPage::refresh);
        layout->addWidget(button);
    };
    add(tr("&Cycle"), &TrafficLight::startCycle);
    add(tr("&Night"), &TrafficLight::startNight);
    add(tr("A c&ar arrives"), &TrafficLight::carArrives);
    add(tr("&Kill the machine"), &TrafficLight::kill);
    add(tr("New &machine"), &TrafficLight::renew);
}

QWidget *ControlPage::makeViews()
{
    auto *views = new QWidget;
    auto *layout = new QVBoxLayout(views);
    auto *upper = new QHBoxLayout;
    m_graph = new GraphView(&m_light);
    m_log = new QPlainTextEdit;
    m_log->setReadOnly(true);
    m_log->setTabChangesFocus(true);
    m_log->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_log->setAccessibleName(tr("Transition log"));
    m_log->setFont(QFont(u"Monospace"_s, 9));
    m_timers = new TimerPanel;
    upper->addWidget(m_graph, 1);
    upper->addWidget(m_log, 1);
    layout->addLayout(upper, 1);
    layout->addWidget(m_timers);
    return views;
}

QString ControlPage::logText() const
{
    return dravelin::transitionLines(m_light.machine().transitions(), TrafficLight::names()).join(u'\n');
}

void ControlPage::refresh()
{
    m_cars->setText(tr("Cars until green: %1").arg(m_light.missingCars()));
    m_graph->update();
    const QString text = logText();
    if (text == m_log->toPlainText())
        return;
    m_log->setPlainText(text);
    m_log->verticalScrollBar()->setValue(m_log->verticalScrollBar()->maximum());
}
