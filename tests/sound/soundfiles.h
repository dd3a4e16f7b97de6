// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QString>

#include <sndfile.h>

#include <cmath>
#include <numbers>
#include <vector>

/// Writes a sound file in which each channel has its own tone: channel c has the amplitude `levels[c]` and 300 + 200 c Hz.
inline void writeTones(const QString &path, int format, int rate, const std::vector<float> &levels, double seconds)
{
    const auto channels = int(levels.size());
    SF_INFO info{0, rate, channels, format, 0, 0};
    SNDFILE *file = sf_open(path.toUtf8().constData(), SFM_WRITE, &info);
    std::vector<float> samples(size_t(seconds * rate) * levels.size());
    for (size_t i = 0; i < samples.size(); ++i) {
        const size_t channel = i % levels.size();
        const double time = double(i / levels.size()) / rate;
        samples[i] = levels[channel] * float(std::sin(2 * std::numbers::pi * (300.0 + 200.0 * double(channel)) * time));
    }
    sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    for (size_t at = 0; at < samples.size(); at += 4096 * levels.size()) // the Vorbis encoder's stack is small
        sf_write_float(file, &samples[at], sf_count_t(std::min(samples.size() - at, 4096 * levels.size())));
    sf_close(file);
}
