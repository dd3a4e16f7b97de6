// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/sound/sound.h>

#include <QtCore/QHash>
#include <QtCore/QList>

#include <memory>

namespace dravelin {

/// The sounds of an application by identifier, with one volume, one mute switch and the categories that are on.
///
///     dravelin::SoundDepot depot;
///     depot.addSound(std::make_shared<dravelin::Sound>("bell", Bell, Effects));
///     depot.setCurrentCategory(Effects | Music);
///     depot.playSound(Bell, [] { qInfo() << "rung"; });
///     depot.fadeOutAllSounds(1.5f, {});
///
/// No category is on at first, so playSound() plays nothing until one is; the volume is 0.25.
///
/// Identifiers are told apart by their low 32 bits.
///
/// Handlers and slots may play, stop and add sounds and destroy the depot. Destroying it ends what plays, but for
/// sounds that others hold and for fades. Use a depot on one thread, with an event loop.
class DRAVELIN_EXPORT SoundDepot : public Object
{
    Q_OBJECT
    Q_PROPERTY(float volume READ volume WRITE setVolume NOTIFY volumeChanged)
    Q_PROPERTY(quint64 currentCategory READ currentCategory WRITE setCurrentCategory NOTIFY currentCategoryChanged)

public:
    /// \operation{init}
    explicit SoundDepot(QObject *parent = nullptr);
    ~SoundDepot() override;

    /// Adds a sound, in place of one that has the identifier already, and mutes or unmutes it as the depot is. A
    /// replaced sound that nobody else holds is silent at once, unless it fades. No sound is a line in the log.
    /// \operation{addSound:}
    void addSound(const std::shared_ptr<Sound> &sound);
    /// \return empty for an unknown identifier
    /// \operation{getSound:}
    [[nodiscard]] std::shared_ptr<Sound> getSound(qint64 soundId) const;
    /// In no particular order.
    [[nodiscard]] QList<std::shared_ptr<Sound>> allSounds() const { return m_sounds.values(); }

    /// Sets the volume of the depot and of all its sounds and their voices.
    /// \param volume clamped to 0..1; NaN is 0
    /// \operation{setVolumeForAllSound:}
    Q_INVOKABLE void setVolumeForAllSound(float volume);
    /// That of later plays; 0.25 at first.
    /// \operation{volume}
    [[nodiscard]] float volume() const noexcept { return m_volume; }
    /// Sets the volume of later plays only, unlike setVolumeForAllSound().
    /// \param volume kept as it is; the sound that is played clamps it
    /// \operation{setVolume:}
    void setVolume(float volume);

    /// A bit for each category that is on; 0 at first.
    /// \operation{currentCategory}
    [[nodiscard]] quint64 currentCategory() const noexcept { return m_currentCategory; }
    /// What plays goes on.
    /// \operation{setCurrentCategory:}
    void setCurrentCategory(quint64 category);

    /// Sound::playWithHandler() with the categories and the volume of the depot.
    /// \return whether it started; false for an unknown identifier
    /// \operation{playSound:handler:}
    Q_INVOKABLE bool playSound(qint64 soundId, const dravelin::SoundHandler &handler = {});
    /// Sound::forcePlayWithHandler() with the volume of the depot.
    /// \return whether it started; false for an unknown identifier
    /// \operation{forcePlaySound:handler:}
    Q_INVOKABLE bool forcePlaySound(qint64 soundId, const dravelin::SoundHandler &handler = {});
    /// Sound::playVoice() with the categories and the volume of the depot.
    /// \return empty when it is refused, and for an unknown identifier
    std::shared_ptr<Sound> playVoice(qint64 soundId, const SoundHandler &handler = {});

    /// \operation{stopAllSounds}
    Q_INVOKABLE void stopAllSounds();
    /// Sound::fadeOut() of each sound: the handler is called once for each of them that is not at volume 0, playing or
    /// not.
    /// \operation{fadeOutAllSounds:handler:}
    Q_INVOKABLE void fadeOutAllSounds(float seconds, const dravelin::SoundHandler &handler = {});
    /// Sound::muteSound() of each sound, and for those that are added later the same state. What plays is faded out,
    /// also when `muted` is false; the handler is called once for each sound that plays.
    /// \operation{muteAllSounds:seconds:handler:}
    Q_INVOKABLE void muteAllSounds(bool muted, float seconds, const dravelin::SoundHandler &handler = {});

Q_SIGNALS:
    /// A play of a sound in the depot, or of one of its voices, came to its end; after its handler.
    void playEnded(qint64 soundId);
    /// A fade of a sound in the depot ended; after its handler.
    void fadeEnded(qint64 soundId);
    void volumeChanged();
    void currentCategoryChanged();

private:
    QHash<quint32, std::shared_ptr<Sound>> m_sounds; ///< by the low half of the identifier
    quint64 m_currentCategory = 0;
    float m_volume = 0.25F;
    bool m_muted = false;
};

} // namespace dravelin
