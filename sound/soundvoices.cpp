// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What a sound hands on to its voices.

#include <dravelin/sound/sounddepot.h>

#include <utility>

namespace dravelin {

std::shared_ptr<Sound> Sound::playVoice(SoundHandler handler, quint64 category, float volume)
{
    if (m_muted || (m_category & category) == 0)
        return nullptr;
    const auto voice = std::make_shared<Sound>(data(), m_soundId, m_category);
    if (!voice->forcePlayWithHandler(std::move(handler), volume))
        return nullptr;
    voice->m_voiceOf = this;
    m_voices.append(voice);
    return voice;
}

/// Takes a voice that neither plays nor is paused from the sound that keeps it.
void Sound::leaveWhenIdle()
{
    if (m_voiceOf && !m_player.isPlaying() && !m_player.isPaused())
        m_voiceOf->m_voices.removeIf([this](const std::shared_ptr<Sound> &voice) { return voice.get() == this; });
}

/// A voice that came to its end is reported by its sound as well.
void Sound::endVoice()
{
    const QPointer<Sound> voiceOf = m_voiceOf;
    leaveWhenIdle();
    if (voiceOf)
        voiceOf->report(&Sound::voiceEnded, &SoundDepot::playEnded);
}

/// \return false when a slot that was reached has destroyed this sound
template <class Function>
bool Sound::forEachVoice(Function function)
{
    if (m_voices.isEmpty())
        return true;
    const QPointer<Sound> self(this);
    const auto voices = m_voices;
    for (const auto &voice : voices)
        function(*voice);
    return self;
}

bool Sound::pause()
{
    bool paused = false;
    const bool lives = forEachVoice([&](Sound &voice) { paused |= voice.pause(); });
    if (!lives || !m_player.pause())
        return paused;
    Q_EMIT playingChanged();
    return true;
}

bool Sound::resume()
{
    if (m_muted)
        return false;
    bool resumed = false;
    const bool lives = forEachVoice([&](Sound &voice) { resumed |= voice.resume(); });
    if (!lives || !m_player.resume())
        return resumed;
    Q_EMIT playingChanged();
    return true;
}

void Sound::stop()
{
    if (forEachVoice([](Sound &voice) { voice.stop(); }))
        stopAlone();
}

void Sound::stopAlone()
{
    const QPointer<Sound> self(this);
    const bool wasPlaying = isPlaying();
    m_player.stop();
    if (wasPlaying)
        Q_EMIT playingChanged();
    if (self)
        leaveWhenIdle();
}

void Sound::setMuted(bool muted)
{
    const bool changed = std::exchange(m_muted, muted) != muted;
    if (forEachVoice([=](Sound &voice) { voice.setMuted(muted); }) && changed)
        Q_EMIT mutedChanged();
}

void Sound::fadeOut(float seconds, SoundHandler handler)
{
    if (forEachVoice([=](Sound &voice) { voice.fadeOut(seconds); }))
        fadeOutAlone(seconds, std::move(handler));
}

void Sound::muteSound(bool muted, float seconds, SoundHandler handler)
{
    const QPointer<Sound> self(this);
    setMuted(muted);
    if (self && forEachVoice([=](Sound &voice) { voice.muteSound(muted, seconds); }) && isPlaying())
        fadeOutAlone(seconds, std::move(handler));
}

} // namespace dravelin
