// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/openalplay.h"

#include <algorithm>
#include <utility>

namespace dravelin::detail {

namespace {

// An event loop that is held up for a second causes no gap; for half a second right after the start, which has to be quick.
constexpr double aheadAtStart = 0.5;
constexpr double leastAhead = 1;
constexpr double mostAhead = 2;
constexpr int blocksPerSecond = 4;
/// The device plays on in steps of some 20 ms; its end is looked for at this distance.
constexpr qint64 step = 3'000'000;
/// How soon it is noticed that a device went away; and how old the position may be that is then gone on from.
constexpr qint64 longestWait = 100'000'000;
constexpr qint64 nanoseconds = 1'000'000'000;

/// Writes each of the first half of the samples twice.
void doubleMono(std::vector<qint16> &samples)
{
    for (size_t i = samples.size() / 2; i-- > 0;)
        samples[2 * i] = samples[2 * i + 1] = samples[i];
}

} // namespace

OpenAlPlay::OpenAlPlay(std::shared_ptr<const SoundData> data, float volume, SoundOutput::Ended ended)
    : m_data(std::move(data)), m_ended(std::move(ended)), m_volume(volume), m_end(m_data->frames())
{
    if (m_data->samples().empty())
        m_reader = m_data->reader();
}

bool OpenAlPlay::attach(OpenAlDevice *device, qint64 now)
{
    note(m_frame, now);
    m_due = now;
    m_first = m_next = m_frame;
    if (m_paused || !device)
        return true;
    m_source = device->takeSource();
    if (m_source == 0)
        return false;
    m_device = device;
    fill(aheadAtStart);
    alSourcef(m_source, AL_GAIN, m_volume);
    alSourcePlay(m_source);
    return true;
}

void OpenAlPlay::detach(qint64 now)
{
    note(frameAt(now), now);
    if (!m_device)
        return;
    m_device->giveSource(m_source);
    for (const Block &block : m_queue)
        m_device->giveBuffer(block.buffer);
    m_queue.clear();
    m_device = nullptr;
    m_source = 0;
}

void OpenAlPlay::pause(qint64 now)
{
    if (m_device && !m_paused)
        alSourcePause(m_source);
    note(frameAt(now), now);
    m_paused = true;
}

bool OpenAlPlay::resume(OpenAlDevice *device, qint64 now)
{
    if (!std::exchange(m_paused, false))
        return true;
    if (!m_device)
        return attach(device, now);
    note(m_frame, now);
    m_due = now;
    ALint state = AL_STOPPED;
    alGetSourcei(m_source, AL_SOURCE_STATE, &state);
    if (state == AL_PAUSED) // a stopped one would begin anew; update() sees to it
        alSourcePlay(m_source);
    return true;
}

void OpenAlPlay::setVolume(float volume)
{
    m_volume = volume;
    if (m_device)
        alSourcef(m_source, AL_GAIN, volume);
}

bool OpenAlPlay::update(qint64 now)
{
    if (!m_device) {
        updateInSilence(now);
        return true;
    }
    const Reading reading = read();
    note(reading.valid ? reading.frame : guess(now), now);
    if (!reading.valid)
        return false;
    unqueue();
    fill(mostAhead);
    m_over = reading.stopped && m_queue.empty() && m_next >= m_end;
    if (reading.stopped && !m_over)
        alSourcePlay(m_source);
    setDue();
    return true;
}

void OpenAlPlay::updateInSilence(qint64 now)
{
    const qint64 played = guess(now) - m_frame;
    note(m_frame + played, m_time + toTime(played)); // exactly, so that parts of frames do not add up
    readAlong();
    m_frame = std::min(m_frame, m_end);
    m_over = m_frame == m_end;
    setDue();
}

/// So that it comes out when a file cannot be read on.
void OpenAlPlay::readAlong()
{
    if (!m_reader)
        m_next = m_end;
    std::vector<qint16> block;
    const qint64 enough = m_frame + toFrames(mostAhead);
    while (m_next < m_end && m_next < enough) {
        block.resize(size_t(nextBlock() * m_data->channels()));
        m_next += readBlock(block);
    }
}

double OpenAlPlay::position(qint64 now) const { return double(frameAt(now)) / m_data->sampleRate(); }

void OpenAlPlay::fail() { m_over = m_failed = true; }

void OpenAlPlay::callEnded()
{
    if (const auto ended = std::exchange(m_ended, {}))
        ended(!m_failed);
}

/// The offset counts from the queue's first block, also when that was played. It is asked for before the state: a source
/// that stops in between has none.
OpenAlPlay::Reading OpenAlPlay::read() const
{
    if (m_queue.empty())
        return {m_next, true, true};
    ALint offset = 0;
    ALint state = AL_STOPPED;
    alGetSourcei(m_source, AL_SAMPLE_OFFSET, &offset);
    alGetSourcei(m_source, AL_SOURCE_STATE, &state);
    if (state != AL_STOPPED)
        return {m_first + offset, false, true};
    return {m_next, true, m_device->isConnected()};
}

/// By the clock.
qint64 OpenAlPlay::guess(qint64 now) const
{
    return std::min(m_end, m_frame + toFrames(double(now - m_time) / nanoseconds));
}

qint64 OpenAlPlay::frameAt(qint64 now) const
{
    if (m_paused || m_over)
        return m_frame;
    const Reading reading = m_device ? read() : Reading{0, false, false};
    return reading.valid ? reading.frame : guess(now);
}

void OpenAlPlay::note(qint64 frame, qint64 now)
{
    m_frame = frame;
    m_time = now;
}

void OpenAlPlay::unqueue()
{
    ALint played = 0;
    alGetSourcei(m_source, AL_BUFFERS_PROCESSED, &played);
    for (; played > 0 && !m_queue.empty(); --played) {
        ALuint buffer = 0;
        alSourceUnqueueBuffers(m_source, 1, &buffer);
        m_device->giveBuffer(buffer);
        m_first += m_queue.front().frames;
        m_queue.pop_front();
    }
}

void OpenAlPlay::fill(double seconds)
{
    const qint64 enough = m_frame + toFrames(seconds);
    while (m_next < m_end && m_next < enough && queueBlock()) {
    }
}

bool OpenAlPlay::queueBlock()
{
    const std::span<const qint16> samples = stereo(nextBlock());
    if (samples.empty())
        return false;
    const ALuint buffer = m_device->takeBuffer();
    if (buffer == 0)
        return endHere();
    alGetError();
    alBufferData(buffer, AL_FORMAT_STEREO16, samples.data(), ALsizei(samples.size_bytes()), m_data->sampleRate());
    alSourceQueueBuffers(m_source, 1, &buffer);
    if (alGetError() != AL_NO_ERROR) {
        m_device->giveBuffer(buffer);
        return endHere();
    }
    const auto frames = qint64(samples.size() / 2);
    m_queue.push_back({buffer, frames});
    m_next += frames;
    return true;
}

/// In frames.
qint64 OpenAlPlay::nextBlock() const
{
    return std::min<qint64>(std::max(m_data->sampleRate() / blocksPerSecond, 1), m_end - m_next);
}

/// There is no memory for more; what is queued is played.
bool OpenAlPlay::endHere()
{
    m_failed = true;
    m_end = m_next;
    return false;
}

/// \return the next samples for two channels, empty when there are no more after all
std::span<const qint16> OpenAlPlay::stereo(qint64 frames)
{
    const auto first = size_t(m_next) * size_t(m_data->channels());
    const auto count = size_t(frames) * size_t(m_data->channels());
    const std::span<const qint16> all = m_data->samples();
    if (!all.empty() && m_data->channels() == 2)
        return all.subspan(first, count);
    std::vector<qint16> &block = m_device->scratch();
    block.resize(size_t(frames) * 2);
    if (all.empty())
        block.resize(size_t(readBlock(std::span(block).first(count))) * 2);
    else
        std::ranges::copy(all.subspan(first, count), block.begin());
    if (m_data->channels() == 1)
        doubleMono(block);
    return block;
}

/// \return how many frames were read; an end that comes early, or an error, is the end of the play
qint64 OpenAlPlay::readBlock(std::span<qint16> samples)
{
    const qint64 got = m_reader ? m_reader->read(m_next, samples) : -1;
    const qint64 frames = std::max<qint64>(got, 0);
    m_failed = got < 0;
    if (frames * m_data->channels() < qint64(samples.size()))
        m_end = m_next + frames;
    return frames;
}

void OpenAlPlay::setDue()
{
    qint64 wait = toTime(m_end - m_frame);
    if (m_next < m_end)
        wait = std::min(wait, toTime(m_next - m_frame) - qint64(leastAhead * nanoseconds));
    if (m_device)
        wait = std::min(wait, longestWait);
    m_due = m_time + std::max(wait, step);
}

qint64 OpenAlPlay::toFrames(double seconds) const { return qint64(seconds * m_data->sampleRate()); }

qint64 OpenAlPlay::toTime(qint64 frames) const { return qint64(double(frames) / m_data->sampleRate() * nanoseconds); }

} // namespace dravelin::detail
