// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/tableviewdelegate.h>

#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtGui/QDrag>
#include <QtWidgets/QTableView>

#include <concepts>
#include <functional>
#include <memory>
#include <utility>

namespace dravelin {

namespace detail {
class CellViews;
class TableDrops;
class TableModel;
class ViewPool;
} // namespace detail

/// A table whose cells are widgets. Only the rows in view have any, and these are used again and again while the user
/// scrolls, so that a million rows cost no more than those in view.
///
///     dravelin::TableView table;
///     table.registerView<TrackCell>("track");
///     table.setDelegate(&tracks);        // tracks.viewForTableColumn() fills table->makeViewWithIdentifier("track")
///     table.setDataSource(&tracks);
///     table.reloadData();
///
/// Rows are selected as a whole. Clicks that a cell's widgets do not take for themselves select its row; a text field
/// that gets the focus does so as well. Cells of selected rows have the palette's HighlightedText as WindowText. Tab goes
/// through the widgets of the rows in sight, from top to bottom, and then on.
///
/// The model is the table's own and has no texts; setModel() and setIndexWidget() are not supported.
class DRAVELIN_EXPORT TableView : public QTableView
{
    Q_OBJECT
    Q_PROPERTY(int rowHeight READ rowHeight WRITE setRowHeight NOTIFY rowHeightChanged)

public:
    /// Makes a view, given the owner that makeViewWithIdentifier() was called with.
    using ViewFactory = std::function<std::unique_ptr<QWidget>(QObject *owner)>;

    explicit TableView(QWidget *parent = nullptr);
    ~TableView() override;

    /// \name Who fills the table
    /// Held weakly. Setting one shows nothing new before reloadData(). The getters return null when it was destroyed.
    /// @{

    /// \operation{setDelegate:}
    void setDelegate(TableViewDelegate *delegate);
    [[nodiscard]] TableViewDelegate *delegate() const;
    /// \operation{setDataSource:}
    void setDataSource(TableViewDelegate *dataSource);
    [[nodiscard]] TableViewDelegate *dataSource() const;

    /// Asks for the number of rows and for all views in sight. Rows that still exist stay selected, and the table stays
    /// scrolled to where it was, as far as there are rows.
    /// \cost the rows in view; a changed number of rows costs some nanoseconds for each of them
    /// \operation{reloadData}
    Q_INVOKABLE void reloadData();
    /// As of the last reloadData().
    /// \operation{numberOfRows}
    [[nodiscard]] qsizetype numberOfRows() const;

    /// @}
    /// \name Views
    /// @{

    /// From now on makeViewWithIdentifier() makes views for this identifier with the factory. Those that wait to be
    /// used again are deleted.
    void registerView(const QString &identifier, const ViewFactory &factory);
    template <std::invocable<> Factory>
    void registerView(const QString &identifier, Factory factory)
    {
        registerView(identifier, ViewFactory([factory = std::move(factory)](QObject *) { return factory(); }));
    }
    template <std::derived_from<QWidget> View>
    void registerView(const QString &identifier)
    {
        registerView(identifier, ViewFactory([](QObject *) { return std::make_unique<View>(); }));
    }
    /// The same with a file of Qt Designer, which may be in the application's resources (":/track.ui").
    void registerInterfaceFile(const QString &identifier, const QString &path);

    /// A view that is not needed any more, or else a new one. Only for viewForTableColumn() and rowViewForRow(). What
    /// it showed for another row it may still show: the caller sets all that differs from row to row.
    /// \param owner handed to the factory of a new view
    /// \return the view, which the table owns; an identifier that nobody registered, or whose factory fails, gives a
    /// visible placeholder, and a line in the log the first time. Never null.
    /// \operation{makeViewWithIdentifier:owner:}
    [[nodiscard]] QWidget *makeViewWithIdentifier(const QString &identifier, QObject *owner = nullptr);

