// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/timers.h>

#include <support/decimalcomma.h>
#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QElapsedTimer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gtest/gtest.h>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class Clock : public Object
{
    Q_OBJECT

public:
    int ticks = 0;
    int tocks = 0;
    QVariant info;

    Q_INVOKABLE void tick(dravelin::Timer *timer)
    {
        info = timer->userInfo();
        ++ticks;
    }
    void tock() { ++tocks; }
};

class MutableTimerTest : public testing::Test
{
protected:
    Clock clock;
    QObject info;
    MutableTimer timer{&clock, "tick:", &info};

    static bool waitFor(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 10'000); }
};

} // namespace

TEST_F(MutableTimerTest, RunsUntilItIsStopped)
{
    QSignalSpy spy(&timer, &MutableTimer::runningChanged);
    EXPECT_FALSE(timer.isRunning());
    timer.start(0.001, true);
    EXPECT_TRUE(waitFor([&] { return clock.ticks >= 3; }));
    EXPECT_EQ(clock.info.value<QObject *>(), &info);
    const auto previous = timer.timer();
    timer.start(0, false);
    EXPECT_FALSE(previous->isValid());
    const int ticks = clock.ticks;
    EXPECT_TRUE(waitFor([&] { return !timer.timer()->isValid(); }));
    EXPECT_EQ(clock.ticks, ticks + 1);
    EXPECT_TRUE(timer.isRunning()) << "one-shots that have fired still count";
    timer.stop();
    timer.stop();
    EXPECT_FALSE(timer.isRunning());
    EXPECT_EQ(spy.count(), 2);
}

TEST_F(MutableTimerTest, TakesANewTargetAtTheNextStart)
{
    timer.start(0.001, true);
    timer.setTarget(&clock, &Clock::tock);
    EXPECT_TRUE(waitFor([&] { return clock.ticks >= 2; }));
    EXPECT_EQ(clock.tocks, 0);
    timer.start(0.001, true);
    const int ticks = clock.ticks;
    EXPECT_TRUE(waitFor([&] { return clock.tocks >= 2; }));
    EXPECT_EQ(clock.ticks, ticks);
    timer.stop();
}

TEST_F(MutableTimerTest, ToleratesATargetAndAnInfoThatAreGone)
{
    auto mortalInfo = std::make_unique<QObject>();
    auto mortal = std::make_unique<Clock>();
    timer.setTarget(&clock, "tick:", mortalInfo.get());
    mortalInfo.reset();
    clock.info = 1;
    timer.start(0);
    EXPECT_TRUE(waitFor([&] { return clock.ticks == 1; }));
    EXPECT_FALSE(clock.info.isValid());

    timer.setTarget(mortal.get(), "tick:");
    mortal.reset();
    timer.start(0, true);
    EXPECT_TRUE(timer.isRunning());
    EXPECT_TRUE(waitFor([&] { return !timer.timer()->isValid(); }));

    // The timer may be all that keeps its own owner.
    struct Owner : Clock
    {
        MutableTimer own{this, &Clock::tock};
    };
    auto owner = std::make_shared<Owner>();
    const std::weak_ptr<Owner> watch = owner;
    owner->own.start(1e6);
    Owner *last = std::exchange(owner, nullptr).get();
    EXPECT_FALSE(watch.expired());
    last->own.stop();
    EXPECT_TRUE(watch.expired());
}

TEST_F(MutableTimerTest, DoesNotStopWhenDestroyed)
{
    std::shared_ptr<Timer> left;
    {
        MutableTimer shortLived(&clock, "tick:");
        shortLived.start(0.001, true);
        left = shortLived.timer();
    }
    EXPECT_TRUE(waitFor([&] { return clock.ticks >= 2; }));
    left->invalidate();
}

TEST(ElapsedTimerTest, FreezesAtTheFirstReading)
{
    ElapsedTimer watch;
    EXPECT_EQ(watch.elapsedTime(), 0.0);
    EXPECT_FALSE(watch.endDate().isValid());
    watch.endTimer();
    EXPECT_EQ(watch.elapsedTime(), 0.0);

    const QDateTime before = QDateTime::currentDateTimeUtc();
    watch.startTimer();
    EXPECT_FALSE(watch.endDate().isValid());
    EXPECT_GE(watch.startDate(), before);
    QElapsedTimer reference;
    reference.start();
    while (reference.nsecsElapsed() < 3'000'000) {
    }
    const double first = watch.elapsedTime();
    EXPECT_GE(first, 0.003);
    EXPECT_TRUE(watch.endDate().isValid());
    while (reference.nsecsElapsed() < 5'000'000) {
    }
    EXPECT_EQ(watch.elapsedTime(), first);
    const DecimalComma comma;
    EXPECT_EQ(watch.elapsedTimeString(), QString::number(first, 'f', 6));
    watch.startTimer();
    EXPECT_LT(watch.elapsedTime(), 5.0);
    EXPECT_NE(watch.elapsedTime(), first);
}

TEST(DebugTimerTest, ReportsTheSameTwice)
{
    debugTimer.reset();
    EXPECT_FALSE(debugTestFlag || debugTestInteger || debugTestFloat != 0);
    LogRecorder log;
    reportDebugTimer();
    EXPECT_EQ(log.take(), QStringList{u"0.000000"_s});
    startDebugTimer();
    reportDebugTimer();
    reportDebugTimer();
    const QStringList lines = log.take();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0], lines[1]);
    EXPECT_EQ(lines[0], debugTimer->elapsedTimeString());
}

#include "timers_test.moc"
