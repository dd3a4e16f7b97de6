// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "diagnostics/consolefeed.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QEvent>
#include <QtGui/QTextCursor>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>

namespace dravelin {

namespace {

constexpr qsizetype lineLimit = 10'000;    // a longer line takes too long to lay out
constexpr qsizetype portionLimit = 16'000; // takes a few milliseconds to insert
constexpr qint64 milliseconds = 8;         // in a row, before the event loop has its turn

constexpr QChar ellipsis(0x2026);
constexpr QChar symbolForNull(0x2400);

} // namespace

ConsoleFeed::ConsoleFeed(QPlainTextEdit *view, const QTextCharFormat &format, const QString &text)
    : m_view(view), m_format(format), m_text(text)
{
    view->installEventFilter(this);
    view->setUndoRedoEnabled(false);
    restart();
}

void ConsoleFeed::wake()
{
    if (!m_timer.isActive() && m_view && m_view->isVisible())
        m_timer.start(0, this);
}

void ConsoleFeed::restart()
{
    m_position = m_column = 0;
    m_skipping = false;
    if (m_view)
        m_view->clear();
    wake();
}

bool ConsoleFeed::eventFilter(QObject *, QEvent *event)
{
    if (event->type() == QEvent::Show)
        wake();
    return false;
}

void ConsoleFeed::timerEvent(QTimerEvent *)
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (m_view && m_view->isVisible() && m_position < m_text.size()) {
        insertPortion();
        if (elapsed.elapsed() >= milliseconds)
            return;
    }
    m_timer.stop();
}

void ConsoleFeed::insertPortion()
{
    QScrollBar *scrollBar = m_view->verticalScrollBar();
    const bool following = scrollBar->value() == scrollBar->maximum();
    QTextCursor end(m_view->document());
    end.movePosition(QTextCursor::End);
    end.insertText(takePortion(), m_format);
    if (following)
        scrollBar->setValue(scrollBar->maximum());
}

QString ConsoleFeed::takePortion()
{
    QString portion;
    while (m_position < m_text.size() && portion.size() < portionLimit)
        takePart(portion);
    return portion.replace(QChar(QChar::Null), symbolForNull);
}

/// Takes a line, or as much of one as there is or is shown.
void ConsoleFeed::takePart(QString &portion)
{
    if (m_skipping)
        return skipRestOfLine();
    const QStringView rest = QStringView(m_text).sliced(m_position);
    const QStringView part = rest.first(qMin(rest.size(), lineLimit - m_column + 1));
    if (const qsizetype end = part.indexOf(u'\r'); end >= 0) {
        portion.append(part.first(end)).append(u'\n');
        m_position += end + 1;
        m_column = 0;
        return;
    }
    m_skipping = m_column + part.size() > lineLimit;
    const QStringView shown = m_skipping ? part.chopped(1) : part;
    portion.append(shown);
    if (m_skipping)
        portion.append(ellipsis);
    m_position += shown.size();
    m_column += shown.size();
}

void ConsoleFeed::skipRestOfLine()
{
    const qsizetype end = m_text.indexOf(u'\r', m_position);
    m_position = end < 0 ? m_text.size() : end;
    if (end >= 0) {
        m_skipping = false;
        m_column = 0;
    }
}

} // namespace dravelin
