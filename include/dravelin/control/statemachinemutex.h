// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/control/statemachine.h>

#include <QtCore/QPointer>

#include <memory>

namespace dravelin {

/// A countdown that moves a state machine to a state when the last of several events has happened. No lock: use it from
/// the machine's thread. The machine is held weakly.
///
///     dravelin::StateMachineMutex downloads(machine, 3, Ready, 0);
///     downloads.decrementMutex();   // after each download; the third call enters Ready
class DRAVELIN_EXPORT StateMachineMutex : public Object
{
    Q_OBJECT
    Q_PROPERTY(quint64 mutexCount READ mutexCount WRITE setMutexCount NOTIFY mutexCountChanged)
    Q_PROPERTY(qint64 targetState READ targetState WRITE setTargetState NOTIFY targetStateChanged)
    Q_PROPERTY(qint64 info READ info WRITE setInfo NOTIFY infoChanged)

public:
    /// \operation{initWithStateMachine:Mutex:targetState:info:}
    StateMachineMutex(StateMachine *machine, quint64 mutex, qint64 targetState, qint64 info, QObject *parent = nullptr);
    StateMachineMutex(const std::shared_ptr<StateMachine> &machine, quint64 mutex, qint64 targetState, qint64 info)
        : StateMachineMutex(machine.get(), mutex, targetState, info)
    {}
    ~StateMachineMutex() override;

    /// The number of events still to come.
    /// \operation{mutexCount}
    [[nodiscard]] quint64 mutexCount() const noexcept { return m_mutexCount; }
    /// \operation{setMutexCount:}
    void setMutexCount(quint64 count);
    /// \operation{targetState}
    [[nodiscard]] qint64 targetState() const noexcept { return m_targetState; }
    /// \operation{setTargetState:}
    void setTargetState(qint64 state);
    /// \operation{info}
    [[nodiscard]] qint64 info() const noexcept { return m_info; }
    /// \operation{setInfo:}
    void setInfo(qint64 info);

    /// Counts one event. When it was the last, the machine is asked to enter the target state, without delay. At 0 the
    /// count goes on to the largest number, so that nothing further happens until setMutexCount().
    /// \return whether this was the last event, even if the machine is gone
    /// \operation{decrementMutex}
    Q_INVOKABLE bool decrementMutex();

Q_SIGNALS:
    void mutexCountChanged();
    void targetStateChanged();
    void infoChanged();

private:
    QPointer<StateMachine> m_stateMachine;
    quint64 m_mutexCount;
    qint64 m_targetState;
    qint64 m_info;
};

} // namespace dravelin
