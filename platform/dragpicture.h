// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/indexset.h>

#include <QtCore/QPoint>
#include <QtGui/QPixmap>

QT_BEGIN_NAMESPACE
class QTableView;
QT_END_NAMESPACE

namespace dravelin::detail {

/// What follows the pointer in a drag.
struct DragPicture
{
    QPixmap pixmap;
    QPoint hotSpot; ///< in logical pixels
};

/// The rows as the table shows them, one under the other, half transparent, with their number when there are several.
/// Rows out of sight, and those after the first few, are only counted.
/// \param pointer in the viewport
[[nodiscard]] DragPicture dragPicture(const QTableView &table, const IndexSet &rows, QPoint pointer);

} // namespace dravelin::detail
