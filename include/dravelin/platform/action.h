// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/object.h>
#include <dravelin/platform/selector.h>

#include <QtCore/QPointer>

#include <concepts>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace dravelin {

namespace detail {

/// What the copies of an Action share: whom to call, held weakly, and what.
class DRAVELIN_EXPORT ActionTarget
{
public:
    explicit ActionTarget(QObject *target, const Selector &operation = {});

    [[nodiscard]] QObject *get() const noexcept { return m_target.data(); }
    [[nodiscard]] Selector operation() const noexcept { return m_operation; }
    /// Keeps a target that `std::shared_ptr` holds alive while it is being called.
    [[nodiscard]] std::shared_ptr<Object> hold() const { return m_root ? m_root->weak_from_this().lock() : nullptr; }

private:
    QPointer<QObject> m_target;
    Object *m_root;
    Selector m_operation;
};

template <class Function, class Target, class Argument>
concept MemberTaking = std::is_member_function_pointer_v<Function> &&(
    std::invocable<Function, Target *, Argument> || std::invocable<Function, Target *>);

template <class Callable, class Argument>
concept CallableTaking =
    !std::is_member_pointer_v<Callable> && (std::invocable<Callable &, Argument> || std::invocable<Callable &>);

template <class Argument>
struct ActionState
{
    ActionTarget target;
    std::function<void(Argument)> function; ///< empty for an operation called by name
};

} // namespace detail

/// A target and what to call on it: an operation by name, or a member function or callable that the compiler checks.
/// The target is held weakly; once it is gone, calls do nothing. A call may destroy the action. Cheap to copy.
/// `Argument` is a pointer to the sender's class, or an integer (qint64).
///
///     dravelin::Action<dravelin::KVOProxy *> byName(ruler, "marginChanged:");
///     dravelin::Action<dravelin::KVOProxy *> checked(ruler, &Ruler::marginChanged);
///     dravelin::Action<dravelin::KVOProxy *> callable(ruler, [](dravelin::KVOProxy *proxy) { ... });
template <class Argument>
class Action
{
public:
    /// Calls nothing.
    Action() = default;

    /// Found by name at each call; one that the target does not have is a line in the log.
    Action(QObject *target, const Selector &operation) : Action(detail::ActionTarget(target, operation), {}) {}
    Action(QObject *target, const char *operation) : Action(target, Selector(operation)) {}
    Action(QObject *target, const QString &operation) : Action(target, Selector(operation)) {}

    /// A member function of the target that takes the argument, or none.
    template <class Target, detail::MemberTaking<Target, Argument> Function>
    Action(Target *target, Function function)
        : Action(detail::ActionTarget(target), [target, function](Argument argument) {
              if constexpr (std::invocable<Function, Target *, Argument>)
                  std::invoke(function, target, argument);
              else
                  std::invoke(function, target);
          })
    {}

    /// A callable that takes the argument, or none; called while `context` lives.
    template <detail::CallableTaking<Argument> Callable>
    Action(QObject *context, Callable callable)
        : Action(detail::ActionTarget(context), [callable = std::move(callable)](Argument argument) mutable {
              if constexpr (std::invocable<Callable &, Argument>)
                  callable(argument);
              else
                  callable();
          })
    {}

    /// The target, null when there is none or it is gone.
    [[nodiscard]] QObject *target() const noexcept { return m_state ? m_state->target.get() : nullptr; }
    /// The operation, empty when it is not called by name.
    [[nodiscard]] Selector operation() const noexcept { return m_state ? m_state->target.operation() : Selector(); }

    /// Calls the target on this thread.
    /// \return false when the target is gone or does not have the operation
    bool operator()(Argument argument) const
    {
        QObject *receiver = target();
        if (!receiver)
            return false;
        const auto state = m_state;
        const auto held = state->target.hold();
        if (!state->function)
            return perform(receiver, state->target.operation(), CallArgument(argument));
        state->function(argument);
        return true;
    }

private:
    Action(detail::ActionTarget target, std::function<void(Argument)> function)
        : m_state(std::make_shared<detail::ActionState<Argument>>(
            detail::ActionState<Argument>{std::move(target), std::move(function)}))
    {}

    std::shared_ptr<const detail::ActionState<Argument>> m_state;
};

} // namespace dravelin
