// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/sounddata.h>

namespace dravelin::detail {

/// A sound that stays on the disk. Each reader opens the file by itself.
class StreamedSound : public SoundData
{
public:
    StreamedSound(const QString &path, qint64 frames, int channels, int sampleRate);

    [[nodiscard]] std::span<const qint16> samples() const override { return {}; }
    [[nodiscard]] std::unique_ptr<SoundReader> reader() const override;
};

} // namespace dravelin::detail
