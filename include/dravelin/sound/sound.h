// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/control/timers.h>
#include <dravelin/platform/soundplayer.h>
#include <dravelin/sound/soundhandler.h>

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QVarLengthArray>

#include <memory>

namespace dravelin {

class SoundDepot;

/// One sound of the application: a cue or an effect with an identifier, categories, a mute switch, a volume, and a fade
/// in steps of 0.1 s.
///
///     auto bell = std::make_shared<dravelin::Sound>("bell", Bell, Effects);
///     bell->playWithHandler([] { qInfo() << "rung"; }, Effects | Music, 0.5f);
///     bell->fadeOut(2, [] { qInfo() << "silent"; });
///
/// A sound plays once at a time; playVoice() starts further plays of it that overlap. Volumes are 0 (silent) to 1
/// (full), times are seconds.
///
/// Without samples, since the file was not found or is no sound, it has volume and duration 0 and plays nothing.
///
/// Handlers and slots may play, stop, fade or destroy the sound, and may throw; a sound that is destroyed emits no more.
/// Destroying it ends its play in silence, without a call. One that `std::shared_ptr` holds lives until its fade has
/// ended, so that letting go of it does not cut the fade off.
///
/// Use a sound on one thread, with an event loop.
class DRAVELIN_EXPORT Sound : public Object, public SoundPlayerDelegate
{
    Q_OBJECT
    Q_PROPERTY(QString fileName READ fileName CONSTANT)
    Q_PROPERTY(quint64 category READ category CONSTANT)
    Q_PROPERTY(qint64 soundId READ soundId CONSTANT)
    Q_PROPERTY(double duration READ duration CONSTANT)
    Q_PROPERTY(bool muted READ muted WRITE setMuted NOTIFY mutedChanged)
    Q_PROPERTY(float volume READ volume WRITE setVolume NOTIFY volumeChanged)
    Q_PROPERTY(bool playing READ isPlaying NOTIFY playingChanged)

public:
    /// Loads a sound resource of the application.
    /// \param file its name, with or without extension, or an absolute path. One that is not found is a line in the log.
    /// \param category a bit for each category that the sound belongs to
    /// \cost that of SoundData::load()
    /// \operation{initWithFile:soundID:category:}
    Sound(const QString &file, qint64 soundID, quint64 category);
    /// \param data may be shared with other sounds, and empty
    Sound(std::shared_ptr<const SoundData> data, qint64 soundID, quint64 category);
    ~Sound() override;

    /// Plays from the beginning, unless the sound is muted or in none of the categories. It then sets the volume and
    /// replaces the handler of the previous play before it starts, and so also when it plays already, which gives false.
    /// \param handler called at the end of the play, at most once. Not called after stop(), but kept until the next
    /// play.
    /// \param category a bit for each category that is on
    /// \param volume see setVolume()
    /// \return whether it started
    /// \operation{playWithHandler:category:volume:}
    bool playWithHandler(SoundHandler handler, quint64 category, float volume);
    /// The same for a sound that is muted and for all categories.
    /// \operation{forcePlayWithHandler:volume:}
    bool forcePlayWithHandler(SoundHandler handler, float volume);

    /// Plays the sound once more, whether or not it plays already, under the conditions of playWithHandler().
    ///
    /// The play is a Sound with the same identifier, category and samples, a volume of its own and the handler. This
    /// sound keeps it alive while it plays or is paused, and hands on to it pause(), resume(), stop(), setMuted(),
    /// muteSound() and fadeOut(), the last two without their handlers.
    /// \return empty when it is refused
    std::shared_ptr<Sound> playVoice(SoundHandler handler, quint64 category, float volume);
    /// The plays by playVoice() that have not ended, the oldest first.
    [[nodiscard]] QList<std::shared_ptr<Sound>> voices() const { return m_voices; }

    /// \return whether the sound, or a voice of it, was playing
    /// \operation{pause}
    Q_INVOKABLE bool pause();
    /// \return whether the sound, or a voice of it, was paused; false without effect when it is muted
    /// \operation{resume}
    Q_INVOKABLE bool resume();
    /// Ends the play, also a paused one, without a call. A fade goes on to its next step, which ends it: when the sound
    /// is played again before that, the fade goes on with the new play.
    /// \operation{stop}
    Q_INVOKABLE void stop();

