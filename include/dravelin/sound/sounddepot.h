// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/sound/sound.h>

#include <QtCore/QHash>
#include <QtCore/QList>

#include <memory>

namespace dravelin {

/// The sounds of an application by identifier, with one volume, one mute switch and the categories that are on.
/// (sketch: see the brief; complete the comments)
class DRAVELIN_EXPORT SoundDepot : public Object
{
    Q_OBJECT
    Q_PROPERTY(float volume READ volume WRITE setVolume NOTIFY volumeChanged)
    Q_PROPERTY(quint64 currentCategory READ currentCategory WRITE setCurrentCategory NOTIFY currentCategoryChanged)

public:
    explicit SoundDepot(QObject *parent = nullptr);
    ~SoundDepot() override;

    void addSound(const std::shared_ptr<Sound> &sound);
    [[nodiscard]] std::shared_ptr<Sound> getSound(qint64 soundId) const;
    [[nodiscard]] QList<std::shared_ptr<Sound>> allSounds() const;

    void setVolumeForAllSound(float volume);
    [[nodiscard]] float volume() const noexcept;
    void setVolume(float volume);
    [[nodiscard]] quint64 currentCategory() const noexcept;
    void setCurrentCategory(quint64 category);

    bool playSound(qint64 soundId, const SoundHandler &handler = {});
    bool forcePlaySound(qint64 soundId, const SoundHandler &handler = {});
    std::shared_ptr<Sound> playVoice(qint64 soundId, const SoundHandler &handler = {});
    Q_INVOKABLE void stopAllSounds();
    void fadeOutAllSounds(float seconds, const SoundHandler &handler = {});
    void muteAllSounds(bool muted, float seconds, const SoundHandler &handler = {});

Q_SIGNALS:
    void playEnded(qint64 soundId);
    void fadeEnded(qint64 soundId);
    void volumeChanged();
    void currentCategoryChanged();
};

} // namespace dravelin
