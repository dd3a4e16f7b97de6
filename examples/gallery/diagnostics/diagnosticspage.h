// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"

#include <QtCore/QProcess>

#include <memory>
#include <vector>

class QLabel;
class QPlainTextEdit;

/// The console beside the window, the use of memory, tracked objects, dumps of screens and windows, and the report of a
/// process that crashes.
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
    QWidget *makeTrackerButtons();

    void openConsole();
    void printValues();
    void printManyLines();
    void showMemory();
    void createDocument();
    void destroyDocument();
    void takeSnapshot();
    void showTracked();
    void showText(const QString &text);
    /// Starts the gallery anew as a process that crashes, and shows its report.
    void crash(const QString &way);
    void takeReport();

    QLabel *m_memory;
    QPlainTextEdit *m_report;
    QProcess m_child;
    std::vector<std::unique_ptr<QObject>> m_documents;
};
