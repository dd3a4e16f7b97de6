// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/statemachine.h>

#include <QtCore/QScopeGuard>

#include <utility>

namespace dravelin {

namespace {

qint64 infoOf(const Timer *timer) { return timer ? timer->userInfo().toLongLong() : 0; }

} // namespace

StateMachine::StateMachine(QObject *parent)
    : Object(parent), m_runStateChange(this, "runStateChange:"), m_runUpdate(this, "runUpdate:")
{}

StateMachine::~StateMachine()
{
    if (m_stateTimer)
        stopTimer();
}

void StateMachine::setCurrentState(qint64 state)
{
    const qint64 from = std::exchange(m_currentState, state);
    log(StateTransition::Direct, from);
    if (from != state)
        Q_EMIT currentStateChanged(state);
}

void StateMachine::addState(qint64 state, const StateHandler &stateSetup, const StateHandler &stateOperation)
{
    m_states.insert(qint32(state), std::make_shared<StateEntry>(state, stateSetup, stateOperation));
}

std::shared_ptr<StateEntry> StateMachine::stateEntry(qint64 state) const { return m_states.value(qint32(state)); }

void StateMachine::changeState(qint64 state, qint64 info, float delay)
{
    if (m_killFlag)
        return;
    const qint64 from = std::exchange(m_currentState, state);
    log(StateTransition::Change, from, info, delay);
    schedule(m_runStateChange, info, delay);
    if (from != state)
        Q_EMIT currentStateChanged(state); // last: who listens may make a newer request, or destroy the machine
}

void StateMachine::update(qint64 info, float delay) { schedule(m_runUpdate, info, delay); }

void StateMachine::reset() { changeState(m_startState, 0, 0); }

void StateMachine::killStateMachine()
{
    if (!std::exchange(m_killFlag, true))
        log(StateTransition::Kill, m_currentState);
    if (m_stateTimer && m_stateTimer->isValid())
        stopTimer();
}

void StateMachine::stopTimer()
{
    // Its timer may be what keeps the machine alive.
    if (const auto timer = std::exchange(m_stateTimer, nullptr))
        timer->invalidate();
}

void StateMachine::startTimer(Selector selector, qint64 info, float delay)
{
    schedule(Action<Timer *>(this, selector), info, delay);
}

void StateMachine::schedule(const Action<Timer *> &step, qint64 info, float delay)
{
    if (m_killFlag)
        return;
    // The pending step may be the last to hold the machine: it goes after the new one has come.
    const auto previous =
        std::exchange(m_stateTimer, Timer::scheduledTimerWithTimeInterval(double(delay), step, QVariant(info)));
    if (previous && previous->isValid())
        previous->invalidate();
}

void StateMachine::runStateChange(Timer *timer)
{
    if (m_killFlag)
        return;
    const qint64 info = infoOf(timer);
    log(StateTransition::SetUp, m_currentState, info);
    if (m_currentState >= 0)
        invoke(&StateEntry::stateSetup, info);
    else
        m_stateTimer.reset();
}

void StateMachine::runUpdate(Timer *timer)
{
    if (m_killFlag)
        return;
    const qint64 info = infoOf(timer);
    log(StateTransition::Update, m_currentState, info);
    invoke(&StateEntry::stateOperation, info);
}

/// Calls the handler first and forgets the timer afterwards, which by then may be that of a request of the handler.
void StateMachine::invoke(const StateHandler &(StateEntry::*handler)() const noexcept, qint64 info)
{
    const auto forget = qScopeGuard([self = QPointer<StateMachine>(this)] {
        if (self)
            self->m_stateTimer.reset();
    });
    if (const auto entry = m_states.constFind(qint32(m_currentState)); entry != m_states.cend())
        ((*entry).get()->*handler)().invoke(info);
}

void StateMachine::setTransitionLimit(qsizetype limit)
{
    m_transitionLimit = limit;
    m_transitions.clear();
    m_logTime.start();
}

void StateMachine::log(StateTransition::Kind kind, qint64 from, qint64 info, float delay)
{
    if (m_transitionLimit <= 0)
        return;
    if (m_transitions.size() >= m_transitionLimit)
        m_transitions.removeFirst();
    m_transitions.append({kind, from, m_currentState, info, delay, double(m_logTime.nsecsElapsed()) / 1e9});
}

} // namespace dravelin
