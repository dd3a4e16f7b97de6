// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/tableview.h>

#include "platform/dragpicture.h"
#include "platform/tabledrops.h"

#include <QtGui/QCursor>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QMouseEvent>

namespace dravelin {

/// What the pointer goes down on decides whether moving it drags rows or selects more of them.
void TableView::mousePressEvent(QMouseEvent *event)
{
    const QPointer<TableView> self(this);
    const int row = rowAt(event->position().toPoint().y());
    TableViewDelegate *source = row < 0 ? nullptr : dataSource();
    const bool drags = source && source->pasteboardWriterForRow(this, row);
    if (!self)
        return;
    setDragEnabled(drags);
    QTableView::mousePressEvent(event);
}

/// viewportEvent() does it when the caller is done, which would not survive that the table is deleted during a drag.
void TableView::startDrag(Qt::DropActions) { m_startsDrag = true; }

void TableView::dragSelectedRows()
{
    const QPointer<TableView> self(this);
    QList<PasteboardItem> items;
    IndexSet rows;
    const IndexSet selected = selectedRowIndexes();
    for (const quint64 row : selected) {
        TableViewDelegate *source = self ? dataSource() : nullptr;
        const auto item = source ? source->pasteboardWriterForRow(this, qsizetype(row)) : std::nullopt;
        if (!item)
            continue;
        items.append(*item);
        rows.insert(row);
    }
    // Who is told of the start is told of the end, even when the table has another data source by then.
    const std::weak_ptr<TableViewDelegate> told = self ? m_dataSource : std::weak_ptr<TableViewDelegate>();
    if (rows.isEmpty() || told.expired())
        return;
    told.lock()->willBeginAtPoint(this, QCursor::pos(), rows);
    if (!self)
        return;
    const Qt::DropAction action = prepareDrag(items, rows)->exec(Qt::MoveAction | Qt::CopyAction, Qt::MoveAction);
    if (!self)
        return;
    m_drops->leave();
    if (TableViewDelegate *source = told.lock().get())
        source->endedAtPoint(this, QCursor::pos(), int(action));
}

/// \return a drag that deletes itself when it was carried out
QDrag *TableView::prepareDrag(const QList<PasteboardItem> &items, const IndexSet &rows)
{
    m_drag = new QDrag(this);
    m_drag->setMimeData(PasteboardItem::toMimeData(items).release());
    const auto picture = detail::dragPicture(*this, rows, viewport()->mapFromGlobal(QCursor::pos()));
    m_drag->setPixmap(picture.pixmap);
    m_drag->setHotSpot(picture.hotSpot);
    return m_drag;
}

void TableView::registerForDraggedTypes(const QStringList &types)
{
    m_draggedTypes = types;
    viewport()->setAcceptDrops(!types.isEmpty());
}

QList<PasteboardItem> TableView::draggedItems() const { return PasteboardItem::fromMimeData(m_drops->data()); }

void TableView::dragEnterEvent(QDragEnterEvent *event) { m_drops->move(*event); }

void TableView::dragMoveEvent(QDragMoveEvent *event) { m_drops->move(*event); }

void TableView::dragLeaveEvent(QDragLeaveEvent *) { m_drops->leave(); }

void TableView::dropEvent(QDropEvent *event) { m_drops->drop(*event); }

} // namespace dravelin
