// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/object.h>
#include <dravelin/platform/tableview.h>

#include <QtCore/QPointer>
#include <QtCore/QVariantList>

#include <memory>
#include <optional>

namespace dravelin {

/// Shows the rows of one list in a TableView, and lets the user reorder them by dragging. Override the hooks, or connect
/// to the signals that follow each of them.
///
///     class Tracks : public dravelin::TableViewHandler
///     {
///         using TableViewHandler::TableViewHandler;
///         void updateTableView(QWidget *cell, qsizetype row) override
///         {
///             cell->findChild<QLabel *>()->setText(tableData()[row].toString());
///         }
///     };
///     table.registerView<TrackCell>("track");
///     Tracks tracks(&table, "track");
///     tracks.setSourceData(rows); // a std::shared_ptr<QVariantList>
///
/// Dropped rows do not go where they are dropped: they are gathered, in their order, at the place of the first of them.
/// Set reordersToDropRow for a table that the user sorts by hand. Undo is up to the application.
///
/// The table belongs to its parent and is held weakly: without it the handler keeps its rows and shows nothing. Hooks may
/// delete the handler, and deleteLater() the table. Use it from the thread of the interface.
class DRAVELIN_EXPORT TableViewHandler : public Object, public TableViewDelegate
{
    Q_OBJECT
    Q_PROPERTY(bool reordersToDropRow READ reordersToDropRow WRITE setReordersToDropRow NOTIFY reordersToDropRowChanged)

public:
    /// Becomes the table's delegate and data source, and registers the table for drags of dropType() and no others.
    /// \param viewIdentifier of the view that is made for every cell, whichever its column
    /// \param rowViewIdentifier of the view behind each row; empty for none
    /// \operation{initWithView:viewIdentifier:rowViewIdentifier:}
    explicit TableViewHandler(TableView *tableView, QString viewIdentifier, QString rowViewIdentifier = {});
    ~TableViewHandler() override;

    /// Null once it was deleted.
    /// \operation{tableView}
    [[nodiscard]] TableView *tableView() const { return m_tableView; }
    /// \operation{viewIdentifier}
    [[nodiscard]] QString viewIdentifier() const { return m_viewIdentifier; }
    /// \operation{rowViewIdentifier}
    [[nodiscard]] QString rowViewIdentifier() const { return m_rowViewIdentifier; }
    /// What drags of this table carry, which no other one accepts: a UUID in capitals, followed by ".type".
    /// \operation{dropType}
    [[nodiscard]] QString dropType() const { return m_dropType; }
    /// The rows being dragged; empty outside a drag.
    /// \operation{dragSelectedRowsIndexes}
    [[nodiscard]] IndexSet dragSelectedRowsIndexes() const { return m_dragged; }

    /// \name Rows
    /// @{

    /// Shows this list, which is not copied: moved rows move in it. Null shows a new, empty one. Another list during a
    /// drag of rows ends its effect, with a line in the log: the drop is refused.
    /// \operation{setSourceData:}
    void setSourceData(std::shared_ptr<QVariantList> rows);
    /// The list itself. Call dataChanged() after changing it; until then, rows that vanished are shown empty.
    /// \operation{tableData}
    [[nodiscard]] QVariantList &tableData() const { return *m_rows; }
    /// The same, never null.
    [[nodiscard]] std::shared_ptr<QVariantList> sourceData() const { return m_rows; }
    /// Reloads the table.
    /// \operation{dataChanged}
    Q_SLOT void dataChanged();

    /// @}
    /// \name Rows that go where they are dropped
    /// @{

    /// Whether rows go to where they are dropped, and with Alt and the up and down keys, by one row. Off at first.
    [[nodiscard]] bool reordersToDropRow() const noexcept { return m_reordersToDropRow; }
    void setReordersToDropRow(bool reorders);

    /// Moves the rows as if they had been dropped above `dropRow`, whatever reordersToDropRow says, and selects them:
    /// what is row `dropRow` before follows on them, or, where it is among them, the next that is not. Rows that do
    /// not exist are left out; a drop row beyond the last row means the end, one less than 0 the start.
    /// \return whether the order has changed; only then is there rowsMoved()
    /// \cost linear in the number of rows
    bool moveRows(const IndexSet &rows, qsizetype dropRow);
    /// Moves the selected rows together by one row, closing gaps between them.
    Q_SLOT void moveSelectedRowsUp();
    Q_SLOT void moveSelectedRowsDown();

