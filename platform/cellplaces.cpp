// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Which view is where, for the keyboard and for assistive software too.

#include "platform/cellviews.h"

#include "platform/readout.h"
#include "platform/viewpool.h"

#include <QtCore/QScopeGuard>

#include <algorithm>

namespace dravelin::detail {

const CellViews::Row *CellViews::find(qsizetype row) const
{
    const auto earlier = [](const Row &other, qsizetype wanted) { return other.number < wanted; };
    const auto found = std::lower_bound(m_rows.begin(), m_rows.end(), row, earlier);
    return found != m_rows.end() && found->number == row ? &*found : nullptr;
}

QWidget *CellViews::viewAt(int column, qsizetype row) const
{
    const Row *found = find(row);
    return found && column >= 0 && column < found->cells.size() ? found->cells[column].data() : nullptr;
}

QWidget *CellViews::rowViewAt(qsizetype row) const
{
    const Row *found = find(row);
    return found ? found->background.data() : nullptr;
}

const QWidget *CellViews::viewAround(const QWidget *widget) const
{
    while (widget && widget->parentWidget() != m_table.viewport())
        widget = widget->parentWidget();
    return widget;
}

qsizetype CellViews::rowOf(const QWidget *view) const { return placeOf(viewAround(view)).first; }

/// \return row and column, the latter -1 for the view behind the cells; the row is -1 when the view is not shown
std::pair<int, qsizetype> CellViews::placeOf(const QWidget *view) const
{
    const auto row = std::find_if(m_rows.begin(), m_rows.end(), [view](const Row &other) { return other.has(view); });
    if (!view || row == m_rows.end())
        return {-1, -1};
    const auto cell = std::find(row->cells.begin(), row->cells.end(), view);
    return {row->number, cell == row->cells.end() ? -1 : cell - row->cells.begin()};
}

QString CellViews::textAt(int column, int row)
{
    if (QWidget *view = viewAt(column, row))
        return readOut(*view);
    TableViewDelegate *delegate = m_table.delegate();
    if (m_updating || find(row) || !delegate)
        return {};
    const QPointer<TableView> table(&m_table);
    m_updating = true; // what the delegate reloads meanwhile must not use the view
    const auto read = qScopeGuard([&] {
        if (!table)
            return;
        m_updating = false;
        if (m_again)
            update();
    });
    QWidget *view = delegate->viewForTableColumn(&m_table, column, row);
    if (!table)
        return {};
    const QString text = view ? readOut(*view) : QString();
    if (view && (m_pool.claim(view) || !isShown(view)))
        m_pool.giveBack(view);
    m_pool.reclaim();
    m_pool.hideWaiting();
    return text;
}

/// Views are used again in any place; Tab shall go through them from top to bottom.
void CellViews::orderFocus() const
{
    std::vector<std::pair<std::pair<int, qsizetype>, QWidget *>> widgets;
    for (QWidget *next = m_table.nextInFocusChain(); next != &m_table; next = next->nextInFocusChain()) {
        if (next->focusPolicy() == Qt::NoFocus || next->focusProxy())
            continue;
        if (const auto place = placeOf(viewAround(next)); place.first >= 0)
            widgets.emplace_back(place, next);
    }
    std::stable_sort(widgets.begin(), widgets.end(), [](auto &a, auto &b) { return a.first < b.first; });
    QWidget *before = &m_table;
    for (const auto &[place, widget] : widgets) {
        QWidget::setTabOrder(before, widget);
        before = widget;
    }
}

} // namespace dravelin::detail
