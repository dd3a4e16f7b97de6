// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/timer.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QScopeGuard>
#include <QtCore/QSemaphore>
#include <QtCore/QThread>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class Target : public Object
{
    Q_OBJECT

public:
    QStringList calls;

    Q_INVOKABLE void tick(dravelin::Timer *timer) { calls << timer->userInfo().toString(); }
    void checked(Timer *timer) { calls << u"checked "_s + timer->userInfo().toString(); }
};

class TimerTest : public testing::Test
{
protected:
    Target target;

    std::shared_ptr<Timer> schedule(double interval, const QString &info, bool repeats = false)
    {
        return Timer::scheduledTimerWithTimeInterval(interval, &target, "tick:", info, repeats);
    }
    bool waitForCalls(qsizetype count)
    {
        return QTest::qWaitFor([&] { return target.calls.size() >= count; }, 10'000);
    }
};

} // namespace

TEST_F(TimerTest, FiresInOrderOfDueTimesThenOfRequests)
{
    schedule(0.06, u"late"_s);
    schedule(0.03, u"middle"_s);
    schedule(0, u"first"_s);
    schedule(-5, u"negative"_s);
    schedule(std::nan(""), u"no number"_s);
    Timer::scheduledTimerWithTimeInterval(1e-9, &target, &Target::checked, u"at once"_s);
    EXPECT_TRUE(target.calls.isEmpty());
    ASSERT_TRUE(waitForCalls(6));
    EXPECT_EQ(target.calls,
              (QStringList{u"first"_s, u"negative"_s, u"no number"_s, u"checked at once"_s, u"middle"_s, u"late"_s}));
}

TEST_F(TimerTest, NeverFiresEarlyHoweverHugeTheInterval)
{
    QElapsedTimer elapsed;
    elapsed.start();
    QList<std::shared_ptr<Timer>> timers;
    for (const double interval : {1e7, 1e12, 1e300, std::numeric_limits<double>::infinity()})
        timers << schedule(interval, u"never"_s);
    schedule(0.0205, u"soon"_s);
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_GE(elapsed.nsecsElapsed(), 20'500'000);
    EXPECT_EQ(target.calls, QStringList{u"soon"_s});
    for (const auto &timer : timers) {
        EXPECT_TRUE(timer->isValid());
        timer->invalidate();
    }
}

TEST_F(TimerTest, IsValidUntilItsCallIsOver)
{
    bool validWithin = false;
    const auto timer = Timer::scheduledTimerWithTimeInterval(0, &target, [&](Timer *t) {
        validWithin = t->isValid();
        target.tick(t);
    });
    EXPECT_TRUE(timer->isValid());
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_TRUE(validWithin);
    EXPECT_FALSE(timer->isValid());
    timer->fireAfter(0);
    EXPECT_FALSE(timer->isValid());
}

TEST_F(TimerTest, StaysValidWhenRescheduledWithinItsCall)
{
    QList<bool> validAfter;
    const auto timer = Timer::scheduledTimerWithTimeInterval(0, &target, [&](Timer *t) {
        target.tick(t);
        if (target.calls.size() == 1)
            t->fireAfter(0);
    });
    ASSERT_TRUE(waitForCalls(1));
    EXPECT_TRUE(timer->isValid());
    ASSERT_TRUE(waitForCalls(2));
    EXPECT_FALSE(timer->isValid());

    const auto later = schedule(1e6, u"moved"_s);
    later->fireAfter(0.001);
    ASSERT_TRUE(waitForCalls(3));
}

TEST_F(TimerTest, RepeatsUntilInvalidated)
{
    const auto other = schedule(1e-3, u"other"_s, true);
    const auto timer = Timer::scheduledTimerWithTimeInterval(
        0, &target,
        [&](Timer *t) {
            target.tick(t);
            if (target.calls.count(u"info"_s) == 3) {
                t->invalidate();
                EXPECT_EQ(t->userInfo(), QVariant(u"info"_s)); // readable until the call is over
            }
        },
        u"info"_s, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !timer->isValid() && target.calls.count(u"other"_s) > 3; }, 10'000));
    other->invalidate();
    EXPECT_EQ(target.calls.count(u"info"_s), 3);
    EXPECT_FALSE(timer->userInfo().isValid());
}

TEST_F(TimerTest, SkipsRepetitionsThatPassed)
{
    QList<qint64> times;
    QElapsedTimer clock;
    clock.start();
    const auto timer = Timer::scheduledTimerWithTimeInterval(
        0.05, &target,
        [&] {
            times << clock.elapsed();
            while (times.size() == 1 && clock.elapsed() < 110) {
            } // holds the loop up past the due time 100
        },
        {}, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return times.size() >= 2; }, 10'000));
    timer->invalidate();
    EXPECT_GE(times[1], 150);
}

