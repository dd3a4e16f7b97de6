// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the control page does on its own: a whole cycle, the night, three cars, a kill, a stopwatch and a timer.

#include "tour.h"

#include "control/controlpage.h"
#include "control/timerpanel.h"

#include <QtWidgets/QDoubleSpinBox>

#include <algorithm>

using namespace Qt::StringLiterals;
using dravelin::StateTransition;

class ControlPage::TourSteps
{
public:
    TourSteps(ControlPage &page, Tour &tour) : m_page(page), m_light(page.m_light), m_tour(tour) {}

    void run()
    {
        m_page.m_pace->setValue(0.3);
        m_light.renew();
        cycle();
        night();
        cars();
        m_tour.text(u"control-4-graph"_s,
                    dravelin::transitionGraph(m_light.machine().transitions(), TrafficLight::names()));
        kill();
        timers();
        m_page.m_pace->setValue(2);
    }

private:
    void picture(const QString &name)
    {
        m_page.refresh();
        m_tour.picture(m_page.window(), u"control-"_s + name);
    }

    [[nodiscard]] qsizetype count(StateTransition::Kind kind, qint64 state) const
    {
        const auto transitions = m_light.machine().transitions();
        return std::count_if(transitions.begin(), transitions.end(),
                             [=](const StateTransition &entry) { return entry.kind == kind && entry.to == state; });
    }

    void cycle()
    {
        m_light.startCycle();
        m_tour.expect(m_light.lamps() == 0, u"the request itself switches no lamp"_s);
        m_tour.waitFor([this] { return m_light.lamps() == TrafficLight::GreenLamp; },
                       u"the light turns green through its delays"_s);
        picture(u"1-green"_s);
        m_tour.waitFor([this] { return count(StateTransition::SetUp, TrafficLight::Red) == 2; },
                       u"the cycle comes round"_s);
    }

    void night()
    {
        m_light.startNight();
        m_tour.waitFor([this] { return count(StateTransition::Update, TrafficLight::Night) >= 5; },
                       u"updates blink at night"_s);
        m_tour.waitFor([this] { return m_light.lamps() == TrafficLight::YellowLamp; }, u"the yellow lamp is on"_s);
        picture(u"2-night"_s);
    }

    void cars()
    {
        m_light.carArrives();
        m_light.carArrives();
        m_tour.expect(m_light.machine().currentState() == TrafficLight::Night, u"two cars change nothing"_s);
        m_light.carArrives();
        m_tour.waitFor([this] { return m_light.lamps() == TrafficLight::GreenLamp; }, u"the third car gets green"_s);
        picture(u"3-cars"_s);
    }

    void kill()
    {
        m_light.kill();
        m_light.startCycle();
        bool later = false;
        dravelin::Timer::scheduledTimerWithTimeInterval(0.5, &m_page, [&] { later = true; });
        m_tour.waitFor([&] { return later; }, u"time passes after the kill"_s);
        m_tour.expect(m_light.machine().transitions().constLast().kind == StateTransition::Kill,
                      u"a killed machine does nothing any more"_s);
        picture(u"5-killed"_s);
        m_tour.text(u"control-5-log"_s, m_page.logText() + u'\n');
        m_light.renew();
    }

    void timers()
    {
        TimerPanel &panel = *m_page.m_timers;
        panel.startStopwatch();
        panel.startTimer(10, true);
        panel.startTimer(0.02, true);
        m_tour.waitFor([&] { return panel.ticks() >= 5; }, u"the restarted timer ticks at its new interval"_s);
        panel.stopTimer();
        panel.readStopwatch();
        const QString reading = panel.reading();
        panel.readStopwatch();
        m_tour.expect(reading == panel.reading(), u"the stopwatch stands still once read: "_s + reading);
        picture(u"6-timers"_s);
    }

    ControlPage &m_page;
    TrafficLight &m_light;
    Tour &m_tour;
};

void ControlPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
