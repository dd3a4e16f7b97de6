// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QBasicTimer>
#include <QtWidgets/QPlainTextEdit>

/// The end of what a command prints. It is laid out some times a second, however fast it comes.
class OutputView : public QPlainTextEdit
{
    Q_OBJECT

public:
    static constexpr int Limit = 200'000; ///< characters that are kept

    OutputView();

    /// Adds text at the end, and stays there if that was in view.
    void addText(const QString &text);
    void clearText();
    /// Shows what has come so far at once, and not only in a moment.
    void layOut();
    /// The text as it came, with what is still to be laid out.
    [[nodiscard]] QString text() const { return m_text.right(Limit); }

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    /// The text with line ends in what is too long to be laid out quickly, for the end of the document.
    [[nodiscard]] QString broken(const QString &text) const;
    void dropBeginning();

    QString m_text;
    QString m_waiting;
    QBasicTimer m_timer;
};
