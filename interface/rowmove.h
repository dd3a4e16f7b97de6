// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/indexset.h>

#include <QtCore/QVariantList>

namespace dravelin::detail {

/// Brings the rows, all of which exist, together before what is row `dropRow` now.
/// \return where the first of them is then
/// \cost linear, without a copy of the list unless it is shared
qsizetype moveRows(QVariantList &list, const IndexSet &rows, qsizetype dropRow);

/// Brings the rows, all of which exist, together where the first of them is, and removes the rows behind it that equal
/// one of them by VariantSet.
/// \cost linear for values that VariantSet hashes, without a copy of the list unless it is shared
void gatherRows(QVariantList &list, const IndexSet &rows);

} // namespace dravelin::detail
