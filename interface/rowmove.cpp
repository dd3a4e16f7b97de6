// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "interface/rowmove.h"

#include "platform/variantset.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace dravelin::detail {

namespace {

std::vector<bool> marks(const IndexSet &rows, qsizetype size)
{
    std::vector<bool> marked(static_cast<std::size_t>(size));
    for (const Range &range : rows.ranges())
        std::fill_n(marked.begin() + qsizetype(range.location), range.length, true);
    return marked;
}

/// The rows leave empty values behind.
QVariantList take(QVariantList &list, const IndexSet &rows)
{
    QVariantList taken;
    taken.reserve(qsizetype(rows.count()));
    QVariant *data = list.data();
    for (const quint64 row : rows)
        taken.append(std::exchange(data[row], {}));
    return taken;
}

/// Moves what stays to the end of [first, list.size()), in its order.
/// \return where it begins
template <class Goes>
qsizetype packAtEnd(QVariantList &list, qsizetype first, Goes goes)
{
    QVariant *data = list.data();
    qsizetype to = list.size();
    for (qsizetype row = to; row-- > first;) {
        if (!goes(row) && --to != row)
            data[to] = std::move(data[row]);
    }
    return to;
}

} // namespace

qsizetype moveRows(QVariantList &list, const IndexSet &rows, qsizetype dropRow)
{
    const std::vector<bool> moves = marks(rows, list.size());
    const auto isMoved = [&moves](qsizetype row) { return moves[static_cast<std::size_t>(row)]; };
    QVariantList moved = take(list, rows);
    packAtEnd(list, dropRow, isMoved);
    QVariant *data = list.data();
    qsizetype to = 0;
    for (qsizetype row = 0; row < dropRow; ++row) {
        if (!isMoved(row) && to++ != row)
            data[to - 1] = std::move(data[row]);
    }
    std::move(moved.begin(), moved.end(), data + to);
    return to;
}

void gatherRows(QVariantList &list, const IndexSet &rows)
{
    const std::vector<bool> moves = marks(rows, list.size());
    const auto first = qsizetype(rows.first().value_or(0));
    QVariantList moved = take(list, rows);
    const qsizetype kept = [&] {
        const VariantSet values(moved);
        const QVariantList &constList = list;
        return packAtEnd(list, first, [&](qsizetype row) {
            return moves[static_cast<std::size_t>(row)] || values.contains(constList[row]);
        });
    }();
    const qsizetype end = std::move(moved.begin(), moved.end(), list.begin() + first) - list.begin();
    list.remove(end, kept - end);
}

} // namespace dravelin::detail
