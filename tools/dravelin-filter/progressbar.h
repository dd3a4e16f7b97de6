// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QString>

/// A line at the foot of the terminal that shows how far the work is; nothing when standard error is no terminal.
class ProgressBar
{
public:
    /// \param count how many pieces of equal length there are
    explicit ProgressBar(qsizetype count);
    ~ProgressBar();

    /// \param done of this piece, from 0 to 1
    void show(qsizetype piece, double done, const QString &name);
    /// Takes the line away, for something else to be printed.
    void clear();

private:
    qsizetype m_count;
    bool m_isTerminal;
    int m_shown = -1; // the percentage on the screen
};
