// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/action.h>

#include <concepts>
#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

namespace dravelin {

class Sound;
class SoundHandler;

namespace detail {

/// A callable that takes a Sound, or nothing.
template <class Callable>
concept SoundCallable =
    !std::same_as<
        Callable,
        SoundHandler> && !std::same_as<Callable, Action<Sound *>> && (std::invocable<Callable &, Sound *> || std::invocable<Callable &>);

} // namespace detail

/// What to call at the end of a play or of a fade: a callable, or a target with an operation. Cheap to copy; the copies
/// share the callable.
///
///     depot.playSound(Bell, [] { qInfo() << "rung"; });
///     depot.playSound(Bell, {window, "bellRung:"});           // found by name; handed the Sound
///     depot.playSound(Bell, {window, &Window::bellRung});     // checked by the compiler
///     depot.playSound(Bell, {window, [] { ... }});            // called while the window lives
///     depot.fadeOutAllSounds(1.5f, {});                       // nothing
///
/// A target is held weakly; once it is gone, nothing is called.
class DRAVELIN_EXPORT SoundHandler
{
public:
    /// Calls nothing.
    SoundHandler() = default;
    SoundHandler(std::nullptr_t) {} // NOLINT: implicit, like the others, for calls such as those above

    /// A callable that takes the sound, or nothing. An empty `std::function` calls nothing.
    template <detail::SoundCallable Callable>
    SoundHandler(Callable callable) // NOLINT
    {
        if constexpr (std::invocable<Callable &, Sound *>)
            setFunction(std::move(callable));
        else if (std::function<void()> plain = std::move(callable))
            setFunction([plain = std::move(plain)](Sound *) { plain(); });
    }

    SoundHandler(const Action<Sound *> &action); // NOLINT

    /// \param operation a name such as "bellRung:", a member function of the target, or a callable. It takes the sound,
    /// or nothing. A name that the target does not have is a line in the log at the call.
    template <class Target, class Operation>
    SoundHandler(Target *target, Operation operation) : SoundHandler(Action<Sound *>(target, std::move(operation)))
    {}

    /// Whether there is something to call.
    [[nodiscard]] explicit operator bool() const noexcept { return m_function != nullptr; }

    /// Makes the call, if there is one to make. It may destroy the handler.
    void operator()(Sound *sound) const;

private:
    using Function = std::function<void(Sound *)>;

    void setFunction(Function function);

    std::shared_ptr<const Function> m_function;
};

} // namespace dravelin
