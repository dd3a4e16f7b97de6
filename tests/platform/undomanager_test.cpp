// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/undomanager.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QAction>
#include <QtTest/QSignalSpy>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

/// Its value can be set, undone and redone; the last value and every order to set one are kept.
class Counter : public Object
{
    Q_OBJECT

public:
    explicit Counter(UndoManager &manager) : undo(manager) {}

    UndoManager &undo;
    int value = 0;
    QList<int> orders;

    Q_INVOKABLE void setValue(int newValue)
    {
        undo.registerUndoWithTarget(this, "setValue:", value);
        value = newValue;
        orders << newValue;
    }
    Q_INVOKABLE void takeFrom(Counter *other) { value = other->value; }
    Q_INVOKABLE void clear() { value = -1; }
    void add(int amount) { value += amount; }
};

class UndoManagerTest : public testing::Test
{
protected:
    UndoManager manager;
    std::unique_ptr<Counter> counter = std::make_unique<Counter>(manager);

    void SetUp() override { manager.setGroupsByEvent(false); }

    /// As many steps as given, each naming its value.
    void makeSteps(int count)
    {
        for (int i = 1; i <= count; ++i) {
            counter->setValue(i);
            manager.setActionName(QString::number(i));
        }
    }
    /// The values reached by undoing until nothing happens any more.
    QList<int> undoAll()
    {
        QList<int> values;
        for (; manager.canUndo(); values << counter->value)
            manager.undo();
        return values;
    }
};

} // namespace

TEST_F(UndoManagerTest, UndoesAndRedoesStepByStepKeepingNames)
{
    makeSteps(3);
    EXPECT_EQ(manager.undoActionName(), u"3"_s);
    EXPECT_FALSE(manager.canRedo());
    manager.undo();
    manager.undo();
    EXPECT_EQ(counter->value, 1);
    EXPECT_EQ(manager.undoActionName(), u"1"_s);
    EXPECT_EQ(manager.redoActionName(), u"2"_s);
    manager.redo();
    EXPECT_EQ(counter->value, 2);
    EXPECT_EQ(manager.redoActionName(), u"3"_s);
    manager.redo();
    manager.redo(); // nothing is left
    EXPECT_EQ(counter->value, 3);
    EXPECT_EQ(undoAll(), (QList<int>{2, 1, 0}));
    EXPECT_TRUE(manager.undoActionName().isNull());

    manager.redo();
    counter->setValue(7); // a new change ends the redo
    EXPECT_FALSE(manager.canRedo());
    EXPECT_EQ(undoAll(), (QList<int>{1, 0}));
}

TEST_F(UndoManagerTest, CallsWhateverWasRegistered)
{
    const auto other = std::make_shared<Counter>(manager);
    other->value = 12;
    std::weak_ptr<Counter> kept;
    const auto valueAfter = [&](auto &&...registered) {
        counter->value = 5;
        manager.registerUndoWithTarget(counter.get(), registered...);
        manager.undo();
        return counter->value;
    };
    EXPECT_EQ(valueAfter("clear"), -1);
    EXPECT_EQ(valueAfter("takeFrom:", other), 12);
    EXPECT_EQ(valueAfter(&Counter::clear), -1);
    EXPECT_EQ(valueAfter(&Counter::add, 4), 9);
    EXPECT_EQ(valueAfter(&Counter::takeFrom, other), 12);
    EXPECT_EQ(valueAfter([](Counter *self) { self->value *= 2; }), 10);
    EXPECT_EQ(valueAfter([this] { counter->value *= 3; }), 15);

    auto argument = std::make_shared<Counter>(manager);
    kept = argument;
    manager.registerUndoWithTarget(counter.get(), "takeFrom:", std::move(argument));
    EXPECT_FALSE(kept.expired());
    manager.undo();
    EXPECT_TRUE(kept.expired());

    LogRecorder log;
    EXPECT_EQ(valueAfter("vanish"), 5);
    manager.registerUndoWithTarget(static_cast<Counter *>(nullptr), "clear");
    EXPECT_EQ(log.lines(),
              (QStringList{u"Counter has no operation vanish"_s, u"UndoManager: no target given to register"_s}));
}

TEST_F(UndoManagerTest, GroupsAreOneStepUndoneBackwards)
{
    manager.beginUndoGrouping();
    counter->setValue(1);
    manager.beginUndoGrouping();
    counter->setValue(2);
    manager.endUndoGrouping();
    counter->setValue(3);
    EXPECT_EQ(manager.groupingLevel(), 1);
    LogRecorder log;
    manager.undo(); // not now
    EXPECT_EQ(counter->value, 3);
    manager.endUndoGrouping();
    manager.endUndoGrouping(); // one too many
    EXPECT_EQ(log.lines().size(), 2);
    counter->orders.clear();
    manager.undo();
    EXPECT_EQ(counter->orders, (QList<int>{2, 1, 0}));
    manager.redo();
    EXPECT_EQ(counter->orders.mid(3), (QList<int>{1, 2, 3}));

    manager.beginUndoGrouping();
    manager.endUndoGrouping(); // leaves no trace
    EXPECT_EQ(undoAll(), QList<int>{0});
}

