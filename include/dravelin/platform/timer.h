// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/action.h>

#include <QtCore/QPointer>
#include <QtCore/QVariant>

#include <memory>
#include <utility>

namespace dravelin {

namespace detail {
class TimerQueue;
} // namespace detail

/// A call that the event loop of this thread makes later, once or repeatedly, with the timer itself as argument.
///
///     dravelin::Timer::scheduledTimerWithTimeInterval(0.5, window, "blink:", {}, true);     // by name
///     auto timer = dravelin::Timer::scheduledTimerWithTimeInterval(2, window, &Window::hideHint);
///     timer->invalidate();                                                                  // not after all
///
///     Q_INVOKABLE void Window::blink(dravelin::Timer *timer);
///
/// A scheduled timer keeps itself alive until it has fired or is invalidated, and with it a target that
/// `std::shared_ptr` holds. Any other target is guarded: once it is gone, the timer falls silent.
///
/// Timers fire in the order of their due times, those due at once in the order of their requests, and never within the
/// request: a timer without delay fires on a later pass of the loop. One pass fires at most 64 of them. Nested event
/// loops fire them too, but none within its own call. Precision is a millisecond.
///
/// Use a timer on the thread that scheduled it. Whatever still waits when the thread's event loop is destroyed is
/// invalidated.
class DRAVELIN_EXPORT Timer : public Object
{
    Q_OBJECT
    Q_PROPERTY(double timeInterval READ timeInterval CONSTANT)
    Q_PROPERTY(bool repeats READ repeats CONSTANT)

public:
    /// \param interval seconds; less than 0, and what is no number, counts as 0; 300 years are for ever
    /// \param userInfo anything to carry along; a QObject in it is kept or guarded like the target
    /// \param repeats whether to fire again and again, at whole intervals after the request. A repeating timer that
    /// was held up fires once for the intervals that passed.
    /// \return the timer, which need not be kept; on a thread without event loop an invalid one and a line in the log
    static std::shared_ptr<Timer> scheduledTimerWithTimeInterval(double interval, const Action<Timer *> &action,
                                                                 const QVariant &userInfo = {}, bool repeats = false);

    /// The same with the parts of an Action: a target, and an operation's name, a member function or a callable.
    /// \operation{scheduledTimerWithTimeInterval:target:selector:userInfo:repeats:}
    template <class Target, class Operation>
    static std::shared_ptr<Timer> scheduledTimerWithTimeInterval(double interval, Target *target, Operation selector,
                                                                 const QVariant &userInfo = {}, bool repeats = false)
    {
        return scheduledTimerWithTimeInterval(interval, Action<Timer *>(target, std::move(selector)), userInfo,
                                              repeats);
    }

    /// \internal
    class Request;
    explicit Timer(const Request &request);
    ~Timer() override;

    /// Seconds, as requested, at least 0.
    [[nodiscard]] double timeInterval() const noexcept { return m_interval; }
    [[nodiscard]] bool repeats() const noexcept { return m_repeats; }

    /// What was given along; invalid when that was an object that is gone, and once the timer is invalid and its call
    /// is over.
    /// \operation{userInfo}
    [[nodiscard]] QVariant userInfo() const;

    /// Whether the timer still waits or is just making its call. A one-shot timer becomes invalid when its call has
    /// returned, any timer when its call failed because the target is gone or does not have the operation.
    /// \operation{isValid}
    [[nodiscard]] bool isValid() const noexcept { return m_valid; }

    /// Takes the request back, for good. Allowed within the timer's call.
    /// \operation{invalidate}
    void invalidate();

    /// Makes `interval` seconds from now the next due time. Within its call, a one-shot timer stays valid by that and
    /// fires once more. An invalid timer stays so.
    void fireAfter(double interval);

private:
    friend class detail::TimerQueue;

    void fire();
    void finish();
    void release();

    Action<Timer *> m_action;
    std::shared_ptr<QObject> m_target; ///< set when it is owned with others
    QVariant m_userInfo;
    QPointer<QObject> m_infoObject; ///< the object in m_userInfo
    std::shared_ptr<QObject> m_infoOwner;
    double m_interval;
    detail::TimerQueue *m_queue = nullptr; ///< the thread's; null once the timer is invalid
    std::pair<qint64, quint64> m_place;    ///< in the queue: when due, which request
    bool m_repeats;
    bool m_valid = false;
    bool m_waiting = false; ///< is in the queue
    bool m_firing = false;
};

} // namespace dravelin
