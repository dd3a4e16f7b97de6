// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/range.h>

#include <QtCore/QModelIndex>

namespace dravelin {

class OutlineView;
class TableView;

/// Rows selected and items revealed in one call.
inline namespace TableUtilities {

/// Deselects everything, then selects the row. One less than 0, or one that does not exist, leaves nothing selected.
/// \operation{selectRow:}
DRAVELIN_EXPORT void selectRow(TableView *tableView, qint64 row);

/// Deselects everything, then selects the rows of the range, as far as they exist.
/// \operation{selectRowRange:}
DRAVELIN_EXPORT void selectRowRange(TableView *tableView, Range range);

/// Expands the parents of the item that are not expanded yet, from the nearest one outward, up to the first that is not
/// expandable. An absent item does nothing.
/// \operation{expandParentsOfItem:}
DRAVELIN_EXPORT void expandParentsOfItem(OutlineView *outlineView, const QModelIndex &item);

/// Selects the item alone, after expanding its parents when it is not shown. An item that is not shown even so leaves
/// the selection as it was.
/// \operation{selectItem:}
DRAVELIN_EXPORT void selectItem(OutlineView *outlineView, const QModelIndex &item);

} // namespace TableUtilities

} // namespace dravelin
