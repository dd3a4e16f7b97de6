// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/action.h>

#include <concepts>
#include <functional>
#include <type_traits>
#include <utility>

namespace dravelin {

class Sound;

/// What to call at the end of a play or of a fade: a callable, or a target with an operation. Cheap to copy.
///
///     depot.playSound(Bell, [] { qInfo() << "rung"; });
///     depot.playSound(Bell, {window, "bellRung:"});           // found by name; handed the Sound
///     depot.playSound(Bell, {window, &Window::bellRung});     // checked by the compiler
///     depot.fadeOutAllSounds(1.5f, {});                       // nothing
///
/// A target is held weakly; once it is gone, nothing is called.
class SoundHandler
{
public:
    /// Calls nothing.
    SoundHandler() = default;
    SoundHandler(std::nullptr_t) {}

    /// A callable that takes the sound, or nothing. An empty `std::function` calls nothing.
    template <class Callable>
    requires(!std::same_as<std::remove_cvref_t<Callable>,
                           SoundHandler> && (std::invocable<Callable &> || std::invocable<Callable &, Sound *>))
        SoundHandler(Callable callable); // sketch: store as std::function<void(Sound *)>

    SoundHandler(const Action<Sound *> &action);
    template <class Target, class Operation>
    SoundHandler(Target *target, Operation operation) : SoundHandler(Action<Sound *>(target, std::move(operation)))
    {}

    [[nodiscard]] explicit operator bool() const noexcept { return bool(m_function); }
    void operator()(Sound *sound) const;

private:
    std::function<void(Sound *)> m_function;
};

} // namespace dravelin
