// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/levels.h"

#include <dravelin/platform/sounddata.h>

#include <algorithm>

using dravelin::SoundData;

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
