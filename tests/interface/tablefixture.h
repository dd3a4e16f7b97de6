// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/interface/tableutilities.h>
#include <dravelin/platform/tableview.h>

#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>

#include <functional>
#include <vector>

/// A shown table of labels that say which row and column they are in, and a record of what it is told.
class TableFixture : public dravelin::TableViewDelegate
{
public:
    explicit TableFixture(qsizetype count = 0, int columns = 1) : rows(count)
    {
        table->registerView("label", [] { return std::make_unique<QLabel>(); });
        table->setDelegate(this);
        table->setDataSource(this);
        for (int column = 1; column < columns; ++column)
            table->addTableColumn({}, 100);
        if (columns > 1)
            table->addTableColumn({});
        table->setRowHeight(20);
        table->resize(400, 300);
        table->show();
        table->reloadData();
    }
    ~TableFixture() override { delete table.data(); }
    Q_DISABLE_COPY_MOVE(TableFixture)

    qsizetype numberOfRowsInTableView(dravelin::TableView *) override { return rows; }
    QWidget *viewForTableColumn(dravelin::TableView *view, int column, qsizetype row) override
    {
        auto *label = qobject_cast<QLabel *>(view->makeViewWithIdentifier("label"));
        label->setText(QString::number(row + shift) + u'/' + QString::number(column));
        onFill();
        return label;
    }
    void tableViewSelectionDidChange(dravelin::TableView *view) override
    {
        selections.push_back(view->selectedRowIndexes());
        onSelection();
    }

    /// What is wrong with the labels in sight: each must be where its text says, none may miss.
    [[nodiscard]] QString misplaced() const
    {
        const QRect area = table->viewport()->rect();
        const int columns = table->model()->columnCount();
        int seen = 0;
        const auto labels = table->viewport()->findChildren<QLabel *>(Qt::FindDirectChildrenOnly);
        for (const QLabel *label : labels) {
            if (label->isHidden() || !label->geometry().intersects(area))
                continue;
            const QModelIndex index = table->indexAt(label->geometry().intersected(area).center());
            const QString expected = QString::number(index.row() + shift) + u'/' + QString::number(index.column());
            if (label->text() != expected || label->geometry() != table->visualRect(index))
                return label->text() + " instead of " + expected;
            ++seen;
        }
        const int last = table->rowAt(area.bottom());
        const int inSight = rows == 0 ? 0 : (last < 0 ? int(rows) - 1 : last) - table->rowAt(0) + 1;
        return seen == inSight * columns ? QString() : QString("%1 labels for %2 rows").arg(seen).arg(inSight);
    }
    [[nodiscard]] qsizetype labels() const { return table->viewport()->findChildren<QLabel *>().size(); }

    qsizetype rows;
    qsizetype shift = 0; ///< of the texts, to tell old contents from new
    QPointer<dravelin::TableView> table = new dravelin::TableView;
    std::vector<dravelin::IndexSet> selections;
    std::function<void()> onFill = [] {};
    std::function<void()> onSelection = [] {};
};