TEST_F(UndoManagerTest, GroupsByPassOfTheEventLoop)
{
    const auto endPass = [this] {
        bool ended = false; // posted behind the end of the step
        QMetaObject::invokeMethod(
            &manager, [&] { ended = true; }, Qt::QueuedConnection);
        while (!ended)
            QCoreApplication::processEvents();
    };
    UndoManager own;
    EXPECT_TRUE(own.groupsByEvent());
    manager.setGroupsByEvent(true);
    makeSteps(2);
    manager.beginUndoGrouping(); // joins what the pass has begun
    makeSteps(3);
    manager.endUndoGrouping();
    EXPECT_TRUE(manager.canUndo());
    EXPECT_EQ(manager.undoActionName(), u"3"_s);
    endPass();
    counter->setValue(10);
    endPass();
    manager.beginUndoGrouping(); // outlasts the pass
    counter->setValue(11);
    endPass();
    counter->setValue(12);
    manager.endUndoGrouping();
    counter->setValue(13);
    EXPECT_EQ(undoAll(), (QList<int>{12, 10, 3, 0}));
    manager.redo();
    endPass();
    manager.redo();
    EXPECT_EQ(counter->value, 10);
}

TEST_F(UndoManagerTest, KeepsAsManyStepsAsAllowed)
{
    makeSteps(5);
    manager.setLevelsOfUndo(3);
    EXPECT_EQ(undoAll(), (QList<int>{4, 3, 2}));
    manager.setLevelsOfUndo(1);
    manager.redo();
    EXPECT_EQ(counter->value, 3);
    EXPECT_FALSE(manager.canRedo());
    makeSteps(4);
    EXPECT_EQ(undoAll(), QList<int>{3});
    manager.setLevelsOfUndo(-2);
    EXPECT_EQ(manager.levelsOfUndo(), 0);
}

TEST_F(UndoManagerTest, ForgetsTargetsThatGoOrAreRemoved)
{
    Counter stays(manager);
    QSignalSpy canUndo(&manager, &UndoManager::canUndoChanged);
    makeSteps(2);
    stays.setValue(1);
    makeSteps(2);
    counter.reset();
    EXPECT_TRUE(manager.canUndo());
    manager.undo();
    EXPECT_EQ(stays.value, 0);
    EXPECT_FALSE(manager.canUndo());
    EXPECT_EQ(canUndo.count(), 2);

    counter = std::make_unique<Counter>(manager);
    makeSteps(2);
    manager.beginUndoGrouping();
    stays.setValue(3);
    counter->setValue(3);
    manager.endUndoGrouping();
    manager.undo();
    manager.removeAllActionsWithTarget(&stays);
    manager.redo();
    EXPECT_EQ(stays.value, 0);
    EXPECT_EQ(undoAll(), (QList<int>{2, 1, 0}));
    manager.removeAllActions();
    EXPECT_FALSE(manager.canRedo());
}

TEST_F(UndoManagerTest, SurvivesArgumentsThatTakeTargetsAlong)
{
    // Each step owns the target of the step before: dropping the steps destroys targets while steps are being dropped.
    for (auto *drop : {+[](UndoManager &m) { m.removeAllActions(); }, +[](UndoManager &m) { m.setLevelsOfUndo(1); },
                       +[](UndoManager &m) { m.undo(); }, +[](UndoManager &) {}}) {
        UndoManager own;
        own.setGroupsByEvent(false);
        auto target = std::make_shared<Counter>(own);
        for (int i = 0; i < 20; ++i) {
            auto next = std::make_shared<Counter>(own);
            own.registerUndoWithTarget(next.get(), "takeFrom:", target);
            target = next;
        }
        own.registerUndoWithTarget(counter.get(), "takeFrom:", std::exchange(target, nullptr));
        drop(own);
        counter = std::make_unique<Counter>(manager);
        EXPECT_FALSE(own.canUndo());
    }
}

TEST_F(UndoManagerTest, DropsLaterStepsWhoseTargetsEarlierOnesOwn)
{
    for (auto *drop : {+[](UndoManager &m) { m.removeAllActions(); }, +[](UndoManager &m) { m.setLevelsOfUndo(1); }}) {
        auto target = std::make_shared<Counter>(manager);
        for (int i = 0; i < 20; ++i) {
            auto next = std::make_shared<Counter>(manager);
            manager.registerUndoWithTarget(target.get(), "takeFrom:", next);
            target = next;
        }
        target.reset();
        drop(manager);
        manager.setLevelsOfUndo(0);
        EXPECT_FALSE(manager.canUndo());
    }
}

