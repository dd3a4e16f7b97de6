// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/cellviews.h"

#include <dravelin/platform/log.h>

#include "platform/viewpool.h"

#include <QtCore/QScopeGuard>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

constexpr auto ownPalette = "_dravelin_ownPalette"; ///< of a view that has the colours of a selected row

void highlight(QWidget *view, bool selected)
{
    const QVariant own = view->property(ownPalette);
    if (own.isValid() == selected)
        return;
    if (!selected) {
        view->setPalette(own.value<QPalette>());
        view->setProperty(ownPalette, {});
        return;
    }
    view->setProperty(ownPalette, view->testAttribute(Qt::WA_SetPalette) ? view->palette() : QPalette());
    QPalette palette = view->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        palette.setColor(group, QPalette::WindowText, palette.color(group, QPalette::HighlightedText));
    view->setPalette(palette);
}

} // namespace

template <class Visit>
void CellViews::Row::forEach(Visit visit) const
{
    if (background)
        visit(background.data());
    for (const QPointer<QWidget> &cell : cells) {
        if (cell)
            visit(cell.data());
    }
}

bool CellViews::Row::has(const QWidget *view) const
{
    return background == view || std::find(cells.begin(), cells.end(), view) != cells.end();
}

void CellViews::reload()
{
    m_stale = true;
    update();
}

void CellViews::update()
{
    m_again = true;
    if (m_updating)
        return;
    const QPointer<TableView> table(&m_table);
    m_updating = true;
    const auto updated = qScopeGuard([&] {
        if (table)
            m_updating = false;
    });
    // A delegate that reloads the table whenever it is asked must not keep it here for ever.
    for (int round = 0; m_again && round < 8; ++round) {
        m_again = false;
        fill();
        if (!table)
            return;
    }
}

void CellViews::fill()
{
    const QPointer<TableView> table(&m_table);
    const Span span = m_stale ? Span{0, -1} : rowsInSight();
    takeFocusFrom(span);
    if (!table)
        return;
    retireOutside(span);
    m_stale = false;
    const Span wanted = rowsInSight();
    bool hasNew = false;
    for (int number = wanted.first; number <= wanted.last; ++number) {
        if (find(number) || m_table.isRowHidden(number))
            continue;
        const bool filled = fillRow(number);
        if (!table)
            return;
        hasNew = true;
        if (!filled)
            break;
    }
    m_pool.hideWaiting();
    place();
    if (hasNew)
        orderFocus();
}

CellViews::Span CellViews::rowsInSight() const
{
    const int rows = int(m_table.numberOfRows());
    const int height = m_table.viewport()->height();
    const int first = m_table.rowAt(0);
    const int last = m_table.rowAt(height - 1);
    if (first < 0 || height <= 0)
        return {0, -1};
    return {first, last < 0 ? rows - 1 : last};
}

/// \return false when the table is gone or has to be filled anew
bool CellViews::fillRow(int number)
{
    const QPointer<TableView> table(&m_table);
    Row row{number, {}, {}};
    const bool goesOn = makeViews(row);
    if (!table)
        return false;
    row.forEach([selected = isSelected(row)](QWidget *view) { highlight(view, selected); });
    const auto earlier = [](const Row &other, int wanted) { return other.number < wanted; };
    m_rows.insert(std::lower_bound(m_rows.begin(), m_rows.end(), number, earlier), std::move(row));
    return goesOn;
}

/// \return as fillRow()
bool CellViews::makeViews(Row &row)
{
    row.cells.resize(m_table.model()->columnCount());
    const auto make = [&, table = QPointer<TableView>(&m_table)](QPointer<QWidget> &place, auto ask) {
        TableViewDelegate *delegate = m_table.delegate();
        QWidget *view = delegate ? ask(*delegate) : nullptr;
        return table && take(view, row, place);
    };
    if (!make(row.background, [&](auto &delegate) { return delegate.rowViewForRow(&m_table, row.number); }))
        return false;
    if (row.background)
        row.background->lower();
    int column = 0;
    return std::all_of(row.cells.begin(), row.cells.end(), [&](QPointer<QWidget> &cell) {
        return make(cell, [&](auto &delegate) { return delegate.viewForTableColumn(&m_table, column++, row.number); });
    });
}

/// \return false when the table has to be filled anew
bool CellViews::take(QWidget *view, Row &row, QPointer<QWidget> &place)
{
    const bool isFresh = view && m_pool.claim(view);
    m_pool.reclaim();
    if (view && !isFresh && (row.has(view) || isShown(view))) {
        if (!std::exchange(m_hasReported, true))
            logWarning(u"Table: its delegate gave the same view for two cells"_s);
        view = nullptr;
    }
    if (view && view->parentWidget() != m_table.viewport())
        adopt(view, m_table.viewport());
    place = view;
    return !m_again;
}

bool CellViews::isShown(const QWidget *view) const
{
    return std::any_of(m_rows.begin(), m_rows.end(), [view](const Row &row) { return row.has(view); });
}

void CellViews::retireOutside(Span span)
{
    const auto isInside = [span](const Row &row) { return row.number >= span.first && row.number <= span.last; };
    if (std::all_of(m_rows.begin(), m_rows.end(), isInside))
        return;
    std::vector<Row> kept;
    for (Row &row : m_rows) {
        if (isInside(row))
            kept.push_back(std::move(row));
        else
            row.forEach([this](QWidget *view) {
                highlight(view, false); // whoever fills it for another row may give it colours
                m_pool.giveBack(view);
            });
    }
    m_rows = std::move(kept);
}

/// What the user is typing belongs to a row that leaves: losing the focus now lets its view deliver it.
void CellViews::takeFocusFrom(Span keeping) const
{
    const QWidget *focus = m_table.window()->focusWidget();
    const qsizetype row = focus ? rowOf(focus) : -1;
    if (row >= 0 && (row < keeping.first || row > keeping.last))
        m_table.setFocus();
}

void CellViews::place()
{
    for (const Row &row : m_rows)
        placeRow(row);
}

void CellViews::placeRow(const Row &row)
{
    const int y = m_table.rowViewportPosition(row.number);
    const int height = m_table.rowHeight(row.number);
    if (row.background) {
        row.background->setGeometry(0, y, m_table.viewport()->width(), height);
        row.background->show();
    }
    for (int column = 0; column < row.cells.size(); ++column) {
        QWidget *cell = row.cells[column];
        if (!cell)
            continue;
        cell->setGeometry(m_table.columnViewportPosition(column), y, m_table.columnWidth(column), height);
        cell->setVisible(!m_table.isColumnHidden(column));
    }
}

void CellViews::showSelection()
{
    for (const Row &row : m_rows)
        row.forEach([selected = isSelected(row)](QWidget *view) { highlight(view, selected); });
}

void CellViews::showColors()
{
    for (const Row &row : m_rows)
        row.forEach([](QWidget *view) { highlight(view, false); });
    showSelection();
}

bool CellViews::isSelected(const Row &row) const
{
    return m_table.selectionModel()->isSelected(m_table.model()->index(row.number, 0));
}

int CellViews::wantedHeight() const
{
    int height = 0;
    if (!m_rows.empty()) {
        m_rows.front().forEach([&height](const QWidget *view) {
            height =
                std::max({height, view->sizeHint().height(), view->minimumSizeHint().height(), view->minimumHeight()});
        });
    }
    return height;
}

} // namespace dravelin::detail
