// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "tablefixture.h"

#include <QtCore/QMimeData>
#include <QtGui/QDragEnterEvent>

#include <gmock/gmock.h>

using namespace dravelin;
using testing::ElementsAre;

namespace {

class DragFixture : public TableFixture
{
public:
    using TableFixture::TableFixture;

    int validateDrop(TableView *view, qsizetype row, DropOperation operation) override
    {
        asked.emplace_back(row, operation);
        items = view->draggedItems();
        onValidate();
        return allowed;
    }
    bool acceptDrop(TableView *, qsizetype row, DropOperation operation) override
    {
        dropped.emplace_back(row, operation);
        return accepts;
    }
    std::optional<PasteboardItem> pasteboardWriterForRow(TableView *, qsizetype row) override
    {
        if (row == 2)
            return {};
        PasteboardItem item;
        item.setString(QString::number(row), "rows");
        return item;
    }
    void willBeginAtPoint(TableView *view, QPointF, const IndexSet &rowsOfDrag) override
    {
        begun.push_back(rowsOfDrag);
        view->setDataSource(nullptr);
    }
    void endedAtPoint(TableView *, QPointF, int operation) override { ended.push_back(operation); }

    /// Enters the table first, without which it is sent nothing.
    /// \return the action that the table accepts; none when it refuses
    template <class Event>
    Qt::DropAction send(int y, const char *type = "rows")
    {
        data.clear();
        data.setData(type, "x");
        QDragEnterEvent enter = make<QDragEnterEvent>(y, &data);
        QCoreApplication::sendEvent(table->viewport(), &enter);
        if (!table)
            return Qt::IgnoreAction;
        Event event = make<Event>(y, &data);
        QCoreApplication::sendEvent(table->viewport(), &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }
    [[nodiscard]] QRect marker() const
    {
        const auto children = table->viewport()->findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
        for (const QWidget *child : children) {
            if (child->testAttribute(Qt::WA_TransparentForMouseEvents) && child->isVisible())
                return child->geometry();
        }
        return {};
    }

    int allowed = -1;
    bool accepts = true;
    std::vector<std::pair<qsizetype, DropOperation>> asked;
    std::vector<std::pair<qsizetype, DropOperation>> dropped;
    QMimeData data;
    QList<PasteboardItem> items;
    std::vector<IndexSet> begun;
    std::vector<int> ended;
    std::function<void()> onValidate = [] {};

private:
    template <class Event>
    static Event make(int y, const QMimeData *data)
    {
        const Qt::DropActions actions = Qt::MoveAction | Qt::CopyAction;
        if constexpr (std::is_same_v<Event, QDropEvent>)
            return QDropEvent(QPointF(10, y), actions, data, Qt::LeftButton, Qt::NoModifier);
        else
            return Event(QPoint(10, y), actions, data, Qt::LeftButton, Qt::NoModifier);
    }
};

} // namespace

TEST(PasteboardItemTest, ItemsTravelAsMimeData)
{
    PasteboardItem empty;
    EXPECT_FALSE(empty.setString("x", ""));
    EXPECT_TRUE(empty.setString({}, "rows"));
    EXPECT_FALSE(empty.string("rows").isNull());
    EXPECT_TRUE(empty.string("other").isNull());
    PasteboardItem full;
    full.setString("one\ntwo", "text/plain");
    full.setString("ä", "rows");
    full.setString("ö", "rows");
    const QList<PasteboardItem> items{empty, full, empty};
    const auto data = PasteboardItem::toMimeData(items);
    EXPECT_EQ(PasteboardItem::fromMimeData(data.get()), items);
    EXPECT_EQ(data->text(), "one\ntwo");
    EXPECT_EQ(QString::fromUtf8(data->data("rows")), "\nö\n");
    QMimeData cut;
    const QString type = data->formats().last();
    cut.setData(type, data->data(type).chopped(3));
    EXPECT_EQ(PasteboardItem::fromMimeData(&cut), items.first(2));
}

TEST(TableDragTest, ProposesThePlaceUnderThePointer)
{
    DragFixture fixture(5); // rows of 20 pixels
    fixture.table->registerForDraggedTypes({"other", "rows"});
    const struct
    {
        int y;
        int row;
        DropOperation operation;
        QRect marker;
    } places[] = {
        {2, 0, DropOperation::Above, {0, 0, 0, 8}},    {10, 0, DropOperation::On, {0, 0, 0, 20}},
        {17, 1, DropOperation::Above, {0, 16, 0, 8}},  {22, 1, DropOperation::Above, {0, 16, 0, 8}},
        {90, 4, DropOperation::On, {0, 80, 0, 20}},    {97, 5, DropOperation::Above, {0, 96, 0, 8}},
        {200, 5, DropOperation::Above, {0, 96, 0, 8}},
    };
    for (const auto &place : places) {
        EXPECT_EQ(fixture.send<QDragMoveEvent>(place.y), Qt::CopyAction) << place.y;
        EXPECT_EQ(fixture.asked.back(), std::pair(qsizetype(place.row), place.operation)) << place.y;
        QRect expected = place.marker;
        expected.setWidth(fixture.table->viewport()->width());
        EXPECT_EQ(fixture.marker(), expected) << place.y;
    }
    EXPECT_EQ(fixture.items.size(), 1);
    EXPECT_TRUE(fixture.table->draggedItems().isEmpty());
    EXPECT_EQ(fixture.send<QDropEvent>(17), Qt::CopyAction);
    EXPECT_THAT(fixture.dropped, ElementsAre(std::pair(qsizetype(1), DropOperation::Above)));
    EXPECT_EQ(fixture.marker(), QRect());
}

TEST(TableDragTest, RefusesWhatTheDataSourceDoesNotWant)
{
    DragFixture fixture(5);
    EXPECT_EQ(fixture.send<QDragEnterEvent>(10), Qt::IgnoreAction) << "no type registered";
    fixture.table->registerForDraggedTypes({"rows"});
    EXPECT_EQ(fixture.send<QDragEnterEvent>(10, "text/plain"), Qt::IgnoreAction);
    EXPECT_EQ(fixture.send<QDropEvent>(10, "text/plain"), Qt::IgnoreAction);
    EXPECT_TRUE(fixture.asked.empty());
    fixture.allowed = Qt::MoveAction;
    EXPECT_EQ(fixture.send<QDragMoveEvent>(10), Qt::MoveAction) << "where the drag would rather copy";
    fixture.allowed = Qt::LinkAction;
    EXPECT_EQ(fixture.send<QDragMoveEvent>(10), Qt::IgnoreAction) << "the drag does not offer it";
    EXPECT_EQ(fixture.marker(), QRect());
    fixture.allowed = 0;
    EXPECT_EQ(fixture.send<QDropEvent>(10), Qt::IgnoreAction);
    EXPECT_TRUE(fixture.dropped.empty());
    fixture.allowed = -1;
    fixture.accepts = false;
    EXPECT_EQ(fixture.send<QDropEvent>(10), Qt::IgnoreAction);
    EXPECT_EQ(fixture.dropped.size(), 1U);
    fixture.onValidate = [&] { delete fixture.table.data(); };
    fixture.send<QDropEvent>(10);
    EXPECT_FALSE(fixture.table);
}

TEST(TableDragTest, ScrollsNearTheEdges)
{
    DragFixture fixture(1000);
    QScrollBar &bar = *fixture.table->verticalScrollBar();
    fixture.table->registerForDraggedTypes({"rows"});
    fixture.send<QDragMoveEvent>(fixture.table->viewport()->height() - 3);
    const qsizetype before = fixture.asked.back().first;
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.value() > 100; }, 10'000));
    EXPECT_GT(fixture.asked.back().first, before) << "asked anew for the rows that came";
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(fixture.table->viewport(), &leave);
    EXPECT_EQ(fixture.marker(), QRect());
}

TEST(TableDragTest, DragsTheSelectedRowsThatHaveSomethingToCarry)
{
    DragFixture fixture(10);
    TableView &table = *fixture.table;
    const auto drag = [&](int from, int to) {
        QTest::mousePress(table.viewport(), Qt::LeftButton, {}, QPoint(10, 20 * from + 10));
        for (int y = 20 * from + 10; y != 20 * to + 10; y += to > from ? 1 : -1)
            QTest::mouseMove(table.viewport(), QPoint(10, y));
        QCoreApplication::processEvents();
        QTest::mouseRelease(table.viewport(), Qt::LeftButton, {}, QPoint(10, 20 * to + 10));
    };
    table.selectRowIndexes({1, 2, 4}, false);
    drag(1, 6);
    EXPECT_THAT(fixture.begun, ElementsAre(IndexSet{1, 4}));
    EXPECT_THAT(fixture.ended, ElementsAre(0)) << "this platform carries nothing out; told although replaced meanwhile";
    EXPECT_EQ(table.selectedRowIndexes(), (IndexSet{1, 2, 4}));
    table.setDataSource(&fixture);
    drag(2, 5);
    EXPECT_EQ(fixture.begun.size(), 1U) << "a row without anything selects";
}
