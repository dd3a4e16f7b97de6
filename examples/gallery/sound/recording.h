// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/soundoutput.h>

#include <QtCore/QDir>
#include <QtCore/QList>
#include <QtCore/QString>

/// A moment of a recorded session.
struct SoundMark
{
    double time; ///< seconds from the recording's start
    QString text;
};

/// Where recordSounds() records to.
[[nodiscard]] QString recordingPath(const QDir &folder);

/// Lets the process record what would be heard. Call it before the first sound.
void recordSounds(const QDir &folder);

/// The clock of a recorded session: a sound that goes on without being heard, but for a click at its start, by which
/// its time is found in the recording.
class SoundClock
{
public:
    /// Starts it on the current output.
    SoundClock();

    /// Seconds since the click.
    [[nodiscard]] double now() const { return m_voice ? m_voice->position() : 0; }

private:
    std::unique_ptr<dravelin::SoundVoice> m_voice;
};

/// The amplitude of testTone() at volume 1.
inline constexpr float testToneAmplitude = 0.8F;

/// A sine of steady level.
[[nodiscard]] std::shared_ptr<const dravelin::SoundData> testTone(double seconds);
