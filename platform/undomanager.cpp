// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/undomanager.h>

#include <dravelin/platform/log.h>

#include "platform/undosteps.h"

#include <QtCore/QBasicTimer>
#include <QtCore/QPointer>
#include <QtCore/QScopeGuard>
#include <QtCore/QTimerEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

enum class Activity { Idle, Undoing, Redoing };

/// What was last announced.
struct Shown
{
    bool canUndo = false;
    bool canRedo = false;
    QString undoName;
    QString redoName;
};

} // namespace

class UndoManager::Private
{
public:
    UndoSteps undoSteps;
    UndoSteps redoSteps;
    std::optional<UndoStep> open; ///< the step being made
    QBasicTimer eventEnd;         ///< runs while the open step ends with this pass of the event loop
    Activity activity = Activity::Idle;
    Shown shown;
    int groupingLevel = 0;
    int levelsOfUndo = 0;
    int disabled = 0;
    bool groupsByEvent = true;

    [[nodiscard]] UndoSteps &stepsBeingMade() noexcept { return activity == Activity::Undoing ? redoSteps : undoSteps; }
    [[nodiscard]] bool isUndoOpen() const { return open && activity != Activity::Undoing && open->isAlive(); }
};

UndoManager::UndoManager(QObject *parent) : Object(parent), d(std::make_unique<Private>()) {}

UndoManager::~UndoManager()
{
    // Arguments that go with their calls may take targets along, which are heard of while the manager is whole.
    const QSignalBlocker quiet(this);
    removeAllActions();
}

void UndoManager::registerUndoWithTarget(QObject *target, const Selector &selector, const QVariant &object)
{
    registerUndo(
        Action<UndoManager *>(target, [target, selector, object] { perform(target, selector, CallArgument(object)); }));
}

void UndoManager::registerUndoWithTarget(QObject *target, const Selector &selector,
                                         const std::shared_ptr<QObject> &object)
{
    registerUndo(Action<UndoManager *>(
        target, [target, selector, object] { perform(target, selector, CallArgument(object.get())); }));
}

void UndoManager::registerUndo(const Action<UndoManager *> &call)
{
    if (!call.target()) {
        logWarning(u"UndoManager: no target given to register"_s);
        return;
    }
    if (!isUndoRegistrationEnabled())
        return;
    connect(call.target(), &QObject::destroyed, this, &UndoManager::announce, Qt::UniqueConnection);
    openStep();
    d->open->calls.push_back(call);
    if (d->activity == Activity::Idle) {
        d->redoSteps.clear();
        if (d->groupingLevel == 0 && !d->eventEnd.isActive())
            closeStep();
    }
    announce();
}

void UndoManager::openStep()
{
    if (d->open)
        return;
    d->open.emplace();
    if (d->groupsByEvent)
        d->eventEnd.start(0, this);
}

void UndoManager::closeStep()
{
    d->eventEnd.stop();
    if (auto step = std::exchange(d->open, {}))
        d->stepsBeingMade().push(std::move(*step), d->levelsOfUndo);
}

void UndoManager::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != d->eventEnd.timerId()) {
        Object::timerEvent(event);
        return;
    }
    d->eventEnd.stop();
    if (d->groupingLevel == 0 && d->activity == Activity::Idle)
        closeStep();
    announce();
}

void UndoManager::beginUndoGrouping()
{
    openStep();
    ++d->groupingLevel;
}

void UndoManager::endUndoGrouping()
{
    if (d->groupingLevel == 0) {
        logWarning(u"UndoManager: endUndoGrouping without beginUndoGrouping"_s);
        return;
    }
    if (--d->groupingLevel == 0 && d->activity == Activity::Idle && !d->eventEnd.isActive())
        closeStep();
    announce();
}

void UndoManager::undo() { replay(true); }

void UndoManager::redo() { replay(false); }

