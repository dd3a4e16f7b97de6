// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/outlineview.h>

namespace dravelin {

namespace {

/// Runs through the rows that an outline shows, from the top.
class ShownRows
{
public:
    explicit ShownRows(const QTreeView &outline) : m_outline(outline) {}

    /// Calls `visit(item)` for each until it returns false.
    /// \return whether it never did
    template <class Visit>
    bool forEach(Visit visit) const
    {
        return forEachBelow(m_outline.rootIndex(), visit);
    }

private:
    template <class Visit>
    bool forEachBelow(const QModelIndex &parent, Visit &visit) const
    {
        const QAbstractItemModel *model = m_outline.model();
        const int rows = model ? model->rowCount(parent) : 0;
        for (int row = 0; row < rows; ++row) {
            const QModelIndex item = model->index(row, 0, parent);
            if (m_outline.isRowHidden(row, parent))
                continue;
            if (!visit(item) || (m_outline.isExpanded(item) && !forEachBelow(item, visit)))
                return false;
        }
        return true;
    }

    const QTreeView &m_outline;
};

} // namespace

OutlineView::OutlineView(QWidget *parent) : QTreeView(parent)
{
    setUniformRowHeights(true);
    setSelectionMode(ExtendedSelection);
}

OutlineView::~OutlineView() = default;

QModelIndex OutlineView::parentForItem(const QModelIndex &item) const
{
    const QModelIndex parent = item.model() == model() ? item.parent() : QModelIndex();
    return parent == rootIndex() ? QModelIndex() : parent;
}

bool OutlineView::isExpandable(const QModelIndex &item) const
{
    return item.isValid() && item.model() == model() && model()->hasChildren(item.siblingAtColumn(0));
}

bool OutlineView::isItemExpanded(const QModelIndex &item) const
{
    return isExpandable(item) && isExpanded(item.siblingAtColumn(0));
}

void OutlineView::expandItem(const QModelIndex &item)
{
    if (isExpandable(item))
        expand(item.siblingAtColumn(0));
}

qsizetype OutlineView::rowForItem(const QModelIndex &item) const
{
    if (!item.isValid() || item.model() != model())
        return -1;
    qsizetype row = -1;
    const QModelIndex wanted = item.siblingAtColumn(0);
    const bool passedAll = ShownRows(*this).forEach([&](const QModelIndex &shown) {
        ++row;
        return shown != wanted;
    });
    return passedAll ? -1 : row;
}

QModelIndex OutlineView::itemAtRow(qsizetype row) const
{
    QModelIndex found;
    ShownRows(*this).forEach([&](const QModelIndex &shown) {
        if (row-- == 0)
            found = shown;
        return !found.isValid();
    });
    return found;
}

qsizetype OutlineView::numberOfRows() const
{
    qsizetype rows = 0;
    ShownRows(*this).forEach([&](const QModelIndex &) {
        ++rows;
        return true;
    });
    return rows;
}

void OutlineView::selectRowIndexes(const IndexSet &rows, bool byExtendingSelection)
{
    if (!selectionModel())
        return;
    QItemSelection selection;
    quint64 row = 0;
    ShownRows(*this).forEach([&](const QModelIndex &shown) {
        if (rows.contains(row))
            selection.select(shown, shown);
        return ++row <= rows.last().value_or(0);
    });
    using Flag = QItemSelectionModel::SelectionFlag;
    selectionModel()->select(selection, (byExtendingSelection ? Flag::Select : Flag::ClearAndSelect) | Flag::Rows);
    if (selection.isEmpty())
        return;
    // The keyboard goes on from here; the outline does not scroll to it.
    const bool scrolls = hasAutoScroll();
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(selection.last().topLeft(), Flag::NoUpdate);
    setAutoScroll(scrolls);
}

IndexSet OutlineView::selectedRowIndexes() const
{
    IndexSet rows;
    quint64 row = 0;
    ShownRows(*this).forEach([&](const QModelIndex &shown) {
        if (selectionModel()->isRowSelected(shown.row(), shown.parent()))
            rows.insert(row);
        ++row;
        return true;
    });
    return rows;
}

} // namespace dravelin
