// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/control.h>

#include <QtCore/QCoreApplication>

using namespace dravelin;

namespace {

class Document : public Object
{
    Q_OBJECT
    Q_PROPERTY(int pages MEMBER pages NOTIFY pagesChanged)

public:
    int pages = 1;

Q_SIGNALS:
    void pagesChanged();
};

class Watcher : public Object
{
    Q_OBJECT

public:
    QString seen;

    Q_INVOKABLE void pagesChanged(dravelin::KVOProxy *proxy)
    {
        seen += proxy->getOldValue().toString() + '>' + proxy->getNewValue().toString() + ' ';
    }
    Q_INVOKABLE void entered(qint64 info) { seen += QString::number(info); }
    Q_INVOKABLE void documentSavedAction(dravelin::Notification *notification) { seen += notification->name(); }
    Q_INVOKABLE void ticked(dravelin::Timer *) { seen += "tick"; }
};

template <class Condition>
void waitFor(Condition condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void changesAndNotificationsArrive()
{
    Document document;
    Watcher watcher;
    const KVOProxy byName(&document, "pages", &watcher, "pagesChanged:");
    KVOProxy checked(&document, "pages", &watcher, &Watcher::pagesChanged);
    ObserverProxy observer(&watcher);
    observer.addObserverForKey("documentSaved");
    setValue(&document, "2", "pages");
    ObserverProxy::sendNotification("documentSaved", &document);
    CHECK(watcher.seen == "1>2 1>2 documentSaved");
    ObserverProxy::sendNotification("documentSaved");
    observer.postNotification("documentSaved");
    observer.removeObserverWithKey("documentSaved");
    ObserverProxy::sendNotification("documentSaved");
    CHECK(watcher.seen.count("Saved") == 3);
    CHECK(observer.target() == &watcher && observer.notificationCenter() == NotificationCenter::defaultCenter().get());
    observer.removeAllObservers();
    CHECK(observer.keyPaths().isEmpty() && checked.object() == &document && checked.keyPath() == "pages");
    checked.observeValueForKeyPath("pages", &document, {8, 9}, nullptr);
    CHECK(watcher.seen.endsWith("8>9 "));
}

void statesAreEntered()
{
    enum { Loading, Ready };
    Watcher watcher;
    auto machine = std::make_shared<StateMachine>();
    machine->addState(Loading, {&watcher, "entered:"});
    machine->addState(Ready, {&watcher, &Watcher::entered}, {&watcher, &Watcher::entered});
    machine->reset();
    waitFor([&] { return watcher.seen == "0"; });
    StateMachineMutex downloads(machine, 1, Loading, 0);
    downloads.setMutexCount(2);
    downloads.setTargetState(Ready);
    downloads.setInfo(7);
    CHECK(downloads.mutexCount() == 2 && downloads.targetState() == Ready && downloads.info() == 7);
    CHECK(!downloads.decrementMutex() && downloads.decrementMutex());
    waitFor([&] { return watcher.seen == "07"; });
    machine->update(5);
    waitFor([&] { return watcher.seen == "075"; });
    machine->changeState(Loading, 3);
    waitFor([&] { return watcher.seen == "0753"; });
    machine->startTimer("runStateChange:", 4, 0);
    waitFor([&] { return watcher.seen == "07534"; });
    StateHandler(&watcher, "entered:").invoke(9);
    CHECK(watcher.seen == "075349");
}

void machinesAreStopped()
{
    StateMachine machine;
    machine.designateStartState(2);
    machine.setCurrentState(1);
    machine.reset();
    machine.stopTimer();
    CHECK(machine.currentState() == 2 && !machine.stateTimer());
    machine.killStateMachine();
    machine.runUpdate(nullptr);
    machine.runStateChange(nullptr);
    CHECK(machine.isKilled() && machine.currentState() == 2);
    StateEntry entry(4, {}, {});
    entry.setState(5);
    entry.setStateSetup({&machine, "update:"});
    entry.setStateOperation({&machine, "update:"});
    CHECK(entry.state() == 5 && !entry.stateSetup().isNone() && !entry.stateOperation().isNone());
}

void timersFire()
{
    Watcher watcher;
    MutableTimer timer(&watcher, "nothing:");
    timer.setTarget(&watcher, &Watcher::ticked);
    timer.start(0);
    CHECK(timer.isRunning());
    waitFor([&] { return watcher.seen == "tick"; });
    timer.stop();
    CHECK(!timer.isRunning());
    const auto once = Timer::scheduledTimerWithTimeInterval(60, &watcher, "ticked:", 5);
    CHECK(once->isValid() && once->userInfo() == 5);
    once->invalidate();
    CHECK(!once->isValid());
    ElapsedTimer elapsed;
    elapsed.startTimer();
    elapsed.endTimer();
    CHECK(elapsed.elapsedTime() >= 0 && !elapsed.elapsedTimeString().isEmpty());
    startDebugTimer();
    reportDebugTimer();
    CHECK(debugTimer && !debugTestFlag && debugTestInteger == 0 && debugTestFloat == 0);
}

void changesAreUndone()
{
    UndoManager manager;
    Document document;
    auto item = createUndoItem(
        &manager, &document, [&](UndoItem *undone) { document.pages = int(undone->getIntegerPairItem1()); }, true,
        "Insert Page");
    item->addIntegerPairItem1(document.pages, 2);
    document.pages = 2;
    CHECK(manager.undoMenuItemTitle() == "Undo Insert Page" && manager.undoActionName() == "Insert Page");
    manager.undo();
    CHECK(document.pages == 1 && !manager.canUndo() && !manager.canRedo());

    const auto back = UndoItem::initWithType(false, "Back");
    back->swapIntegerPairItems(item.get());
    CHECK(back->getIntegerPairItem1() == 2 && back->getIntegerPairItem2() == 1);
    UndoItem first;
    first.addDictionaryPairItem1("a", "b");
    back->swapDictionaryPairItems(&first);
    CHECK(back->getDictionaryPairItem1() == "b" && back->getDictionaryPairItem2() == "a");
}

void stepsAreGrouped()
{
    UndoManager manager;
    Document document;
    manager.setGroupsByEvent(false);
    manager.setLevelsOfUndo(3);
    CHECK(!manager.groupsByEvent() && manager.levelsOfUndo() == 3);
    manager.beginUndoGrouping();
    manager.registerUndoWithTarget(&document, [&] {
        CHECK(manager.isUndoing() && !manager.isRedoing());
        manager.registerUndoWithTarget(&document, Selector("pagesChanged"));
    });
    manager.setActionName("Print");
    CHECK(manager.groupingLevel() == 1);
    manager.endUndoGrouping();
    manager.undo();
    CHECK(manager.canRedo() && manager.redoActionName() == "Print" && manager.redoMenuItemTitle() == "Redo Print");
    manager.redo();
    manager.disableUndoRegistration();
    CHECK(!manager.isUndoRegistrationEnabled());
    manager.enableUndoRegistration();
    manager.removeAllActionsWithTarget(&document);
    manager.removeAllActions();
    CHECK(!manager.canUndo() && !manager.canRedo());
}

} // namespace

void useControl()
{
    changesAndNotificationsArrive();
    statesAreEntered();
    machinesAreStopped();
    timersFire();
    changesAreUndone();
    stepsAreGrouped();
}

#include "control.moc"
