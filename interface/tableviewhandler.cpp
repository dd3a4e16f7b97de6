// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/tableviewhandler.h>

#include <dravelin/platform/log.h>

#include "platform/viewpool.h"

#include <QtCore/QUuid>

#include <utility>

using namespace Qt::StringLiterals;

namespace dravelin {

TableViewHandler::TableViewHandler(TableView *tableView, QString viewIdentifier, QString rowViewIdentifier)
    : m_tableView(tableView),
      m_rows(std::make_shared<QVariantList>()),
      m_viewIdentifier(std::move(viewIdentifier)),
      m_rowViewIdentifier(std::move(rowViewIdentifier)),
      m_dropType(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper() + u".type"_s)
{
    if (!tableView) {
        logWarning(u"TableViewHandler: there is no table"_s);
        return;
    }
    tableView->setDelegate(this);
    tableView->setDataSource(this);
    tableView->registerForDraggedTypes({m_dropType});
    tableView->installEventFilter(this);
    // A table that goes during a drag does not tell of its end.
    connect(tableView, &QObject::destroyed, this, [this] {
        if (m_isDragging)
            endDrag();
    });
}

TableViewHandler::~TableViewHandler() = default;

void TableViewHandler::setSourceData(std::shared_ptr<QVariantList> rows)
{
    if (!rows)
        rows = std::make_shared<QVariantList>();
    // The indexes of the rows being dragged would mean other rows.
    if (rows != m_rows && !m_dragged.isEmpty()) {
        logWarning(u"TableViewHandler: the rows were replaced while some of them were dragged, which ends the drag"_s);
        m_dragged = {};
    }
    m_rows = std::move(rows);
    dataChanged();
}

void TableViewHandler::dataChanged()
{
    if (m_tableView)
        m_tableView->reloadData();
}

void TableViewHandler::updateTableView(QWidget *, qsizetype) {}

void TableViewHandler::updateTableRowView(QWidget *, qsizetype) {}

void TableViewHandler::dragComplete() {}

void TableViewHandler::selectionChanged() {}

qsizetype TableViewHandler::numberOfRowsInTableView(TableView *) { return m_rows->size(); }

QWidget *TableViewHandler::viewForTableColumn(TableView *tableView, int, qsizetype row)
{
    if (!hasRow(row))
        return nullptr;
    const QPointer<TableViewHandler> self(this);
    const QPointer<QWidget> view(tableView->makeViewWithIdentifier(m_viewIdentifier, this));
    if (!self || detail::isPlaceholder(view))
        return view;
    updateTableView(view, row);
    if (view && self)
        Q_EMIT cellUpdated(view, row);
    return view;
}

QWidget *TableViewHandler::rowViewForRow(TableView *tableView, qsizetype row)
{
    if (m_rowViewIdentifier.isEmpty() || !hasRow(row))
        return nullptr;
    const QPointer<TableViewHandler> self(this);
    const QPointer<QWidget> view(tableView->makeViewWithIdentifier(m_rowViewIdentifier, this));
    if (!self || detail::isPlaceholder(view))
        return view;
    view->setAccessibleName(tr("Row %1").arg(row + 1));
    updateTableRowView(view, row);
    if (view && self)
        Q_EMIT rowViewUpdated(view, row);
    return view;
}

void TableViewHandler::tableViewSelectionDidChange(TableView *)
{
    const QPointer<TableViewHandler> self(this);
    selectionChanged();
    if (self)
        Q_EMIT selectedRowsChanged();
}

} // namespace dravelin
