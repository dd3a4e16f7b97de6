// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "undo/undopage.h"

#include <QtGui/QAction>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;
using dravelin::UndoManager;

namespace {

QColor colorNumber(int number) { return QColor::fromHsv(number * 67 % 360, 150, 235); }

} // namespace

UndoPage::UndoPage() : m_canvas(new Canvas(m_undo))
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(makeMenuBar());
    layout->addWidget(m_canvas, 1);
    m_state = new QLabel;
    layout->addWidget(m_state);
    auto *hint = new QLabel(tr("Add shapes from the menu Edit or with Ctrl+Shift+A, and drag them. Whatever happens in "
                               "one go, such as shaking all of them, is undone in one "
                               "go."));
    hint->setWordWrap(true);
    layout->addWidget(hint);
    for (const auto changed : {&UndoManager::undoActionNameChanged, &UndoManager::redoActionNameChanged,
                               &UndoManager::canUndoChanged, &UndoManager::canRedoChanged})
        connect(&m_undo, changed, this, &UndoPage::showState);
    showState();
}

QString UndoPage::title() const { return tr("Undo"); }

QWidget *UndoPage::makeMenuBar()
{
    auto *bar = new QMenuBar;
    m_menu = bar->addMenu(tr("&Edit"));
    QAction *undo = m_undo.createUndoAction(m_menu);
    undo->setShortcut(QKeySequence::Undo);
    QAction *redo = m_undo.createRedoAction(m_menu);
    redo->setShortcut(QKeySequence::Redo);
    m_menu->addActions({undo, redo});
    m_menu->addSeparator();
    addToMenu(tr("&Add a Shape"), QKeySequence(u"Ctrl+Shift+A"_s), &UndoPage::add);
    addToMenu(tr("&Colour"), QKeySequence(u"Ctrl+Shift+C"_s), &UndoPage::recolor);
    addToMenu(tr("&Delete"), QKeySequence::Delete, &UndoPage::remove);
    addToMenu(tr("&Shake"), QKeySequence(u"Ctrl+Shift+S"_s), &UndoPage::shake);
    return bar;
}

void UndoPage::addToMenu(const QString &text, const QKeySequence &shortcut, void (UndoPage::*operation)())
{
    QAction *action = m_menu->addAction(text);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, operation);
}

void UndoPage::showState()
{
    const QString undo = m_undo.canUndo() ? m_undo.undoMenuItemTitle() : tr("Nothing to undo");
    const QString redo = m_undo.canRedo() ? m_undo.redoMenuItemTitle() : tr("Nothing to redo");
    m_state->setText(undo + u" · "_s + redo);
}

void UndoPage::add()
{
    const int number = m_made++;
    m_canvas->insertShape(m_canvas->shapes().size(), {QPoint(80 + number * 97 % 400, 80 + number * 61 % 180),
                                                      colorNumber(number), number % 2 == 0});
    m_undo.setActionName(tr("Add"));
}

void UndoPage::recolor()
{
    if (m_canvas->selected() < 0)
        return;
    m_canvas->setColor(m_canvas->selected(), colorNumber(++m_made));
    m_undo.setActionName(tr("Colour"));
}

void UndoPage::remove()
{
    if (m_canvas->selected() < 0)
        return;
    m_canvas->removeShape(m_canvas->selected());
    m_undo.setActionName(tr("Delete"));
}

void UndoPage::shake() { m_canvas->shake(); }
