// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/recording.h"

#include <QtCore/QFile>

#include <algorithm>
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

QString recordSounds(const QDir &folder)
{
    const QString path = folder.absoluteFilePath(u"sound-session.wav"_s);
    QFile settings(folder.absoluteFilePath(u"sound-recording.conf"_s));
    const QString text = u"[general]\ndrivers = wave\nfrequency = 44100\nsample-type = int16\nchannels = stereo\n"
                         "[wave]\nfile = %1\n"_s.arg(path);
    if (settings.open(QIODevice::WriteOnly))
        settings.write(text.toUtf8());
    qputenv("ALSOFT_CONF", QFile::encodeName(settings.fileName()));
    qputenv("ALSOFT_DRIVERS", "wave");
    return path;
}

SoundClock::SoundClock() : m_voice(dravelin::SoundOutput::current()->start(clockSamples(), 1, [](bool) {})) {}

SoundLevels::SoundLevels(const QString &path)
{
    const auto data = SoundData::load(path);
    if (!data)
        return;
    m_levels = data->peaks(int(data->duration() / step));
    const auto click = std::find_if(m_levels.cbegin(), m_levels.cend(), [](float level) { return level > 0.01F; });
    m_clockStart = double(click - m_levels.cbegin()) * step;
}

QList<float> SoundLevels::between(double from, double to) const
{
    const auto first = qsizetype(std::max(0.0, from / step));
    return m_levels.mid(first, std::max<qsizetype>(0, qsizetype(to / step) - first));
}

float SoundLevels::loudest(double from, double to) const
{
    const QList<float> levels = between(from, to);
    return levels.isEmpty() ? 0 : *std::max_element(levels.begin(), levels.end());
}

float SoundLevels::median(double from, double to) const
{
    QList<float> levels = between(from, to);
    if (levels.isEmpty())
        return 0;
    const auto middle = levels.begin() + levels.size() / 2;
    std::nth_element(levels.begin(), middle, levels.end());
    return *middle;
}
