// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "encoding/forms.h"

#include <QtWidgets/QWidget>

#include <atomic>
#include <memory>

class QLabel;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QTableWidget;
class QThread;

/// Text or a file in, its forms out: size, rates, and whether the bytes came back.
class FormsPanel : public QWidget
{
    Q_OBJECT

public:
    FormsPanel();
    ~FormsPanel() override;

    void setBytes(const QString &name, const QByteArray &bytes);
    [[nodiscard]] QByteArray bytes() const { return m_bytes; }

    /// Tries all forms in a thread of its own; finished() ends it.
    void start();
    [[nodiscard]] bool isRunning() const { return m_thread != nullptr; }
    [[nodiscard]] const QList<FormResult> &results() const { return m_results; }

Q_SIGNALS:
    void finished();

private:
    QWidget *makeInput();
    QWidget *makeOutput();
    void openFile();
    void takeResult(const FormResult &result);
    void stop();
    void showWritten();

    QString m_name;
    QByteArray m_bytes;
    QList<FormResult> m_results;
    std::unique_ptr<QThread> m_thread;
    std::atomic<bool> m_isCancelled = false;
    QPlainTextEdit *m_input;
    QLabel *m_source;
    QPushButton *m_start, *m_cancel;
    QProgressBar *m_progress;
    QTableWidget *m_table;
    QPlainTextEdit *m_written;
};
