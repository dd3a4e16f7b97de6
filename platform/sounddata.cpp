// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/sounddata.h>

#include <platform/memorysound.h>
#include <platform/soundcache.h>
#include <platform/soundloading.h>

#include <algorithm>
#include <cstdlib>

namespace dravelin {

namespace {

constexpr qint64 BlockFrames = 8192;

/// Where the part with that number of `count` equal ones begins.
qint64 startOf(qint64 part, qint64 count, qint64 frames)
{
    return frames / count * part + frames % count * part / count;
}

int peakOf(std::span<const qint16> samples)
{
    int peak = 0;
    for (const qint16 sample : samples)
        peak = std::max(peak, std::abs(int(sample)));
    return peak;
}

/// Of the frames from `first` to before `last`, or to the first that cannot be read.
float peakOf(SoundReader &reader, qint64 first, qint64 last, int channels, std::vector<qint16> &block)
{
    int peak = 0;
    for (qint64 read = 1; read > 0 && first < last; first += read) {
        const auto wanted = size_t(std::min(last - first, BlockFrames) * channels);
        read = reader.read(first, std::span(block).first(wanted));
        peak = std::max(peak, peakOf(std::span(block).first(size_t(std::max<qint64>(read, 0) * channels))));
    }
    return float(peak) / 32768.0F;
}

} // namespace

SoundReader::~SoundReader() = default;

SoundData::SoundData(const QString &path, qint64 frames, int channels, int sampleRate)
    : m_path(path), m_frames(frames), m_channels(channels), m_sampleRate(sampleRate)
{}

SoundData::~SoundData() = default;

std::shared_ptr<const SoundData> SoundData::fromSamples(std::vector<qint16> samples, int channels, int sampleRate)
{
    if (channels < 1 || channels > 2 || sampleRate < 1)
        return nullptr;
    const auto whole = samples.size() / size_t(channels) * size_t(channels);
    const std::span all = std::span<const qint16>(samples).first(whole); // stays where it is when the vector moves
    using Sound = detail::MemorySound<std::vector<qint16>>;
    return std::make_shared<Sound>(QString(), std::move(samples), all, channels, sampleRate);
}

std::shared_ptr<const SoundData> SoundData::load(const QString &path)
{
    QString cause;
    detail::SoundInput input(path, cause);
    if (!input.isOpen()) {
        detail::reportSound(path, cause);
        return nullptr;
    }
    const detail::SoundStamp stamp = input.stamp();
    if (auto shared = detail::SoundCache::instance().find(stamp))
        return shared;
    return detail::SoundCache::instance().add(stamp, detail::loadSound(path, std::move(input)));
}

QList<float> SoundData::peaks(int count) const
{
    QList<float> peaks;
    if (count < 1)
        return peaks;
    peaks.reserve(count);
    const auto reader = this->reader();
    std::vector<qint16> block(size_t(BlockFrames * m_channels));
    for (qint64 part = 0; part < count; ++part) {
        const qint64 first = startOf(part, count, m_frames);
        const qint64 last = std::min(std::max(startOf(part + 1, count, m_frames), first + 1), m_frames);
        peaks.append(peakOf(*reader, first, last, m_channels, block));
    }
    return peaks;
}

} // namespace dravelin
