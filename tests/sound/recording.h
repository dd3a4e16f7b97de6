// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/soundoutput.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <cmath>
#include <cstring>
#include <numbers>
#include <utility>
#include <vector>

/// What was heard: two channels, amplitudes of 0 to 1, times in seconds.
class Recording
{
public:
    static constexpr int rate = 44100;
    /// Mixing is done in steps of this length.
    static constexpr double period = 512.0 / rate;

    explicit Recording(const QByteArray &wave)
    {
        const auto data = wave.indexOf("data");
        m_samples.resize(data < 0 ? 0 : size_t(wave.size() - data - 8) / 4 * 2);
        std::memcpy(m_samples.data(), wave.constData() + data + 8, m_samples.size() * 2);
    }

    [[nodiscard]] double at(size_t frame, int channel) const
    {
        return m_samples[2 * frame + size_t(channel)] / 32768.0;
    }
    [[nodiscard]] size_t frames() const { return m_samples.size() / 2; }
    [[nodiscard]] bool isLoud(size_t frame) const
    {
        return std::abs(at(frame, 0)) > threshold || std::abs(at(frame, 1)) > threshold;
    }

    /// When sound was heard: a start and an end for each stretch without a pause of more than 5 ms.
    [[nodiscard]] std::vector<std::pair<double, double>> stretches() const
    {
        std::vector<std::pair<double, double>> found;
        for (size_t i = 0; i < frames(); ++i) {
            const double time = double(i) / rate;
            if (!isLoud(i))
                continue;
            if (found.empty() || time - found.back().second > 0.005)
                found.emplace_back(time, time);
            found.back().second = double(i + 1) / rate;
        }
        return found;
    }

    /// The amplitude of the sine of that frequency within a span of time.
    [[nodiscard]] double amplitude(double frequency, double from, double to, int channel = 0) const
    {
        double real = 0, imaginary = 0;
        const auto first = size_t(from * rate), last = std::min(frames(), size_t(to * rate));
        for (size_t i = first; i < last; ++i) {
            const double phase = 2 * std::numbers::pi * frequency * double(i) / rate;
            real += at(i, channel) * std::cos(phase);
            imaginary += at(i, channel) * std::sin(phase);
        }
        return 2 * std::hypot(real, imaginary) / double(last - first);
    }

private:
    static constexpr double threshold = 0.002; ///< above what rounding adds
    std::vector<qint16> m_samples;
};

/// While it lives, what the current output plays is recorded in place of being heard. OpenAL chooses its driver once in a
/// process: with the first recorder, before anything was played.
class Recorder
{
public:
    Recorder()
    {
        QFile file(path("config"));
        if (file.open(QIODevice::WriteOnly))
            file.write("[general]\ndrivers=wave\nsample-type=int16\nchannels=stereo\nfrequency=44100\nperiod_size=512\n"
                       "[wave]\nfile="
                       + path("wave").toUtf8() + '\n');
        file.close();
        qputenv("ALSOFT_CONF", path("config").toUtf8());
        qputenv("ALSOFT_DRIVERS", "wave");
        dravelin::SoundOutput::setCurrent(dravelin::SoundOutput::createSystemOutput());
    }
    ~Recorder() { dravelin::SoundOutput::setCurrent(nullptr); }
    Q_DISABLE_COPY_MOVE(Recorder)

    /// Closes the output, unless others keep it.
    static Recording finish()
    {
        dravelin::SoundOutput::setCurrent(nullptr);
        QFile file(path("wave"));
        return Recording(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }

private:
    static QString path(const char *name)
    {
        static const QTemporaryDir folder;
        return folder.filePath(QString::fromLatin1(name));
    }
};

/// A sine of full amplitude, that rises from `start` to 1 over its length.
inline std::shared_ptr<const dravelin::SoundData> sine(double frequency, double seconds, int channels = 2,
                                                       int rate = 44100, double start = 1)
{
    std::vector<qint16> samples(size_t(std::lround(seconds * rate)) * size_t(channels));
    for (size_t i = 0; i < samples.size(); ++i) {
        const auto frame = double(i / size_t(channels));
        const double level = start + (1 - start) * double(i) / double(samples.size());
        samples[i] = qint16(std::lround(32700 * level * std::cos(2 * std::numbers::pi * frequency * frame / rate)));
    }
    return dravelin::SoundData::fromSamples(std::move(samples), channels, rate);
}
