// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/timers.h>

namespace dravelin {

MutableTimer::MutableTimer(const Action<Timer *> &action, QObject *info) : m_action(action), m_info(info) {}

MutableTimer::~MutableTimer() = default;

void MutableTimer::setTarget(const Action<Timer *> &action, QObject *info)
{
    m_action = action;
    m_info = info;
}

void MutableTimer::start(double interval, bool repeats)
{
    const auto previous = std::exchange(m_timer, nullptr);
    if (previous)
        previous->invalidate();
    const QVariant info = m_info ? QVariant::fromValue(m_info.data()) : QVariant();
    m_timer = Timer::scheduledTimerWithTimeInterval(interval, m_action, info, repeats);
    if (!previous)
        Q_EMIT runningChanged();
}

void MutableTimer::stop()
{
    const auto previous = std::exchange(m_timer, nullptr);
    if (!previous)
        return;
    const QPointer<MutableTimer> self(this); // the target that the timer kept may be its owner
    previous->invalidate();
    if (self)
        Q_EMIT runningChanged();
}

} // namespace dravelin
