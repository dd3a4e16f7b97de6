// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// A table of a million rows and three columns of labels, each filled by its delegate, against a plain QTableView whose
// model has the same texts: filling it, scrolling by a line and jumping anywhere, each with all the painting.

#include <dravelin/platform/tableview.h>

#include <QtCore/QAbstractTableModel>
#include <QtCore/QCoreApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <random>

using namespace dravelin;

namespace {

constexpr int rows = 1'000'000;
constexpr int columns = 3;
constexpr int rowHeight = 24;
constexpr int columnWidth = 200;
constexpr QSize windowSize(640, 700);

qsizetype shift = 0; ///< grows with each reload, which then has something to show

QString textOf(int column, qsizetype row)
{
    static const QStringList names{"first", "second", "third"};
    return QString::number(row + shift) + u' ' + names.at(column);
}

class Labels : public TableViewDelegate
{
public:
    qsizetype count = rows;
    int made = 0;

    Labels()
    {
        table.registerView("label", [this] {
            ++made;
            return std::make_unique<QLabel>();
        });
        table.setDelegate(this);
        table.setDataSource(this);
        for (int column = 0; column < columns; ++column)
            table.addTableColumn({}, columnWidth);
        table.setRowHeight(rowHeight);
        table.resize(windowSize);
        table.show();
        table.reloadData();
    }
    qsizetype numberOfRowsInTableView(TableView *) override { return count; }
    QWidget *viewForTableColumn(TableView *view, int column, qsizetype row) override
    {
        auto *label = static_cast<QLabel *>(view->makeViewWithIdentifier("label"));
        label->setText(textOf(column, row));
        return label;
    }

    TableView table;
};

class Texts : public QAbstractTableModel
{
public:
    Texts() { table.setModel(this); }
    ~Texts() override { table.setModel(nullptr); }
    Q_DISABLE_COPY_MOVE(Texts)

    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : rows; }
    int columnCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : columns; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole ? textOf(index.column(), index.row()) : QVariant();
    }
    void reload()
    {
        beginResetModel();
        endResetModel();
    }
    void show()
    {
        table.verticalHeader()->hide();
        table.horizontalHeader()->hide();
        table.horizontalHeader()->setStretchLastSection(true);
        table.horizontalHeader()->setDefaultSectionSize(columnWidth);
        table.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        table.verticalHeader()->setDefaultSectionSize(rowHeight);
        table.setShowGrid(false);
        table.setVerticalScrollMode(QTableView::ScrollPerPixel);
        table.resize(windowSize);
        table.show();
    }

    QTableView table;
};

/// Lets everything be painted that has changed.
void paint()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

void scroll(benchmark::State &state, QTableView &table, bool jumps)
{
    QScrollBar &bar = *table.verticalScrollBar();
    std::minstd_rand random(1);
    paint();
    if (bar.maximum() < rowHeight * (rows - 100))
        std::abort();
    for (auto _ : state) {
        const int next = bar.value() + rowHeight;
        bar.setValue(jumps ? int(random() % unsigned(bar.maximum())) : next > bar.maximum() ? 0 : next);
        paint();
    }
}

void scrollOurs(benchmark::State &state, bool jumps)
{
    Labels labels;
    scroll(state, labels.table, jumps);
    state.counters["views"] = labels.made;
}

void scrollQt(benchmark::State &state, bool jumps)
{
    Texts texts;
    texts.show();
    scroll(state, texts.table, jumps);
}

/// From no rows to a million.
void fillOurs(benchmark::State &state)
{
    Labels labels;
    for (auto _ : state) {
        state.PauseTiming();
        labels.count = 0;
        labels.table.reloadData();
        paint();
        labels.count = rows;
        state.ResumeTiming();
        labels.table.reloadData();
        paint();
    }
    state.counters["views"] = labels.made;
}

void reloadOurs(benchmark::State &state)
{
    Labels labels;
    paint();
    for (auto _ : state) {
        ++shift;
        labels.table.reloadData();
        paint();
    }
}

void reloadQt(benchmark::State &state)
{
    Texts texts;
    texts.show();
    paint();
    for (auto _ : state) {
        ++shift;
        texts.reload();
        paint();
    }
}

void registerCases()
{
    const auto add = [](const char *name, auto function, auto... arguments) {
        const auto run = [=](benchmark::State &state) { function(state, arguments...); };
        benchmark::RegisterBenchmark(name, run)->Unit(benchmark::kMicrosecond);
    };
    add("fill/ours/1e6", fillOurs);
    add("reload/ours/1e6", reloadOurs);
    add("reload/QTableView/1e6", reloadQt);
    add("line/ours/1e6", scrollOurs, false);
    add("line/QTableView/1e6", scrollQt, false);
    add("jump/ours/1e6", scrollOurs, true);
    add("jump/QTableView/1e6", scrollQt, true);
}

const bool registered = (registerCases(), true);

} // namespace
