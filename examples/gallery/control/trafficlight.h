// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/control/statemachine.h>
#include <dravelin/control/statemachinemutex.h>

#include <QtCore/QObject>

#include <memory>

/// A traffic light: states with delays from red to green and back, a night state that blinks by updates, and cars whose
/// third one gets green at once.
class TrafficLight : public QObject
{
    Q_OBJECT

public:
    enum State : qint64 { Red, Start, Green, Yellow, Night };
    enum Lamp { RedLamp = 1, YellowLamp = 2, GreenLamp = 4 };

    explicit TrafficLight(QObject *parent = nullptr);

    [[nodiscard]] int lamps() const { return m_lamps; }
    [[nodiscard]] dravelin::StateMachine &machine() const { return *m_machine; }
    [[nodiscard]] quint64 missingCars() const { return m_cars->mutexCount(); }
    [[nodiscard]] static dravelin::StateNames names();

    /// Seconds of the longest phase.
    void setPace(float seconds) { m_pace = seconds; }

    /// Puts in a new machine, as a killed one does not live again.
    void renew();
    void startCycle();
    void startNight();
    void carArrives();
    void kill();

Q_SIGNALS:
    void lampsChanged();

private:
    template <State next>
    void phase(qint64 info);
    void blink(qint64 info);
    void begin(State state);
    void show(int lamps);

    std::shared_ptr<dravelin::StateMachine> m_machine;
    std::unique_ptr<dravelin::StateMachineMutex> m_cars;
    qint64 m_run = 0; ///< passed along as info: steps of an earlier run, which nobody can cancel, are told by it
    float m_pace = 2;
    int m_lamps = 0;
};
