// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/openalengine.h"

#include <dravelin/platform/log.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QScopeGuard>

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace dravelin::detail {

namespace {

using namespace std::chrono_literals;

constexpr qint64 never = std::numeric_limits<qint64>::max();

constexpr qint64 count(std::chrono::nanoseconds time) { return time.count(); }

} // namespace

OpenAlEngine::OpenAlEngine() : m_process(QCoreApplication::applicationPid()), m_wake(never), m_idleSince(readClock())
{
    openFirst();
    schedule();
}

OpenAlEngine::~OpenAlEngine() { close(); }

qint64 OpenAlEngine::readClock() { return count(std::chrono::steady_clock::now().time_since_epoch()); }

OpenAlEngine::Play OpenAlEngine::start(std::shared_ptr<const SoundData> data, float volume, SoundOutput::Ended ended)
{
    prepareToPlay();
    if (m_plays.size() >= size_t(OpenAlDevice::maxSources)) {
        logWarning(QStringLiteral("Sound output: takes no further sound beside %1").arg(m_plays.size()));
        return nullptr;
    }
    auto play = std::make_shared<OpenAlPlay>(std::move(data), volume, std::move(ended));
    const OpenAlDevice::Scope scope(m_device.get());
    const qint64 now = readClock();
    if (!play->attach(m_device.get(), now)) {
        logWarning(QStringLiteral("Sound output: the device takes no further sound beside %1").arg(m_plays.size()));
        return nullptr;
    }
    m_plays.push_back(play);
    goOn(now);
    return play;
}

void OpenAlEngine::drop(const Play &play)
{
    play->forgetEnded();
    std::erase(m_finished, play);
    if (std::erase(m_plays, play) == 0)
        return;
    const OpenAlDevice::Scope scope(m_device.get());
    play->detach(readClock());
    if (!isPlaying())
        schedule();
}

void OpenAlEngine::pause(const Play &play)
{
    const OpenAlDevice::Scope scope(m_device.get());
    play->pause(readClock());
    schedule();
}

void OpenAlEngine::resume(const Play &play)
{
    if (play->isOver())
        return;
    prepareToPlay();
    const OpenAlDevice::Scope scope(m_device.get());
    const qint64 now = readClock();
    if (!play->resume(m_device.get(), now))
        play->fail();
    goOn(now);
}

/// After what is to be heard from now on was handed to the device.
void OpenAlEngine::goOn(qint64 now)
{
    if (m_device)
        m_device->run();
    m_idleSince = now;
    wakeAt(now, now);
}

void OpenAlEngine::setVolume(const Play &play, float volume)
{
    const OpenAlDevice::Scope scope(m_device.get());
    play->setVolume(volume);
}

double OpenAlEngine::position(const Play &play)
{
    const OpenAlDevice::Scope scope(m_device.get());
    return play->position(readClock());
}

QString OpenAlEngine::deviceName() const { return m_device ? m_device->name() : QString(); }

void OpenAlEngine::close()
{
    m_timer.stop();
    if (m_process != QCoreApplication::applicationPid())
        (void)m_device.release(); // a forked process has not its threads, and must not end what its parent plays
    else
        moveTo(nullptr);
    for (const Play &play : m_plays)
        play->fail();
    const auto plays = std::exchange(m_plays, {}); // what they capture may come back here when it goes
    const auto finished = std::exchange(m_finished, {});
}

void OpenAlEngine::timerEvent(QTimerEvent *)
{
    const auto self = shared_from_this(); // a call may drop the output
    m_timer.stop();
    m_wake = never;
    advance();
    if (std::exchange(m_wantsDevice, false))
        lookForDevice();
    restWhenIdle();
    deliverEnds();
}

void OpenAlEngine::advance()
{
    const qint64 now = readClock();
    if (!updatePlays(now) || (m_device && !m_device->isConnected()))
        followDevice();
    collectFinished(now);
}

/// \return false when the device went away
bool OpenAlEngine::updatePlays(qint64 now)
{
    const OpenAlDevice::Scope scope(m_device.get());
    if (m_device)
        m_device->stockUp();
    return std::ranges::all_of(m_plays, [now](const Play &play) {
        return play->isPaused() || play->isOver() || play->due() > now || play->update(now);
    });
}

void OpenAlEngine::collectFinished(qint64 now)
{
    const OpenAlDevice::Scope scope(m_device.get());
    for (const Play &play : m_plays) {
        if (play->isOver()) {
            play->detach(now);
            m_finished.push_back(play);
        }
    }
    std::erase_if(m_plays, [](const Play &play) { return play->isOver(); });
}

/// The timer is set before each call: one may start an event loop, or fail.
void OpenAlEngine::deliverEnds()
{
    const auto scheduled = qScopeGuard([this] { schedule(); });
    while (!m_finished.empty()) {
        const Play play = takeFinished();
        schedule();
        play->callEnded();
    }
}

OpenAlEngine::Play OpenAlEngine::takeFinished()
{
    Play play = m_finished.front();
    m_finished.pop_front();
    return play;
}

bool OpenAlEngine::isPlaying() const
{
    return std::ranges::any_of(m_plays, [](const Play &play) { return !play->isPaused() && !play->isOver(); });
}

void OpenAlEngine::schedule()
{
    const qint64 now = readClock();
    wakeAt(nextDue(now), now);
    if (isPlaying())
        m_idleSince = now;
}

qint64 OpenAlEngine::nextDue(qint64 now) const
{
    if (!m_finished.empty() || m_wantsDevice)
        return now;
    if (!isPlaying()) {
        const bool mixes = m_device && m_device->isRunning();
        return mixes ? std::max(now, m_idleSince + restAfter) : never;
    }
    qint64 due = never;
    for (const Play &play : m_plays) {
        if (!play->isPaused())
            due = std::min(due, play->due());
    }
    return due;
}

/// An earlier time that was set stays.
void OpenAlEngine::wakeAt(qint64 due, qint64 now)
{
    if (due >= m_wake)
        return;
    const qint64 wait = std::clamp<qint64>(due - now, 0, count(1h));
    m_wake = due;
    m_timer.start(int((wait + count(1ms) - 1) / count(1ms)), Qt::PreciseTimer, this);
}

} // namespace dravelin::detail
