// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/streamedsound.h>

#include <platform/soundfile.h>
#include <platform/soundloading.h>

#include <QtCore/QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

/// Has what it needs of the sound for itself, so that it may outlive it.
class StreamReader : public SoundReader
{
public:
    explicit StreamReader(const SoundData &data)
        : m_path(data.path()), m_frames(data.frames()), m_channels(data.channels())
    {
        QString cause;
        SoundInput input(m_path, cause);
        if (input.isOpen())
            m_file = SoundFile::open(std::move(input), cause);
        if (m_file && (m_file->channels() != data.channels() || m_file->sampleRate() != data.sampleRate()))
            cause = u"it has become another sound"_s;
        if (!cause.isNull())
            fail(cause);
    }

    qint64 read(qint64 frame, std::span<qint16> samples) override
    {
        frame = std::clamp<qint64>(frame, 0, m_frames);
        const auto wanted = std::min(qint64(samples.size()) / m_channels, m_frames - frame);
        if (!m_file)
            return -1;
        const qint64 read = wanted > 0 ? readOn(frame, samples.first(size_t(wanted * m_channels))) : 0;
        if (read < wanted)
            fail(m_file->error().isNull() ? u"it has become shorter"_s : m_file->error());
        return read == 0 && wanted > 0 ? -1 : read;
    }

private:
    qint64 readOn(qint64 frame, std::span<qint16> samples)
    {
        if (frame != m_position && !m_file->seek(frame))
            return 0;
        const qint64 read = m_file->read(samples);
        m_position = frame + read;
        return read;
    }

    void fail(const QString &cause)
    {
        reportSound(m_path, cause);
        m_file.reset();
    }

    QString m_path;
    qint64 m_frames;
    int m_channels;
    qint64 m_position = 0; ///< the frame that the file gives next
    std::unique_ptr<SoundFile> m_file;
};

} // namespace

StreamedSound::StreamedSound(const QString &path, qint64 frames, int channels, int sampleRate)
    : SoundData(QFileInfo(path).absoluteFilePath(), frames, channels, sampleRate) // for readers of a later time
{}

std::unique_ptr<SoundReader> StreamedSound::reader() const { return std::make_unique<StreamReader>(*this); }

} // namespace dravelin::detail
