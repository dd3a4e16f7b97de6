// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// The modifiers that an X server has now, asked for by us and by Qt. Without a server there is nothing to measure:
// xvfb-run ./run-benchmarks modifiers

#include <dravelin/interface/input.h>
#include <dravelin/platform/inputstate.h>

#include <QtGui/QGuiApplication>

#include <benchmark/benchmark.h>

#include <iostream>

using namespace dravelin;

namespace {

void modifiersOurs(benchmark::State &state)
{
    const auto input = InputState::current();
    for (auto _ : state)
        benchmark::DoNotOptimize(input->modifierFlags());
}

void modifiersQt(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(QGuiApplication::queryKeyboardModifiers());
}

void snapshotOurs(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(ModifierKeyFlags());
}

/// Before the application chooses its platform.
[[maybe_unused]] const bool isRegistered = [] {
    if (qEnvironmentVariableIsEmpty("DISPLAY")) {
        std::cerr << "modifiers: skipped, there is no X server\n";
        return false;
    }
    qputenv("QT_QPA_PLATFORM", "xcb");
    benchmark::RegisterBenchmark("modifiers/ours/x11", modifiersOurs)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("modifiers/QGuiApplication::queryKeyboardModifiers/x11", modifiersQt)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("modifier_snapshot/ours/x11", snapshotOurs)->Unit(benchmark::kMicrosecond);
    return true;
}();

} // namespace
