// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Steps of a state machine, each of which requests the next one, against the passes of a repeating QTimer without
// delay; and many machines with one pending step each, against as many single-shot QTimers: those take a
// minute for 100,000.

#include <dravelin/control/statemachine.h>

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

using namespace dravelin;

namespace {

constexpr int chainLength = 10'000;

class Counter : public Object
{
    Q_OBJECT

public:
    QEventLoop loop;
    int remaining = 0;
    StateMachine *machine = nullptr;

    void run(int steps)
    {
        remaining = steps;
        loop.exec();
    }
    Q_INVOKABLE void step(qint64)
    {
        if (count())
            machine->changeState(1, 0, 0);
    }
    bool count()
    {
        if (--remaining == 0)
            loop.quit();
        return remaining > 0;
    }
};

void stepOurs(benchmark::State &state)
{
    Counter counter;
    const auto machine = std::make_shared<StateMachine>();
    counter.machine = machine.get();
    machine->addState(1, {&counter, "step:"});
    for (auto _ : state) {
        machine->changeState(1);
        counter.run(chainLength);
    }
    state.SetItemsProcessed(state.iterations() * chainLength);
}
BENCHMARK(stepOurs)->Name("state_machine_steps/ours/10000")->Unit(benchmark::kMicrosecond);

void stepQTimer(benchmark::State &state)
{
    Counter counter;
    for (auto _ : state) {
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &counter, &Counter::count);
        timer.start(0);
        counter.run(chainLength);
    }
    state.SetItemsProcessed(state.iterations() * chainLength);
}
BENCHMARK(stepQTimer)->Name("state_machine_steps/repeating_zero_QTimer/10000")->Unit(benchmark::kMicrosecond);

void pendingOurs(benchmark::State &state)
{
    Counter counter;
    std::vector<std::unique_ptr<StateMachine>> machines(size_t(state.range(0)));
    for (auto &machine : machines) {
        machine = std::make_unique<StateMachine>();
        machine->addState(1, {&counter, &Counter::count});
    }
    for (auto _ : state) {
        for (const auto &machine : machines)
            machine->changeState(1);
        counter.run(int(machines.size()));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(pendingOurs)->Name("pending_machines/ours")->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void pendingQTimer(benchmark::State &state)
{
    Counter counter;
    std::vector<std::unique_ptr<QTimer>> timers(size_t(state.range(0)));
    for (auto &timer : timers) {
        timer = std::make_unique<QTimer>();
        timer->setSingleShot(true);
        QObject::connect(timer.get(), &QTimer::timeout, &counter, &Counter::count);
    }
    for (auto _ : state) {
        for (const auto &timer : timers)
            timer->start(0);
        counter.run(int(timers.size()));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(pendingQTimer)->Name("pending_machines/QTimer")->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace

#include "control_benchmark.moc"
