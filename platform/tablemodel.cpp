// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/tablemodel.h"

namespace dravelin::detail {

void TableModel::setRows(int rows)
{
    if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    } else if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    }
}

int TableModel::addColumn(const QString &title)
{
    const int column = int(m_titles.size());
    if (column > 0)
        beginInsertColumns({}, column, column);
    m_titles.append(title);
    if (column > 0)
        endInsertColumns();
    else
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, 0);
    return column;
}

int TableModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : m_rows; }

int TableModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : qMax(1, int(m_titles.size()));
}

QVariant TableModel::data(const QModelIndex &index, int role) const
{
    return role == Qt::AccessibleTextRole ? m_cellText(index.column(), index.row()) : QVariant();
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isTitle = orientation == Qt::Horizontal && role == Qt::DisplayRole;
    return isTitle ? m_titles.value(section) : QVariant();
}

Qt::ItemFlags TableModel::flags(const QModelIndex &index) const
{
    return QAbstractTableModel::flags(index) | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
}

} // namespace dravelin::detail
