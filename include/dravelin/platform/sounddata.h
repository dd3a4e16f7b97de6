// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <memory>
#include <span>
#include <vector>

namespace dravelin {

/// Reads samples of a SoundData, from anywhere in it. A reader belongs to one thread; several may read the same data.
class DRAVELIN_EXPORT SoundReader
{
public:
    virtual ~SoundReader();

    /// Fills `samples` with whole frames, interleaved, from `frame` on.
    /// \return the frames read; fewer than asked for at the end, 0 past it; less than 0 when the file could not be read
    [[nodiscard]] virtual qint64 read(qint64 frame, std::span<qint16> samples) = 0;
};

/// The samples of one sound: decoded, interleaved, of one or two channels, never changed. All sounds of a file share
/// them while one of them lives.
///
///     auto data = dravelin::SoundData::load("/usr/share/sounds/freedesktop/stereo/bell.oga");
///     if (data)
///         qInfo() << data->duration() << "seconds," << data->sampleRate() << "Hz";
///
/// May be handed to other threads.
class DRAVELIN_EXPORT SoundData
{
public:
    /// \param path a file or a Qt resource (":/bell.ogg"), found out by its content, whatever its name, to be WAV, OGG
    /// Vorbis or Opus, FLAC, MP3, AIFF or one of the others that libsndfile decodes. Samples beyond full scale are
    /// clipped. More than two channels are mixed down to two with the coefficients of ITU-R BS.775, all lowered by the
    /// same factor, so that no mix clips.
    /// \return the samples; empty when there is no such file or it is no sound, with a line in the log. A file that is
    /// cut off gives what can be decoded of it, with a line in the log as well. May be called from any thread.
    /// \cost decodes the file; one that somebody still holds, under this name or another link, and that has not changed
    /// since is only looked up. Files with more samples than 64 MiB hold stay on the disk and are decoded while they
    /// play; if they do not tell their length, it costs one pass through them.
    [[nodiscard]] static std::shared_ptr<const SoundData> load(const QString &path);

    /// \param samples interleaved; an odd one at the end of two channels is dropped
    /// \param channels 1 or 2
    /// \param sampleRate frames in a second, at least 1
    /// \return empty when channels or rate are out of range
    [[nodiscard]] static std::shared_ptr<const SoundData> fromSamples(std::vector<qint16> samples, int channels,
                                                                      int sampleRate);

    virtual ~SoundData();

    /// Seconds.
    [[nodiscard]] double duration() const noexcept { return double(m_frames) / m_sampleRate; }
    [[nodiscard]] qint64 frames() const noexcept { return m_frames; }
    [[nodiscard]] int channels() const noexcept { return m_channels; }
    [[nodiscard]] int sampleRate() const noexcept { return m_sampleRate; }
    /// Where it was loaded from first; absent for samples that were handed in.
    [[nodiscard]] QString path() const { return m_path; }

    /// All samples; empty for a file that is decoded while it plays.
    [[nodiscard]] virtual std::span<const qint16> samples() const = 0;
    /// A reader of samples in memory must not outlive them; one of a file opens it anew. Never empty: when the file is
    /// gone, reading fails.
    [[nodiscard]] virtual std::unique_ptr<SoundReader> reader() const = 0;

    /// The largest amplitude, 0 to 1, of both channels in each of `count` equal parts, for a picture of the waveform.
    /// \return empty for a count less than 1; what cannot be read counts as silence
    /// \cost reads all samples
    [[nodiscard]] QList<float> peaks(int count) const;

protected:
    SoundData(const QString &path, qint64 frames, int channels, int sampleRate);

private:
    Q_DISABLE_COPY_MOVE(SoundData)

    QString m_path;
    qint64 m_frames;
    int m_channels;
    int m_sampleRate;
};

} // namespace dravelin
