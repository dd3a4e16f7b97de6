// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/tableviewhandler.h>

#include <support/logrecorder.h>

#include <QtCore/QRegularExpression>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>

#include <gmock/gmock.h>

#include <cstring>

using namespace dravelin;
using testing::ElementsAre;

namespace {

class Handler : public TableViewHandler
{
public:
    using TableViewHandler::TableViewHandler;

    void updateTableView(QWidget *view, qsizetype row) override
    {
        qobject_cast<QLabel *>(view)->setText(tableData()[row].toString());
    }
    void updateTableRowView(QWidget *view, qsizetype row) override { view->setObjectName(QString::number(row)); }
    void dragComplete() override { calls << "drag complete"; }
    void selectionChanged() override { onSelection(); }
    void didMoveRows(const IndexSet &, qsizetype to) override { calls << "moved to " + QString::number(to); }

    QStringList calls;
    std::function<void()> onSelection = [] {};
};

class TableHandlerTest : public testing::Test
{
protected:
    QPointer<TableView> table = new TableView;
    std::unique_ptr<Handler> handler;
    std::shared_ptr<QVariantList> rows = std::make_shared<QVariantList>();

    TableHandlerTest()
    {
        table->registerView<QLabel>("cell");
        table->registerView<QFrame>("row");
        handler = std::make_unique<Handler>(table, "cell", "row");
        table->resize(300, 200);
        table->show();
    }
    ~TableHandlerTest() override { delete table.data(); }
    void setRows(const QVariantList &values)
    {
        *rows = values;
        handler->setSourceData(rows);
    }
    bool drop(const IndexSet &dragged, qsizetype row = 0)
    {
        handler->willBeginAtPoint(table, {}, dragged);
        const bool accepted = handler->acceptDrop(table, row, DropOperation::Above);
        handler->endedAtPoint(table, {}, accepted ? Qt::MoveAction : Qt::IgnoreAction);
        return accepted;
    }
    [[nodiscard]] QString shown() const
    {
        QString text;
        for (qsizetype row = 0; row < table->numberOfRows(); ++row)
            text += qobject_cast<QLabel *>(table->viewAtColumn(0, row))->text();
        return text;
    }
};

QVariantList letters(const QString &text)
{
    QVariantList values;
    for (const QChar letter : text)
        values << QString(letter);
    return values;
}

/// Whether one is a copy of the other, which equal values need not be.
bool isSame(const QVariant &a, const QVariant &b)
{
    return a.metaType() == b.metaType()
           && std::memcmp(a.constData(), b.constData(), std::size_t(a.metaType().sizeOf())) == 0;
}

struct Unequal
{
    int id;
};

struct Ordered
{
    int id;
    friend bool operator==(Ordered, Ordered) = default;
    friend bool operator<(Ordered a, Ordered b) { return a.id < b.id; }
};

} // namespace

TEST_F(TableHandlerTest, ShowsTheListItselfAndTellsOfIt)
{
    EXPECT_TRUE(
        QRegularExpression("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\.type$").match(handler->dropType()).hasMatch());
    EXPECT_EQ(table->registeredDraggedTypes(), QStringList{handler->dropType()});
    const QSignalSpy cells(handler.get(), &TableViewHandler::cellUpdated);
    const QSignalSpy rowViews(handler.get(), &TableViewHandler::rowViewUpdated);
    setRows(letters("abc"));
    EXPECT_EQ(shown(), "abc");
    EXPECT_EQ(cells.size(), 3);
    EXPECT_EQ(rowViews.size(), 3);
    EXPECT_EQ(table->rowViewAtRow(2)->objectName(), "2");
    EXPECT_EQ(table->rowViewAtRow(2)->accessibleName(), "Row 3");
    handler->tableData()[1] = "x";
    rows->append("y");
    handler->dataChanged();
    EXPECT_EQ(shown(), "axcy");
    rows->resize(1);
    EXPECT_EQ(handler->viewForTableColumn(table, 0, 1), nullptr) << "vanished, and not yet reloaded";
    handler->setSourceData(nullptr);
    EXPECT_EQ(table->numberOfRows(), 0);
    EXPECT_EQ(rows->size(), 1);
    const auto item = handler->pasteboardWriterForRow(table, 0);
    EXPECT_EQ(item->types(), QStringList{handler->dropType()});
    EXPECT_EQ(item->string(handler->dropType()), QString(""));
}

