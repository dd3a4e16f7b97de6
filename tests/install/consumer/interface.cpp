// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/interface.h>
#include <dravelin/platform/inputstate.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtGui/QStandardItemModel>
#include <QtWidgets/QLabel>

using namespace dravelin;

namespace {

/// Shift is held, the left button is down.
class HeldKeys : public InputState
{
public:
    int discarded = 0;

    quint64 modifierFlags() override { return Event::Shift; }
    quint64 pressedMouseButtons() override { return 1; }
    QPointF mouseLocation() override { return {5, 6}; }
    Event currentEvent() override { return {}; }
    void discardEvents(quint64, double) override { ++discarded; }
};

Event key(int code, Qt::KeyboardModifiers modifiers = {}, const QString &text = {})
{
    return Event(QKeyEvent(QEvent::KeyPress, code, modifiers, text));
}

void keysAreTold()
{
    const Event shift = key(Qt::Key_A, Qt::ShiftModifier, "A");
    const Event control = key(Qt::Key_A, Qt::ControlModifier);
    const Event option = key(Qt::Key_A, Qt::AltModifier);
    const Event command = key(Qt::Key_A, Qt::MetaModifier);
    const Event pad = key(Qt::Key_1, Qt::KeypadModifier);
    CHECK(shiftKey(shift) && shiftKeyOnly(shift) && modifierPressedCount(shift) == 1);
    CHECK(controlKey(control) && controlKeyOnly(control) && optionKey(option) && optionKeyOnly(option));
    CHECK(commandKey(command) && commandKeyOnly(command) && numericPadKey(pad) && numericPadKeyOnly(pad));
    CHECK(!capsLockKey(pad) && !capsLockKeyOnly(pad) && !helpKeyOnly(pad) && !functionKeyOnly(pad));
    CHECK(!helpKey(shift) && !functionKey(shift));
    CHECK(upArrowKey(key(Qt::Key_Up)) && downArrowKey(key(Qt::Key_Down)) && leftArrowKey(key(Qt::Key_Left)));
    CHECK(rightArrowKey(key(Qt::Key_Right)) && escapeKey(key(Qt::Key_Escape)) && isCharacter(shift, "A"));
    CHECK(shift.modifierFlags() == Event::Shift && shift.characters() == "A" && shift.timestamp() >= 0);
}

void theStateOfInputIsTold()
{
    const auto held = std::make_shared<HeldKeys>();
    const auto before = InputState::setCurrent(held);
    CHECK(isShiftKeyPressed() && !isCommandKeyPressed() && !isOptionKeyPressed() && !isControlKeyPressed());
    CHECK(isLeftMouseButtonPressed() && !isRightMouseButtonPressed() && !isMouseDownEvent());
    CHECK(currentMouseLocation() == QPointF(5, 6));
    discardAllEvents();
    discardAllMouseEvents();
    CHECK(held->discarded == 2);
    ModifierKeyFlags flags;
    CHECK(flags.shiftKey() && flags.shiftKeyPressedOnly() && flags.pressedCount() == 1);
    flags.clear();
    CHECK(!flags.shiftKey());
    flags.setControlKey(true);
    flags.setOptionKey(true);
    flags.setCommandKey(true);
    flags.keyPressedCount();
    CHECK(flags.pressedCount() == 3 && flags.controlKey() && flags.optionKey() && flags.commandKey());
    CHECK(!flags.controlKeyPressedOnly() && !flags.optionKeyPressedOnly() && !flags.commandKeyPressedOnly());
    flags.setShiftKey(true);
    flags.refresh();
    CHECK(flags.pressedCount() == 1);
    InputState::setCurrent(before);
}

void screensAreFound()
{
    QScreen *screen = QGuiApplication::primaryScreen();
    CHECK(findScreenForPoint(frame(screen).center()) == screen && findScreenIndex(screen) == 0);
    CHECK(findMouseScreen() && findMinimumScreenDimensions().width() > 0 && getMenubarHeight(screen) >= 0);
    CHECK(createScreensFrameList().size() == QGuiApplication::screens().size() && !isFullScreen(screen));
    const QRectF area(0, 0, 800, 600);
    const WindowRecord window{"Editor", "Untitled", area};
    CHECK(!dockFullScreenMethod({window}, area) && !foundFullScreen(window, area.translated(9, 9)));
    CHECK(foundMenubar(window, area) && !foundMenubar(window, area.translated(9, 9)));
}

class Column : public VerticalStackView
{
public:
    using VerticalStackView::VerticalStackView;
    int moves = 0;

    void setDefaults() override
    {
        VerticalStackView::setDefaults();
        setItemSpacing(3);
    }
    void moveViewVertically(qsizetype index, float &origin, float itemSpacing) override
    {
        ++moves;
        VerticalStackView::moveViewVertically(index, origin, itemSpacing);
    }
};

void viewsAreStacked()
{
    Column column;
    for (int height : {10, 20})
        (new QWidget(&column))->resize(30, height);
    column.setDefaults();
    column.interfaceFileLoaded();
    CHECK(column.moves == 2 && column.size() == QSize(30, 33) && column.isFlipped());
    CHECK(column.calculateContentHeight() == 33 && column.findWidestViewWidth() == 30);
    column.setSizeToFit(false);
    column.setAlignment(1);
    CHECK(column.itemSpacing() == 3 && !column.sizeToFit() && column.alignment() == 1);
    column.resize(100, 50);
    column.arrangeViews();
    column.checkSizeToFit();
    CHECK(column.moves == 4 && column.size() == QSize(100, 50) && column.calculateItemSpacing() == 10);
    column.moveViewHorizontally(0);
    CHECK(FlippedView(QRectF(1, 2, 3, 4)).isFlipped());
}

/// Rows of texts, with every operation of a delegate.
class Rows : public TableViewDelegate
{
public:
    QString calls;

