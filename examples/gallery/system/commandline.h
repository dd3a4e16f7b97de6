// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QStringList>
#include <QtWidgets/QLineEdit>

/// A line to type commands in; the arrow keys walk through earlier ones.
class CommandLine : public QLineEdit
{
    Q_OBJECT

public:
    CommandLine();

    void remember(const QString &command);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void walk(qsizetype steps);

    QStringList m_history;
    qsizetype m_place = 0; ///< one past the history: what is being typed
};