TEST_F(TableHandlerTest, GathersDroppedRowsAtTheFirstOfThem)
{
    const QObject object;
    const auto pointer = QVariant::fromValue(&object);
    const auto typed = [](auto... values) { return QVariantList{QVariant::fromValue(values)...}; };
    const struct
    {
        const char *name;
        QVariantList before;
        IndexSet dragged;
        std::vector<int> after; ///< rows of before
    } cases[] = {
        {"scattered", letters("abcde"), {1, 3}, {0, 1, 3, 2, 4}},
        {"one, above another", letters("abc"), {2}, {0, 1, 2}},
        {"a block", letters("abcd"), {1, 2}, {0, 1, 2, 3}},
        {"all", letters("abc"), {0, 1, 2}, {0, 1, 2}},
        {"an equal one behind", letters("aba"), {0}, {0, 1}},
        {"an equal one before", letters("aba"), {2}, {0, 1, 2}},
        {"equal ones dragged", letters("aabaa"), {1, 3}, {0, 1, 3, 2}},
        {"numbers", {1, 1.0, "1", true, 2, -1, 4294967295U}, {0, 5}, {0, 5, 2, 4, 6}},
        {"not a number", {qQNaN(), 2, 3}, {0, 2}, {0, 2, 1}},
        {"maps", {QVariantMap{{"a", 1}}, 5, QVariantMap{{"a", 1.0}}, QVariantMap{{"a", "1"}}}, {0}, {0, 1, 3}},
        {"large numbers in maps", {QVariantMap{{"a", (1LL << 53) + 1}}, QVariantMap{{"a", 1LL << 53}}}, {0}, {0, 1}},
        {"lists", {QVariantList{1}, QVariantList{"x"}, QVariantList{1.0}, QVariantList{}}, {0}, {0, 1, 3}},
        {"objects", {pointer, 1, pointer, QVariant::fromValue<QObject *>(nullptr)}, {0}, {0, 1, 3}},
        {"bytes", {QByteArray("a"), "a", QByteArray("a")}, {0}, {0, 1}},
        {"types without ==", typed(Unequal{0}, Unequal{1}, Unequal{0}), {0, 2}, {0, 2, 1}},
        {"types with an order", typed(Ordered{3}, Ordered{1}, Ordered{3}, Ordered{2}), {0, 1}, {0, 1, 3}},
    };
    handler->onSelection = [this] { EXPECT_LT(table->selectedRowIndexes().last().value_or(0), rows->size()); };
    for (const auto &[name, before, dragged, after] : cases) {
        setRows(before);
        EXPECT_TRUE(drop(dragged)) << name;
        ASSERT_EQ(std::size_t(rows->size()), after.size()) << name;
        for (std::size_t row = 0; row < after.size(); ++row)
            EXPECT_TRUE(isSame((*rows)[qsizetype(row)], before[after[row]])) << name << ' ' << row;
        EXPECT_EQ(table->numberOfRows(), rows->size()) << name;
        EXPECT_TRUE(table->selectedRowIndexes().isEmpty()) << name;
    }
    EXPECT_EQ(handler->calls.count("drag complete"), std::size(cases));
}

TEST_F(TableHandlerTest, RefusesWhatItCannotDrop)
{
    setRows(letters("abcde"));
    EXPECT_FALSE(handler->acceptDrop(table, 0, DropOperation::Above));
    EXPECT_EQ(handler->validateDrop(table, 0, DropOperation::Above), 0);
    handler->willBeginAtPoint(table, {}, {3, 4, 9});
    EXPECT_EQ(handler->validateDrop(table, 0, DropOperation::Above), -1);
    EXPECT_EQ(handler->validateDrop(table, 0, DropOperation::On), 0);
    rows->resize(4);
    EXPECT_TRUE(handler->acceptDrop(table, 0, DropOperation::Above)) << "some vanished";
    rows->resize(2);
    EXPECT_TRUE(handler->acceptDrop(table, 0, DropOperation::Above)) << "all vanished";
    EXPECT_EQ(*rows, letters("ab"));
    LogRecorder log;
    handler->setSourceData(rows);
    EXPECT_EQ(handler->dragSelectedRowsIndexes(), (IndexSet{3, 4, 9})) << "the same list";
    handler->setSourceData(std::make_shared<QVariantList>(letters("vwxyz")));
    EXPECT_EQ(log.take().size(), 1);
    EXPECT_EQ(handler->validateDrop(table, 0, DropOperation::Above), 0);
    EXPECT_FALSE(handler->acceptDrop(table, 0, DropOperation::Above));
    EXPECT_EQ(shown(), "vwxyz");
    delete table.data();
    EXPECT_THAT(handler->calls, ElementsAre("drag complete")) << "with the table";
    handler->setSourceData(rows);
    handler->moveSelectedRowsUp();
    EXPECT_TRUE(handler->moveRows({1}, 0));
    const TableViewHandler none(nullptr, "cell");
    EXPECT_EQ(log.take().size(), 1);
    TableView empty;
    Handler missing(&empty, "nobody", "nothing");
    missing.setSourceData(rows); // the hooks, which expect their own views, are not called
    EXPECT_TRUE(qobject_cast<QLabel *>(empty.viewAtColumn(0, 0))->text().contains("nobody"));
    EXPECT_EQ(log.take().size(), 2);
}