    /// @}
    /// \name Hooks
    /// They do nothing here. A placeholder, which the table shows for an identifier that nobody registered, is not given to
    /// those for views.
    /// @{

    /// The view comes to show this row, or only to be read out for it, and may still show another one.
    /// \operation{updateTableView:row:}
    virtual void updateTableView(QWidget *view, qsizetype row);
    /// The same for the view behind it. Its accessible name is "Row 1" and so on, unless changed here.
    /// \operation{updateTableRowView:row:}
    virtual void updateTableRowView(QWidget *view, qsizetype row);
    /// A drag of rows has ended, whether they were dropped or not.
    /// \operation{dragComplete}
    virtual void dragComplete();
    /// \operation{selectionChanged}
    virtual void selectionChanged();
    /// Rows went where they were dropped or moved, and are selected.
    /// \param from where they were
    /// \param to where the first of them is now; the others follow on it
    virtual void didMoveRows(const IndexSet &from, qsizetype to);

    /// @}
    /// \name What the table calls
    /// @{

    qsizetype numberOfRowsInTableView(TableView *tableView) override;
    QWidget *viewForTableColumn(TableView *tableView, int column, qsizetype row) override;
    QWidget *rowViewForRow(TableView *tableView, qsizetype row) override;
    void tableViewSelectionDidChange(TableView *tableView) override;
    void willBeginAtPoint(TableView *tableView, QPointF point, const IndexSet &rows) override;
    void endedAtPoint(TableView *tableView, QPointF point, int operation) override;
    /// Empty text under dropType(): the row itself never leaves the application.
    std::optional<PasteboardItem> pasteboardWriterForRow(TableView *tableView, qsizetype row) override;
    /// All actions for a drop between rows during a drag of this table's own rows, else none.
    int validateDrop(TableView *tableView, qsizetype row, DropOperation operation) override;
    /// Without reordersToDropRow, `row` is ignored: the dragged rows are gathered where the first of them is. Rows behind
    /// it that equal one of them are removed from the list, also when they were not dragged. Numbers are equal by value,
    /// pointers to objects by address, lists and maps by what is in them, other values by their type's ==. The table
    /// is then told to select as many rows as were dragged, beginning behind the last one; as they do not exist, nothing
    /// is selected.
    /// Rows that vanished during the drag are left out.
    /// \return whether there is such a drag
    /// \cost linear in the number of rows for numbers, texts, bytes, dates, URLs, UUIDs, pointers, lists and maps of
    /// them; other types with an order take the logarithm of the number of dragged rows besides; any other type is
    /// compared with each dragged row
    bool acceptDrop(TableView *tableView, qsizetype row, DropOperation operation) override;

    /// @}

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// \name After the hooks
    /// @{
    void cellUpdated(QWidget *view, qsizetype row);
    void rowViewUpdated(QWidget *view, qsizetype row);
    void dragCompleted();
    void selectedRowsChanged();
    void rowsMoved(const dravelin::IndexSet &from, qsizetype to);
    /// @}
    void reordersToDropRowChanged();

private:
    [[nodiscard]] bool hasRow(qsizetype row) const { return row >= 0 && row < m_rows->size(); }
    [[nodiscard]] IndexSet existing(const IndexSet &rows) const;
    void gatherRows(const IndexSet &rows);
    void moveInSight(const IndexSet &rows, qsizetype dropRow, qsizetype seen);
    void endDrag();
    void announceMove(quint64 count, qsizetype to);

    QPointer<TableView> m_tableView;
    std::shared_ptr<QVariantList> m_rows;
    QString m_viewIdentifier;
    QString m_rowViewIdentifier;
    QString m_dropType;
    QString m_announced; ///< as the table's accessible description
    IndexSet m_dragged;
    bool m_isDragging = false; ///< also when there is nothing left to drop
    bool m_reordersToDropRow = false;
};

} // namespace dravelin