void UndoManager::replay(bool undoes)
{
    if (d->groupingLevel > 0 || d->activity != Activity::Idle) {
        logWarning(u"UndoManager: %1 within a group or another undo or redo"_s.arg(undoes ? u"undo"_s : u"redo"_s));
        return;
    }
    closeStep();
    const auto step = (undoes ? d->undoSteps : d->redoSteps).pop();
    if (!step)
        return announce();
    d->activity = undoes ? Activity::Undoing : Activity::Redoing;
    d->open = UndoStep{step->name, {}};
    const QPointer<UndoManager> self(this);
    const auto finish = qScopeGuard([&] {
        if (self)
            self->finishReplay();
    });
    for (auto call = step->calls.rbegin(); self && call != step->calls.rend(); ++call)
        (*call)(this);
}

void UndoManager::finishReplay()
{
    d->groupingLevel = 0;
    closeStep();
    d->activity = Activity::Idle;
    announce();
}

void UndoManager::announce()
{
    if (d->activity != Activity::Idle)
        return;
    d->undoSteps.dropDead();
    d->redoSteps.dropDead();
    const Shown now{canUndo(), canRedo(), undoActionName(), redoActionName()};
    const Shown before = std::exchange(d->shown, now);
    const QPointer<UndoManager> self(this);
    if (before.canUndo != now.canUndo)
        Q_EMIT canUndoChanged();
    if (self && before.canRedo != now.canRedo)
        Q_EMIT canRedoChanged();
    if (self && before.undoName != now.undoName)
        Q_EMIT undoActionNameChanged();
    if (self && before.redoName != now.redoName)
        Q_EMIT redoActionNameChanged();
}

void UndoManager::removeAllActions()
{
    const auto dropped = std::exchange(d->open, {});
    if (dropped)
        d->open = UndoStep{dropped->name, {}};
    d->undoSteps.clear();
    d->redoSteps.clear();
    announce();
}

void UndoManager::removeAllActionsWithTarget(const QObject *target)
{
    std::vector<Action<UndoManager *>> dropped;
    if (d->open)
        d->open->removeTarget(target, dropped);
    d->undoSteps.removeTarget(target);
    d->redoSteps.removeTarget(target);
    announce();
}

bool UndoManager::canUndo() const { return d->isUndoOpen() || !d->undoSteps.isEmpty(); }

bool UndoManager::canRedo() const { return !d->redoSteps.isEmpty(); }

bool UndoManager::isUndoing() const noexcept { return d->activity == Activity::Undoing; }

bool UndoManager::isRedoing() const noexcept { return d->activity == Activity::Redoing; }

QString UndoManager::undoActionName() const { return d->isUndoOpen() ? d->open->name : d->undoSteps.name(); }

QString UndoManager::redoActionName() const { return d->redoSteps.name(); }

void UndoManager::setActionName(const QString &name)
{
    if (!isUndoRegistrationEnabled())
        return;
    if (d->open)
        d->open->name = name;
    else
        d->undoSteps.rename(name);
    announce();
}

bool UndoManager::groupsByEvent() const noexcept { return d->groupsByEvent; }

void UndoManager::setGroupsByEvent(bool groups)
{
    if (std::exchange(d->groupsByEvent, groups) != groups)
        Q_EMIT groupsByEventChanged();
}

int UndoManager::groupingLevel() const noexcept { return d->groupingLevel; }

int UndoManager::levelsOfUndo() const noexcept { return d->levelsOfUndo; }

void UndoManager::setLevelsOfUndo(int levels)
{
    levels = std::max(levels, 0);
    if (std::exchange(d->levelsOfUndo, levels) == levels)
        return;
    d->undoSteps.trim(levels);
    d->redoSteps.trim(levels);
    Q_EMIT levelsOfUndoChanged();
}

void UndoManager::disableUndoRegistration() { ++d->disabled; }

void UndoManager::enableUndoRegistration() { d->disabled = std::max(d->disabled - 1, 0); }

bool UndoManager::isUndoRegistrationEnabled() const noexcept { return d->disabled == 0; }

} // namespace dravelin