    qsizetype numberOfRowsInTableView(TableView *) override { return 5; }
    QWidget *viewForTableColumn(TableView *table, int, qsizetype row) override
    {
        auto *label = static_cast<QLabel *>(table->makeViewWithIdentifier("text"));
        label->setText(QString::number(row));
        return label;
    }
    QWidget *rowViewForRow(TableView *table, qsizetype row) override
    {
        return TableViewDelegate::rowViewForRow(table, row);
    }
    void tableViewSelectionDidChange(TableView *) override { calls += "selected "; }
    std::optional<PasteboardItem> pasteboardWriterForRow(TableView *, qsizetype row) override
    {
        PasteboardItem item;
        item.setString(QString::number(row), "row");
        return item;
    }
    int validateDrop(TableView *, qsizetype, DropOperation) override { return 1; }
    bool acceptDrop(TableView *, qsizetype, DropOperation) override { return true; }
    void willBeginAtPoint(TableView *, QPointF, const IndexSet &) override { calls += "begun "; }
    void endedAtPoint(TableView *, QPointF, int) override { calls += "ended "; }
};

void tablesShowRows()
{
    Rows rows;
    TableView table;
    table.registerView<QLabel>("text");
    CHECK(table.addTableColumn("Name", 80) == 0);
    table.registerForDraggedTypes({"row"});
    table.setDataSource(&rows);
    table.setDelegate(&rows);
    table.resize(200, 400);
    table.show();
    table.reloadData();
    CHECK(table.numberOfRows() == 5 && table.registeredDraggedTypes() == QStringList("row"));
    QWidget *view = table.viewAtColumn(0, 2);
    CHECK(view && table.rowForView(view) == 2 && !table.rowViewAtRow(2));
    table.scrollRowToVisible(4);
    table.selectRowIndexes(IndexSet{1, 3}, false);
    CHECK((table.selectedRowIndexes() == IndexSet{1, 3}) && rows.calls.contains("selected"));
    selectRowRange(&table, {2, 2});
    CHECK((table.selectedRowIndexes() == IndexSet{2, 3}));
    selectRow(&table, 4);
    CHECK(table.selectedRowIndexes() == IndexSet{4});
    table.deselectAll();
    CHECK(table.selectedRowIndexes().isEmpty());
    const auto item = rows.pasteboardWriterForRow(&table, 3);
    CHECK(item->string("row") == "3" && item->types() == QStringList("row"));
}

void rowsAreReordered()
{
    TableView table;
    table.registerView<QLabel>("cell");
    TableViewHandler handler(&table, "cell", "row");
    CHECK(handler.tableView() == &table && handler.viewIdentifier() == "cell" && handler.rowViewIdentifier() == "row");
    handler.setSourceData(std::make_shared<QVariantList>(QVariantList{"a", "b", "c", "d", "e"}));
    handler.willBeginAtPoint(&table, {}, {1, 3});
    CHECK((handler.dragSelectedRowsIndexes() == IndexSet{1, 3}));
    CHECK(handler.pasteboardWriterForRow(&table, 1)->types() == QStringList(handler.dropType()));
    CHECK(handler.validateDrop(&table, 0, DropOperation::Above) == -1);
    CHECK(handler.acceptDrop(&table, 0, DropOperation::Above));
    CHECK((handler.tableData() == QVariantList{"a", "b", "d", "c", "e"}));
    handler.endedAtPoint(&table, {}, 2);
    handler.dataChanged();
    CHECK(handler.numberOfRowsInTableView(&table) == 5);
    handler.updateTableView(&table, 0);
    handler.updateTableRowView(&table, 0);
    handler.dragComplete();
    handler.selectionChanged();
}

void outlinesRevealItems()
{
    QStandardItemModel model;
    auto *chapter = new QStandardItem("chapter");
    chapter->appendRow(new QStandardItem("page"));
    model.appendRow(chapter);
    OutlineView outline;
    outline.setModel(&model);
    const QModelIndex parent = chapter->index(), page = model.index(0, 0, parent);
    CHECK(outline.parentForItem(page) == parent && outline.isExpandable(parent) && !outline.isItemExpanded(parent));
    expandParentsOfItem(&outline, page);
    CHECK(outline.isItemExpanded(parent) && outline.numberOfRows() == 2);
    outline.expandItem(parent);
    CHECK(outline.rowForItem(page) == 1 && outline.itemAtRow(1) == page);
    outline.selectRowIndexes(IndexSet{0}, false);
    selectItem(&outline, page);
    CHECK(outline.selectedRowIndexes() == IndexSet{1});
}

} // namespace

void useInterface()
{
    keysAreTold();
    theStateOfInputIsTold();
    screensAreFound();
    viewsAreStacked();
    tablesShowRows();
    rowsAreReordered();
    outlinesRevealItems();
}
