// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

/// How loud a recording is from moment to moment: the largest amplitude, 0 to 1, in each hundredth of a second.
class SoundLevels
{
public:
    static constexpr double step = 0.01;

    /// \param path a recording of a SoundClock
    explicit SoundLevels(const QString &path);

    [[nodiscard]] const QList<float> &levels() const { return m_levels; }
    [[nodiscard]] double duration() const { return double(m_levels.size()) * step; }
    /// Seconds from the recording's start to the clock's.
    [[nodiscard]] double clockStart() const { return m_clockStart; }

    /// The levels from one time to another, both in seconds of the recording.
    [[nodiscard]] QList<float> between(double from, double to) const;
    [[nodiscard]] float loudest(double from, double to) const;
    /// The level that half of the time is above.
    [[nodiscard]] float median(double from, double to) const;

private:
    QList<float> m_levels;
    double m_clockStart = 0;
};
