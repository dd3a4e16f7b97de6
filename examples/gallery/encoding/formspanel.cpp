// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "encoding/formspanel.h"

#include <dravelin/encoding.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QThread>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype shownBytes = 4096;

QString sizeText(qsizetype size) { return QLocale().formattedDataSize(size, 1, QLocale::DataSizeSIFormat); }

/// The beginning, as text where it is text.
QString beginning(const QByteArray &bytes)
{
    const QByteArray first = bytes.left(shownBytes);
    const bool isText = std::all_of(first.begin(), first.end(),
                                    [](char c) { return uchar(c) >= 32 || c == '\n' || c == '\t' || c == '\r'; });
    const QString shown = isText ? QString::fromUtf8(first) : dravelin::dump(first.left(shownBytes / 4));
    return bytes.size() > shownBytes ? shown + u" …"_s : shown;
}

} // namespace

FormsPanel::FormsPanel()
{
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(makeInput(), 2);
    layout->addWidget(makeOutput(), 3);
    connect(m_input, &QPlainTextEdit::textChanged, this, [this] {
        if (m_input->isReadOnly())
            return;
        m_bytes = m_input->toPlainText().toUtf8();
        m_source->setText(tr("Text, %1").arg(sizeText(m_bytes.size())));
    });
    connect(m_table, &QTableWidget::currentCellChanged, this, &FormsPanel::showWritten);
    m_input->setPlainText(u"Type or paste any text here, or open a file."_s);
}

FormsPanel::~FormsPanel()
{
    m_isCancelled = true;
    if (m_thread)
        m_thread->wait();
}

QWidget *FormsPanel::makeInput()
{
    auto *input = new QWidget;
    auto *layout = new QVBoxLayout(input);
    auto *open = new QPushButton(tr("&Open a File…"));
    auto *clear = new QPushButton(tr("&New Text"));
    connect(open, &QPushButton::clicked, this, &FormsPanel::openFile);
    connect(clear, &QPushButton::clicked, this, [this] {
        m_input->setReadOnly(false);
        m_input->clear();
        m_input->setFocus();
    });
    auto *buttons = new QHBoxLayout;
    buttons->addWidget(open);
    buttons->addWidget(clear);
    layout->addLayout(buttons);
    m_source = new QLabel;
    layout->addWidget(m_source);
    m_input = new QPlainTextEdit;
    m_input->setAccessibleName(tr("Input"));
    layout->addWidget(m_input, 1);
    m_start = new QPushButton(tr("&Encode and Decode"));
    m_start->setDefault(true);
    connect(m_start, &QPushButton::clicked, this, &FormsPanel::start);
    m_cancel = new QPushButton(tr("&Cancel"));
    m_cancel->setEnabled(false);
    connect(m_cancel, &QPushButton::clicked, this, [this] { m_isCancelled = true; });
    m_progress = new QProgressBar;
    m_progress->setRange(0, int(allForms().size()));
    for (QWidget *each : std::initializer_list<QWidget *>{m_start, m_cancel, m_progress})
        layout->addWidget(each);
    return input;
}

QWidget *FormsPanel::makeOutput()
{
    auto *output = new QWidget;
    auto *layout = new QVBoxLayout(output);
    m_table = new QTableWidget(0, 6);
    m_table->setHorizontalHeaderLabels(
        {tr("Form"), tr("Size"), tr("Of input"), tr("Written at"), tr("Read at"), tr("Same")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->verticalHeader()->hide();
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setAccessibleName(tr("Forms"));
    layout->addWidget(m_table, 1);
    m_written = new QPlainTextEdit;
    m_written->setReadOnly(true);
    m_written->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_written->setWordWrapMode(QTextOption::WrapAnywhere);
    m_written->setAccessibleName(tr("What was written"));
    layout->addWidget(m_written, 1);
    return output;
}

void FormsPanel::openFile()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Encode a File"));
    if (path.isEmpty())
        return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        QMessageBox::warning(this, tr("Encode a File"), tr("%1: %2").arg(path, file.errorString()));
        return;
    }
    setBytes(QFileInfo(path).fileName(), file.readAll());
    start();
}

void FormsPanel::setBytes(const QString &name, const QByteArray &bytes)
{
    m_bytes = bytes;
    m_input->setReadOnly(true);
    m_input->setPlainText(beginning(bytes));
    m_source->setText(u"%1, %2"_s.arg(name, sizeText(bytes.size())));
}

void FormsPanel::start()
{
    if (isRunning())
        return;
    m_results.clear();
    m_table->setRowCount(0);
    m_written->clear();
    m_progress->setValue(0);
    m_isCancelled = false;
    m_start->setEnabled(false);
    m_cancel->setEnabled(true);
    m_thread.reset(QThread::create([this, bytes = m_bytes] {
        const QList<Form> forms = allForms();
        for (const Form &form : forms) {
            if (m_isCancelled)
                break;
            QMetaObject::invokeMethod(this, [this, result = tryForm(form, bytes)] { takeResult(result); });
        }
    }));
    connect(m_thread.get(), &QThread::finished, this, &FormsPanel::stop);
    m_thread->start();
}

void FormsPanel::takeResult(const FormResult &result)
{
    m_results << result;
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    const auto size = double(std::max<qsizetype>(result.inputSize, 1));
    const QStringList texts{result.name,
                            sizeText(result.written.size()),
                            u"%1 %"_s.arg(100.0 * double(result.written.size()) / size, 0, 'f', 1),
                            rateText(result.inputSize, result.writeSeconds),
                            rateText(result.inputSize, result.readSeconds),
                            result.isSame ? tr("yes") : tr("no")};
    for (int column = 0; column < texts.size(); ++column) {
        auto *item = new QTableWidgetItem(texts[column]);
        item->setTextAlignment((column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
        m_table->setItem(row, column, item);
    }
    m_progress->setValue(row + 1);
    if (row == 0)
        m_table->setCurrentCell(0, 0);
}

void FormsPanel::stop()
{
    m_thread->wait();
    m_thread.release()->deleteLater(); // its signal is still under way
    m_start->setEnabled(true);
    m_cancel->setEnabled(false);
    Q_EMIT finished();
}

void FormsPanel::showWritten()
{
    const int row = m_table->currentRow();
    m_written->setPlainText(row >= 0 && row < m_results.size() ? beginning(m_results[row].written) : QString());
}
