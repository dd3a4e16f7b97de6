// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "progressbar.h"

#include <unistd.h>

#include <cstdio>

ProgressBar::ProgressBar(qsizetype count) : m_count(count), m_isTerminal(isatty(STDERR_FILENO) == 1) {}

ProgressBar::~ProgressBar() { clear(); }

void ProgressBar::show(qsizetype piece, double done, const QString &name)
{
    constexpr int width = 30;
    const int percent = int(100 * (double(piece) + done) / double(m_count));
    if (!m_isTerminal || percent == m_shown)
        return;
    m_shown = percent;
    const int filled = percent * width / 100;
    // Names may have characters that move the cursor.
    QString printable = name.right(40);
    for (QChar &c : printable)
        c = c.isPrint() ? c : QChar(u'?');
    std::fprintf(stderr, "\r[%s%s] %3d %% %s\x1b[K", QByteArray(filled, '#').constData(),
                 QByteArray(width - filled, ' ').constData(), percent, qPrintable(printable));
}

void ProgressBar::clear()
{
    if (m_shown >= 0)
        std::fputs("\r\x1b[K", stderr);
    m_shown = -1;
}
