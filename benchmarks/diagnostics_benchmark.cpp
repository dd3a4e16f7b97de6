// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Tracking, trimming and reporting up to a million objects, against a plain set of their addresses that each object's
// end removes from by signal.

#include <dravelin/diagnostics/objecttracker.h>

#include <QtCore/QObject>
#include <QtCore/QSet>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

using namespace dravelin;

namespace {

using Objects = std::vector<std::unique_ptr<QObject>>;

Objects makeObjects(qint64 count)
{
    Objects objects;
    objects.reserve(size_t(count));
    for (qint64 i = 0; i < count; ++i)
        objects.push_back(std::make_unique<QObject>());
    return objects;
}

void trackAll(const Objects &objects)
{
    _initializeObjectTracker();
    _clearTrackedObjects();
    for (const auto &object : objects)
        _trackObject(object.get());
}

void sizes(benchmark::internal::Benchmark *cases)
{
    cases->RangeMultiplier(10)->Range(10'000, 1'000'000)->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond);
}

/// Fresh objects each time: what a QPointer allocates at an object's first use stays with the object.
void track(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        const Objects objects = makeObjects(state.range(0));
        state.ResumeTiming();
        trackAll(objects);
        state.PauseTiming();
        _clearTrackedObjects();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(track)->Name("track/ours")->Apply(sizes);

void trackBySignal(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        const Objects objects = makeObjects(state.range(0));
        QSet<const QObject *> living;
        QObject context;
        state.ResumeTiming();
        for (const auto &object : objects) {
            living.insert(object.get());
            QObject::connect(object.get(), &QObject::destroyed, &context,
                             [&living](const QObject *gone) { living.remove(gone); });
        }
        state.PauseTiming();
        benchmark::DoNotOptimize(living.size());
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(trackBySignal)->Name("track/destroyed-signal")->Apply(sizes);

/// Half of the objects are gone.
void trim(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        Objects objects = makeObjects(state.range(0));
        trackAll(objects);
        for (size_t i = 0; i < objects.size(); i += 2)
            objects[i].reset();
        state.ResumeTiming();
        _trimObjectList();
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(trim)->Name("trim/ours")->Apply(sizes);

/// All of the objects live.
void report(benchmark::State &state)
{
    const Objects objects = makeObjects(state.range(0));
    trackAll(objects);
    for (auto _ : state)
        benchmark::DoNotOptimize(_dumpTrackedObjects());
    state.SetComplexityN(state.range(0));
}
BENCHMARK(report)->Name("report/ours")->Apply(sizes);

} // namespace
