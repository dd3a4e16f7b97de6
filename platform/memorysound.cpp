// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/memorysound.h>

#include <algorithm>
#include <new>

namespace dravelin::detail {

namespace {

class MemoryReader : public SoundReader
{
public:
    MemoryReader(std::span<const qint16> all, int channels) : m_all(all), m_channels(channels) {}

    qint64 read(qint64 frame, std::span<qint16> samples) override
    {
        const auto frames = qint64(m_all.size() / m_channels);
        const auto first = size_t(std::clamp<qint64>(frame, 0, frames)) * m_channels;
        const auto count = std::min(m_all.size() - first, samples.size()) / m_channels;
        std::ranges::copy(m_all.subspan(first, count * m_channels), samples.begin());
        return qint64(count);
    }

private:
    std::span<const qint16> m_all;
    size_t m_channels;
};

} // namespace

void SampleBuffer::resize(size_t size)
{
    const size_t bytes = std::max<size_t>(size * sizeof(qint16), 1); // a request for none might free it
    auto *samples = static_cast<qint16 *>(std::realloc(m_samples.get(), bytes));
    if (!samples)
        throw std::bad_alloc();
    (void)m_samples.release();
    m_samples.reset(samples);
    m_size = size;
}

std::unique_ptr<SoundReader> readerOf(std::span<const qint16> samples, int channels)
{
    return std::make_unique<MemoryReader>(samples, channels);
}

} // namespace dravelin::detail
