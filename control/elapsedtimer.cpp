// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/timers.h>

#include <array>
#include <charconv>

namespace dravelin {

using std::chrono::system_clock;

namespace {

QDateTime toDate(const std::optional<system_clock::time_point> &time)
{
    if (!time)
        return {};
    const auto sinceEpoch = std::chrono::duration_cast<std::chrono::milliseconds>(time->time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(sinceEpoch.count());
}

} // namespace

void ElapsedTimer::startTimer()
{
    m_endDate.reset();
    m_startDate = system_clock::now();
}

void ElapsedTimer::endTimer() { m_endDate = system_clock::now(); }

double ElapsedTimer::elapsedTime()
{
    if (!m_startDate)
        return 0;
    if (!m_endDate)
        endTimer();
    return std::chrono::duration<double>(*m_endDate - *m_startDate).count();
}

QString ElapsedTimer::elapsedTimeString()
{
    std::array<char, 64> text;
    const auto result =
        std::to_chars(text.data(), text.data() + text.size(), elapsedTime(), std::chars_format::fixed, 6);
    return QString::fromLatin1(text.data(), result.ptr - text.data());
}

QDateTime ElapsedTimer::startDate() const { return toDate(m_startDate); }

QDateTime ElapsedTimer::endDate() const { return toDate(m_endDate); }

} // namespace dravelin
