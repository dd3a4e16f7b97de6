// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/statemachinemutex.h>

#include <utility>

namespace dravelin {

StateMachineMutex::StateMachineMutex(StateMachine *machine, quint64 mutex, qint64 targetState, qint64 info,
                                     QObject *parent)
    : Object(parent), m_stateMachine(machine), m_mutexCount(mutex), m_targetState(targetState), m_info(info)
{}

StateMachineMutex::~StateMachineMutex() = default;

void StateMachineMutex::setMutexCount(quint64 count)
{
    if (std::exchange(m_mutexCount, count) != count)
        Q_EMIT mutexCountChanged();
}

void StateMachineMutex::setTargetState(qint64 state)
{
    if (std::exchange(m_targetState, state) != state)
        Q_EMIT targetStateChanged();
}

void StateMachineMutex::setInfo(qint64 info)
{
    if (std::exchange(m_info, info) != info)
        Q_EMIT infoChanged();
}

bool StateMachineMutex::decrementMutex()
{
    const bool isLast = --m_mutexCount == 0;
    const QPointer<StateMachineMutex> self(this); // who listens to the machine may destroy it
    const auto held = retain(m_stateMachine);
    if (isLast && m_stateMachine)
        m_stateMachine->changeState(m_targetState, m_info, 0);
    if (self)
        Q_EMIT mutexCountChanged();
    return isLast;
}

} // namespace dravelin
