// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/recording.h"

#include <QtCore/QFile>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using dravelin::SoundData;

namespace {

/// Half a minute of silence after a click that is too soft to disturb, and too loud for silence.
std::shared_ptr<const SoundData> clockSamples()
{
    constexpr int rate = 8000;
    std::vector<qint16> samples(rate * 30);
    std::fill_n(samples.begin(), rate / 50, qint16(1000));
    return SoundData::fromSamples(std::move(samples), 1, rate);
}

} // namespace

QString recordingPath(const QDir &folder) { return folder.absoluteFilePath(u"sound-session.wav"_s); }

void recordSounds(const QDir &folder)
{
    QFile settings(folder.absoluteFilePath(u"sound-recording.conf"_s));
    const QString text = u"[general]\ndrivers = wave\nfrequency = 44100\nsample-type = int16\nchannels = stereo\n"
                         "[wave]\nfile = %1\n"_s.arg(recordingPath(folder));
    if (settings.open(QIODevice::WriteOnly))
        settings.write(text.toUtf8());
    qputenv("ALSOFT_CONF", QFile::encodeName(settings.fileName()));
    qputenv("ALSOFT_DRIVERS", "wave");
}

SoundClock::SoundClock() : m_voice(dravelin::SoundOutput::current()->start(clockSamples(), 1, [](bool) {})) {}

std::shared_ptr<const SoundData> testTone(double seconds)
{
    constexpr int rate = 44100;
    constexpr double frequency = 500; // whole periods in each step of SoundLevels
    std::vector<qint16> samples(std::size_t(seconds * rate));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        const double value = std::sin(2 * std::numbers::pi * frequency * double(i) / rate);
        samples[i] = qint16(std::lround(double(testToneAmplitude) * 32767 * value));
    }
    return SoundData::fromSamples(std::move(samples), 1, rate);
}
