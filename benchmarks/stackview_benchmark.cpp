// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// A column of widgets that all move because the gap changes, against QVBoxLayout; before the window is shown, and while
// it is.

#include <dravelin/interface/stackview.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QLayout>

#include <benchmark/benchmark.h>

using namespace dravelin;

namespace {

QWidget *addChild(QWidget &view)
{
    auto *child = new QWidget(&view);
    child->setFixedSize(100, 20);
    return child;
}

void show(QWidget &window)
{
    window.show();
    QCoreApplication::processEvents();
}

void arrangeOurs(benchmark::State &state, bool shown)
{
    QWidget window;
    VerticalStackView view(&window);
    for (int64_t i = 0; i < state.range(0); ++i)
        addChild(view);
    view.arrangeViews();
    if (shown)
        show(window);
    float gap = 2;
    for (auto _ : state) {
        view.setItemSpacing(gap = 3 - gap);
        view.arrangeViews();
    }
    state.SetComplexityN(state.range(0));
}

void arrangeQVBoxLayout(benchmark::State &state, bool shown)
{
    QWidget window, view(&window);
    QVBoxLayout layout(&view);
    for (int64_t i = 0; i < state.range(0); ++i)
        layout.addWidget(addChild(view));
    view.resize(100, int(state.range(0)) * 24);
    if (shown)
        show(window);
    int gap = 2;
    for (auto _ : state) {
        layout.setSpacing(gap = 3 - gap);
        layout.activate();
    }
    state.SetComplexityN(state.range(0));
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond)->Complexity();
}

BENCHMARK_CAPTURE(arrangeOurs, , false)->Name("arrange/ours")->Apply(sizes);
BENCHMARK_CAPTURE(arrangeQVBoxLayout, , false)->Name("arrange/QVBoxLayout")->Apply(sizes);
BENCHMARK_CAPTURE(arrangeOurs, , true)->Name("arrange_shown/ours")->Apply(sizes);
BENCHMARK_CAPTURE(arrangeQVBoxLayout, , true)->Name("arrange_shown/QVBoxLayout")->Apply(sizes);

} // namespace
