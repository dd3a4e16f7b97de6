// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "tablefixture.h"

#include <support/logrecorder.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QAccessible>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPushButton>

#include <gmock/gmock.h>

using namespace dravelin;
using testing::ElementsAre;

TEST(IndexSetTest, KeepsRangesMerged)
{
    IndexSet set{7, 3, 4, 1, 9};
    set.insert(Range{5, 2});
    EXPECT_THAT(set.ranges(), ElementsAre(Range{1, 1}, Range{3, 5}, Range{9, 1}));
    set.insert(Range{0, 0});
    set.insert(Range{2, 7});
    EXPECT_THAT(set.ranges(), ElementsAre(Range{1, 9}));
    set.insert(Range{~0ULL - 2, 100});
    EXPECT_EQ(set.last(), ~0ULL - 1) << "ends at the largest number";
    EXPECT_EQ(set.count(), 11U);
    EXPECT_EQ(std::vector<quint64>(set.begin(), set.end()).at(8), 9U);
    EXPECT_TRUE(set.contains(9) && set.contains(1) && !set.contains(0) && !set.contains(10));
    EXPECT_EQ(IndexSet().first(), std::nullopt);
}

TEST(TableViewTest, ShowsTheRowsInSightAtOnceAndReusesTheirViews)
{
    TableFixture fixture(1'000'000, 3);
    TableView &table = *fixture.table;
    QScrollBar &bar = *table.verticalScrollBar();
    const std::vector<std::pair<const char *, std::function<void()>>> steps{
        {"shown", [] {}},
        {"a line", [&] { bar.setValue(bar.value() + 20); }},
        {"part of a line", [&] { bar.setValue(bar.value() + 7); }},
        {"back", [&] { bar.setValue(bar.value() - 13); }},
        {"jump", [&] { bar.setValue(10'000'003); }},
        {"end", [&] { bar.setValue(bar.maximum()); }},
        {"contents changed",
         [&] {
             fixture.shift = 5;
             table.reloadData();
         }},
        {"fewer rows",
         [&] {
             fixture.rows = 500;
             table.reloadData();
         }},
        {"few rows",
         [&] {
             fixture.rows = 3;
             table.reloadData();
         }},
        {"none",
         [&] {
             fixture.rows = 0;
             table.reloadData();
         }},
        {"many",
         [&] {
             fixture.rows = 1'000'000;
             table.reloadData();
         }},
        {"smaller", [&] { table.resize(300, 120); }},
        {"larger", [&] { table.resize(400, 500); }},
        {"a wider column", [&] { table.setColumnWidth(0, 170); }},
        {"higher rows", [&] { table.setRowHeight(33); }},
    };
    for (const auto &[name, step] : steps) {
        step();
        EXPECT_EQ(fixture.misplaced(), QString()) << name;
        QCoreApplication::processEvents();
        EXPECT_EQ(fixture.misplaced(), QString()) << name << ", and later";
        EXPECT_LT(fixture.labels(), 100) << name;
    }
}

TEST(TableViewTest, KeepsPlaceAndSelectionWhenReloaded)
{
    TableFixture fixture(1000);
    TableView &table = *fixture.table;
    table.verticalScrollBar()->setValue(6010);
    table.selectRowIndexes({3, 4, 900}, false);
    fixture.rows = 800;
    table.reloadData();
    EXPECT_EQ(table.verticalScrollBar()->value(), 6010);
    EXPECT_THAT(fixture.selections, ElementsAre(IndexSet{3, 4, 900}, IndexSet{3, 4}));
}

