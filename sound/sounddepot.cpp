// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/sound/sounddepot.h>

#include <dravelin/platform/log.h>

#include <QtCore/QPointer>

#include <algorithm>
#include <utility>

namespace dravelin {

SoundDepot::SoundDepot(QObject *parent) : Object(parent) {}

SoundDepot::~SoundDepot() = default;

void SoundDepot::addSound(const std::shared_ptr<Sound> &sound)
{
    if (!sound) {
        logWarning(QStringLiteral("SoundDepot: no sound was given to be added"));
        return;
    }
    const auto replaced = std::exchange(m_sounds[quint32(sound->soundId())], sound);
    if (replaced)
        replaced->leaveDepot(this);
    sound->leaveDepot(this); // it may have been added to this one before
    sound->m_depots.append(this);
    sound->setMuted(m_muted);
}

std::shared_ptr<Sound> SoundDepot::getSound(qint64 soundId) const { return m_sounds.value(quint32(soundId)); }

void SoundDepot::setVolumeForAllSound(float volume)
{
    const auto sounds = allSounds(); // whoever is told may add sounds or destroy the depot, here and below
    const float clamped = volume > 0 ? std::min(volume, 1.0F) : 0.0F;
    setVolume(clamped);
    for (const auto &sound : sounds) {
        const auto voices = sound->voices();
        sound->setVolume(clamped);
        for (const auto &voice : voices)
            voice->setVolume(clamped);
    }
}

void SoundDepot::setVolume(float volume)
{
    if (m_volume == volume)
        return;
    m_volume = volume;
    Q_EMIT volumeChanged();
}

void SoundDepot::setCurrentCategory(quint64 category)
{
    if (m_currentCategory == category)
        return;
    m_currentCategory = category;
    Q_EMIT currentCategoryChanged();
}

bool SoundDepot::playSound(qint64 soundId, const SoundHandler &handler)
{
    const auto sound = getSound(soundId);
    return sound && sound->playWithHandler(handler, m_currentCategory, m_volume);
}

bool SoundDepot::forcePlaySound(qint64 soundId, const SoundHandler &handler)
{
    const auto sound = getSound(soundId);
    return sound && sound->forcePlayWithHandler(handler, m_volume);
}

std::shared_ptr<Sound> SoundDepot::playVoice(qint64 soundId, const SoundHandler &handler)
{
    const auto sound = getSound(soundId);
    return sound ? sound->playVoice(handler, m_currentCategory, m_volume) : nullptr;
}

void SoundDepot::stopAllSounds()
{
    const auto sounds = allSounds();
    for (const auto &sound : sounds)
        sound->stop();
}

void SoundDepot::fadeOutAllSounds(float seconds, const SoundHandler &handler)
{
    const auto sounds = allSounds();
    const SoundHandler shared = handler;
    for (const auto &sound : sounds)
        sound->fadeOut(seconds, shared);
}

void SoundDepot::muteAllSounds(bool muted, float seconds, const SoundHandler &handler)
{
    m_muted = muted;
    const auto sounds = allSounds();
    const SoundHandler shared = handler;
    for (const auto &sound : sounds)
        sound->muteSound(muted, seconds, shared);
}

} // namespace dravelin
