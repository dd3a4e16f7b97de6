// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/timer.h>

#include <QtCore/QBasicTimer>
#include <QtCore/QObject>

#include <limits>
#include <map>
#include <memory>
#include <utility>

QT_BEGIN_NAMESPACE
class QAbstractEventDispatcher;
QT_END_NAMESPACE

namespace dravelin::detail {

/// All waiting timers of one thread in the order in which they fire, and the one timer of Qt that wakes them.
class TimerQueue : public QObject
{
public:
    /// When due, in nanoseconds of readClock(); and which request it was, for those due at the same time.
    using Place = std::pair<qint64, quint64>;

    ~TimerQueue() override;

    /// \return null when the thread has no event loop
    static TimerQueue *ofThisThread();

    void add(std::shared_ptr<Timer> timer, double seconds);
    /// Adds a repeating timer for the first of its due times that is still to come.
    void addNext(std::shared_ptr<Timer> timer);
    void remove(Timer &timer);

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    static constexpr qint64 never = std::numeric_limits<qint64>::max();
    static constexpr qint64 atOnce = -1;

    qint64 readClock();
    bool followLoop();
    void enterLoop();
    void clear();
    void insert(std::shared_ptr<Timer> timer, qint64 due);
    void runPass();
    void wakeForFirst();

    std::map<Place, std::shared_ptr<Timer>> m_timers;
    quint64 m_requests = 0;
    qint64 m_time = 0; ///< when the clock was last read
    QAbstractEventDispatcher *m_dispatcher = nullptr;
    QBasicTimer m_wake;
    qint64 m_wakeTime = never; ///< what m_wake is set to
    bool m_wakeBlocked = false;
};

} // namespace dravelin::detail
