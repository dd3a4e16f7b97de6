// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/undomanager.h>

#include <QtGui/QAction>

namespace dravelin {

namespace {

/// An ampersand in a menu text would mark the shortcut letter.
QString menuText(QString title) { return title.replace(u'&', QLatin1String("&&")); }

} // namespace

QString UndoManager::undoMenuItemTitle() const
{
    const QString name = undoActionName();
    return name.isEmpty() ? tr("Undo") : tr("Undo %1").arg(name);
}

QString UndoManager::redoMenuItemTitle() const
{
    const QString name = redoActionName();
    return name.isEmpty() ? tr("Redo") : tr("Redo %1").arg(name);
}

QAction *UndoManager::createUndoAction(QObject *parent)
{
    auto *action = new QAction(menuText(undoMenuItemTitle()), parent);
    action->setEnabled(canUndo());
    connect(action, &QAction::triggered, this, &UndoManager::undo);
    connect(this, &UndoManager::canUndoChanged, action, [this, action] { action->setEnabled(canUndo()); });
    connect(this, &UndoManager::undoActionNameChanged, action,
            [this, action] { action->setText(menuText(undoMenuItemTitle())); });
    connect(this, &QObject::destroyed, action, [action] { action->setEnabled(false); });
    return action;
}

QAction *UndoManager::createRedoAction(QObject *parent)
{
    auto *action = new QAction(menuText(redoMenuItemTitle()), parent);
    action->setEnabled(canRedo());
    connect(action, &QAction::triggered, this, &UndoManager::redo);
    connect(this, &UndoManager::canRedoChanged, action, [this, action] { action->setEnabled(canRedo()); });
    connect(this, &UndoManager::redoActionNameChanged, action,
            [this, action] { action->setText(menuText(redoMenuItemTitle())); });
    connect(this, &QObject::destroyed, action, [action] { action->setEnabled(false); });
    return action;
}

} // namespace dravelin
