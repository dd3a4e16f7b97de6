// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/sounddata.h>

#include <functional>
#include <memory>

namespace dravelin {

/// One play of a sound that a SoundOutput started. Destroying it ends the play without a call.
class DRAVELIN_EXPORT SoundVoice
{
public:
    virtual ~SoundVoice();

    /// Silence from now on; the position stays.
    virtual void pause() = 0;
    virtual void resume() = 0;
    /// \param volume 0 (silent) to 1 (full), the factor on the amplitude
    virtual void setVolume(float volume) = 0;
    /// Seconds of the sound that were played.
    [[nodiscard]] virtual double position() const = 0;
};

/// Where sounds are heard. Tests put one of their own in its place.
///
/// The default one plays through OpenAL on the system's device. Without a device, and when the device goes away, it
/// goes on in silence: positions advance and ends are reported as if it were heard. A play that starts then looks for a
/// device again, two seconds after the last attempt at the earliest. OpenAL chooses its kind of device (a sound daemon, a
/// sound card) once in a process: what was not there then is not found later. A second after the last play, the device is
/// paused, so that silence costs nothing. It takes 1024 voices at once, paused ones included.
///
/// For one thread with an event loop: that of the first play. Others are refused, with a line in the log.
class DRAVELIN_EXPORT SoundOutput
{
public:
    /// Whether the play came to its end; false when the samples could not be read on.
    using Ended = std::function<void(bool finished)>;

    virtual ~SoundOutput();

    /// Starts to play from the beginning.
    /// \param volume as for SoundVoice::setVolume(); the default output takes values outside as the nearer bound, what is
    /// no number as 0
    /// \param ended called once from the event loop, never from within start(), when all was played; it may destroy the
    /// voice
    /// \return empty when the output takes no further voice, and without data
    /// \cost copies the first half second of samples; the first play opens the device, which takes milliseconds
    [[nodiscard]] virtual std::unique_ptr<SoundVoice> start(std::shared_ptr<const SoundData> data, float volume,
                                                            Ended ended) = 0;

    /// Opens the device ahead of the first play, which does it otherwise.
    virtual void prepare() {}

    /// What plays, as the system calls it; absent while nothing is heard because there is no device.
    [[nodiscard]] virtual QString deviceName() const = 0;

    /// The output in use.
    [[nodiscard]] static std::shared_ptr<SoundOutput> current();

    /// Replaces the process's output for plays from now on; an empty pointer brings the default back.
    /// \return the output that was replaced, empty for the default one
    static std::shared_ptr<SoundOutput> setCurrent(std::shared_ptr<SoundOutput> output);

    /// A further output of the default kind, with a connection to the device of its own.
    [[nodiscard]] static std::shared_ptr<SoundOutput> createSystemOutput();
};

} // namespace dravelin
