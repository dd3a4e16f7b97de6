// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "system/outputview.h"

#include <QtCore/QTimerEvent>
#include <QtGui/QTextBlock>
#include <QtWidgets/QScrollBar>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int Delay = 50; // ms
constexpr qsizetype LongestLine = 2000;

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
    for (QString *kept : {&m_text, &m_waiting}) {
        *kept += text;
        if (kept->size() > 2 * Limit) // not each time: it moves the rest
            *kept = kept->right(Limit);
    }
    if (!m_timer.isActive())
        m_timer.start(Delay, this);
}

void OutputView::clearText()
{
    m_text.clear();
    m_waiting.clear();
    clear();
}

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
    cursor.insertText(broken(std::exchange(m_waiting, {}).right(Limit)));
    dropBeginning();
    if (isAtEnd)
        bar->setValue(bar->maximum());
}

QString OutputView::broken(const QString &text) const
{
    QString lines;
    qsizetype length = document()->lastBlock().length() - 1;
    for (const QChar character : text) {
        length = character == u'\n' ? 0 : length + 1;
        if (length > LongestLine && !character.isLowSurrogate()) {
            lines += u'\n';
            length = 1;
        }
        lines += character;
    }
    return lines;
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
