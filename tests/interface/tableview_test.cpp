// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "tablefixture.h"

#include <support/logrecorder.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QAccessible>
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
    const auto reload = [&](qsizetype rows, qsizetype shift = 0) {
        fixture.rows = rows;
        fixture.shift = shift;
        table.reloadData();
    };
    const std::vector<std::pair<const char *, std::function<void()>>> steps{
        {"shown", [] {}},
        {"a line", [&] { bar.setValue(bar.value() + 20); }},
        {"part of a line", [&] { bar.setValue(bar.value() + 7); }},
        {"back", [&] { bar.setValue(bar.value() - 13); }},
        {"jump", [&] { bar.setValue(10'000'003); }},
        {"end", [&] { bar.setValue(bar.maximum()); }},
        {"contents changed", [&] { reload(1'000'000, 5); }},
        {"fewer rows", [&] { reload(500); }},
        {"few rows", [&] { reload(3); }},
        {"none", [&] { reload(0); }},
        {"many", [&] { reload(1'000'000); }},
        {"smaller", [&] { table.resize(300, 120); }},
        {"larger", [&] { table.resize(400, 500); }},
        {"a wider column", [&] { table.setColumnWidth(0, 170); }},
        {"right to left", [&] { table.setLayoutDirection(Qt::RightToLeft); }},
        {"higher rows", [&] { table.setRowHeight(33); }},
        {"too high for so many", [&] { table.setRowHeight(1 << 20); }},
    };
    for (const auto &[name, step] : steps) {
        step();
        EXPECT_EQ(fixture.misplaced(), QString()) << name;
        QCoreApplication::processEvents();
        EXPECT_EQ(fixture.misplaced(), QString()) << name << ", and later";
        EXPECT_LT(fixture.labels(), 100) << name;
    }
    EXPECT_LE(table.numberOfRows(), (1 << 11)) << "as many as 32 bits can count pixels of";
}

TEST(TableViewTest, SelectsRows)
{
    TableFixture fixture(10);
    TableView &table = *fixture.table;
    const auto select = [&](const IndexSet &rows, bool extending = false) {
        return [&table, rows, extending] { table.selectRowIndexes(rows, extending); };
    };
    const auto range = [&](quint64 location, quint64 length) {
        return [&table, location, length] { selectRowRange(&table, {location, length}); };
    };
    const auto press = [&](int row, Qt::KeyboardModifiers modifiers = {}) {
        return [&table, row, modifiers] { QTest::mouseClick(table.viewAtColumn(0, row), Qt::LeftButton, modifiers); };
    };
    const struct
    {
        const char *name;
        std::function<void()> step;
        IndexSet expected;
    } steps[] = {
        {"rows", select({1, 3, 4}), {1, 3, 4}},
        {"more", select({2, 6}, true), {1, 2, 3, 4, 6}},
        {"none more", select({}, true), {1, 2, 3, 4, 6}},
        {"partly beyond the end", select(IndexSet(Range{8, 5})), {8, 9}},
        {"beyond the end", select(IndexSet(Range{10, 3})), {}},
        {"one", [&] { selectRow(&table, 4); }, {4}},
        {"a row that does not exist", [&] { selectRow(&table, 10); }, {}},
        {"a range", range(2, 3), {2, 3, 4}},
        {"a huge range", range(7, ~0ULL), {7, 8, 9}},
        {"a negative row", [&] { selectRow(&table, -1); }, {}},
        {"an empty range", range(2, 0), {}},
        {"click", press(5), {5}},
        {"Shift", press(7, Qt::ShiftModifier), {5, 6, 7}},
        {"Ctrl", press(6, Qt::ControlModifier), {5, 7}},
        {"down", [&] { QTest::keyClick(&table, Qt::Key_Down); }, {7}},
        {"Shift up", [&] { QTest::keyClick(&table, Qt::Key_Up, Qt::ShiftModifier); }, {6, 7}},
    };
    for (const auto &[name, step, expected] : steps) {
        step();
        EXPECT_EQ(table.selectedRowIndexes(), expected) << name;
    }
}

TEST(TableViewTest, KeepsPlaceAndSelectionWhenReloaded)
{
    TableFixture fixture(1000);
    TableView &table = *fixture.table;
    table.verticalScrollBar()->setValue(6010);
    IndexSet even, odd;
    for (quint64 row = 0; row < 1000; ++row)
        (row % 2 == 0 ? even : odd).insert(row);
    for (const IndexSet &rows : {even, odd, odd, {3, 4, 900}, {3, 4, 900}})
        table.selectRowIndexes(rows, false);
    fixture.rows = 800;
    table.reloadData();
    EXPECT_EQ(table.verticalScrollBar()->value(), 6010);
    EXPECT_THAT(fixture.selections, ElementsAre(even, odd, IndexSet{3, 4, 900}, IndexSet{3, 4})) << "once per change";
}

namespace {

class Form : public QWidget
{
public:
    QPushButton *button = new QPushButton("&ok", this);
    QLineEdit *edit = new QLineEdit(this);
    QLabel *label = new QLabel("said", this);

