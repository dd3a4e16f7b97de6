// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/tabledrops.h"

#include <dravelin/platform/tableview.h>

#include <QtCore/QTimerEvent>
#include <QtGui/QDropEvent>
#include <QtWidgets/QScrollBar>

#include <algorithm>

namespace dravelin::detail {

namespace {

constexpr int scrollMargin = 24;   ///< from the edges, in logical pixels
constexpr int scrollInterval = 30; ///< in milliseconds

Qt::DropAction choose(Qt::DropAction preferred, Qt::DropActions allowed)
{
    for (const auto action : {preferred, Qt::MoveAction, Qt::CopyAction, Qt::LinkAction}) {
        if (allowed.testFlag(action))
            return action;
    }
    return Qt::IgnoreAction;
}

} // namespace

TableDrops::TableDrops(TableView &table) : m_table(table), m_marker(new DropMarker(table.viewport())) {}

void TableDrops::move(QDropEvent &event)
{
    m_data = event.mimeData();
    m_position = event.position().toPoint();
    m_possible = event.possibleActions();
    m_preferred = event.proposedAction();
    event.ignore();
    if (!hasRegisteredType())
        return;
    const QPointer<TableView> table(&m_table);
    const Qt::DropAction action = propose(placeAt(m_position.y()));
    if (!table)
        return;
    if (scrollStep() != 0 && !m_scrolling.isActive())
        m_scrolling.start(scrollInterval, this);
    // The drag is refused at this place only: without the enter event taken there would be no more moves.
    event.setAccepted(action != Qt::IgnoreAction || event.type() == QEvent::DragEnter);
    event.setDropAction(action);
}

bool TableDrops::hasRegisteredType() const
{
    const QStringList types = m_table.registeredDraggedTypes();
    return m_data && std::any_of(types.begin(), types.end(), [this](auto &type) { return m_data->hasFormat(type); });
}

/// The upper third of a row is above it, the lower third above the next one.
TableDrops::Place TableDrops::placeAt(int y) const
{
    const int row = m_table.rowAt(y);
    if (row < 0)
        return {int(m_table.numberOfRows()), DropOperation::Above};
    const int height = m_table.rowHeight(row);
    const int inside = y - m_table.rowViewportPosition(row);
    if (3 * inside < height)
        return {row, DropOperation::Above};
    if (3 * inside >= 2 * height)
        return {row + 1, DropOperation::Above};
    return {row, DropOperation::On};
}

int TableDrops::allowedAt(Place place)
{
    TableViewDelegate *source = m_table.dataSource();
    if (!source)
        return 0;
    const QPointer<TableDrops> self(this);
    m_asking = true;
    const auto asked = qScopeGuard([&] {
        if (self)
            m_asking = false;
    });
    return source->validateDrop(&m_table, place.row, place.operation);
}

Qt::DropAction TableDrops::propose(Place place)
{
    const QPointer<TableDrops> self(this);
    const int allowed = allowedAt(place);
    if (!self)
        return Qt::IgnoreAction;
    const Qt::DropAction action = choose(m_preferred, m_possible & Qt::DropActions(allowed));
    if (action == Qt::IgnoreAction)
        m_marker->hide();
    else
        mark(place);
    return action;
}

void TableDrops::mark(Place place)
{
    const int rows = int(m_table.numberOfRows());
    const int row = std::min(place.row, rows - 1);
    int y = row < 0 ? 0 : m_table.rowViewportPosition(row);
    if (place.row > row && row >= 0)
        y += m_table.rowHeight(row);
    const int height = row < 0 ? 0 : m_table.rowHeight(row);
    m_marker->showAt({0, y, m_table.viewport()->width(), height}, place.operation);
}

void TableDrops::leave()
{
    m_scrolling.stop();
    m_data = nullptr;
    m_marker->hide();
}

void TableDrops::drop(QDropEvent &event)
{
    const QPointer<TableDrops> self(this);
    move(event);
    if (!self)
        return;
    const Place place = placeAt(m_position.y());
    TableViewDelegate *source = event.isAccepted() ? m_table.dataSource() : nullptr;
    bool isDone = false;
    m_asking = true;
    const auto ended = qScopeGuard([&] {
        if (!self)
            return;
        m_asking = false;
        leave();
    });
    m_marker->hide();
    if (source)
        isDone = source->acceptDrop(&m_table, place.row, place.operation);
    event.setDropAction(isDone ? event.dropAction() : Qt::IgnoreAction);
    event.setAccepted(isDone);
}

/// Pixels; more the nearer the pointer is to the edge, 0 away from it.
int TableDrops::scrollStep() const
{
    const int y = m_position.y();
    const int height = m_table.viewport()->height();
    const int margin = std::min(scrollMargin, height / 4);
    return y < margin ? std::max(y - margin, -margin) : std::max(0, std::min(y - height + margin, margin));
}

void TableDrops::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_scrolling.timerId())
        return;
    const QPointer<TableDrops> self(this);
    const int step = m_data ? scrollStep() : 0;
    QScrollBar *bar = m_table.verticalScrollBar();
    const int before = bar->value();
    bar->setValue(before + step);
    if (!self)
        return;
    if (bar->value() == before)
        m_scrolling.stop();
    else
        propose(placeAt(m_position.y()));
}

} // namespace dravelin::detail