TEST_F(TableHandlerTest, MovesAnyRowsToAnyDropRow)
{
    handler->setReordersToDropRow(true);
    const QSignalSpy spy(handler.get(), &TableViewHandler::rowsMoved);
    const auto check = [&](int count, unsigned dragged, int target) {
        IndexSet indexes;
        QVariantList source, before, moved, after;
        for (int row = 0; row < count; ++row) {
            const bool moves = (dragged >> row & 1) != 0;
            source << row;
            (moves ? moved : row < target ? before : after) << row;
            if (moves)
                indexes.insert(quint64(row));
        }
        setRows(source);
        table->selectRowIndexes(indexes, false);
        const QVariantList expected = before + moved + after;
        const qsizetype signalsBefore = spy.size();
        EXPECT_EQ(drop(indexes, target), !indexes.isEmpty());
        EXPECT_EQ(*rows, expected) << count << ' ' << dragged << ' ' << target;
        EXPECT_EQ(spy.size() - signalsBefore, expected == source ? 0 : 1);
        EXPECT_EQ(table->selectedRowIndexes(), IndexSet(Range{quint64(before.size()), quint64(moved.size())}));
    };
    for (int count = 0; count <= 6; ++count) {
        for (unsigned dragged = 0; dragged < 1U << count; ++dragged) {
            for (int target = 0; target <= count; ++target)
                check(count, dragged, target);
        }
    }
    setRows(letters("aab"));
    EXPECT_TRUE(drop({0}, 3));
    EXPECT_EQ(shown(), "aba") << "equal ones stay";
}

TEST_F(TableHandlerTest, MovesSelectedRowsByKeys)
{
    setRows(letters("abcdef"));
    table->selectRowIndexes({2}, false);
    QTest::keyClick(table, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(shown(), "abcdef") << "only when rows go where they are dropped";
    handler->setReordersToDropRow(true);
    const struct
    {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        IndexSet selected;
        const char *after;
        const char *said;
    } steps[] = {
        {Qt::Key_Up, Qt::AltModifier, {2}, "acbdef", "Moved to row 2 of 6"},
        {Qt::Key_Up, Qt::AltModifier | Qt::KeypadModifier, {1}, "cabdef", "Moved to row 1 of 6"},
        {Qt::Key_Up, Qt::AltModifier, {0}, "cabdef", "Moved to row 1 of 6"},
        {Qt::Key_Down, Qt::AltModifier, {0, 1}, "bcadef", "Moved to rows 2 to 3 of 6"},
        {Qt::Key_Down, Qt::AltModifier, {1, 4}, "badfce", "Moved to rows 5 to 6 of 6"},
        {Qt::Key_Down, Qt::AltModifier, {5}, "badfce", "Moved to rows 5 to 6 of 6"},
        {Qt::Key_Down, Qt::AltModifier | Qt::ShiftModifier, {0}, "badfce", "Moved to rows 5 to 6 of 6"},
        {Qt::Key_Down, Qt::AltModifier, {}, "badfce", "Moved to rows 5 to 6 of 6"},
    };
    for (const auto &[key, modifiers, selected, after, said] : steps) {
        table->selectRowIndexes(selected, false);
        QTest::keyClick(table, key, modifiers);
        EXPECT_EQ(shown(), after);
        EXPECT_EQ(table->accessibleDescription(), said) << after;
    }
    table->setAccessibleDescription("The application's");
    handler->moveRows({0}, 3);
    EXPECT_EQ(table->accessibleDescription(), "The application's");
}

TEST_F(TableHandlerTest, HooksMayDeleteTheHandler)
{
    const auto remove = [this] { handler.reset(); };
    setRows(letters("abc"));
    handler->onSelection = remove;
    handler->setReordersToDropRow(true);
    handler->moveRows({0}, 2);
    EXPECT_FALSE(handler);
    handler = std::make_unique<Handler>(table, "cell");
    setRows(letters("abc"));
    QObject::connect(handler.get(), &TableViewHandler::cellUpdated, table, remove);
    handler->dataChanged();
    EXPECT_FALSE(handler);
    EXPECT_EQ(table->numberOfRows(), 3) << "until it is reloaded";
}