    Form()
    {
        edit->move(60, 0);
        label->move(160, 0);
    }
    [[nodiscard]] QSize sizeHint() const override { return {200, 60}; }
};

class FormTable : public TableViewDelegate
{
public:
    FormTable()
    {
        table.registerView<Form>("form");
        table.registerView<QFrame>("back");
        table.setDelegate(this);
        table.setDataSource(this);
        table.resize(300, 200);
        table.show();
        table.activateWindow();
        table.reloadData();
    }
    qsizetype numberOfRowsInTableView(TableView *) override { return 100; }
    /// Which is a view of the first column's in any other.
    QWidget *viewForTableColumn(TableView *view, int column, qsizetype row) override
    {
        if (column == 0)
            m_last = dynamic_cast<Form *>(view->makeViewWithIdentifier("form"));
        onFill(*m_last, row);
        return m_last;
    }
    QWidget *rowViewForRow(TableView *view, qsizetype row) override
    {
        return row < 2 ? view->makeViewWithIdentifier("back") : nullptr;
    }
    [[nodiscard]] const Form &form(int row) const { return dynamic_cast<const Form &>(*table.viewAtColumn(0, row)); }

    TableView table;
    std::function<void(Form &, qsizetype)> onFill = [](Form &, qsizetype) {};

private:
    Form *m_last = nullptr;
};

} // namespace

TEST(TableViewTest, CellsMayHaveButtonsAndTextFields)
{
    FormTable forms;
    TableView &table = forms.table;
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    const Form &form = forms.form(1);
    EXPECT_EQ(table.rowHeight(), form.sizeHint().height());
    qsizetype clicked = -1;
    QObject::connect(form.button, &QPushButton::clicked, [&] { clicked = table.rowForView(form.button); });
    QTest::mouseClick(form.button, Qt::LeftButton);
    EXPECT_EQ(clicked, 1);
    EXPECT_TRUE(table.selectedRowIndexes().isEmpty());
    QTest::mouseClick(form.edit, Qt::LeftButton);
    form.edit->setFocus();
    EXPECT_EQ(table.selectedRowIndexes(), IndexSet{1}) << "typing selects the row";
    qsizetype edited = -1;
    QObject::connect(form.edit, &QLineEdit::editingFinished, [&] { edited = table.rowForView(form.edit); });
    QTest::keyClicks(form.edit, "text");
    table.verticalScrollBar()->setValue(table.verticalScrollBar()->maximum());
    EXPECT_EQ(edited, 1) << "delivered before the view is used again";
    table.verticalScrollBar()->setValue(0);
    EXPECT_EQ(table.rowViewAtRow(1)->geometry(), QRect(0, 60, table.viewport()->width(), 60));
    EXPECT_EQ(table.viewport()->childAt(table.viewport()->width() - 2, 62), table.viewAtColumn(0, 1)) << "above it";
}

TEST(TableViewTest, TabGoesThroughTheRowsInSight)
{
    FormTable forms;
    TableView &table = forms.table;
    ASSERT_TRUE(QTest::qWaitForWindowActive(&table));
    for (int first = 0; first < 9; ++first) {
        table.verticalScrollBar()->setValue(60 * first + 10); // a part of it, two rows and a part of another
        table.setFocus();
        std::vector<int> rows;
        for (int step = 0; step < 9; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            rows.push_back(int(table.rowForView(QApplication::focusWidget())) - first);
        }
        EXPECT_THAT(rows, ElementsAre(0, 0, 1, 1, 2, 2, 3, 3, -1 - first));
    }
    EXPECT_EQ(table.visualRect(table.model()->index(11, 0)).bottom(), table.viewport()->height() - 1) << "wholly shown";
}

TEST(TableViewTest, CellsHaveTheirOwnColoursAndThoseOfSelectedRows)
{
    FormTable forms;
    TableView &table = forms.table;
    const auto colorOf = [&](int row) { return forms.form(row).label->palette().windowText().color(); };
    const QColor normal = colorOf(0), red(200, 0, 0);
    selectRowRange(&table, {0, 60});
    EXPECT_EQ(colorOf(0), table.palette().highlightedText().color());
    forms.onFill = [&](Form &form, qsizetype row) {
        QPalette palette;
        if (row % 2 == 1)
            palette.setColor(QPalette::WindowText, red);
        form.setPalette(palette);
    };
    for (int row : {20, 61})
        table.verticalScrollBar()->setValue(60 * row);
    EXPECT_EQ(colorOf(61), red) << "its view was one of a selected row";
    EXPECT_EQ(colorOf(62), normal);
    selectRowRange(&table, {61, 2});
    table.deselectAll();
    EXPECT_EQ(colorOf(61), red);
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
    table.registerView("owned", TableView::ViewFactory([&](QObject *given) {
                           EXPECT_EQ(given, &owner);
                           return std::make_unique<QWidget>();
                       }));
    EXPECT_EQ(table.makeViewWithIdentifier("owned", &owner)->parent(), table.viewport());
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
    LogRecorder log;
    FormTable forms;
    TableView &table = forms.table;
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
    FormTable forms;
    forms.onFill = [](Form &form, qsizetype row) {
        form.edit->setText(QString::number(row));
        form.label->setVisible(row != 1);
    };
    forms.table.reloadData();
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(&forms.table);
    ASSERT_TRUE(table && table->tableInterface());
    const auto nameOf = [&](int row) { return table->tableInterface()->cellAt(row, 0)->text(QAccessible::Name); };
    const auto views = forms.table.viewport()->children().size();
    for (const auto &[row, name] :
         {std::pair(0, "ok, 0, said"), {1, "ok, 1"}, {70, "ok, 70, said"}, {99, "ok, 99, said"}})
        EXPECT_EQ(nameOf(row), name);
    EXPECT_LE(forms.table.viewport()->children().size(), views + 1) << "one for all rows out of sight";
    forms.table.viewAtColumn(0, 2)->setAccessibleName("third");
    EXPECT_EQ(nameOf(2), "third");
}

TEST(TableViewTest, CallbacksMayReloadOrDeleteAnything)
{
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