TEST_F(TimerTest, KeepsSharedTargetsAndInfosAndGuardsOthers)
{
    auto shared = std::make_shared<Target>();
    auto info = std::make_shared<Object>();
    const std::weak_ptr<Target> watchedTarget = shared;
    const std::weak_ptr<Object> watchedInfo = info;
    QObject *seen = nullptr;
    Timer::scheduledTimerWithTimeInterval(
        0, shared.get(), [&](Timer *t) { seen = t->userInfo().value<QObject *>(); }, QVariant::fromValue(info.get()));
    const QObject *expected = std::exchange(info, nullptr).get();
    shared.reset();
    EXPECT_FALSE(watchedTarget.expired());
    ASSERT_TRUE(QTest::qWaitFor([&] { return seen; }, 10'000));
    EXPECT_EQ(seen, expected);
    EXPECT_TRUE(watchedTarget.expired());
    EXPECT_TRUE(watchedInfo.expired());

    auto mortal = std::make_unique<Target>();
    auto mortalInfo = std::make_unique<QObject>();
    const auto silent = Timer::scheduledTimerWithTimeInterval(0, mortal.get(), "tick:", {}, true);
    const auto infoless =
        Timer::scheduledTimerWithTimeInterval(0, &target, "tick:", QVariant::fromValue(mortalInfo.get()));
    mortal.reset();
    mortalInfo.reset();
    EXPECT_FALSE(infoless->userInfo().isValid());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !silent->isValid(); }, 10'000));
}

TEST_F(TimerTest, SaysOnceThatATargetLacksTheOperation)
{
    LogRecorder log;
    const auto timer = Timer::scheduledTimerWithTimeInterval(0, &target, "tock:", {}, true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !timer->isValid(); }, 10'000));
    EXPECT_EQ(log.lines(), QStringList{u"Target has no operation tock:"_s});
}

TEST_F(TimerTest, FiresInNestedLoopsButNotWithinItself)
{
    int depth = 0;
    int deepest = 0;
    const auto nested = [&](Timer *t) {
        deepest = qMax(deepest, ++depth);
        QEventLoop loop;
        Timer::scheduledTimerWithTimeInterval(0, &loop, &QEventLoop::quit);
        if (depth < 4)
            Timer::scheduledTimerWithTimeInterval(0, &target, "tick:", t->userInfo());
        loop.exec();
        --depth;
    };
    for (int i = 0; i < 4; ++i)
        Timer::scheduledTimerWithTimeInterval(0, &target, nested, QString::number(i), i == 0);
    ASSERT_TRUE(waitForCalls(20));
    EXPECT_EQ(deepest, 4); // the repeating one is never within itself
}

TEST_F(TimerTest, GoesOnAfterACallThatThrows)
{
    const auto thrower = Timer::scheduledTimerWithTimeInterval(0, &target, [] { throw 1; });
    schedule(0, u"next"_s);
    try {
        while (thrower->isValid())
            QCoreApplication::processEvents();
        ADD_FAILURE() << "the exception was swallowed";
    } catch (int) {
    }
    EXPECT_FALSE(thrower->isValid());
    EXPECT_TRUE(waitForCalls(1));
}

TEST_F(TimerTest, FiresAtMost64InAPassAndNoneThatWasRequestedWithinIt)
{
    int passes = 0;
    QList<int> passOfCall;
    const auto counter = Timer::scheduledTimerWithTimeInterval(1e6, &target, [] {});
    QObject::connect(QCoreApplication::eventDispatcher(), &QAbstractEventDispatcher::awake, counter.get(),
                     [&] { ++passes; });
    const auto record = [&] {
        passOfCall << passes;
        if (passOfCall.size() == 1)
            Timer::scheduledTimerWithTimeInterval(0, &target, [&] { passOfCall << passes; });
    };
    Timer::scheduledTimerWithTimeInterval(0, &target, record);
    ASSERT_TRUE(QTest::qWaitFor([&] { return passOfCall.size() == 2; }, 10'000));
    EXPECT_LT(passOfCall[0], passOfCall[1]);

    passOfCall.clear();
    for (int i = 0; i < 200; ++i)
        Timer::scheduledTimerWithTimeInterval(0, &target, [&] { passOfCall << passes; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return passOfCall.size() == 200; }, 10'000));
    for (const int pass : passOfCall)
        EXPECT_LE(passOfCall.count(pass), 64);
    counter->invalidate();
}

TEST_F(TimerTest, BelongsToThreadsWithALoopAndEndsWithThem)
{
    std::shared_ptr<Timer> pending;
    std::weak_ptr<Target> watch;
    int fired = 0;
    const auto checked = std::make_shared<QSemaphore>();
    std::unique_ptr<QThread> thread(QThread::create([&] {
        QEventLoop loop;
        auto kept = std::make_shared<Target>();
        watch = kept;
        pending = Timer::scheduledTimerWithTimeInterval(1e6, kept.get(), "tick:");
        Timer::scheduledTimerWithTimeInterval(0, &loop, [&] {
            ++fired;
            loop.quit();
        });
        loop.exec();
        // Until that is checked, nothing else of the thread goes.
        static thread_local const auto last = qScopeGuard([checked] { checked->tryAcquire(1, 2000); });
    }));
    thread->start();
    ASSERT_TRUE(thread->wait(10'000));
    EXPECT_EQ(fired, 1);
    EXPECT_FALSE(pending->isValid());
    EXPECT_TRUE(watch.expired());
    checked->release();

    LogRecorder log;
    bool valid = true;
    std::thread([&] { valid = schedule(0, u"nowhere"_s)->isValid(); }).join();
    EXPECT_FALSE(valid);
    EXPECT_EQ(log.lines().size(), 1);
}

#include "timer_test.moc"
