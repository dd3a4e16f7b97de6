// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/tableview.h>

namespace dravelin {

namespace detail {
class CellViews
{};
class DropMarker
{};
class TableModel
{};
class ViewPool
{};
} // namespace detail

TableView::TableView(QWidget *parent) : QTableView(parent) {}
TableView::~TableView() = default;
void TableView::setDelegate(TableViewDelegate *delegate) { m_delegate = delegate ? delegate->m_self : nullptr; }
TableViewDelegate *TableView::delegate() const { return m_delegate.lock().get(); }
void TableView::setDataSource(TableViewDelegate *dataSource)
{
    m_dataSource = dataSource ? dataSource->m_self : nullptr;
}
TableViewDelegate *TableView::dataSource() const { return m_dataSource.lock().get(); }
void TableView::reloadData() {}
qsizetype TableView::numberOfRows() const { return 0; }
void TableView::registerView(const QString &, ViewFactory) {}
void TableView::registerInterfaceFile(const QString &, const QString &) {}
QWidget *TableView::makeViewWithIdentifier(const QString &, QObject *) { return nullptr; }
QWidget *TableView::viewAtColumn(int, qsizetype) const { return nullptr; }
QWidget *TableView::rowViewAtRow(qsizetype) const { return nullptr; }
qsizetype TableView::rowForView(const QWidget *) const { return -1; }
int TableView::addTableColumn(const QString &, int) { return 0; }
int TableView::rowHeight() const { return 0; }
void TableView::setRowHeight(int) {}
void TableView::scrollRowToVisible(qsizetype) {}
void TableView::selectRowIndexes(const IndexSet &, bool) {}
void TableView::deselectAll() {}
IndexSet TableView::selectedRowIndexes() const { return {}; }
void TableView::registerForDraggedTypes(const QStringList &types) { m_draggedTypes = types; }
QList<PasteboardItem> TableView::draggedItems() const { return PasteboardItem::fromMimeData(m_draggedData); }
void TableView::scrollContentsBy(int dx, int dy) { QTableView::scrollContentsBy(dx, dy); }
void TableView::updateGeometries() { QTableView::updateGeometries(); }
bool TableView::viewportEvent(QEvent *event) { return QTableView::viewportEvent(event); }
void TableView::changeEvent(QEvent *event) { QTableView::changeEvent(event); }
void TableView::mousePressEvent(QMouseEvent *event) { QTableView::mousePressEvent(event); }
void TableView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTableView::selectionChanged(selected, deselected);
}
void TableView::startDrag(Qt::DropActions) {}
void TableView::dragEnterEvent(QDragEnterEvent *) {}
void TableView::dragMoveEvent(QDragMoveEvent *) {}
void TableView::dragLeaveEvent(QDragLeaveEvent *) {}
void TableView::dropEvent(QDropEvent *) {}

} // namespace dravelin
