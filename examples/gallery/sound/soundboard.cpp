// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "sound/soundboard.h"

#include "sound/soundpad.h"

#include <QtCore/QTimerEvent>

#include <algorithm>
#include <utility>

namespace {

constexpr int leastWidth = 150;
constexpr int rowHeight = 66;
constexpr int gap = 3;
constexpr int frame = 33; // milliseconds from picture to picture

} // namespace

SoundBoard::SoundBoard(QWidget *tabBefore) : m_tabBefore(tabBefore) { setAccessibleName(tr("Sounds")); }

void SoundBoard::add(SoundPad *pad)
{
    pad->setParent(this);
    setTabOrder(m_pads.isEmpty() ? m_tabBefore : static_cast<QWidget *>(m_pads.constLast()), pad);
    m_pads << pad;
    pad->setFocusPolicy(Qt::ClickFocus);
    if (!m_tabStop)
        makeTabStop(pad);
    connect(pad, &SoundPad::entered, this, &SoundBoard::makeTabStop);
    connect(pad, &SoundPad::leaving, this, &SoundBoard::walk);
    arrange();
    pad->show();
}

void SoundBoard::clear()
{
    m_tabStop = nullptr;
    qDeleteAll(std::exchange(m_pads, {}));
    arrange();
}

void SoundBoard::makeTabStop(SoundPad *pad)
{
    if (m_tabStop)
        m_tabStop->setFocusPolicy(Qt::ClickFocus);
    m_tabStop = pad;
    pad->setFocusPolicy(Qt::StrongFocus);
}

void SoundBoard::follow()
{
    if (!m_timer.isActive())
        m_timer.start(frame, this);
}

void SoundBoard::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer.timerId())
        return QWidget::timerEvent(event);
    bool isPlaying = false;
    for (SoundPad *pad : std::as_const(m_pads))
        isPlaying = pad->follow() || isPlaying;
    if (isPlaying)
        return;
    m_timer.stop();
    Q_EMIT fellSilent();
}

void SoundBoard::resizeEvent(QResizeEvent *) { arrange(); }

int SoundBoard::columns() const { return std::max(1, width() / leastWidth); }

void SoundBoard::arrange()
{
    const int across = columns();
    for (int i = 0; i < m_pads.size(); ++i) {
        const int left = width() * (i % across) / across, right = width() * (i % across + 1) / across;
        m_pads[i]->setGeometry(left + gap, i / across * rowHeight + gap, right - left - 2 * gap, rowHeight - 2 * gap);
    }
    setMinimumHeight((int(m_pads.size()) + across - 1) / across * rowHeight);
}

void SoundBoard::walk(SoundPad *from, int key)
{
    const int step = key == Qt::Key_Up || key == Qt::Key_Down ? columns() : 1;
    const bool isBack = key == Qt::Key_Up || key == Qt::Key_Left;
    SoundPad *next = m_pads.value(m_pads.indexOf(from) + (isBack ? -step : step));
    if (!next)
        return;
    next->setFocus(Qt::TabFocusReason);
    Q_EMIT walkedTo(next);
}
