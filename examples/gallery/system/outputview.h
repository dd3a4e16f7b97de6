// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets/QPlainTextEdit>

/// The end of what a command prints.
class OutputView : public QPlainTextEdit
{
    Q_OBJECT

public:
    static constexpr int Limit = 200'000; ///< characters that are kept

    OutputView();

    /// Adds text at the end, and stays there if that was in view.
    void addText(const QString &text);

private:
    void dropBeginning();
};
