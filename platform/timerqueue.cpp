// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/timerqueue.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QScopeGuard>

#include <algorithm>
#include <chrono>

namespace dravelin::detail {

namespace {

constexpr int maximumPerPass = 64;

/// \param seconds anything, NaN and infinity included
qint64 toNanoseconds(double seconds)
{
    constexpr double limit = 9e18;
    return seconds > 0 ? qint64(std::min(seconds * 1e9, limit)) : 0;
}

qint64 saturatedSum(qint64 a, qint64 b)
{
    qint64 sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? std::numeric_limits<qint64>::max() : sum;
}

/// The whole interval after `due` that is the first to come.
qint64 nextDue(qint64 due, qint64 interval, qint64 time)
{
    if (interval == 0)
        return time;
    const qint64 passed = due > time ? 0 : (time - due) / interval;
    return saturatedSum(due + passed * interval, interval);
}

int milliseconds(qint64 nanoseconds)
{
    return int(std::min<qint64>((nanoseconds - 1) / 1'000'000 + 1, std::numeric_limits<int>::max()));
}

} // namespace

TimerQueue::~TimerQueue() { clear(); }

TimerQueue *TimerQueue::ofThisThread()
{
    static thread_local TimerQueue queue;
    return queue.followLoop() ? &queue : nullptr;
}

qint64 TimerQueue::readClock()
{
    using namespace std::chrono;
    m_time = duration_cast<nanoseconds>(steady_clock::now().time_since_epoch()).count();
    return m_time;
}

bool TimerQueue::followLoop()
{
    QAbstractEventDispatcher *dispatcher = QAbstractEventDispatcher::instance();
    if (dispatcher == m_dispatcher)
        return dispatcher != nullptr;
    clear();
    m_dispatcher = dispatcher;
    if (!dispatcher)
        return false;
    connect(dispatcher, &QAbstractEventDispatcher::awake, this, &TimerQueue::enterLoop);
    connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, this, &TimerQueue::enterLoop);
    connect(dispatcher, &QObject::destroyed, this, [this] {
        clear();
        m_dispatcher = nullptr;
    });
    return true;
}

/// Qt does not fire a timer within its own event. When a call that we make there runs an event loop, a new timer has to
/// take over.
void TimerQueue::enterLoop()
{
    if (!m_wakeBlocked)
        return;
    m_wakeBlocked = false;
    m_wake.stop();
    wakeForFirst();
}

void TimerQueue::clear()
{
    m_wake.stop();
    m_wakeTime = never;
    const auto timers = std::exchange(m_timers, {});
    for (const auto &[place, timer] : timers) {
        timer->m_waiting = false;
        timer->invalidate();
    }
}

void TimerQueue::add(std::shared_ptr<Timer> timer, double seconds)
{
    insert(std::move(timer), saturatedSum(readClock(), toNanoseconds(seconds)));
}

void TimerQueue::addNext(std::shared_ptr<Timer> timer)
{
    const qint64 due = nextDue(timer->m_place.first, toNanoseconds(timer->timeInterval()), readClock());
    insert(std::move(timer), due);
}

void TimerQueue::insert(std::shared_ptr<Timer> timer, qint64 due)
{
    timer->m_waiting = true;
    timer->m_place = {due, m_requests++};
    const Place place = timer->m_place;
    m_timers.emplace_hint(m_timers.end(), place, std::move(timer));
    if (due < m_wakeTime && !m_wakeBlocked)
        wakeForFirst();
}

void TimerQueue::remove(Timer &timer)
{
    timer.m_waiting = false;
    m_timers.erase(timer.m_place);
}

void TimerQueue::timerEvent(QTimerEvent *)
{
    m_wakeBlocked = true;
    bool threw = true;
    const auto finish = qScopeGuard([&] {
        m_wakeBlocked = false;
        if (threw)
            m_wake.stop(); // Qt would take it to be within its event for ever
        wakeForFirst();
    });
    runPass();
    threw = false;
}

/// Fires what was due and requested when the pass began, and leaves the rest to later passes so that the loop gets to
/// its other events.
void TimerQueue::runPass()
{
    const bool isDue = !m_timers.empty() && m_timers.begin()->first.first <= m_time;
    const Place end{isDue ? m_time : readClock(), m_requests};
    for (int i = 0; i < maximumPerPass && !m_timers.empty() && m_timers.begin()->first < end; ++i) {
        const auto timer = std::move(m_timers.extract(m_timers.begin()).mapped());
        timer->m_waiting = false;
        timer->fire();
    }
}

/// A timer of Qt without delay goes on from pass to pass: starting one costs more than a pass.
void TimerQueue::wakeForFirst()
{
    const qint64 due = m_timers.empty() ? never : m_timers.begin()->first.first;
    // Whatever was requested without delay is due at the last reading.
    const qint64 wait = due == never || due <= m_time ? due - m_time : due - readClock();
    if (wait <= 0 && m_wakeTime == atOnce && m_wake.isActive())
        return;
    m_wakeTime = wait <= 0 ? atOnce : due;
    if (due == never)
        m_wake.stop();
    else
        m_wake.start(wait <= 0 ? 0 : milliseconds(wait), Qt::PreciseTimer, this);
}

} // namespace dravelin::detail