    /// The view that is shown there; null when there is none or the row is out of sight.
    /// \operation{viewAtColumn:row:makeIfNecessary:}
    [[nodiscard]] QWidget *viewAtColumn(int column, qsizetype row) const;
    /// \operation{rowViewAtRow:makeIfNecessary:}
    [[nodiscard]] QWidget *rowViewAtRow(qsizetype row) const;
    /// The row in which the widget is shown, for instance the sender of a signal; -1 when it is in none.
    /// \operation{rowForView:}
    [[nodiscard]] qsizetype rowForView(const QWidget *view) const;

    /// @}
    /// \name Columns and rows
    /// @{

    /// A table has one column without title until the first one is added. The last one takes the rest of the width.
    /// \param width in logical pixels; 0 for the default width
    /// \return the column's number
    /// \operation{addTableColumn:}
    int addTableColumn(const QString &title, int width = 0);

    /// Of every row, in logical pixels. 0 sets it to what the first view asks for, which is the default.
    [[nodiscard]] int rowHeight() const;
    void setRowHeight(int height);
    using QTableView::rowHeight;
    using QTableView::setRowHeight;

    /// Scrolls as little as needed; without effect for a row that does not exist.
    /// \operation{scrollRowToVisible:}
    void scrollRowToVisible(qsizetype row);

    /// @}
    /// \name Selection
    /// @{

    /// Selects the rows, in place of or in addition to those that are. Rows that the table or its data source does not have
    /// (any more) are left out.
    /// \operation{selectRowIndexes:byExtendingSelection:}
    void selectRowIndexes(const IndexSet &rows, bool byExtendingSelection);
    /// \operation{deselectAll:}
    Q_INVOKABLE void deselectAll();
    /// \operation{selectedRowIndexes}
    [[nodiscard]] IndexSet selectedRowIndexes() const;

    /// @}
    /// \name Drag and drop
    /// @{

    /// Drags that carry one of the types may be dropped, as far as the data source allows. Replaces earlier types;
    /// an empty list refuses all drags.
    /// \operation{registerForDraggedTypes:}
    void registerForDraggedTypes(const QStringList &types);
    /// \operation{registeredDraggedTypes}
    [[nodiscard]] QStringList registeredDraggedTypes() const { return m_draggedTypes; }
    /// What the drag carries that is over the table, within validateDrop() and acceptDrop(); otherwise nothing.
    /// \cost all that it carries, in all formats, is read, from another program if it is one's: better once, in
    /// acceptDrop(), than on every move
    [[nodiscard]] QList<PasteboardItem> draggedItems() const;

    /// @}

Q_SIGNALS:
    void rowHeightChanged();
    /// After the delegate's tableViewSelectionDidChange().
    void selectedRowsChanged();

protected:
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    bool viewportEvent(QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void changeSelection(const std::function<void()> &change);
    void tellSelection();
    void replaceSelection(const QItemSelection &selection);
    [[nodiscard]] qsizetype rowsOfSource();
    [[nodiscard]] int fitting(qsizetype rows, int height) const;
    void changeRows(int rows);
    void updateCells();
    void adoptHeight(int height);
    void paintRow(QPainter &painter, int row);
    void followFocus(const QWidget *old, const QWidget *now);
    void dragSelectedRows();
    [[nodiscard]] QDrag *prepareDrag(const QList<PasteboardItem> &items, const IndexSet &rows);

    std::weak_ptr<TableViewDelegate> m_delegate;
    std::weak_ptr<TableViewDelegate> m_dataSource;
    detail::TableModel *m_rows;
    std::unique_ptr<detail::ViewPool> m_pool;
    std::unique_ptr<detail::CellViews> m_cells;
    std::unique_ptr<detail::TableDrops> m_drops;
    QStringList m_draggedTypes;
    QPointer<QDrag> m_drag;
    int m_changes = 0; ///< operations under way that may change the selection
    bool m_selectionChanged = false;
    bool m_unsettled = false; ///< geometry is being changed: no views before it is done
    bool m_startsDrag = false;
    bool m_hasDragged = false;   ///< since the button went down
    bool m_hasOwnHeight = false; ///< does not follow the first view
    bool m_hasHeight = false;
};

} // namespace dravelin
