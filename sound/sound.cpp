// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/sound/sound.h>

#include <dravelin/platform/log.h>

#include <QtCore/QFileInfo>

#include <algorithm>
#include <utility>

namespace dravelin {

namespace {

QString resourcePath(const QString &file)
{
    const QFileInfo info(file);
    return info.isAbsolute() && info.isFile() ? file : QString();
}

std::shared_ptr<const SoundData> loadResource(const QString &file)
{
    const QString path = resourcePath(file);
    if (path.isNull()) {
        logWarning(QStringLiteral("Sound: there is no sound resource \"%1\"").arg(file));
        return nullptr;
    }
    return SoundData::load(path);
}

} // namespace

Sound::Sound(const QString &file, qint64 soundID, quint64 category) : Sound(loadResource(file), soundID, category) {}

Sound::Sound(std::shared_ptr<const SoundData> data, qint64 soundID, quint64 category)
    : m_player(std::move(data)), m_fadeTimer(this, ""), m_soundId(soundID), m_category(category)
{
    connect(&m_player, &SoundPlayer::didFinishPlaying, this, &Sound::didFinishPlaying);
    connect(&m_player, &SoundPlayer::volumeChanged, this, &Sound::volumeChanged);
    connect(&m_player, &SoundPlayer::playingChanged, this, &Sound::playingChanged);
}

Sound::~Sound() { m_fadeTimer.stop(); }

bool Sound::playWithHandler(const SoundHandler &handler, quint64 category, float volume)
{
    return !m_muted && (m_category & category) != 0 && forcePlayWithHandler(handler, volume);
}

bool Sound::forcePlayWithHandler(const SoundHandler &handler, float volume)
{
    const auto held = weak_from_this().lock();
    const QPointer<Sound> self(this);
    const SoundHandler copy = handler;
    setVolume(volume);
    if (!self)
        return false;
    const auto previous = std::exchange(m_playHandler, copy);
    return m_player.play();
}

float Sound::volume() const noexcept { return m_player.data() ? m_player.volume() : 0; }

void Sound::setVolume(float volume)
{
    if (m_player.data())
        m_player.setVolume(volume);
}

/// The handler is taken out before the call, so that one which a new play sets within it stays.
void Sound::didFinishPlaying(SoundPlayer *, bool)
{
    const auto held = weak_from_this().lock();
    const QPointer<Sound> self(this);
    std::exchange(m_playHandler, {})(this);
    if (self)
        Q_EMIT playEnded();
    if (!self)
        return;
    const QPointer<Sound> voiceOf = m_voiceOf;
    leaveWhenIdle();
    if (voiceOf)
        Q_EMIT voiceOf->voiceEnded();
}

} // namespace dravelin
