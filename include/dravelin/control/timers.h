// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/timer.h>

#include <QtCore/QDateTime>
#include <QtCore/QPointer>

#include <chrono>
#include <memory>
#include <optional>
#include <utility>

namespace dravelin {

/// A timer that can be started again and again, with another target, operation and info object between two runs.
///
///     dravelin::MutableTimer timer(this, "tick:");      // or &Clock::tick
///     timer.start(0.5, true);                           // Q_INVOKABLE void tick(dravelin::Timer *timer)
///     timer.stop();
///
/// Target and info are held weakly; while it runs, the underlying Timer keeps those alive that `std::shared_ptr` holds.
///
/// Destroying it does not stop what runs: a repeating timer goes on calling its target. Call stop() first.
class DRAVELIN_EXPORT MutableTimer : public Object
{
    Q_OBJECT
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)

public:
    explicit MutableTimer(const Action<Timer *> &action, QObject *info = nullptr);
    /// \param selector an operation of the target that takes the Timer: by name, as member function or as callable
    /// \param info becomes the timer's userInfo()
    /// \operation{initWithTarget:selector:info:}
    template <class Target, class Operation>
    MutableTimer(Target *target, Operation selector, QObject *info = nullptr)
        : MutableTimer(Action<Timer *>(target, std::move(selector)), info)
    {}
    ~MutableTimer() override;

    void setTarget(const Action<Timer *> &action, QObject *info = nullptr);
    /// For the next start; a run that goes on stays as it is.
    /// \operation{setTarget:selector:info:}
    template <class Target, class Operation>
    void setTarget(Target *target, Operation selector, QObject *info = nullptr)
    {
        setTarget(Action<Timer *>(target, std::move(selector)), info);
    }

    /// Stops what runs and starts anew. An info object that is gone by now is not handed along.
    /// \param interval seconds, see Timer
    /// \operation{start:repeats:}
    Q_INVOKABLE void start(double interval, bool repeats = false);
    /// \operation{stop}
    Q_INVOKABLE void stop();

    /// Whether it was started and not stopped since: a one-shot timer that has fired still counts as running. Ask
    /// timer() for what is still to come.
    /// \operation{isRunning}
    [[nodiscard]] bool isRunning() const noexcept { return m_timer != nullptr; }
    /// The timer of the last start; null when stopped.
    [[nodiscard]] std::shared_ptr<Timer> timer() const { return m_timer; }

Q_SIGNALS:
    void runningChanged();

private:
    std::shared_ptr<Timer> m_timer;
    Action<Timer *> m_action;
    QPointer<QObject> m_info;
};

/// A stopwatch on the wall clock. Reading it stops it.
///
///     dravelin::ElapsedTimer watch;
///     watch.startTimer();
///     load();
///     qInfo() << watch.elapsedTimeString();   // "1.500000"
class DRAVELIN_EXPORT ElapsedTimer
{
public:
    /// \operation{startTimer}
    void startTimer();
    /// \operation{endTimer}
    void endTimer();

    /// Seconds from the start to the end, or until now when it has not ended: that ends it, and later readings are the
    /// same until the next start. 0 when it was not started. Negative when the clock was set back in between.
    /// \operation{elapsedTime}
    [[nodiscard]] double elapsedTime();
    /// The same with six decimals and a point, in every locale.
    /// \operation{elapsedTimeString}
    [[nodiscard]] QString elapsedTimeString();

    /// When it was started and ended, to the millisecond; invalid when it was not.
    [[nodiscard]] QDateTime startDate() const;
    [[nodiscard]] QDateTime endDate() const;

private:
    using Date = std::optional<std::chrono::system_clock::time_point>;

    Date m_startDate;
    Date m_endDate;
};

/// \name Switches for debugging
/// For applications to set and to ask for; the library does neither.
/// @{
extern DRAVELIN_EXPORT bool debugTestFlag;
extern DRAVELIN_EXPORT qint64 debugTestInteger;
extern DRAVELIN_EXPORT double debugTestFloat;
/// @}

/// The process's stopwatch; null until one of the functions below is called.
extern DRAVELIN_EXPORT std::shared_ptr<ElapsedTimer> debugTimer;

/// Starts the process's stopwatch. Call this and reportDebugTimer() on one thread.
/// \operation{startDebugTimer}
DRAVELIN_EXPORT void startDebugTimer();

/// Prints the reading of the process's stopwatch, such as "1.500000", which stops it.
/// \operation{reportDebugTimer}
DRAVELIN_EXPORT void reportDebugTimer();

} // namespace dravelin
