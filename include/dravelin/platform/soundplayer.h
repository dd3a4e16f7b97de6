// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/object.h>
#include <dravelin/platform/soundoutput.h>

#include <memory>

namespace dravelin {

class SoundPlayer;

/// Is told of the end of a play, at less cost than a connection, of which each takes some hundred bytes.
class DRAVELIN_EXPORT SoundPlayerDelegate
{
public:
    virtual ~SoundPlayerDelegate();
    /// As the signal SoundPlayer::didFinishPlaying(), and before it.
    /// \operation{sound:didFinishPlaying:}
    virtual void didFinishPlaying(SoundPlayer *sound, bool finished) = 0;
};

/// A sound that plays at most once at a time on the current SoundOutput.
///
///     dravelin::SoundPlayer player(dravelin::SoundData::load(path));
///     connect(&player, &dravelin::SoundPlayer::didFinishPlaying, this, &Window::showNext);
///     player.play();
///
/// Destroying it ends the play without a signal. Use a player on one thread, with an event loop.
class DRAVELIN_EXPORT SoundPlayer : public Object
{
    Q_OBJECT
    Q_PROPERTY(bool playing READ isPlaying NOTIFY playingChanged)
    Q_PROPERTY(float volume READ volume WRITE setVolume NOTIFY volumeChanged)
    Q_PROPERTY(double duration READ duration CONSTANT)

public:
    /// \param data empty for a player that plays nothing
    explicit SoundPlayer(std::shared_ptr<const SoundData> data, QObject *parent = nullptr);
    ~SoundPlayer() override;

    /// Starts from the beginning.
    /// \return false while it plays or is paused, without data, and when the output takes no further voice
    /// \operation{play}
    Q_INVOKABLE bool play();
    /// \return false when it is not playing
    /// \operation{pause}
    Q_INVOKABLE bool pause();
    /// \return false when it is not paused
    /// \operation{resume}
    Q_INVOKABLE bool resume();
    /// Ends it without didFinishPlaying(), also when paused.
    /// \return false when there was nothing to end
    /// \operation{stop}
    Q_INVOKABLE bool stop();

    /// False while paused.
    /// \operation{isPlaying}
    [[nodiscard]] bool isPlaying() const noexcept { return m_voice && !m_paused; }
    [[nodiscard]] bool isPaused() const noexcept { return m_voice && m_paused; }

    /// 1 at first.
    /// \operation{volume}
    [[nodiscard]] float volume() const noexcept { return m_volume; }
    /// \param volume clamped to 0..1; NaN is 0
    /// \operation{setVolume:}
    void setVolume(float volume);

    /// Seconds; 0 without data.
    /// \operation{duration}
    [[nodiscard]] double duration() const noexcept;
    /// Seconds that were played; 0 when neither playing nor paused.
    [[nodiscard]] double currentTime() const;
    [[nodiscard]] const std::shared_ptr<const SoundData> &data() const noexcept { return m_data; }

    /// \param delegate not owned; null for none. It has to be taken back before it is destroyed.
    /// \operation{setDelegate:}
    void setDelegate(SoundPlayerDelegate *delegate) noexcept { m_delegate = delegate; }

Q_SIGNALS:
    /// The end of a play, once per play(), from the event loop. Not after stop(). Slots may play the sound again and
    /// destroy the player.
    /// \param finished false when the samples could not be read to their end
    void didFinishPlaying(dravelin::SoundPlayer *sound, bool finished);
    void playingChanged();
    void volumeChanged();

private:
    void end(bool finished);

    std::shared_ptr<const SoundData> m_data;
    std::unique_ptr<SoundVoice> m_voice;
    SoundPlayerDelegate *m_delegate = nullptr;
    float m_volume = 1;
    bool m_paused = false;
};

} // namespace dravelin
