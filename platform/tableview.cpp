// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/tableview.h>

#include <dravelin/platform/interfacefile.h>
#include <dravelin/platform/log.h>

#include "platform/cellviews.h"
#include "platform/tabledrops.h"
#include "platform/tablemodel.h"
#include "platform/viewpool.h"

#include <QtCore/QScopedValueRollback>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

#include <limits>

using namespace Qt::StringLiterals;

namespace dravelin {

TableView::TableView(QWidget *parent)
    : QTableView(parent),
      m_rows(new detail::TableModel([this](int column, int row) { return m_cells->textAt(column, row); })),
      m_pool(std::make_unique<detail::ViewPool>(viewport())),
      m_cells(std::make_unique<detail::CellViews>(*this, *m_pool)),
      m_drops(std::make_unique<detail::TableDrops>(*this))
{
    m_rows->setParent(this);
    setModel(m_rows);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false); // Tab goes on to the widgets of the cells
    setShowGrid(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    horizontalHeader()->hide();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setStretchLastSection(true);
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, [this] { m_cells->place(); });
    connect(horizontalHeader(), &QHeaderView::sectionMoved, this, [this] { m_cells->place(); });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *old, QWidget *now) { followFocus(old, now); });
}

TableView::~TableView()
{
    qApp->disconnect(this); // the focus leaves the views while they are destroyed
    // A drag that goes on ends without its table.
    if (m_drag) {
        m_drag->setParent(nullptr);
        QDrag::cancel();
    }
}

void TableView::setDelegate(TableViewDelegate *delegate) { m_delegate = delegate ? delegate->m_self : nullptr; }

TableViewDelegate *TableView::delegate() const { return m_delegate.lock().get(); }

void TableView::setDataSource(TableViewDelegate *dataSource)
{
    m_dataSource = dataSource ? dataSource->m_self : nullptr;
}

TableViewDelegate *TableView::dataSource() const { return m_dataSource.lock().get(); }

void TableView::reloadData()
{
    const QPointer<TableView> self(this);
    const qsizetype wanted = rowsOfSource();
    if (!self)
        return;
    changeSelection([&] {
        changeRows(fitting(wanted, rowHeight()));
        m_cells->reload();
        if (self)
            updateCells();
    });
}

/// The table may be gone afterwards.
qsizetype TableView::rowsOfSource()
{
    TableViewDelegate *source = dataSource();
    return source ? std::max(qsizetype(0), source->numberOfRowsInTableView(this)) : 0;
}

/// As many of the rows as the widgets underneath, which count pixels in 32 bits, have room for.
int TableView::fitting(qsizetype rows, int height) const
{
    const qsizetype most = std::numeric_limits<int>::max() / std::max(1, height) - 1;
    if (rows > most)
        logWarning(u"Table: shows %1 of %2 rows, which is as many as fit"_s.arg(most).arg(rows));
    return int(std::min(rows, most));
}

void TableView::changeRows(int rows)
{
    const QScopedValueRollback reloading(m_unsettled, true);
    const bool scrolls = hasAutoScroll();
    setAutoScroll(false); // to the row that becomes current for one that vanished
    m_rows->setRows(rows);
    QTableView::updateGeometries();
    setAutoScroll(scrolls);
}

qsizetype TableView::numberOfRows() const { return m_rows->rowCount(); }

void TableView::registerView(const QString &identifier, const ViewFactory &factory)
{
    m_pool->setFactory(identifier, factory);
}

void TableView::registerInterfaceFile(const QString &identifier, const QString &path)
{
    registerView(identifier, [path] { return loadInterfaceFile(path); });
}

QWidget *TableView::makeViewWithIdentifier(const QString &identifier, QObject *owner)
{
    return m_pool->make(identifier, owner);
}

QWidget *TableView::viewAtColumn(int column, qsizetype row) const { return m_cells->viewAt(column, row); }

QWidget *TableView::rowViewAtRow(qsizetype row) const { return m_cells->rowViewAt(row); }

qsizetype TableView::rowForView(const QWidget *view) const { return m_cells->rowOf(view); }

int TableView::addTableColumn(const QString &title, int width)
{
    const int column = m_rows->addColumn(title);
    if (!title.isEmpty())
        horizontalHeader()->show();
    if (width > 0)
        setColumnWidth(column, width);
    m_cells->reload();
    return column;
}

int TableView::rowHeight() const { return verticalHeader()->defaultSectionSize(); }

void TableView::setRowHeight(int height)
{
    m_hasOwnHeight = height > 0;
    m_hasHeight = m_hasOwnHeight;
    if (m_hasOwnHeight)
        adoptHeight(height);
    else
        updateCells();
}

void TableView::adoptHeight(int height)
{
    if (height == rowHeight())
        return;
    const QPointer<TableView> self(this);
    changeSelection([&] {
        changeRows(fitting(numberOfRows(), height));
        const QScopedValueRollback changing(m_unsettled, true);
        verticalHeader()->setDefaultSectionSize(height);
    });
    if (self)
        updateGeometries();
    if (self)
        Q_EMIT rowHeightChanged();
}

/// Shows the rows in sight; the first of them decides how high rows are, unless that was set.
void TableView::updateCells()
{
    if (m_unsettled)
        return;
    const QPointer<TableView> self(this);
    m_cells->update();
    if (!self || m_hasHeight)
        return;
    if (const int height = m_cells->wantedHeight(); height > 0) {
        m_hasHeight = true;
        adoptHeight(height);
    }
}

void TableView::scrollRowToVisible(qsizetype row)
{
    if (row >= 0 && row < numberOfRows())
        scrollTo(model()->index(int(row), std::max(0, columnAt(0))));
}

void TableView::scrollContentsBy(int dx, int dy)
{
    const bool isByPixel = verticalScrollMode() == ScrollPerPixel && horizontalScrollMode() == ScrollPerPixel;
    if (isByPixel && std::abs(dy) >= viewport()->height()) {
        // Nothing stays in sight: the views are filled anew where they are, without being moved away first.
        horizontalHeader()->setOffset(horizontalScrollBar()->value());
        verticalHeader()->setOffset(verticalScrollBar()->value());
        viewport()->update();
    } else {
        QTableView::scrollContentsBy(dx, dy);
    }
    updateCells();
}

void TableView::updateGeometries()
{
    {
        const QScopedValueRollback changing(m_unsettled, true);
        QTableView::updateGeometries();
    }
    if (m_cells)
        updateCells();
}

void TableView::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (!m_cells)
        return;
    if (event->type() == QEvent::PaletteChange)
        m_cells->showColors();
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        m_hasHeight = m_hasOwnHeight;
}

} // namespace dravelin
