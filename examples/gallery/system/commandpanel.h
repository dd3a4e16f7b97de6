// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/files/shellcommand.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

class CommandLine;
class OutputView;
class QDoubleSpinBox;
class QLabel;
class QProgressBar;
class QPushButton;

/// Runs commands of the shell, with their output as it comes.
class CommandPanel : public QWidget
{
    Q_OBJECT

public:
    CommandPanel();

    [[nodiscard]] CommandLine *line() const { return m_line; }
    [[nodiscard]] QPushButton *cancelButton() const { return m_cancel; }
    [[nodiscard]] QPushButton *archiveButton() const { return m_archive; }
    [[nodiscard]] QDoubleSpinBox *limit() const { return m_limit; }

    [[nodiscard]] bool isRunning() const { return m_command.isRunning(); }
    [[nodiscard]] QString output() const;
    /// How the last command ended, in words.
    [[nodiscard]] QString status() const;

private:
    QWidget *makeControls();
    QWidget *makeState();
    void run();
    void enableButtons();
    void showRunning();
    void showTime();
    void showEnd(int exitStatus, int signal);
    void archive();

    dravelin::ShellCommand m_command;
    QElapsedTimer m_clock;
    QTimer m_timer;
    CommandLine *m_line;
    OutputView *m_output;
    QPushButton *m_run, *m_cancel, *m_archive;
    QDoubleSpinBox *m_limit;
    QProgressBar *m_progress;
    QLabel *m_state;
};