TEST_F(UndoManagerTest, AllowsAnythingInACall)
{
    LogRecorder log;
    counter->setValue(1);
    manager.registerUndoWithTarget(counter.get(), [&] {
        EXPECT_TRUE(manager.isUndoing());
        manager.undo(); // refused
        manager.beginUndoGrouping();
        counter->setValue(8);
        throw 1; // with the group still open
    });
    EXPECT_THROW(manager.undo(), int);
    EXPECT_EQ(log.lines().size(), 1);
    EXPECT_FALSE(manager.isUndoing());
    EXPECT_EQ(manager.groupingLevel(), 0);
    manager.redo();
    EXPECT_EQ(counter->value, 1);
    EXPECT_EQ(undoAll(), (QList<int>{8, 0}));

    auto *mortal = new UndoManager;
    mortal->registerUndoWithTarget(counter.get(), "clear");
    mortal->registerUndoWithTarget(counter.get(), [mortal] { delete mortal; });
    mortal->undo();
    EXPECT_EQ(counter->value, 0); // the rest of the step went with it
}

TEST_F(UndoManagerTest, RegistersNothingWhileDisabled)
{
    makeSteps(1);
    manager.disableUndoRegistration();
    manager.disableUndoRegistration();
    makeSteps(2);
    manager.enableUndoRegistration();
    EXPECT_FALSE(manager.isUndoRegistrationEnabled());
    manager.enableUndoRegistration();
    manager.enableUndoRegistration(); // one too many
    EXPECT_EQ(manager.undoActionName(), u"1"_s);
    EXPECT_EQ(undoAll(), QList<int>{0});
    makeSteps(1);
    EXPECT_TRUE(manager.canUndo());
}

TEST_F(UndoManagerTest, ActionsFollow)
{
    auto mortal = std::make_unique<UndoManager>();
    QObject parent;
    const QAction *undo = mortal->createUndoAction(&parent);
    const QAction *redo = mortal->createRedoAction(&parent);
    const auto shown = [&] {
        return u"%1%2|%3%4"_s.arg(undo->text(), undo->isEnabled() ? u"+"_s : u"-"_s, redo->text(),
                                  redo->isEnabled() ? u"+"_s : u"-"_s);
    };
    Counter target(*mortal);
    EXPECT_EQ(shown(), u"Undo-|Redo-"_s);
    target.setValue(1);
    mortal->setActionName(u"Cut & Paste"_s);
    EXPECT_EQ(shown(), u"Undo Cut && Paste+|Redo-"_s);
    EXPECT_EQ(mortal->undoMenuItemTitle(), u"Undo Cut & Paste"_s);
    const_cast<QAction *>(undo)->trigger();
    EXPECT_EQ(target.value, 0);
    EXPECT_EQ(shown(), u"Undo-|Redo Cut && Paste+"_s);
    EXPECT_EQ(mortal->createRedoAction(&parent)->text(), redo->text());
    const_cast<QAction *>(redo)->trigger();
    EXPECT_EQ(target.value, 1);
    mortal.reset();
    EXPECT_FALSE(undo->isEnabled());
}

TEST_F(UndoManagerTest, AnnouncesOnlyWhatChanged)
{
    QStringList heard;
    const QObject listener;
    QObject::connect(&manager, &UndoManager::canUndoChanged, &listener, [&] { heard << u"undo"_s; });
    QObject::connect(&manager, &UndoManager::canRedoChanged, &listener, [&] { heard << u"redo"_s; });
    QObject::connect(&manager, &UndoManager::undoActionNameChanged, &listener, [&] { heard << u"name"_s; });
    QObject::connect(&manager, &UndoManager::redoActionNameChanged, &listener, [&] { heard << u"redo name"_s; });
    const auto after = [&](auto &&act) {
        heard.clear();
        act();
        return heard;
    };
    EXPECT_EQ(after([&] { makeSteps(1); }), (QStringList{u"undo"_s, u"name"_s}));
    EXPECT_EQ(after([&] { makeSteps(1); }), (QStringList{u"name"_s, u"name"_s}));
    EXPECT_EQ(after([&] { manager.undo(); }), (QStringList{u"redo"_s, u"redo name"_s}));
    EXPECT_EQ(after([&] { manager.undo(); }), (QStringList{u"undo"_s, u"name"_s}));
    EXPECT_EQ(after([&] { manager.undo(); }), QStringList());
}

#include "undomanager_test.moc"
