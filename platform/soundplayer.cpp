// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/soundplayer.h>

#include <QtCore/QPointer>

#include <algorithm>
#include <utility>

namespace dravelin {

SoundPlayerDelegate::~SoundPlayerDelegate() = default;

SoundPlayer::SoundPlayer(std::shared_ptr<const SoundData> data, QObject *parent)
    : Object(parent), m_data(std::move(data))
{}

SoundPlayer::~SoundPlayer() = default;

bool SoundPlayer::play()
{
    if (m_voice || !m_data)
        return false;
    const auto output = SoundOutput::current();
    if (output)
        m_voice = output->start(m_data, m_volume, [this](bool finished) { end(finished); });
    if (!m_voice)
        return false;
    m_paused = false;
    Q_EMIT playingChanged();
    return true;
}

bool SoundPlayer::pause()
{
    if (!isPlaying())
        return false;
    m_voice->pause();
    m_paused = true;
    Q_EMIT playingChanged();
    return true;
}

bool SoundPlayer::resume()
{
    if (!isPaused())
        return false;
    m_voice->resume();
    m_paused = false;
    Q_EMIT playingChanged();
    return true;
}

bool SoundPlayer::stop()
{
    if (!m_voice)
        return false;
    m_voice.reset();
    if (!std::exchange(m_paused, false))
        Q_EMIT playingChanged();
    return true;
}

void SoundPlayer::setVolume(float volume)
{
    const float audible = volume > 0 ? std::min(volume, 1.0F) : 0.0F; // 0 for what is no number too
    if (m_volume == audible)
        return;
    m_volume = audible;
    if (m_voice)
        m_voice->setVolume(m_volume);
    Q_EMIT volumeChanged();
}

double SoundPlayer::duration() const noexcept { return m_data ? m_data->duration() : 0; }

double SoundPlayer::currentTime() const { return m_voice ? m_voice->position() : 0; }

/// The handlers may play again or destroy the player.
void SoundPlayer::end(bool finished)
{
    const auto held = weak_from_this().lock();
    const QPointer<SoundPlayer> self(this);
    m_voice.reset();
    m_paused = false;
    if (m_delegate)
        m_delegate->didFinishPlaying(this, finished);
    if (self)
        Q_EMIT didFinishPlaying(this, finished);
    if (self && !isPlaying())
        Q_EMIT playingChanged();
}

} // namespace dravelin
