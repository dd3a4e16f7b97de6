// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "system/commandpanel.h"

#include "system/commandline.h"
#include "system/outputview.h"

#include <dravelin/files/systemservices.h>

#include <QtGui/QShortcut>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>

using dravelin::ShellCommand;
using namespace Qt::StringLiterals;

namespace {

constexpr int refreshes = 10; // a second

QString describe(ShellCommand::Ending ending, int exitStatus, int signal)
{
    switch (ending) {
    case ShellCommand::TimedOut:
        return CommandPanel::tr("ended by the time limit");
    case ShellCommand::Cancelled:
        return CommandPanel::tr("cancelled");
    default:
        break;
    }
    return signal ? CommandPanel::tr("ended by signal %1").arg(signal)
                  : CommandPanel::tr("exit status %1").arg(exitStatus);
}

} // namespace

CommandPanel::CommandPanel()
    : m_line(new CommandLine),
      m_output(new OutputView),
      m_run(new QPushButton(tr("&Run"))),
      m_cancel(new QPushButton(tr("&Cancel"))),
      m_archive(new QPushButton(tr("&Archive Output"))),
      m_limit(new QDoubleSpinBox),
      m_progress(new QProgressBar),
      m_state(new QLabel)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(makeControls());
    layout->addWidget(m_output, 1);
    layout->addWidget(makeState());
    m_output->setAccessibleName(tr("Output"));
    m_output->setPlaceholderText(tr("What the command prints appears here"));
    m_timer.setInterval(1000 / refreshes);
    connect(m_line, &QLineEdit::returnPressed, this, &CommandPanel::run);
    connect(m_line, &QLineEdit::textChanged, this, &CommandPanel::enableButtons);
    connect(m_run, &QPushButton::clicked, this, &CommandPanel::run);
    connect(m_cancel, &QPushButton::clicked, &m_command, &ShellCommand::cancel);
    auto *escape = new QShortcut(Qt::Key_Escape, this);
    connect(escape, &QShortcut::activated, m_cancel, &QPushButton::click);
    connect(&m_timer, &QTimer::timeout, this, &CommandPanel::showTime);
    connect(&m_command, &ShellCommand::outputRead, m_output, &OutputView::addText);
    connect(&m_command, &ShellCommand::runningChanged, this, &CommandPanel::showRunning);
    connect(&m_command, &ShellCommand::finished, m_output, &OutputView::layOut);
    connect(&m_command, &ShellCommand::finished, this, &CommandPanel::showEnd);
    showRunning();
}

QWidget *CommandPanel::makeControls()
{
    auto *panel = new QWidget;
    auto *layout = new QHBoxLayout(panel);
    layout->setContentsMargins({});
    m_limit->setRange(0, 3600);
    m_limit->setDecimals(1);
    m_limit->setSpecialValueText(tr("no limit"));
    m_limit->setSuffix(tr(" s"));
    auto *label = new QLabel(tr("&Time limit"));
    label->setBuddy(m_limit);
    layout->addWidget(m_line, 1);
    layout->addWidget(m_run);
    layout->addWidget(m_cancel);
    layout->addWidget(label);
    layout->addWidget(m_limit);
    return panel;
}

QWidget *CommandPanel::makeState()
{
    auto *panel = new QWidget;
    auto *layout = new QHBoxLayout(panel);
    layout->setContentsMargins({});
    m_progress->setFixedWidth(120);
    m_progress->setTextVisible(false);
    m_progress->setAccessibleName(tr("Time"));
    m_archive->setToolTip(tr("Archives the text and reads it back."));
    m_cancel->setToolTip(tr("Escape does the same."));
    m_output->setToolTip(tr("The last %L1 characters are kept.").arg(OutputView::Limit));
    connect(m_archive, &QPushButton::clicked, this, &CommandPanel::archive);
    layout->addWidget(m_progress);
    layout->addWidget(m_state, 1);
    layout->addWidget(m_archive);
    return panel;
}

QString CommandPanel::output() const { return m_output->text(); }

QString CommandPanel::status() const { return m_state->text(); }

void CommandPanel::run()
{
    if (!m_run->isEnabled())
        return;
    m_output->clearText();
    m_line->remember(m_line->text());
    m_line->selectAll();
    m_command.setTimeLimit(m_limit->value());
    m_clock.start();
    if (!m_command.start(m_line->text()))
        m_state->setText(tr("The command could not be started."));
}

void CommandPanel::enableButtons()
{
    if (m_cancel->hasFocus() && !m_command.isRunning())
        m_line->setFocus();
    m_run->setEnabled(!m_command.isRunning() && !m_line->text().trimmed().isEmpty());
    m_cancel->setEnabled(m_command.isRunning());
}

void CommandPanel::showRunning()
{
    enableButtons();
    const bool runs = m_command.isRunning();
    m_progress->setVisible(runs);
    m_progress->setMaximum(int(m_command.timeLimit() * 1000)); // 0: it shows that something goes on
    runs ? m_timer.start() : m_timer.stop();
    if (runs)
        showTime();
}

void CommandPanel::showTime()
{
    m_progress->setValue(int(m_clock.elapsed()));
    m_state->setText(tr("Running, %1 s").arg(double(m_clock.elapsed()) / 1000, 0, 'f', 1));
}

void CommandPanel::showEnd(int exitStatus, int signal)
{
    const QString how = describe(m_command.ending(), exitStatus, signal);
    m_state->setText(tr("After %1 s: %2").arg(double(m_clock.elapsed()) / 1000, 0, 'f', 1).arg(how));
}

void CommandPanel::archive()
{
    const QByteArray archived = dravelin::encodeObjectData(output());
    const bool isEqual = dravelin::decodeObjectData<QString>(archived) == output();
    const QString result = isEqual ? tr("reads back equal") : tr("reads back different");
    m_state->setText(
        tr("Archive of %1 characters: %2 bytes, %3").arg(output().size()).arg(archived.size()).arg(result));
}