    /// False while paused. Voices do not count.
    /// \operation{isPlaying}
    [[nodiscard]] bool isPlaying() const noexcept { return m_player.isPlaying(); }
    /// Seconds that were played; 0 when neither playing nor paused.
    [[nodiscard]] double currentTime() const { return m_player.currentTime(); }

    /// 1 at first.
    /// \operation{volume}
    [[nodiscard]] float volume() const noexcept;
    /// \param volume clamped to 0..1; NaN is 0. Voices keep theirs.
    /// \operation{setVolume:}
    void setVolume(float volume);

    /// Lowers the volume to 0 in equal steps, one every 0.1 s, and then stops the sound. The volume stays at that of the
    /// last step. A sound that has come to its end by a step, is paused or does not play at all ends the fade with it.
    ///
    /// At volume 0, it does nothing at all, and the handler is never called. A fade that is under way is replaced, its
    /// handler dropped.
    /// \param seconds with 0, less and NaN, the sound is stopped and the handler called before this returns; a fade that
    /// is under way then still ends by its next step. Infinity lowers nothing: the fade ends with the play.
    /// \param handler called at the end of the fade. `{}` for none.
    /// \operation{fadeOut:handler:}
    Q_INVOKABLE void fadeOut(float seconds, dravelin::SoundHandler handler = {});
    /// One step of the fade.
    /// \operation{fadeOutTimerHandler:}
    Q_INVOKABLE void fadeOutTimerHandler(dravelin::Timer *timer);

    /// Sets muted(), and fades a playing sound out, also when `muted` is false. The handler is not called when the sound
    /// does not play.
    /// \operation{muteSound:seconds:handler:}
    Q_INVOKABLE void muteSound(bool muted, float seconds, dravelin::SoundHandler handler = {});

    /// The end of a play, from the player.
    /// \operation{sound:didFinishPlaying:}
    Q_INVOKABLE void didFinishPlaying(dravelin::SoundPlayer *sound, bool finished) override;

    /// Absent, whatever the sound was loaded from. See data() for the path.
    /// \operation{fileName}
    [[nodiscard]] QString fileName() const { return {}; }
    /// \operation{category}
    [[nodiscard]] quint64 category() const noexcept { return m_category; }
    /// \operation{soundId}
    [[nodiscard]] qint64 soundId() const noexcept { return m_soundId; }
    /// \operation{duration}
    [[nodiscard]] double duration() const noexcept { return m_player.duration(); }
    /// Empty when there is nothing to play.
    [[nodiscard]] const std::shared_ptr<const SoundData> &data() const noexcept { return m_player.data(); }

    /// False at first.
    /// \operation{muted}
    [[nodiscard]] bool muted() const noexcept { return m_muted; }
    /// A muted sound refuses playWithHandler(), playVoice() and resume(). What plays goes on.
    /// \operation{setMuted:}
    void setMuted(bool muted);

Q_SIGNALS:
    /// A play came to its end; after its handler. Not after stop(), and not for voices.
    void playEnded();
    /// A voice came to its end; after its handler.
    void voiceEnded();
    /// A fade ended; after its handler. Not for a fade that was replaced.
    void fadeEnded();
    void mutedChanged();
    void volumeChanged();
    void playingChanged();

private:
    friend class SoundDepot;

    template <class Function>
    bool forEachVoice(Function function);
    void leaveWhenIdle();
    void stopAlone();
    void fadeOutAlone(float seconds, SoundHandler handler);
    void startFade(float seconds, SoundHandler handler);
    void stopFadeTimer();
    void endFade(const SoundHandler &handler);
    void endVoice();
    void report(void (Sound::*own)(), void (SoundDepot::*signal)(qint64));
    void leaveDepot(SoundDepot *depot);

    SoundPlayer m_player;
    std::unique_ptr<MutableTimer> m_fadeTimer; ///< from the first fade on: most sounds never fade
    SoundHandler m_playHandler;
    SoundHandler m_fadeHandler;
    QList<std::shared_ptr<Sound>> m_voices;
    QVarLengthArray<QPointer<SoundDepot>, 1> m_depots; ///< those that hold the sound
    QPointer<Sound> m_voiceOf;                         ///< the sound that keeps this voice
    qint64 m_soundId;
    quint64 m_category;
    float m_fadeRate = 0; ///< what a step takes off the volume
    bool m_muted = false;
};

} // namespace dravelin
