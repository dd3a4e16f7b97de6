// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "control/trafficlight.h"

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 carsForGreen = 3;

int lampsBefore(TrafficLight::State next)
{
    switch (next) {
    case TrafficLight::Start:
        return TrafficLight::RedLamp;
    case TrafficLight::Green:
        return TrafficLight::RedLamp | TrafficLight::YellowLamp;
    case TrafficLight::Yellow:
        return TrafficLight::GreenLamp;
    default:
        return TrafficLight::YellowLamp;
    }
}

} // namespace

TrafficLight::TrafficLight(QObject *parent) : QObject(parent) { renew(); }

dravelin::StateNames TrafficLight::names()
{
    return {{Red, tr("Red")}, {Start, tr("Start")}, {Green, tr("Green")}, {Yellow, tr("Yellow")}, {Night, tr("Night")}};
}

void TrafficLight::renew()
{
    ++m_run;
    m_machine = std::make_shared<dravelin::StateMachine>();
    m_machine->setTransitionLimit(200);
    m_machine->addState(Red, {this, &TrafficLight::phase<Start>});
    m_machine->addState(Start, {this, &TrafficLight::phase<Green>});
    m_machine->addState(Green, {this, &TrafficLight::phase<Yellow>});
    m_machine->addState(Yellow, {this, &TrafficLight::phase<Red>});
    m_machine->addState(Night, {this, &TrafficLight::blink}, {this, &TrafficLight::blink});
    m_cars = std::make_unique<dravelin::StateMachineMutex>(m_machine, carsForGreen, Green, m_run);
    show(0);
}

void TrafficLight::begin(State state) { m_machine->changeState(state, ++m_run); }

void TrafficLight::startCycle() { begin(Red); }

void TrafficLight::startNight() { begin(Night); }

void TrafficLight::carArrives()
{
    if (m_cars->mutexCount() == 1)
        m_cars->setInfo(++m_run);
    if (m_cars->decrementMutex())
        m_cars->setMutexCount(carsForGreen);
}

void TrafficLight::kill() { m_machine->killStateMachine(); }

template <TrafficLight::State next>
void TrafficLight::phase(qint64 info)
{
    if (info != m_run)
        return;
    show(lampsBefore(next));
    const bool isShort = next == Green || next == Red;
    m_machine->changeState(next, info, isShort ? m_pace / 2 : m_pace);
}

void TrafficLight::blink(qint64 info)
{
    if (info != m_run)
        return;
    show(m_lamps == YellowLamp ? 0 : YellowLamp);
    m_machine->update(info, m_pace / 4);
}

void TrafficLight::show(int lamps)
{
    m_lamps = lamps;
    Q_EMIT lampsChanged();
}
