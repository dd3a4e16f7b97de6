// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/control/statehandler.h>
#include <dravelin/control/transitions.h>
#include <dravelin/platform/timer.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QHash>

#include <memory>

namespace dravelin {

/// A state machine that the event loop drives. States are integers; each may have a set-up handler, called once when
/// the machine has entered it, and an operation handler, called for each update().
///
///     auto machine = std::make_shared<dravelin::StateMachine>();
///     machine->addState(Red, {&light, &Light::showRed}, {&light, &Light::blink});
///     machine->addState(Green, {&light, "showGreen:"});
///     machine->designateStartState(Red);
///     machine->reset();                          // showRed(0), from the event loop
///     machine->changeState(Green, 7, 2.5f);      // ... unless this comes first: showGreen(7) in 2.5 s
///
/// A request never calls a handler itself: it schedules a step, a Timer on this thread. Only one step is pending: a new
/// request replaces it, whatever its kind. An update requested while a set-up is pending therefore cancels that set-up
/// for good. There is no handler for leaving a state.
///
/// A handler may request a further step. The machine forgets the pending step when the handler returns, that one
/// included: it will be made, but no later request replaces it, both are made in the order of their due times, and
/// stopTimer() does not reach it.
///
/// A machine that `std::shared_ptr` holds lives until its pending step is made. Handlers may destroy the machine, and
/// may throw. Use a machine from one thread.
///
/// States are told apart by the low 32 bits of their numbers; currentState keeps all 64.
class DRAVELIN_EXPORT StateMachine : public Object
{
    Q_OBJECT
    Q_PROPERTY(qint64 currentState READ currentState WRITE setCurrentState NOTIFY currentStateChanged)

public:
    /// In state 0, which is the start state as well.
    /// \operation{init}
    explicit StateMachine(QObject *parent = nullptr);
    /// Cancels the pending step.
    ~StateMachine() override;

    /// The state of the last request, even while its set-up is still pending.
    /// \operation{currentState}
    [[nodiscard]] qint64 currentState() const noexcept { return m_currentState; }
    /// Changes the state without set-up. A set-up that is pending will be that of the state at its time.
    /// \operation{setCurrentState:}
    void setCurrentState(qint64 state);

    /// The state that reset() enters.
    [[nodiscard]] qint64 startState() const noexcept { return m_startState; }
    /// \operation{designateStartState:}
    Q_INVOKABLE void designateStartState(qint64 state) { m_startState = state; }

    /// Adds a state, in place of one that has the number already. `{}` stands for no handler.
    /// \operation{addState:stateSetup:stateOperation:}
    void addState(qint64 state, const StateHandler &stateSetup, const StateHandler &stateOperation = {});
    /// What was added for the number, for changing it; null when nothing was.
    [[nodiscard]] std::shared_ptr<StateEntry> stateEntry(qint64 state) const;

    /// Enters a state at once and calls its set-up handler after a delay. States that are negative or were not added
    /// have no set-up.
    /// \param info handed to the handler
    /// \param delay seconds
    /// \operation{changeState:info:delay:}
    Q_INVOKABLE void changeState(qint64 state, qint64 info = 0, float delay = 0);
    /// Calls, after a delay, the operation handler of the state that is current then. It may be negative.
    /// \operation{update:delay:}
    Q_INVOKABLE void update(qint64 info = 0, float delay = 0);
    /// Enters the start state with info 0.
    /// \operation{reset}
    Q_INVOKABLE void reset();

    /// Cancels the pending step and ends the machine for good: requests and steps do nothing any more.
    /// \operation{killStateMachine}
    Q_INVOKABLE void killStateMachine();
    [[nodiscard]] bool isKilled() const noexcept { return m_killFlag; }

    /// Cancels the pending step.
    /// \operation{stopTimer}
    Q_INVOKABLE void stopTimer();
    /// Schedules a step, in place of the pending one.
    /// \param selector an operation of the machine that takes the Timer; info is the timer's userInfo()
    /// \operation{startTimer:info:delay:}
    void startTimer(Selector selector, qint64 info, float delay);
    /// The timer of the pending step; null when there is none or a handler requested it.
    [[nodiscard]] std::shared_ptr<Timer> stateTimer() const { return m_stateTimer; }

    /// The step of changeState().
    /// \operation{runStateChange:}
    Q_INVOKABLE virtual void runStateChange(dravelin::Timer *timer);
    /// The step of update().
    /// \operation{runUpdate:}
    Q_INVOKABLE virtual void runUpdate(dravelin::Timer *timer);

    /// Switches the log of transitions on, for the last `limit` of them, or off with 0, which is how a machine starts.
    /// Either way the log begins anew.
    void setTransitionLimit(qsizetype limit);
    /// What the machine did since logging was switched on, the oldest first.
    [[nodiscard]] QList<StateTransition> transitions() const { return m_transitions; }

Q_SIGNALS:
    void currentStateChanged(qint64 state);

private:
    void schedule(const Action<Timer *> &step, qint64 info, float delay);
    void invoke(const StateHandler &(StateEntry::*handler)() const noexcept, qint64 info);
    void log(StateTransition::Kind kind, qint64 from, qint64 info = 0, float delay = 0);

    qint64 m_startState = 0;
    qint64 m_currentState = 0;
    QHash<qint32, std::shared_ptr<StateEntry>> m_states;
    std::shared_ptr<Timer> m_stateTimer;
    bool m_killFlag = false;
    Action<Timer *> m_runStateChange;
    Action<Timer *> m_runUpdate;
    qsizetype m_transitionLimit = 0;
    QList<StateTransition> m_transitions;
    QElapsedTimer m_logTime;
};

} // namespace dravelin
