// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/control/timers.h>
#include <dravelin/platform/soundplayer.h>
#include <dravelin/sound/soundhandler.h>

namespace dravelin {

/// One sound of the application: a cue or an effect with a category, a volume, a mute switch and a fade.
/// (sketch: see the brief; complete the comments)
class DRAVELIN_EXPORT Sound : public Object
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
    Sound(const QString &file, qint64 soundID, quint64 category);
    Sound(std::shared_ptr<const SoundData> data, qint64 soundID, quint64 category);
    ~Sound() override;

    bool play(const SoundHandler &handler, quint64 category, float volume);
    bool forcePlay(const SoundHandler &handler, float volume);
    std::shared_ptr<Sound> playVoice(const SoundHandler &handler, quint64 category, float volume);
    Q_INVOKABLE bool pause();
    Q_INVOKABLE bool resume();
    Q_INVOKABLE void stop();
    [[nodiscard]] bool isPlaying() const;
    [[nodiscard]] float volume() const;
    void setVolume(float volume);
    void fadeOut(float seconds, const SoundHandler &handler = {});
    Q_INVOKABLE void fadeOutTimerHandler(dravelin::Timer *timer);
    void muteSound(bool muted, float seconds, const SoundHandler &handler = {});
    Q_INVOKABLE void didFinishPlaying(dravelin::SoundPlayer *sound, bool finished);

    [[nodiscard]] QString fileName() const { return {}; }
    [[nodiscard]] quint64 category() const noexcept;
    [[nodiscard]] qint64 soundId() const noexcept;
    [[nodiscard]] double duration() const noexcept;
    [[nodiscard]] double currentTime() const;
    [[nodiscard]] std::shared_ptr<const SoundData> data() const;
    [[nodiscard]] bool muted() const noexcept;
    void setMuted(bool muted);

Q_SIGNALS:
    void playEnded();
    void fadeEnded();
    void mutedChanged();
    void volumeChanged();
    void playingChanged();
};

} // namespace dravelin
