// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/tableutilities.h>

#include <dravelin/platform/outlineview.h>
#include <dravelin/platform/tableview.h>

namespace dravelin {

void TableUtilities::selectRow(TableView *tableView, qint64 row)
{
    tableView->deselectAll();
    if (row >= 0)
        tableView->selectRowIndexes(IndexSet{quint64(row)}, false);
}

void TableUtilities::selectRowRange(TableView *tableView, Range range)
{
    tableView->deselectAll();
    tableView->selectRowIndexes(IndexSet(range), false);
}

void TableUtilities::expandParentsOfItem(OutlineView *outlineView, const QModelIndex &item)
{
    QPersistentModelIndex parent = outlineView->parentForItem(item); // expanding may bring in rows and sort them anew
    while (outlineView->isExpandable(parent)) {
        if (!outlineView->isItemExpanded(parent))
            outlineView->expandItem(parent);
        parent = outlineView->parentForItem(parent);
    }
}

void TableUtilities::selectItem(OutlineView *outlineView, const QModelIndex &item)
{
    const QPersistentModelIndex wanted(item);
    qsizetype row = outlineView->rowForItem(item);
    if (row < 0) {
        expandParentsOfItem(outlineView, item);
        row = outlineView->rowForItem(wanted);
    }
    if (row >= 0)
        outlineView->selectRowIndexes(IndexSet{quint64(row)}, false);
}

} // namespace dravelin
