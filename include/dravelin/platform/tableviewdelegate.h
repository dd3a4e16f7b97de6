// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/indexset.h>
#include <dravelin/platform/pasteboarditem.h>

#include <QtCore/QPointF>

#include <memory>
#include <optional>

QT_BEGIN_NAMESPACE
class QWidget;
QT_END_NAMESPACE

namespace dravelin {

class TableView;

/// Where rows are dropped: on a row, or between that row and the one before it.
enum class DropOperation { On = 0, Above = 1 };

/// What a TableView asks for its rows and views, and tells of selection and drags.
///
/// A table holds it weakly: one that is destroyed is not called any more. All calls come on the thread of the
/// interface. A call may reload the table, give it another delegate or delete it; but where views are asked for, which
/// also happens within the scroll bars' own work, deleteLater() is the way to delete the table.
class DRAVELIN_EXPORT TableViewDelegate
{
public:
    TableViewDelegate();
    virtual ~TableViewDelegate();
    Q_DISABLE_COPY_MOVE(TableViewDelegate)

    /// \name Data
    /// Asked of the table's data source.
    /// @{

    /// Asked by reloadData() and selectRowIndexes(). By default, and when less than 0, there are none.
    /// \operation{numberOfRowsInTableView:}
    [[nodiscard]] virtual qsizetype numberOfRowsInTableView(TableView *tableView);

    /// Asked when the pointer goes down on a row, and for each selected row when a drag starts.
    /// \return what the drag carries for the row; by default nothing, and a row without anything cannot be dragged
    /// \operation{tableView:pasteboardWriterForRow:}
    [[nodiscard]] virtual std::optional<PasteboardItem> pasteboardWriterForRow(TableView *tableView, qsizetype row);

    /// Asked on every move of a drag with a registered type over the table; TableView::draggedItems() has what it
    /// carries.
    /// \param row the row, or with Above the one that would follow: the number of rows below the last one
    /// \return which of Qt's drop actions may be done, as bits; -1 for all of them, 0, the default, for none
    /// \operation{tableView:validateDrop:proposedRow:proposedDropOperation:}
    [[nodiscard]] virtual int validateDrop(TableView *tableView, qsizetype row, DropOperation operation);

    /// Carries the drop out, which was validated before.
    /// \return whether it was; by default not
    /// \operation{tableView:acceptDrop:row:dropOperation:}
    virtual bool acceptDrop(TableView *tableView, qsizetype row, DropOperation operation);

    /// A drag of rows starts. By default nothing happens, as with endedAtPoint().
    /// \param point of the pointer, on the desktop
    /// \operation{tableView:draggingSession:willBeginAtPoint:forRowIndexes:}
    virtual void willBeginAtPoint(TableView *tableView, QPointF point, const IndexSet &rows);

    /// It has ended, also when it was cancelled. Not called when the table was deleted meanwhile.
    /// \param operation the drop action that was done; 0 when the drag was cancelled or refused
    /// \operation{tableView:draggingSession:endedAtPoint:operation:}
    virtual void endedAtPoint(TableView *tableView, QPointF point, int operation);

    /// @}
    /// \name Views
    /// Asked of the table's delegate.
    /// @{

    /// Asked when the row comes into view or is reloaded, and when assistive software reads out one that is not in view.
    /// \return a view from TableView::makeViewWithIdentifier(), filled for this row; by default null, which leaves
    /// the cell empty. Another widget is shown as well; the table takes it over and deletes it when it is not needed
    /// any more.
    /// \operation{tableView:viewForTableColumn:row:}
    [[nodiscard]] virtual QWidget *viewForTableColumn(TableView *tableView, int column, qsizetype row);

    /// The same for a view that lies behind the cells of the row, over its whole width; by default null.
    /// \operation{tableView:rowViewForRow:}
    [[nodiscard]] virtual QWidget *rowViewForRow(TableView *tableView, qsizetype row);

    /// Other rows are selected than before.
    /// \operation{tableViewSelectionDidChange:}
    virtual void tableViewSelectionDidChange(TableView *tableView);

    /// @}

private:
    friend class TableView;
    std::shared_ptr<TableViewDelegate> m_self; ///< deletes nothing: tables watch it to see this delegate go
};

} // namespace dravelin
