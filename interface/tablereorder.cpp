// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// How a table view handler reorders its rows.

#include <dravelin/interface/tableviewhandler.h>

#include "interface/rowmove.h"

#include <QtGui/QKeyEvent>

#include <algorithm>
#include <utility>

namespace dravelin {

namespace {

/// -1 for the key that moves rows up, 1 for down, 0 for any other.
int directionOf(const QKeyEvent &event)
{
    if ((event.modifiers() & ~Qt::KeypadModifier) != Qt::AltModifier)
        return 0;
    return event.key() == Qt::Key_Up ? -1 : event.key() == Qt::Key_Down ? 1 : 0;
}

/// Whether the rows would move onto where they are.
bool stay(const IndexSet &rows, quint64 dropRow)
{
    const Range &range = rows.ranges().constFirst();
    return rows.ranges().size() == 1 && dropRow >= range.location && dropRow <= range.location + range.length;
}

} // namespace

void TableViewHandler::willBeginAtPoint(TableView *, QPointF, const IndexSet &rows)
{
    m_dragged = rows;
    m_isDragging = true;
}

void TableViewHandler::endedAtPoint(TableView *, QPointF, int) { endDrag(); }

void TableViewHandler::endDrag()
{
    const QPointer<TableViewHandler> self(this);
    m_dragged = {};
    m_isDragging = false;
    dragComplete();
    if (self)
        Q_EMIT dragCompleted();
}

std::optional<PasteboardItem> TableViewHandler::pasteboardWriterForRow(TableView *, qsizetype)
{
    PasteboardItem item;
    item.setString(u""_qs, m_dropType);
    return item;
}

int TableViewHandler::validateDrop(TableView *, qsizetype, DropOperation operation)
{
    return operation == DropOperation::On || m_dragged.isEmpty() ? 0 : -1;
}

bool TableViewHandler::acceptDrop(TableView *, qsizetype row, DropOperation)
{
    if (m_dragged.isEmpty())
        return false;
    if (m_reordersToDropRow)
        moveRows(m_dragged, row);
    else
        gatherRows(existing(m_dragged));
    return true;
}

/// Rows may have vanished since their indexes were taken.
IndexSet TableViewHandler::existing(const IndexSet &rows) const
{
    IndexSet result;
    const auto end = quint64(m_rows->size());
    for (const Range &range : rows.ranges()) {
        if (range.location < end)
            result.insert(Range{range.location, std::min(range.length, end - range.location)});
    }
    return result;
}

void TableViewHandler::gatherRows(const IndexSet &rows)
{
    detail::gatherRows(*m_rows, rows);
    const QPointer<TableView> table(m_tableView);
    if (table)
        table->selectRowIndexes(IndexSet(Range{quint64(m_rows->size()), rows.count()}), false);
    if (table)
        table->reloadData();
}

void TableViewHandler::didMoveRows(const IndexSet &, qsizetype) {}

void TableViewHandler::setReordersToDropRow(bool reorders)
{
    if (std::exchange(m_reordersToDropRow, reorders) != reorders)
        Q_EMIT reordersToDropRowChanged();
}

bool TableViewHandler::moveRows(const IndexSet &rows, qsizetype dropRow)
{
    const IndexSet from = existing(rows);
    dropRow = std::clamp(dropRow, qsizetype(0), m_rows->size());
    if (from.isEmpty() || stay(from, quint64(dropRow)))
        return false;
    const QPointer<TableViewHandler> self(this);
    const qsizetype to = detail::moveRows(*m_rows, from, dropRow);
    const auto tell = [&](auto &&step) {
        if (self)
            step();
    };
    tell([&] { dataChanged(); });
    tell([&] {
        if (m_tableView)
            m_tableView->selectRowIndexes(IndexSet(Range{quint64(to), from.count()}), false);
    });
    tell([&] { announceMove(from.count(), to); });
    tell([&] { didMoveRows(from, to); });
    tell([&] { Q_EMIT rowsMoved(from, to); });
    return true;
}

void TableViewHandler::moveSelectedRowsUp()
{
    const IndexSet rows = m_tableView ? m_tableView->selectedRowIndexes() : IndexSet();
    if (const auto first = rows.first())
        moveInSight(rows, qsizetype(*first) - 1, std::max(qsizetype(*first) - 1, qsizetype(0)));
}

void TableViewHandler::moveSelectedRowsDown()
{
    const IndexSet rows = m_tableView ? m_tableView->selectedRowIndexes() : IndexSet();
    if (const auto last = rows.last())
        moveInSight(rows, qsizetype(*last) + 2, std::min(qsizetype(*last) + 1, m_rows->size() - 1));
}

void TableViewHandler::moveInSight(const IndexSet &rows, qsizetype dropRow, qsizetype seen)
{
    const QPointer<TableView> table(m_tableView);
    moveRows(rows, dropRow);
    if (table)
        table->scrollRowToVisible(seen);
}

bool TableViewHandler::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (!isKey || !m_reordersToDropRow || watched != m_tableView || m_tableView->dataSource() != this)
        return Object::eventFilter(watched, event);
    const int direction = directionOf(*static_cast<QKeyEvent *>(event));
    if (direction == 0 || m_tableView->selectedRowIndexes().isEmpty())
        return Object::eventFilter(watched, event);
    event->accept(); // of the window's shortcuts too, this one goes first
    if (event->type() == QEvent::KeyPress)
        direction < 0 ? moveSelectedRowsUp() : moveSelectedRowsDown();
    return true;
}

/// Screen readers read a changed description of what has the focus. One that the application gave stays.
void TableViewHandler::announceMove(quint64 count, qsizetype to)
{
    if (!m_tableView || m_tableView->accessibleDescription() != m_announced)
        return;
    const QString place =
        count == 1 ? tr("Moved to row %1 of %2").arg(to + 1).arg(m_rows->size())
                   : tr("Moved to rows %1 to %2 of %3").arg(to + 1).arg(to + qsizetype(count)).arg(m_rows->size());
    m_announced = place;
    m_tableView->setAccessibleDescription(m_announced);
}

} // namespace dravelin