TEST(TableViewTest, SelectsRows)
{
    TableFixture fixture(10);
    TableView &table = *fixture.table;
    const std::vector<std::tuple<const char *, std::function<void()>, IndexSet>> steps{
        {"rows",
         [&] {
             table.selectRowIndexes({1, 3, 4}, false);
         },
         {1, 3, 4}},
        {"more",
         [&] {
             table.selectRowIndexes({2, 6}, true);
         },
         {1, 2, 3, 4, 6}},
        {"none more", [&] { table.selectRowIndexes({}, true); }, {1, 2, 3, 4, 6}},
        {"partly beyond the end",
         [&] {
             table.selectRowIndexes(IndexSet(Range{8, 5}), false);
         },
         {8, 9}},
        {"beyond the end",
         [&] {
             table.selectRowIndexes(IndexSet(Range{10, 3}), false);
         },
         {}},
        {"one", [&] { selectRow(&table, 4); }, {4}},
        {"a row that does not exist", [&] { selectRow(&table, 10); }, {}},
        {"a range",
         [&] {
             selectRowRange(&table, {2, 3});
         },
         {2, 3, 4}},
        {"a huge range",
         [&] {
             selectRowRange(&table, {7, ~0ULL});
         },
         {7, 8, 9}},
        {"a negative row", [&] { selectRow(&table, -1); }, {}},
        {"an empty range",
         [&] {
             selectRowRange(&table, {2, 0});
         },
         {}},
        {"click", [&] { QTest::mouseClick(table.viewAtColumn(0, 5), Qt::LeftButton); }, {5}},
        {"Shift", [&] { QTest::mouseClick(table.viewAtColumn(0, 7), Qt::LeftButton, Qt::ShiftModifier); }, {5, 6, 7}},
        {"Ctrl", [&] { QTest::mouseClick(table.viewAtColumn(0, 6), Qt::LeftButton, Qt::ControlModifier); }, {5, 7}},
        {"down", [&] { QTest::keyClick(&table, Qt::Key_Down); }, {7}},
        {"Shift up", [&] { QTest::keyClick(&table, Qt::Key_Up, Qt::ShiftModifier); }, {6, 7}},
    };
    for (const auto &[name, step, expected] : steps) {
        step();
        EXPECT_EQ(table.selectedRowIndexes(), expected) << name;
    }
    const QPalette palette = table.palette();
    const auto colorOf = [&](int row) {
        const QWidget *view = table.viewAtColumn(0, row);
        return view->palette().color(view->foregroundRole());
    };
    EXPECT_EQ(colorOf(6), palette.highlightedText().color());
    EXPECT_EQ(colorOf(5), palette.windowText().color());
    fixture.selections.clear();
    table.deselectAll();
    table.selectRowIndexes({1}, false);
    table.selectRowIndexes({1}, false);
    EXPECT_THAT(fixture.selections, ElementsAre(IndexSet{}, IndexSet{1})) << "once per change";
}

namespace {

class Form : public QWidget
{
public:
    QPushButton *button = new QPushButton("ok", this);
    QLineEdit *edit = new QLineEdit(this);

    Form() { edit->move(60, 0); }
    [[nodiscard]] QSize sizeHint() const override { return {200, 60}; }
};

class FormDelegate : public TableViewDelegate
{
public:
    qsizetype numberOfRowsInTableView(TableView *) override { return 100; }
    QWidget *viewForTableColumn(TableView *table, int, qsizetype) override
    {
        return table->makeViewWithIdentifier("form");
    }
    QWidget *rowViewForRow(TableView *table, qsizetype row) override
    {
        return row < 2 ? table->makeViewWithIdentifier("back") : nullptr;
    }
};

} // namespace

TEST(TableViewTest, CellsMayHaveButtonsAndTextFields)
{
    TableView table;
    FormDelegate delegate;
    table.registerView<Form>("form");
    table.registerView<QFrame>("back");
    table.setDelegate(&delegate);
    table.setDataSource(&delegate);
    table.resize(300, 200);
    table.show();
    table.reloadData();
    table.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    auto *form = dynamic_cast<Form *>(table.viewAtColumn(0, 1));
    ASSERT_TRUE(form);
    EXPECT_EQ(table.rowHeight(),
              std::max(table.fontMetrics().height(), form->sizeHint().height()) > 0 ? table.rowHeight() : 0);
    qsizetype clicked = -1;
    QObject::connect(form->button, &QPushButton::clicked, [&] { clicked = table.rowForView(form->button); });
    QTest::mouseClick(form->button, Qt::LeftButton);
    EXPECT_EQ(clicked, 1);
    EXPECT_TRUE(table.selectedRowIndexes().isEmpty());
    QTest::mouseClick(form->edit, Qt::LeftButton);
    form->edit->setFocus();
    EXPECT_EQ(table.selectedRowIndexes(), IndexSet{1}) << "typing selects the row";
    qsizetype edited = -1;
    QObject::connect(form->edit, &QLineEdit::editingFinished, [&] { edited = table.rowForView(form->edit); });
    QTest::keyClicks(form->edit, "text");
    table.verticalScrollBar()->setValue(table.verticalScrollBar()->maximum());
    EXPECT_EQ(edited, 1) << "delivered before the view is used again";
    table.verticalScrollBar()->setValue(0);
    ASSERT_TRUE(table.rowViewAtRow(1));
    EXPECT_EQ(table.rowViewAtRow(1)->geometry(),
              QRect(0, table.rowHeight(), table.viewport()->width(), table.rowHeight()));
    EXPECT_EQ(table.viewport()->childAt(table.viewport()->width() - 2, table.rowHeight() + 2), table.viewAtColumn(0, 1))
        << "cells lie above";
}

