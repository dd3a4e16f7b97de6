// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/tableview.h>

#include <QtCore/QPointer>
#include <QtCore/QVarLengthArray>

#include <vector>

namespace dravelin::detail {

class ViewPool;

/// The views of the rows in sight. The delegate that fills them may reload or delete the table meanwhile.
class CellViews
{
public:
    CellViews(TableView &table, ViewPool &pool) : m_table(table), m_pool(pool) {}

    /// Gives the rows that have come into sight their views, from those of the rows that left it.
    void update();
    /// The same with all rows.
    void reload();
    /// Brings the views to where their rows and columns are.
    void place();
    /// Gives the views of selected rows their colours.
    void showSelection();
    /// The same after the table's own colours have changed.
    void showColors();

    [[nodiscard]] QWidget *viewAt(int column, qsizetype row) const;
    [[nodiscard]] QWidget *rowViewAt(qsizetype row) const;
    [[nodiscard]] qsizetype rowOf(const QWidget *view) const;
    /// What the first row's views ask for; 0 while there is none.
    [[nodiscard]] int wantedHeight() const;
    /// What to read out. A row that is out of sight is filled for it into a view that nobody sees.
    [[nodiscard]] QString textAt(int column, int row);

private:
    struct Row
    {
        int number = -1;
        QPointer<QWidget> background;
        QVarLengthArray<QPointer<QWidget>, 4> cells;

        [[nodiscard]] bool has(const QWidget *view) const;
        template <class Visit>
        void forEach(Visit visit) const;
    };
    struct Span
    {
        int first;
        int last; ///< less than first when no row is in sight
    };

    [[nodiscard]] Span rowsInSight() const;
    [[nodiscard]] const Row *find(qsizetype row) const;
    [[nodiscard]] bool isSelected(const Row &row) const;
    [[nodiscard]] bool isShown(const QWidget *view) const;
    [[nodiscard]] const QWidget *viewAround(const QWidget *widget) const;
    void fill();
    bool fillRow(int number);
    bool makeViews(Row &row);
    bool take(QWidget *view, Row &row, QPointer<QWidget> &place);
    void takeFocusFrom(Span keeping) const;
    void retireOutside(Span span);
    void orderFocus() const;
    [[nodiscard]] std::pair<int, qsizetype> placeOf(const QWidget *view) const;
    void placeRow(const Row &row);

    TableView &m_table;
    ViewPool &m_pool;
    std::vector<Row> m_rows; ///< ascending
    bool m_updating = false;
    bool m_again = false;
    bool m_stale = false;
    bool m_hasReported = false; ///< that a view was given twice
};

} // namespace dravelin::detail
