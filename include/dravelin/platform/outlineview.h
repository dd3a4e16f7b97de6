// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/indexset.h>

#include <QtWidgets/QTreeView>

namespace dravelin {

/// A tree of rows over any item model, with rows counted from the top as they are shown. An item is an index of the
/// model, of any column; an absent item is an invalid index, or one of another model.
///
///     dravelin::OutlineView outline;
///     outline.setModel(&folders);
///     dravelin::selectItem(&outline, folders.indexOf(inbox));
///
/// Counting rows is linear in the rows that are shown above, whether in sight or not.
class DRAVELIN_EXPORT OutlineView : public QTreeView
{
    Q_OBJECT

public:
    explicit OutlineView(QWidget *parent = nullptr);
    ~OutlineView() override;

    /// Absent for a top-level item.
    /// \operation{parentForItem:}
    [[nodiscard]] QModelIndex parentForItem(const QModelIndex &item) const;
    /// Whether the item has children, or may get some when it is expanded; an absent item has none.
    /// \operation{isExpandable:}
    [[nodiscard]] bool isExpandable(const QModelIndex &item) const;
    /// \operation{isItemExpanded:}
    [[nodiscard]] bool isItemExpanded(const QModelIndex &item) const;
    /// An item without children stays as it is.
    /// \operation{expandItem:}
    void expandItem(const QModelIndex &item);

    /// \return -1 when the item is hidden, inside a parent that is not expanded, or absent
    /// \operation{rowForItem:}
    [[nodiscard]] qsizetype rowForItem(const QModelIndex &item) const;
    /// \return absent when there are not so many rows
    /// \operation{itemAtRow:}
    [[nodiscard]] QModelIndex itemAtRow(qsizetype row) const;
    /// \operation{numberOfRows}
    [[nodiscard]] qsizetype numberOfRows() const;

    /// Selects the rows, in place of or in addition to those that are; rows that do not exist are left out.
    /// \operation{selectRowIndexes:byExtendingSelection:}
    void selectRowIndexes(const IndexSet &rows, bool byExtendingSelection);
    /// \operation{selectedRowIndexes}
    [[nodiscard]] IndexSet selectedRowIndexes() const;
};

} // namespace dravelin
