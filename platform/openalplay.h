// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/soundoutput.h>

#include "platform/openaldevice.h"

#include <deque>
#include <memory>
#include <span>

namespace dravelin::detail {

/// One play: how far it is, and the short blocks of samples that wait on a device for it. The device may be exchanged
/// for another one while it plays. Without one, it goes on in silence, by the clock. Times are nanoseconds of the steady
/// clock.
///
/// All calls that a device answers are made within its Scope.
class OpenAlPlay
{
public:
    OpenAlPlay(std::shared_ptr<const SoundData> data, float volume, SoundOutput::Ended ended);

    /// Goes on from the position where it is, unless it is paused.
    /// \return false when the device takes no more
    bool attach(OpenAlDevice *device, qint64 now);
    /// Goes on in silence.
    void detach(qint64 now);

    void pause(qint64 now);
    /// \param device in case it has none; may be null
    /// \return false when it finds no place there
    bool resume(OpenAlDevice *device, qint64 now);
    void setVolume(float volume);

    /// Takes note of what was played, and queues more.
    /// \return false when the device went away; the position is then the one that it would have now
    bool update(qint64 now);
    /// When update() is needed next.
    [[nodiscard]] qint64 due() const noexcept { return m_due; }
    /// Seconds.
    [[nodiscard]] double position(qint64 now) const;
    [[nodiscard]] bool isPaused() const noexcept { return m_paused; }
    /// Whether the end was reached, or no more can be played.
    [[nodiscard]] bool isOver() const noexcept { return m_over; }
    /// Ends it early.
    void fail();
    void callEnded();
    void forgetEnded() { m_ended = {}; }

private:
    struct Block
    {
        ALuint buffer;
        qint64 frames;
    };
    /// What the device says.
    struct Reading
    {
        qint64 frame;
        bool stopped;
        bool valid; ///< false when the device went away
    };

    [[nodiscard]] Reading read() const;
    [[nodiscard]] qint64 guess(qint64 now) const;
    [[nodiscard]] qint64 frameAt(qint64 now) const;
    void note(qint64 frame, qint64 now);
    void updateInSilence(qint64 now);
    void readAlong();
    void unqueue();
    void fill(double seconds);
    bool queueBlock();
    [[nodiscard]] std::span<const qint16> stereo(qint64 frames);
    [[nodiscard]] qint64 readBlock(std::span<qint16> samples);
    [[nodiscard]] bool endHere();
    [[nodiscard]] qint64 nextBlock() const;
    void setDue();
    [[nodiscard]] qint64 toFrames(double seconds) const;
    [[nodiscard]] qint64 toTime(qint64 frames) const;

    std::shared_ptr<const SoundData> m_data;
    std::unique_ptr<SoundReader> m_reader; ///< for data that is not in memory
    SoundOutput::Ended m_ended;
    std::deque<Block> m_queue;
    OpenAlDevice *m_device = nullptr;
    ALuint m_source = 0;
    float m_volume;
    bool m_paused = false;
    bool m_over = false;
    bool m_failed = false;
    qint64 m_first = 0; ///< the frame with which the queue begins
    qint64 m_next = 0;  ///< the frame with which the next block begins
    qint64 m_end;
    qint64 m_frame = 0; ///< where it was at m_time
    qint64 m_time = 0;
    qint64 m_due = 0;
};

} // namespace dravelin::detail
