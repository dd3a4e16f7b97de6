// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/sound/sound.h>

#include <dravelin/platform/bundle.h>
#include <dravelin/platform/log.h>
#include <dravelin/sound/sounddepot.h>

#include <algorithm>
#include <utility>

namespace dravelin {

namespace {

std::shared_ptr<const SoundData> loadResource(const QString &file)
{
    const QString path = Bundle::mainBundle().pathForSoundResource(file);
    if (path.isNull()) {
        logWarning(QStringLiteral("Sound: there is no sound resource \"%1\"").arg(file));
        return nullptr;
    }
    return SoundData::load(path);
}

} // namespace

Sound::Sound(const QString &file, qint64 soundID, quint64 category) : Sound(loadResource(file), soundID, category) {}

Sound::Sound(std::shared_ptr<const SoundData> data, qint64 soundID, quint64 category)
    : m_player(std::move(data)), m_soundId(soundID), m_category(category)
{
    m_player.setDelegate(this);
}

Sound::~Sound() { stopFadeTimer(); }

bool Sound::playWithHandler(SoundHandler handler, quint64 category, float volume)
{
    return !m_muted && (m_category & category) != 0 && forcePlayWithHandler(std::move(handler), volume);
}

bool Sound::forcePlayWithHandler(SoundHandler handler, float volume)
{
    const QPointer<Sound> self(this);
    setVolume(volume);
    if (!self)
        return false;
    const auto previous = std::exchange(m_playHandler, std::move(handler));
    const bool started = m_player.play();
    if (started)
        Q_EMIT playingChanged();
    return started;
}

float Sound::volume() const noexcept { return m_player.data() ? m_player.volume() : 0; }

void Sound::setVolume(float volume)
{
    if (!m_player.data())
        return;
    const float before = m_player.volume();
    m_player.setVolume(volume);
    if (m_player.volume() != before)
        Q_EMIT volumeChanged();
}

/// The handler is taken out before the call, so that one which a new play sets within it stays.
void Sound::didFinishPlaying(SoundPlayer *sound, bool)
{
    const QPointer<Sound> self(this);
    std::exchange(m_playHandler, {})(this);
    if (self)
        report(&Sound::playEnded, &SoundDepot::playEnded);
    if (self && sound == &m_player && !isPlaying())
        Q_EMIT playingChanged();
    if (self)
        endVoice();
}

/// Emits the sound's own signal and that of the depots that hold it.
void Sound::report(void (Sound::*own)(), void (SoundDepot::*signal)(qint64))
{
    const auto depots = m_depots;
    const qint64 id = m_soundId;
    Q_EMIT(this->*own)();
    for (const auto &depot : depots) {
        if (depot)
            Q_EMIT(depot->*signal)(id);
    }
}

void Sound::leaveDepot(SoundDepot *depot)
{
    m_depots.removeIf([depot](const QPointer<SoundDepot> &held) { return !held || held == depot; });
}

} // namespace dravelin
