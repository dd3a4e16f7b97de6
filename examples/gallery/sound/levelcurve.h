// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "sound/levels.h"
#include "sound/recording.h"

#include <QtWidgets/QWidget>

/// The level of a recorded session over its time, with what happened when.
class LevelCurve : public QWidget
{
    Q_OBJECT

public:
    LevelCurve(SoundLevels levels, QList<SoundMark> marks);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] double across(double time) const;
    [[nodiscard]] double up(double level) const;
    void paintScale(QPainter &painter) const;
    void paintLevels(QPainter &painter) const;
    void paintMarks(QPainter &painter) const;

    SoundLevels m_levels;
    QList<SoundMark> m_marks;
    double m_loudest;
};
