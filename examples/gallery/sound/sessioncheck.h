// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "sound/levels.h"
#include "sound/recording.h"

class Tour;

/// Compares the recording of the tour's session with what was done when.
class SessionCheck
{
public:
    /// \param path the recording
    /// \param marks with the times of the session's SoundClock
    SessionCheck(const QString &path, QList<SoundMark> marks);

    void run(Tour &tour) const;

private:
    void draw(Tour &tour) const;
    void checkVolumes(Tour &tour) const;
    void checkFade(Tour &tour, float full) const;
    void expectSilence(Tour &tour, const QString &from, const QString &to) const;
    [[nodiscard]] double at(const QString &text) const;

    SoundLevels m_levels;
    QList<SoundMark> m_marks;
};
