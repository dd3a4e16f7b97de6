// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "diagnostics/diagnosticspage.h"

#include "diagnostics/crash.h"

#include <dravelin/diagnostics.h>
#include <dravelin/encoding/collections.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

constexpr int manyLines = 100'000;
constexpr qsizetype enoughReport = 10'000; // of a process that reports its fault for ever

void add(QLayout *layout, const QString &text, QObject *context, const std::function<void()> &action)
{
    auto *button = new QPushButton(text);
    layout->addWidget(button);
    QObject::connect(button, &QPushButton::clicked, context, action);
}

/// What the tracker counts.
class Document : public QObject
{
    Q_OBJECT
};

} // namespace

DiagnosticsPage::DiagnosticsPage() : m_memory(new QLabel), m_report(new QPlainTextEdit)
{
    m_report->setReadOnly(true);
    m_report->setTabChangesFocus(true);
    m_report->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_report->setFont(QFont(u"Monospace"_s, 9));
    m_report->setAccessibleName(tr("Report"));
    m_report->setPlaceholderText(tr("Reports appear here"));

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(makeConsoleButtons());
    layout->addWidget(m_memory);
    layout->addWidget(makeTrackerButtons());
    layout->addWidget(makeCrashButtons());
    layout->addWidget(m_report, 1);
    connect(&m_child, &QProcess::readyReadStandardError, this, &DiagnosticsPage::takeReport);
    showMemory();
}

DiagnosticsPage::~DiagnosticsPage()
{
    m_child.disconnect(this);
    m_child.kill();
    m_child.waitForFinished();
}

QString DiagnosticsPage::title() const { return tr("Diagnostics"); }

QWidget *DiagnosticsPage::makeConsoleButtons()
{
    auto *buttons = new QWidget;
    auto *layout = new QHBoxLayout(buttons);
    layout->setContentsMargins({});
    add(layout, tr("Console beside the &window"), this, [this] { openConsole(); });
    add(layout, tr("Print &values"), this, [this] { printValues(); });
    add(layout, tr("Print 100,000 &lines"), this, [this] { printManyLines(); });
    add(layout, tr("C&lear"), this, [] { dravelin::clearConsole(); });
    add(layout, tr("&Kill"), this, [] { dravelin::killConsole(); });
    add(layout, tr("Show &memory"), this, [this] { showMemory(); });
    return buttons;
}

QWidget *DiagnosticsPage::makeTrackerButtons()
{
    auto *buttons = new QWidget;
    auto *layout = new QHBoxLayout(buttons);
    layout->setContentsMargins({});
    add(layout, tr("&Create a document"), this, [this] { createDocument(); });
    add(layout, tr("&Destroy a document"), this, [this] { destroyDocument(); });
    add(layout, tr("&Take a snapshot"), this, [this] { takeSnapshot(); });
    add(layout, tr("Dump &screens"), this, [this] { showText(dravelin::dumpScreens()); });
    add(layout, tr("Dump w&indows"), this, [this] { showText(dravelin::dumpWindowList()); });
    return buttons;
}

QWidget *DiagnosticsPage::makeCrashButtons()
{
    auto *buttons = new QWidget;
    auto *layout = new QHBoxLayout(buttons);
    layout->setContentsMargins({});
    layout->addWidget(new QLabel(tr("Crash another process by:")));
    const QStringList ways = waysToCrash();
    for (const QString &way : ways)
        add(layout, way, this, [this, way] { crash(way); });
    layout->addStretch(1);
    return buttons;
}

void DiagnosticsPage::openConsole() { dravelin::showConsoleNextToWindow(window()->frameGeometry()); }

void DiagnosticsPage::printValues()
{
    dravelin::console(tr("The gallery's window:"));
    dravelin::consoleRect(window()->frameGeometry());
    dravelin::consoleSize(window()->size());
    dravelin::consolePoint(m_report->mapToGlobal(QPoint()));
    dravelin::consoleRange({3, 12});
    dravelin::consoleFloat(float(window()->devicePixelRatio()));
    dravelin::consoleInteger(QCoreApplication::applicationPid());
}

void DiagnosticsPage::printManyLines()
{
    for (int i = 1; i <= manyLines; ++i)
        dravelin::console(tr("line %1").arg(i));
}

void DiagnosticsPage::showMemory() { m_memory->setText(tr("Resident memory: %1").arg(dravelin::reportMemory())); }

void DiagnosticsPage::createDocument()
{
    dravelin::_initializeObjectTracker();
    m_documents.push_back(std::make_unique<Document>());
    dravelin::_trackObject(m_documents.back().get());
    showTracked();
}

void DiagnosticsPage::destroyDocument()
{
    if (!m_documents.empty())
        m_documents.pop_back();
    showTracked();
}

void DiagnosticsPage::takeSnapshot()
{
    dravelin::_takeSnapCount();
    showTracked();
}

void DiagnosticsPage::showTracked() { showText(dravelin::_dumpTrackedObjects()); }

void DiagnosticsPage::showText(const QString &text) { m_report->setPlainText(dravelin::normalizeLineEndings(text, 2)); }

void DiagnosticsPage::crash(const QString &way)
{
    m_child.kill();
    m_child.waitForFinished();
    m_report->clear();
    m_child.start(QCoreApplication::applicationFilePath(), {u"--crash"_s, way});
}

void DiagnosticsPage::takeReport()
{
    const QString report = m_report->toPlainText() + QString::fromUtf8(m_child.readAllStandardError());
    m_report->setPlainText(report.left(enoughReport));
    if (report.size() > enoughReport)
        m_child.kill();
}

#include "diagnosticspage.moc"
