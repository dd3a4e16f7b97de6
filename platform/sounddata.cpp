// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/sounddata.h>

#include <algorithm>

namespace dravelin {

namespace {

/// Reads samples that are in memory.
class MemoryReader : public SoundReader
{
public:
    MemoryReader(std::span<const qint16> all, int channels) : m_all(all), m_channels(channels) {}

    qint64 read(qint64 frame, std::span<qint16> samples) override
    {
        const auto first = std::min<size_t>(m_all.size(), size_t(std::max<qint64>(frame, 0)) * m_channels);
        const auto count = std::min(m_all.size() - first, samples.size() / m_channels * m_channels);
        std::ranges::copy(m_all.subspan(first, count), samples.begin());
        return qint64(count / m_channels);
    }

private:
    std::span<const qint16> m_all;
    size_t m_channels;
};

class MemoryData : public SoundData
{
public:
    MemoryData(const QString &path, std::vector<qint16> samples, int channels, int sampleRate)
        : SoundData(path, qint64(samples.size()) / channels, channels, sampleRate), m_samples(std::move(samples))
    {}

    [[nodiscard]] std::span<const qint16> samples() const override { return m_samples; }
    [[nodiscard]] std::unique_ptr<SoundReader> reader() const override
    {
        return std::make_unique<MemoryReader>(m_samples, channels());
    }

private:
    std::vector<qint16> m_samples;
};

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
    samples.resize(samples.size() / size_t(channels) * size_t(channels));
    return std::make_shared<MemoryData>(QString(), std::move(samples), channels, sampleRate);
}

std::shared_ptr<const SoundData> SoundData::load(const QString &) { return nullptr; }

QList<float> SoundData::peaks(int) const { return {}; }

} // namespace dravelin
