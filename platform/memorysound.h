// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/sounddata.h>

#include <cstdlib>

namespace dravelin::detail {

/// Samples that are still being decoded: memory that grows without being cleared or copied where the system can help it.
class SampleBuffer
{
public:
    SampleBuffer() = default;

    [[nodiscard]] std::span<qint16> all() const noexcept { return {m_samples.get(), m_size}; }
    /// Those gained have no value yet.
    void resize(size_t size);

private:
    struct Free
    {
        void operator()(qint16 *samples) const noexcept { std::free(samples); }
    };
    std::unique_ptr<qint16[], Free> m_samples;
    size_t m_size = 0;
};

/// Samples in memory, in a container of any kind.
template <typename Owner>
class MemorySound : public SoundData
{
public:
    MemorySound(const QString &path, Owner owner, std::span<const qint16> samples, int channels, int sampleRate)
        : SoundData(path, qint64(samples.size()) / channels, channels, sampleRate),
          m_owner(std::move(owner)),
          m_samples(samples)
    {}

    [[nodiscard]] std::span<const qint16> samples() const override { return m_samples; }
    [[nodiscard]] std::unique_ptr<SoundReader> reader() const override;

private:
    Owner m_owner;
    std::span<const qint16> m_samples;
};

/// Reads samples that outlive it.
[[nodiscard]] std::unique_ptr<SoundReader> readerOf(std::span<const qint16> samples, int channels);

template <typename Owner>
std::unique_ptr<SoundReader> MemorySound<Owner>::reader() const
{
    return readerOf(m_samples, channels());
}

} // namespace dravelin::detail
