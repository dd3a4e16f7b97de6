// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/tableview.h>

#include "platform/cellviews.h"
#include "platform/tabledrops.h"
#include "platform/tablemodel.h"
#include "platform/viewpool.h"

#include <QtCore/QScopedValueRollback>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QStyleOptionFocusRect>

#include <algorithm>
#include <iterator>

namespace dravelin {

namespace {

QItemSelection selectionOf(const QAbstractItemModel &model, const IndexSet &rows, qsizetype end)
{
    QItemSelection selection;
    const int lastColumn = model.columnCount() - 1;
    for (const Range &range : rows.ranges()) {
        if (range.location >= quint64(end))
            break;
        const quint64 last = std::min(range.location + range.length, quint64(end)) - 1;
        selection.append({model.index(int(range.location), 0), model.index(int(last), lastColumn)});
    }
    return selection;
}

IndexSet united(const IndexSet &a, const IndexSet &b)
{
    QList<Range> ranges;
    const auto isEarlier = [](Range one, Range other) { return one.location < other.location; };
    std::merge(a.ranges().begin(), a.ranges().end(), b.ranges().begin(), b.ranges().end(), std::back_inserter(ranges),
               isEarlier);
    IndexSet all;
    for (const Range &range : std::as_const(ranges))
        all.insert(range);
    return all;
}

} // namespace

/// Runs what may change the selection. The delegate is told when the outermost one is done, once, so that it may do
/// what it likes, even delete the table.
void TableView::changeSelection(const std::function<void()> &change)
{
    const QPointer<TableView> self(this);
    ++m_changes;
    {
        const auto changed = qScopeGuard([&] {
            if (self)
                --m_changes;
        });
        change();
    }
    if (self && m_changes == 0)
        tellSelection();
}

void TableView::tellSelection()
{
    if (!std::exchange(m_selectionChanged, false))
        return;
    const QPointer<TableView> self(this);
    if (TableViewDelegate *told = delegate())
        told->tableViewSelectionDidChange(this);
    if (self)
        Q_EMIT selectedRowsChanged();
}

void TableView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
    m_cells->showSelection();
    m_selectionChanged = true;
    if (m_changes == 0)
        tellSelection();
}

void TableView::selectRowIndexes(const IndexSet &rows, bool byExtendingSelection)
{
    const QPointer<TableView> self(this);
    const qsizetype end = dataSource() ? rowsOfSource() : numberOfRows();
    if (!self)
        return;
    const auto select = [&](const IndexSet &all) { return selectionOf(*model(), all, std::min(end, numberOfRows())); };
    const QItemSelection selection = select(rows);
    changeSelection([&] {
        replaceSelection(byExtendingSelection ? select(united(selectedRowIndexes(), rows)) : selection);
        if (selection.isEmpty())
            return;
        // The keyboard goes on from here; the table does not scroll to it.
        const bool scrolls = hasAutoScroll();
        setAutoScroll(false);
        selectionModel()->setCurrentIndex(selection.last().topLeft(), QItemSelectionModel::NoUpdate);
        setAutoScroll(scrolls);
    });
}

/// Where Qt compares each old range with each new one, many of both take too long; then the old ones go first.
void TableView::replaceSelection(const QItemSelection &selection)
{
    constexpr qsizetype mostPairs = 100'000;
    if (selection.size() * selectionModel()->selection().size() < mostPairs) {
        selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
        return;
    }
    const IndexSet before = selectedRowIndexes();
    const bool hadChanged = m_selectionChanged;
    selectionModel()->clearSelection();
    selectionModel()->select(selection, QItemSelectionModel::Select);
    m_selectionChanged = hadChanged || selectedRowIndexes() != before;
}

void TableView::deselectAll()
{
    changeSelection([this] { clearSelection(); });
}

IndexSet TableView::selectedRowIndexes() const
{
    IndexSet rows;
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange &range : selection)
        rows.insert(Range{quint64(range.top()), quint64(range.height())});
    return rows;
}

void TableView::followFocus(const QWidget *old, const QWidget *now)
{
    const qsizetype row = now ? rowForView(now) : -1;
    if (row < 0)
        return;
    const QPointer<TableView> self(this);
    const bool isTyping = now->testAttribute(Qt::WA_InputMethodEnabled);
    // With Tab; what was clicked stays under the pointer, and another window's return changes nothing.
    if (old && old->window() == window() && QGuiApplication::mouseButtons() == Qt::NoButton)
        scrollRowToVisible(row);
    if (self && isTyping && !selectionModel()->isSelected(model()->index(int(row), 0)))
        selectRowIndexes({quint64(row)}, false);
}

void TableView::keyPressEvent(QKeyEvent *event)
{
    changeSelection([&] { QTableView::keyPressEvent(event); });
}

bool TableView::viewportEvent(QEvent *event)
{
    // Comes whenever a view changes its text; the rows' height does not follow.
    if (event->type() == QEvent::LayoutRequest)
        return true;
    // A button that is still down after a drag that was cancelled must not select.
    if (event->type() == QEvent::MouseMove && m_hasDragged)
        return true;
    if (event->type() == QEvent::MouseButtonPress)
        m_hasDragged = false;
    if (!event->isInputEvent())
        return QTableView::viewportEvent(event);
    const QPointer<TableView> self(this);
    bool isHandled = true;
    changeSelection([&] {
        const bool result = QTableView::viewportEvent(event);
        isHandled = !self || result;
    });
    if (self && std::exchange(m_startsDrag, false)) {
        m_hasDragged = true;
        dragSelectedRows();
    }
    return !self || isHandled;
}

void TableView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const int rows = int(numberOfRows());
    const int last = rowAt(event->rect().bottom());
    const int end = last < 0 ? rows : last + 1;
    for (int row = std::max(0, rowAt(event->rect().top())); row < end; ++row)
        paintRow(painter, row);
}

void TableView::paintRow(QPainter &painter, int row)
{
    const bool isSelected = selectionModel()->isSelected(model()->index(row, 0));
    const bool isAlternate = alternatingRowColors() && row % 2 == 1;
    const bool hasFrame = hasFocus() && !isSelected && currentIndex().row() == row;
    if (!isSelected && !isAlternate && !hasFrame)
        return;
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = QRect(0, rowViewportPosition(row), viewport()->width(), rowHeight(row));
    option.showDecorationSelected = true;
    option.state.setFlag(QStyle::State_Selected, isSelected);
    option.state.setFlag(QStyle::State_Active, isActiveWindow());
    option.features.setFlag(QStyleOptionViewItem::Alternate, isAlternate);
    style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &option, &painter, this);
    style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, &painter, this);
    if (!hasFrame)
        return;
    QStyleOptionFocusRect frame;
    frame.initFrom(this);
    frame.rect = option.rect;
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, &painter, this);
}

} // namespace dravelin
