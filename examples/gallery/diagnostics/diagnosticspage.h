// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"

#include <QtCore/QProcess>

class QLabel;
class QPlainTextEdit;

/// The console beside the window, the use of memory, and the report of a process that crashes.
class DiagnosticsPage : public Page
{
    Q_OBJECT

public:
    DiagnosticsPage();
    ~DiagnosticsPage() override;

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    QWidget *makeConsoleButtons();
    QWidget *makeCrashButtons();

    void openConsole();
    void printValues();
    void printManyLines();
    void showMemory();
    /// Starts the gallery anew as a process that crashes, and shows its report.
    void crash(const QString &way);
    void takeReport();

    QLabel *m_memory;
    QPlainTextEdit *m_report;
    QProcess m_child;
};
