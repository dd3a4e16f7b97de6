// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/timer.h>

#include <dravelin/platform/log.h>

#include "platform/timerqueue.h"

#include <QtCore/QScopeGuard>

namespace dravelin {

/// What a timer is made from; nobody else can make one.
class Timer::Request
{
public:
    double interval;
    const Action<Timer *> &action;
    const QVariant &userInfo;
    bool repeats;
};

std::shared_ptr<Timer> Timer::scheduledTimerWithTimeInterval(double interval, const Action<Timer *> &action,
                                                             const QVariant &userInfo, bool repeats)
{
    auto timer = std::make_shared<Timer>(Request{interval, action, userInfo, repeats});
    detail::TimerQueue *queue = detail::TimerQueue::ofThisThread();
    if (!queue) {
        logWarning(QStringLiteral("Timer: nothing will fire, since this thread has no event loop"));
        timer->release();
        return timer;
    }
    timer->m_queue = queue;
    timer->m_valid = true;
    queue->add(timer, interval);
    return timer;
}

Timer::Timer(const Request &request)
    : m_action(request.action),
      m_target(retain(request.action.target())),
      m_userInfo(request.userInfo),
      m_interval(request.interval > 0 ? request.interval : 0),
      m_repeats(request.repeats)
{
    if (m_userInfo.metaType().flags().testFlag(QMetaType::PointerToQObject)) {
        m_infoObject = m_userInfo.value<QObject *>();
        m_infoOwner = retain(m_infoObject);
    }
}

Timer::~Timer() = default;

QVariant Timer::userInfo() const
{
    const bool isObject = m_userInfo.metaType().flags().testFlag(QMetaType::PointerToQObject);
    return isObject && !m_infoObject ? QVariant() : m_userInfo;
}

void Timer::invalidate()
{
    const auto self = shared_from_this(); // the queue's may be the last
    m_valid = false;
    if (m_waiting)
        m_queue->remove(*this);
    if (!m_firing)
        release();
}

void Timer::fireAfter(double interval)
{
    if (!m_valid)
        return;
    const auto self = std::static_pointer_cast<Timer>(shared_from_this());
    if (m_waiting)
        m_queue->remove(*this);
    m_queue->add(self, interval);
}

void Timer::fire()
{
    m_firing = true;
    const auto ended = qScopeGuard([this] { finish(); });
    if (!m_action(this))
        invalidate();
}

void Timer::finish()
{
    m_firing = false;
    if (m_valid && !m_waiting) {
        if (m_repeats)
            m_queue->addNext(std::static_pointer_cast<Timer>(shared_from_this()));
        else
            m_valid = false;
    }
    if (!m_valid)
        release();
}

/// Lets go of everything that could own the timer in turn.
void Timer::release()
{
    m_queue = nullptr;
    m_action = {};
    m_userInfo = {};
    const auto target = std::exchange(m_target, nullptr);
    const auto infoOwner = std::exchange(m_infoOwner, nullptr);
}

} // namespace dravelin
