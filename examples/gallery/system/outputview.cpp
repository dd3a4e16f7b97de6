// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "system/outputview.h"

#include <QtCore/QTimerEvent>
#include <QtWidgets/QScrollBar>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int Delay = 50; // ms

} // namespace

OutputView::OutputView()
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setFont(QFont(u"Monospace"_s, 9));
}

void OutputView::addText(const QString &text)
{
    m_waiting += text;
    if (m_waiting.size() > 2 * Limit) // not each time: it moves the rest
        m_waiting = m_waiting.right(Limit);
    if (!m_timer.isActive())
        m_timer.start(Delay, this);
}

void OutputView::clearText()
{
    m_waiting.clear();
    clear();
}

QString OutputView::text() const { return (toPlainText() + m_waiting).right(Limit); }

void OutputView::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_timer.timerId())
        layOut();
    else
        QPlainTextEdit::timerEvent(event);
}

void OutputView::layOut()
{
    m_timer.stop();
    QScrollBar *bar = verticalScrollBar();
    const bool isAtEnd = bar->value() == bar->maximum();
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(std::exchange(m_waiting, {}).right(Limit));
    dropBeginning();
    if (isAtEnd)
        bar->setValue(bar->maximum());
}

void OutputView::dropBeginning()
{
    const int excess = document()->characterCount() - 1 - Limit;
    if (excess <= 0)
        return;
    QTextCursor cursor(document());
    cursor.setPosition(excess, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
}
