// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "system/commandline.h"

#include <QtGui/QKeyEvent>

using namespace Qt::StringLiterals;

CommandLine::CommandLine()
{
    setPlaceholderText(tr("A command of the shell, such as: ls -l"));
    setText(u"for word in one two three; do echo $word; sleep 1; done; date >&2"_s);
    setAccessibleName(tr("Command"));
    setClearButtonEnabled(true);
}

void CommandLine::remember(const QString &command)
{
    m_history.removeAll(command);
    m_history << command;
    m_place = m_history.size();
}

void CommandLine::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        walk(-1);
        break;
    case Qt::Key_Down:
        walk(1);
        break;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void CommandLine::walk(qsizetype steps)
{
    m_place = qBound<qsizetype>(0, m_place + steps, m_history.size());
    setText(m_history.value(m_place));
}
