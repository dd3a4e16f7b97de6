// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QEventLoop>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

enum State : qint64 { Red, Yellow, Green };

class Light : public Object
{
    Q_OBJECT

public:
    QStringList calls;

    Q_INVOKABLE void red(qint64 info) { calls << u"red %1"_s.arg(info); }
    Q_INVOKABLE void green(qint64 info) { calls << u"green %1"_s.arg(info); }
    void blink(qint64 info) { calls << u"blink %1"_s.arg(info); }
};

class StateMachineTest : public testing::Test
{
protected:
    Light light;
    std::shared_ptr<StateMachine> machine = std::make_shared<StateMachine>();

    void SetUp() override
    {
        machine->addState(Red, {&light, &Light::red}, {&light, "blink:"});
        machine->addState(Red, {&light, "red:"}, {&light, &Light::blink});
        machine->addState(Green, {&light, "green:"}, {&light, &Light::blink});
    }

    /// Adds a state whose set-up runs `step` as well.
    void addStep(qint64 state, std::function<void()> step)
    {
        machine->addState(state, {&light, [this, state, step = std::move(step)](qint64 info) {
                                      light.calls << u"%1 %2"_s.arg(state).arg(info);
                                      step();
                                  }});
    }

    /// Waits until everything due at the call, and what it requested for at once, has happened.
    QStringList calls()
    {
        for (int round = 0; round < 4; ++round) {
            bool passed = false;
            Timer::scheduledTimerWithTimeInterval(0, &light, [&] { passed = true; });
            EXPECT_TRUE(QTest::qWaitFor([&] { return passed; }, 10'000));
        }
        return std::exchange(light.calls, {});
    }
    QStringList callsAfter(qsizetype count)
    {
        EXPECT_TRUE(QTest::qWaitFor([&] { return light.calls.size() >= count; }, 10'000));
        return calls();
    }
};

using Request = std::function<void(StateMachine &)>;

Request change(qint64 state, qint64 info, float delay = 0)
{
    return [=](StateMachine &m) { m.changeState(state, info, delay); };
}
Request update(qint64 info)
{
    return [=](StateMachine &m) { m.update(info); };
}
Request set(qint64 state)
{
    return [=](StateMachine &m) { m.setCurrentState(state); };
}
Request start(qint64 state)
{
    return [=](StateMachine &m) { m.designateStartState(state); };
}
Request step(qint64 info)
{
    return [=](StateMachine &m) { m.startTimer("runUpdate:", info, 0); };
}
const Request reset = &StateMachine::reset;
const Request stop = &StateMachine::stopTimer;
const Request finish = &StateMachine::killStateMachine;

struct Row
{
    const char *name;
    QList<Request> requests;
    QStringList calls;
    qint64 state;
};

} // namespace

TEST_F(StateMachineTest, MakesTheNewestRequest)
{
    const Row rows[] = {
        {"a change", {change(Green, 5)}, {u"green 5"_s}, Green},
        {"the later of two", {change(Green, 5), change(Red, 6)}, {u"red 6"_s}, Red},
        {"update cancels set-up", {change(Green, 5), update(6)}, {u"blink 6"_s}, Green},
        {"change cancels update", {update(6), change(Green, 5)}, {u"green 5"_s}, Green},
        {"state at the time of the set-up", {change(Green, 5), set(Red)}, {u"red 5"_s}, Red},
        {"delayed one is replaced", {change(Green, 5, 1e6f), change(Red, 6, -1)}, {u"red 6"_s}, Red},
        {"state never added", {change(77, 5)}, {}, 77},
        {"state without that handler", {set(Yellow), update(1)}, {}, Yellow},
        {"stopped", {change(Green, 5), stop, stop}, {}, Green},
        {"reset", {set(Green), reset}, {u"red 0"_s}, Red},
        {"reset to a designated state", {start(Green), reset}, {u"green 0"_s}, Green},
        {"step by name", {step(9)}, {u"blink 9"_s}, Red},
        {"64 bits of info", {change(Red, -(1LL << 60))}, {u"red -1152921504606846976"_s}, Red},
        {"killed", {change(Green, 5), finish, change(Red, 6), update(7), reset, step(8)}, {}, Green},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        machine = std::make_shared<StateMachine>();
        machine->addState(Yellow, {}, {});
        SetUp();
        for (const Request &request : row.requests)
            request(*machine);
        EXPECT_TRUE(light.calls.isEmpty()) << "called within the request";
        EXPECT_EQ(machine->currentState(), row.state);
        EXPECT_EQ(calls(), row.calls);
        EXPECT_EQ(machine->stateTimer(), nullptr);
    }
}

TEST_F(StateMachineTest, TellsStatesApartByTheirLow32Bits)
{
    constexpr qint64 alias = (1LL << 32) + Green;
    machine->changeState(alias, 1);
    EXPECT_EQ(machine->currentState(), alias);
    EXPECT_EQ(calls(), QStringList{u"green 1"_s});
    machine->addState(alias, {&light, "red:"});
    machine->changeState(Green, 2);
    EXPECT_EQ(calls(), QStringList{u"red 2"_s});
    EXPECT_EQ(machine->stateEntry(Green)->state(), alias);
    machine->stateEntry(Green)->setStateSetup({&light, "green:"});
    machine->changeState(Green, 3);
    EXPECT_EQ(calls(), QStringList{u"green 3"_s});
    EXPECT_EQ(machine->stateEntry(55), nullptr);
}

TEST_F(StateMachineTest, UpdatesNegativeStatesButDoesNotSetThemUp)
{
    machine->addState(-1, {&light, "red:"}, {&light, "green:"});
    machine->changeState(-1, 1);
    EXPECT_EQ(calls(), QStringList());
    machine->update(2);
    EXPECT_EQ(calls(), QStringList{u"green 2"_s});
}

TEST_F(StateMachineTest, ForgetsTheStepThatAHandlerRequested)
{
    addStep(10, [&] {
        EXPECT_TRUE(machine->stateTimer()->isValid());
        machine->changeState(Green, 1, 0.02f);
        EXPECT_TRUE(machine->stateTimer());
    });
    machine->changeState(10);
    EXPECT_EQ(calls(), QStringList{u"10 0"_s});
    EXPECT_EQ(machine->currentState(), Green);
    EXPECT_EQ(machine->stateTimer(), nullptr);
    machine->stopTimer();      // does not reach it
    machine->update(2, 0.04f); // nor is it replaced
    EXPECT_EQ(callsAfter(2), (QStringList{u"green 1"_s, u"blink 2"_s}));

    machine->changeState(10);
    EXPECT_EQ(calls(), QStringList{u"10 0"_s});
    machine->changeState(Red, 3, 0.001f); // the additional one may be due earlier
    EXPECT_EQ(callsAfter(2), (QStringList{u"red 3"_s, u"red 1"_s}));
}

TEST_F(StateMachineTest, IgnoresAForgottenStepOnceItIsKilled)
{
    addStep(10, [&] { machine->changeState(Green, 1, 0.01f); });
    machine->changeState(10);
    EXPECT_EQ(calls(), QStringList{u"10 0"_s});
    machine->killStateMachine();
    bool later = false;
    Timer::scheduledTimerWithTimeInterval(0.02, &light, [&] { later = true; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return later; }, 10'000));
    EXPECT_EQ(calls(), QStringList());
    machine->addState(Green, {}, {});
    machine->setCurrentState(3);
    EXPECT_EQ(machine->currentState(), 3);
}

TEST_F(StateMachineTest, MakesTheLastOfTenChangesOfAHandler)
{
    addStep(10, [&] {
        for (int i = 0; i < 10; ++i)
            machine->changeState(i % 2 ? Green : Red, i);
    });
    machine->changeState(10);
    EXPECT_EQ(calls(), (QStringList{u"10 0"_s, u"green 9"_s}));
}

TEST_F(StateMachineTest, SurvivesHandlersThatDestroyItOrThrow)
{
    auto *alone = new StateMachine;
    const QPointer<StateMachine> watch = alone;
    alone->addState(1, {&light, [&] { delete alone; }});
    alone->changeState(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !watch; }, 10'000));

    addStep(10, [&] { throw 1; });
    machine->changeState(10);
    EXPECT_THROW(calls(), int);
    EXPECT_EQ(machine->stateTimer(), nullptr);
    light.calls.clear();
    machine->changeState(Green, 1);
    EXPECT_EQ(calls(), QStringList{u"green 1"_s});

    addStep(10, [&] { machine->addState(10, {}); }); // replaces the handler that runs
    machine->changeState(10);
    EXPECT_EQ(calls(), QStringList{u"10 0"_s});
}

TEST_F(StateMachineTest, LivesUntilItsPendingStepIsMade)
{
    const std::weak_ptr<StateMachine> watch = machine;
    machine->changeState(Green, 1);
    machine.reset();
    EXPECT_FALSE(watch.expired());
    EXPECT_EQ(calls(), QStringList{u"green 1"_s});
    EXPECT_TRUE(watch.expired());

    machine = std::make_shared<StateMachine>();
    const std::weak_ptr<StateMachine> stopped = machine;
    machine->changeState(Green, 1, 1e6f);
    StateMachine *last = std::exchange(machine, nullptr).get();
    last->changeState(Red, 1, 1e6f);
    EXPECT_FALSE(stopped.expired());
    last->killStateMachine();
    EXPECT_TRUE(stopped.expired());

    {
        StateMachine local;
        local.addState(Green, {&light, "green:"});
        local.changeState(Green, 1);
    }
    EXPECT_EQ(calls(), QStringList());
}

TEST_F(StateMachineTest, ToleratesTargetsThatAreGoneOrLackTheOperation)
{
    auto mortal = std::make_unique<Light>();
    machine->addState(Green, {mortal.get(), "green:"}, {&light, "wink:"});
    machine->changeState(Green, 1);
    mortal.reset();
    LogRecorder log;
    EXPECT_EQ(calls(), QStringList());
    EXPECT_EQ(log.take(), QStringList());
    machine->update();
    EXPECT_EQ(calls(), QStringList());
    EXPECT_EQ(log.take(), QStringList{u"Light has no operation wink:"_s});
}

TEST_F(StateMachineTest, NotifiesOfItsStateAfterTheRequestIsMade)
{
    QSignalSpy spy(machine.get(), &StateMachine::currentStateChanged);
    machine->changeState(Red, 1);
    EXPECT_EQ(spy.count(), 0);
    QObject::connect(machine.get(), &StateMachine::currentStateChanged, machine.get(), [&](qint64 state) {
        if (state == Green)
            machine->changeState(Red, 3); // the newer request
    });
    machine->setProperty("currentState", qint64(Green));
    EXPECT_EQ(calls(), QStringList{u"red 3"_s});
    machine->changeState(Green, 2);
    EXPECT_EQ(calls(), QStringList{u"red 3"_s});
    EXPECT_EQ(spy.count(), 4);

    auto *alone = new StateMachine;
    QObject::connect(alone, &StateMachine::currentStateChanged, &light, [&] { delete alone; });
    alone->changeState(Green);
}

TEST_F(StateMachineTest, WorksInsideALoopThatItsHandlerRuns)
{
    QEventLoop loop;
    machine->addState(Yellow, {&light, [&] { loop.quit(); }});
    addStep(10, [&] {
        machine->changeState(Yellow);
        loop.exec();
        EXPECT_EQ(machine->stateTimer(), nullptr);
        machine->changeState(Green, 1);
    });
    machine->changeState(10);
    EXPECT_EQ(callsAfter(2), (QStringList{u"10 0"_s, u"green 1"_s}));
}

TEST_F(StateMachineTest, MakesAHundredThousandPendingStepsInOrder)
{
    constexpr int count = 100'000;
    QList<qint64> order;
    std::vector<std::unique_ptr<StateMachine>> machines;
    for (int i = 0; i < count; ++i) {
        machines.push_back(std::make_unique<StateMachine>());
        machines.back()->addState(1, {&light, [&](qint64 info) { order << info; }});
        machines.back()->changeState(1, i);
    }
    const QDeadlineTimer deadline(60'000);
    while (order.size() < count && !deadline.hasExpired())
        QCoreApplication::processEvents();
    ASSERT_EQ(order.size(), count);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TEST_F(StateMachineTest, LogsTheLastTransitions)
{
    machine->changeState(Green); // before logging
    machine->setTransitionLimit(6);
    calls();
    machine->setTransitionLimit(6);
    machine->changeState(Red, 7, 0.001f);
    callsAfter(1);
    machine->update(8);
    calls();
    machine->setCurrentState(Green);
    machine->changeState(Red, 1);
    machine->killStateMachine();
    QStringList lines = transitionLines(machine->transitions(), {{Red, u"Red"_s}});
    EXPECT_GE(lines[0].section(u' ', 0, 0).toDouble(), 0.0);
    for (QString &line : lines)
        line = line.section(u' ', 1);
    EXPECT_EQ(lines,
              (QStringList{u"change 2 -> Red, info 7, delay 0.001"_s, u"set-up Red, info 7"_s, u"update Red, info 8"_s,
                           u"direct Red -> 2"_s, u"change 2 -> Red, info 1, delay 0"_s, u"kill in Red"_s}));
    EXPECT_EQ(transitionGraph(machine->transitions(), {{Red, u"The \"stop\""_s}}),
              u"digraph {\n"
              "    \"2\" -> \"The \\\"stop\\\"\" [label=2];\n"
              "    \"The \\\"stop\\\"\" -> \"2\" [label=1, style=dashed];\n"
              "}\n"_s);
    machine->setCurrentState(5);
    EXPECT_EQ(machine->transitions().size(), 6); // the oldest went
    EXPECT_EQ(machine->transitions().constFirst().kind, StateTransition::SetUp);
    machine->setTransitionLimit(0);
    machine->setCurrentState(6);
    EXPECT_TRUE(machine->transitions().isEmpty());
}

TEST_F(StateMachineTest, MutexEntersItsStateWithTheLastEvent)
{
    StateMachineMutex mutex(machine, 3, Red, 4);
    mutex.setTargetState(Green);
    mutex.setInfo(5);
    QSignalSpy spy(&mutex, &StateMachineMutex::mutexCountChanged);
    QList<bool> results;
    for (int i = 0; i < 4; ++i)
        results << mutex.decrementMutex();
    EXPECT_EQ(results, (QList<bool>{false, false, true, false}));
    EXPECT_EQ(mutex.mutexCount(), ~quint64(0));
    EXPECT_EQ(spy.count(), 4);
    EXPECT_EQ(calls(), QStringList{u"green 5"_s});
    mutex.setMutexCount(1);
    machine.reset();
    EXPECT_TRUE(mutex.decrementMutex());
    EXPECT_EQ(calls(), QStringList());
}

#include "statemachine_test.moc"
