// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/action.h>

#include <utility>

namespace dravelin {

/// What a state machine calls: an operation of a target that takes one integer, by name, or a member function or
/// callable that the compiler checks. The target is held weakly; once it is gone, nothing is called. Cheap to copy.
///
///     dravelin::StateHandler byName(&light, "showRed:");       // Q_INVOKABLE void showRed(qint64 info)
///     dravelin::StateHandler checked(&light, &Light::showRed);
///     checked.invoke(3);                                       // light.showRed(3)
class DRAVELIN_EXPORT StateHandler
{
public:
    /// None: calls nothing.
    StateHandler() = default;

    /// That the target has the operation is not checked before the call, which then is a line in the log.
    /// \operation{init:selector:}
    template <class Target, class Operation>
    StateHandler(Target *target, Operation selector) : m_action(target, std::move(selector)), m_isNone(false)
    {}

    /// Whether the handler was made without a target and operation.
    [[nodiscard]] bool isNone() const noexcept { return m_isNone; }

    /// Makes the call before it returns.
    /// \operation{invoke:}
    void invoke(qint64 info) const { m_action(info); }

private:
    Action<qint64> m_action;
    bool m_isNone = true;
};

/// One state of a state machine: its number and its handlers, which may be none.
class StateEntry
{
public:
    /// \operation{init:stateSetup:stateOperation:}
    StateEntry(qint64 state, StateHandler stateSetup, StateHandler stateOperation)
        : m_state(state), m_stateSetup(std::move(stateSetup)), m_stateOperation(std::move(stateOperation))
    {}

    /// \operation{state}
    [[nodiscard]] qint64 state() const noexcept { return m_state; }
    /// \operation{setState:}
    void setState(qint64 state) noexcept { m_state = state; }

    /// Called once when the machine has entered the state.
    /// \operation{stateSetup}
    [[nodiscard]] const StateHandler &stateSetup() const noexcept { return m_stateSetup; }
    /// \operation{setStateSetup:}
    void setStateSetup(const StateHandler &handler) { m_stateSetup = handler; }

    /// Called for each update.
    /// \operation{stateOperation}
    [[nodiscard]] const StateHandler &stateOperation() const noexcept { return m_stateOperation; }
    /// \operation{setStateOperation:}
    void setStateOperation(const StateHandler &handler) { m_stateOperation = handler; }

private:
    qint64 m_state;
    StateHandler m_stateSetup;
    StateHandler m_stateOperation;
};

} // namespace dravelin
