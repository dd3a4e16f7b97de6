// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QTextStream>

static QTextStream out(stdout);
static int reports = 0;

static void report(const char *what, qint64 info)
{
    out << what << ' ' << info << '\n';
    ++reports;
}

template <class Condition>
static void waitUntil(Condition condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

//! [light]
enum State { Red, Green, Ready };

class Light : public dravelin::Object
{
    Q_OBJECT

public:
    void showRed(qint64 info) { report("red", info); }
    void blink(qint64 info) { report("blink", info); }
    Q_INVOKABLE void showGreen(qint64 info) { report("green", info); }
};
//! [light]

class Clock : public dravelin::Object
{
    Q_OBJECT

public:
    //! [clock]
    Q_INVOKABLE void tick(dravelin::Timer *timer)
    {
        out << "tick " << ++ticks << '\n';
        if (ticks == 3)
            timer->invalidate(); // enough
    }
    void ring() { out << "ring " << ++rings << '\n'; }
    //! [clock]
    int ticks = 0, rings = 0;
};

static void machines()
{
    Light light;
    //! [machine]
    auto machine = std::make_shared<dravelin::StateMachine>();
    machine->addState(Red, {&light, &Light::showRed}, {&light, &Light::blink}); // checked by the compiler
    machine->addState(Green, {&light, "showGreen:"});                           // by name
    machine->designateStartState(Red);
    machine->setTransitionLimit(100); // off unless asked for
    machine->reset();                 // showRed(0), from the event loop
    //! [machine]
    waitUntil([] { return reports >= 1; });

    //! [requests]
    machine->update(1);                                          // blink(1) is scheduled ...
    machine->changeState(Green, 7, 0.05f);                       // ... and replaced by showGreen(7), in 0.05 s
    out << "now " << machine->currentState() << ", still red\n"; // the state changes at once, the call comes later
    //! [requests]
    waitUntil([] { return reports >= 2; });

    //! [handler]
    machine->addState(Ready, {&light, [handled = machine.get()](qint64 info) {
                                  report("ready", info);
                                  handled->changeState(Red, 5, 0.05f); // requested in a handler
                              }});
    //! [handler]
    //! [mutex]
    dravelin::StateMachineMutex downloads(machine, 3, Ready, 0);
    downloads.decrementMutex(); // after each download
    downloads.decrementMutex();
    const bool last = downloads.decrementMutex(); // enters Ready
    //! [mutex]
    out << "last " << last << '\n';
    waitUntil([] { return reports >= 3; });
    //! [kept]
    machine->stopTimer(); // does not reach the step to Red
    //! [kept]
    waitUntil([] { return reports >= 4; });

    //! [graph]
    out << dravelin::transitionGraph(machine->transitions(), {{Red, "Red"}, {Green, "Green"}, {Ready, "Ready"}});
    //! [graph]
}

static void timers()
{
    Clock clock;
    //! [timers]
    dravelin::Timer::scheduledTimerWithTimeInterval(0.01, &clock, &Clock::ring); // once; need not be kept
    dravelin::MutableTimer timer(&clock, "tick:");
    timer.start(0.01, true);
    //! [timers]
    waitUntil([&] { return clock.ticks == 3 && clock.rings == 1; });
    //! [again]
    out << "running " << timer.isRunning() << ", valid " << timer.timer()->isValid() << '\n';
    timer.setTarget(&clock, &Clock::ring);
    timer.start(0.01);
    //! [again]
    waitUntil([&] { return clock.rings == 2; });
    timer.stop();
    out << "running " << timer.isRunning() << '\n';

    //! [watch]
    dravelin::ElapsedTimer watch;
    watch.startTimer();
    const double seconds = watch.elapsedTime();     // stops it
    const QString text = watch.elapsedTimeString(); // the same reading, with six decimals
    //! [watch]
    out << "same reading " << (QString::number(seconds, 'f', 6) == text) << '\n';
}

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    machines();
    timers();
}

#include "control.moc"
