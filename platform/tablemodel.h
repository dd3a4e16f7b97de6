// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QAbstractTableModel>
#include <QtCore/QStringList>

#include <functional>

namespace dravelin::detail {

/// The rows and columns of a TableView: how many there are, and the columns' titles.
class TableModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// Reads a cell out for assistive software.
    using CellText = std::function<QString(int column, int row)>;

    explicit TableModel(CellText cellText) : m_cellText(std::move(cellText)) {}

    void setRows(int rows);
    /// In place of the column without title that is there at first.
    /// \return its number
    int addColumn(const QString &title);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    CellText m_cellText;
    QStringList m_titles;
    int m_rows = 0;
};

} // namespace dravelin::detail
