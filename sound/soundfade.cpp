// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/sound/sounddepot.h>

#include <utility>

namespace dravelin {

namespace {

constexpr double stepInterval = 0.1;

} // namespace

void Sound::fadeOutAlone(float seconds, const SoundHandler &handler)
{
    if (!(seconds > 0)) { // nor a number
        const auto held = weak_from_this().lock();
        const QPointer<Sound> self(this);
        const SoundHandler copy = handler;
        stopAlone();
        if (self)
            endFade(copy);
    } else if (volume() > 0) {
        startFade(seconds, handler);
    }
}

void Sound::startFade(float seconds, const SoundHandler &handler)
{
    const auto dropped = std::exchange(m_fadeHandler, handler);
    m_fadeTimer.setTarget(this, "fadeOutTimerHandler:");
    m_fadeRate = float(double(seconds) / stepInterval); // the number of steps
    m_fadeRate = volume() / m_fadeRate;
    m_fadeTimer.start(stepInterval, true);
}

void Sound::fadeOutTimerHandler(Timer *)
{
    const auto held = weak_from_this().lock();
    const QPointer<Sound> self(this);
    const float left = volume() - m_fadeRate;
    if (isPlaying() && left > 0) {
        setVolume(left);
        return;
    }
    m_fadeTimer.stop();
    if (isPlaying())
        stopAlone();
    if (self)
        endFade(std::exchange(m_fadeHandler, {}));
}

void Sound::endFade(const SoundHandler &handler)
{
    const QPointer<Sound> self(this);
    handler(this);
    if (self)
        report(&Sound::fadeEnded, &SoundDepot::fadeEnded);
}

} // namespace dravelin
