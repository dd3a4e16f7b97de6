// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Rows of a million that are dropped, scattered evenly over the list: texts, all different. The peer partitions a copy of
// the list by the rows' numbers, which neither looks for equal rows nor gathers them elsewhere than at the front.

#include <dravelin/interface/tableviewhandler.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

using namespace dravelin;

namespace {

constexpr qsizetype rowCount = 1'000'000;

const QVariantList &titles()
{
    static const QVariantList list = [] {
        QVariantList texts;
        for (qsizetype row = 0; row < rowCount; ++row)
            texts << QStringLiteral("Track %1").arg(row);
        return texts;
    }();
    return list;
}

IndexSet scattered(qsizetype count)
{
    IndexSet rows;
    for (qsizetype row = 0; row < count; ++row)
        rows.insert(quint64(row * (rowCount / count)));
    return rows;
}

void drop(benchmark::State &state, bool toDropRow)
{
    TableView table;
    TableViewHandler handler(&table, QStringLiteral("cell"));
    handler.setReordersToDropRow(toDropRow);
    const IndexSet rows = scattered(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        handler.tableData() = titles();
        handler.tableData().detach();
        handler.willBeginAtPoint(&table, {}, rows);
        state.ResumeTiming();
        handler.acceptDrop(&table, rowCount / 2, DropOperation::Above);
        state.PauseTiming();
        handler.endedAtPoint(&table, {}, Qt::MoveAction);
        if (handler.tableData().size() != rowCount)
            state.SkipWithError("rows were lost");
        state.ResumeTiming();
    }
}

void gather(benchmark::State &state) { drop(state, false); }

void moveToDropRow(benchmark::State &state) { drop(state, true); }

void partition(benchmark::State &state)
{
    std::vector<bool> isMoved(rowCount);
    for (const quint64 row : scattered(state.range(0)))
        isMoved[row] = true;
    for (auto _ : state) {
        state.PauseTiming();
        QVariantList copy = titles();
        copy.detach();
        qsizetype row = 0; // in order: the predicate is applied once to each
        state.ResumeTiming();
        std::stable_partition(copy.begin(), copy.end(),
                              [&](const QVariant &) { return bool(isMoved[std::size_t(row++)]); });
        benchmark::DoNotOptimize(copy.data());
    }
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(gather)->Name("reorder/gather/ours")->Apply(sizes);
BENCHMARK(partition)->Name("reorder/gather/stable_partition")->Apply(sizes);
BENCHMARK(moveToDropRow)->Name("reorder/toDropRow/ours")->Apply(sizes);
BENCHMARK(partition)->Name("reorder/toDropRow/stable_partition")->Apply(sizes);

} // namespace
