// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/soundinput.h>
#include <platform/soundmixdown.h>

#include <sndfile.h>

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace dravelin::detail {

/// A sound being decoded, to interleaved samples of one or two channels.
class SoundFile
{
public:
    /// \param cause set when it is no sound
    /// \return empty when it is no sound, or one that nothing can play
    [[nodiscard]] static std::unique_ptr<SoundFile> open(SoundInput input, QString &cause);
    ~SoundFile();

    [[nodiscard]] const SoundInput &input() const noexcept { return m_input; }
    [[nodiscard]] int sampleRate() const noexcept { return m_info.samplerate; }
    [[nodiscard]] int channels() const noexcept { return m_mixdown ? 2 : m_info.channels; }
    /// As the file promises; never more than that are read.
    [[nodiscard]] qint64 frames() const noexcept { return m_info.frames; }

    [[nodiscard]] bool seek(qint64 frame);
    /// Decodes the next whole frames. \return how many; fewer than fit at the end or at an error, see error()
    [[nodiscard]] qint64 read(std::span<qint16> samples);
    /// What went wrong last; absent when nothing did.
    [[nodiscard]] QString error() const;

private:
    explicit SoundFile(SoundInput input) : m_input(std::move(input)) {}
    Q_DISABLE_COPY_MOVE(SoundFile)

    void openDecoder();
    [[nodiscard]] QString refusal() const;
    void prepare();
    [[nodiscard]] std::vector<Speaker> speakers() const;
    [[nodiscard]] bool isDecodedToFloats() const;
    [[nodiscard]] qint64 readBlock(std::span<qint16> samples);

    SoundInput m_input;
    sf_count_t m_position = 0; ///< in bytes that are in memory
    SF_INFO m_info = {};
    SNDFILE *m_decoder = nullptr;
    std::optional<SoundMixdown> m_mixdown;
    std::vector<float> m_block; ///< empty when samples are decoded as they are
    std::vector<float> m_mixed;

    friend struct MemoryIO;
};

} // namespace dravelin::detail
