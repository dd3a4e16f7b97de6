// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/sound/sounddepot.h>

#include <utility>

namespace dravelin {

namespace {

constexpr double stepInterval = 0.1;

} // namespace

void Sound::fadeOutAlone(float seconds, SoundHandler handler)
{
    if (!(seconds > 0)) { // nor a number
        const QPointer<Sound> self(this);
        stopAlone();
        if (self)
            endFade(handler);
    } else if (volume() > 0) {
        startFade(seconds, std::move(handler));
    }
}

void Sound::startFade(float seconds, SoundHandler handler)
{
    const auto dropped = std::exchange(m_fadeHandler, std::move(handler));
    if (!m_fadeTimer)
        m_fadeTimer = std::make_unique<MutableTimer>(Action<Timer *>());
    m_fadeTimer->setTarget(this, "fadeOutTimerHandler:");
    m_fadeRate = float(double(seconds) / stepInterval); // the number of steps
    m_fadeRate = volume() / m_fadeRate;
    m_fadeTimer->start(stepInterval, true);
}

void Sound::fadeOutTimerHandler(Timer *)
{
    const auto held = weak_from_this().lock(); // the timer may be the last to hold it
    const QPointer<Sound> self(this);
    const float left = volume() - m_fadeRate;
    if (isPlaying() && left > 0) {
        setVolume(left);
        return;
    }
    stopFadeTimer();
    if (isPlaying())
        stopAlone();
    if (self)
        endFade(std::exchange(m_fadeHandler, {}));
}

/// By itself it would run on.
void Sound::stopFadeTimer()
{
    if (m_fadeTimer)
        m_fadeTimer->stop();
}

void Sound::endFade(const SoundHandler &handler)
{
    const QPointer<Sound> self(this);
    handler(this);
    if (self)
        report(&Sound::fadeEnded, &SoundDepot::fadeEnded);
}

} // namespace dravelin