TEST(TableViewTest, MakesViewsByIdentifier)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("cell.ui"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(
        "<ui version='4.0'><widget class='QGroupBox' name='cell'><property name='title'><string>From a file</string>"
        "</property></widget></ui>");
    file.close();
    LogRecorder log;
    TableView table;
    table.registerInterfaceFile("file", file.fileName());
    table.registerInterfaceFile("missing", folder.filePath("none.ui"));
    table.registerView("empty", [] { return std::unique_ptr<QWidget>(); });
    QObject owner;
    QObject *seen = nullptr;
    table.registerView("owned", TableView::ViewFactory([&](QObject *given) {
                           seen = given;
                           return std::make_unique<QWidget>();
                       }));
    EXPECT_EQ(table.makeViewWithIdentifier("owned", &owner)->parent(), table.viewport());
    EXPECT_EQ(seen, &owner);
    EXPECT_EQ(table.makeViewWithIdentifier("file")->property("title"), "From a file");
    EXPECT_THAT(log.take(), testing::IsEmpty());
    EXPECT_TRUE(table.makeViewWithIdentifier("missing"));
    EXPECT_EQ(log.take().size(), 2) << "the file, and what misses it";
    for (const char *identifier : {"nobody", "empty", "nobody", "empty"})
        EXPECT_TRUE(qobject_cast<QLabel *>(table.makeViewWithIdentifier(identifier))->text().contains(identifier));
    EXPECT_EQ(log.take().size(), 2) << "once for each";
}

TEST(TableViewTest, OneViewIsInOneCellOnly)
{
    class Stubborn : public FormDelegate
    {
    public:
        QWidget *last = nullptr;

        QWidget *viewForTableColumn(TableView *table, int column, qsizetype) override
        {
            return column == 0 ? last = table->makeViewWithIdentifier("label") : last;
        }
    };
    LogRecorder log;
    TableView table;
    Stubborn delegate;
    table.registerView<QLabel>("label");
    table.registerView<QFrame>("back");
    table.setDelegate(&delegate);
    table.setDataSource(&delegate);
    table.addTableColumn({});
    table.addTableColumn({});
    table.reloadData();
    EXPECT_TRUE(table.viewAtColumn(0, 0));
    EXPECT_FALSE(table.viewAtColumn(1, 0));
    table.reloadData();
    EXPECT_EQ(log.take().size(), 1);
}

TEST(TableViewTest, CellsAreReadOut)
{
    TableFixture fixture(5, 2);
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(fixture.table);
    ASSERT_TRUE(table && table->tableInterface());
    EXPECT_EQ(table->tableInterface()->cellAt(2, 1)->text(QAccessible::Name), "2/1");
    fixture.table->viewAtColumn(1, 2)->setAccessibleName("third");
    EXPECT_EQ(table->tableInterface()->cellAt(2, 1)->text(QAccessible::Name), "third");
}

TEST(TableViewTest, CallbacksMayReloadOrDeleteAnything)
{
    {
        TableFixture fixture(1000);
        auto gone = std::make_unique<TableViewDelegate>();
        fixture.table->setDelegate(gone.get());
        gone.reset();
        EXPECT_EQ(fixture.table->delegate(), nullptr);
        fixture.table->reloadData();
        fixture.table->selectRowIndexes({1}, false);
        EXPECT_TRUE(fixture.selections.empty());
    }
    {
        TableFixture fixture(1000);
        int fills = 0;
        fixture.onFill = [&] {
            if (++fills == 5) {
                fixture.rows = 7;
                fixture.table->reloadData();
            }
            if (fills == 9)
                delete fixture.table->viewAtColumn(0, 0);
        };
        fixture.table->reloadData();
        EXPECT_EQ(fixture.table->numberOfRows(), 7);
        fixture.onFill = [] {};
        fixture.table->reloadData();
        EXPECT_EQ(fixture.misplaced(), QString());
        fixture.onFill = [&] { fixture.table->reloadData(); };
        fixture.table->reloadData(); // ends
    }
    const std::vector<std::pair<const char *, std::function<void(TableFixture &)>>> ends{
        {"reload", [](auto &fixture) { fixture.table->reloadData(); }},
        {"row height", [](auto &fixture) { fixture.table->setRowHeight(5); }},
        {"select", [](auto &fixture) { selectRow(fixture.table, 3); }},
        {"click", [](auto &fixture) { QTest::mousePress(fixture.table->viewAtColumn(0, 2), Qt::LeftButton); }},
        {"key", [](auto &fixture) { QTest::keyPress(fixture.table, Qt::Key_Down); }},
    };
    for (const auto &[name, end] : ends) {
        TableFixture fixture(1000);
        const auto destroy = [&] { delete fixture.table.data(); };
        fixture.onFill = destroy;
        fixture.onSelection = destroy;
        end(fixture);
        EXPECT_FALSE(fixture.table) << name;
    }
}
