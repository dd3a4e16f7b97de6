// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "system/outputview.h"

#include <QtWidgets/QScrollBar>

using namespace Qt::StringLiterals;

OutputView::OutputView()
{
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTabChangesFocus(true);
    setFont(QFont(u"Monospace"_s, 9));
}

void OutputView::addText(const QString &text)
{
    QScrollBar *bar = verticalScrollBar();
    const bool isAtEnd = bar->value() == bar->maximum();
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text.right(Limit));
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
