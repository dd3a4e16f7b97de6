// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "table/tablepage.h"

#include "table/photocell.h"

#include <QtCore/QDir>
#include <QtGui/QFileSystemModel>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>

using namespace Qt::StringLiterals;
using namespace dravelin;

namespace {

QVariantList photosIn(const QString &path)
{
    const QFileInfoList files =
        QDir(path).entryInfoList({u"*.jpg"_s, u"*.jpeg"_s, u"*.png"_s}, QDir::Files | QDir::Readable, QDir::Name);
    QVariantList photos;
    for (const QFileInfo &file : files)
        photos << file.absoluteFilePath();
    return photos;
}

QString rowsText(const IndexSet &rows)
{
    QStringList texts;
    for (const Range &range : rows.ranges()) {
        const quint64 last = range.location + range.length;
        texts << (range.length == 1 ? QString::number(last) : u"%1–%2"_s.arg(range.location + 1).arg(last));
    }
    return texts.isEmpty() ? TablePage::tr("none") : texts.join(u", "_s);
}

} // namespace

void PhotoRows::updateTableView(QWidget *view, qsizetype row)
{
    auto *cell = qobject_cast<PhotoCell *>(view);
    const QVariant &photo = std::as_const(tableData())[row];
    if (photo.typeId() == QMetaType::QString)
        cell->showPhoto(photo.toString());
    else
        cell->showNumber(photo.toLongLong());
}

TablePage::TablePage()
    : m_table(new TableView),
      m_rows(m_table, u"photo"_s),
      m_photos(std::make_shared<QVariantList>()),
      m_folders(new OutlineView),
      m_files(new QFileSystemModel(this))
{
    m_table->registerView<PhotoCell>(u"photo"_s);
    m_table->setAccessibleName(tr("Photos"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(makeControls());
    auto *splitter = new QSplitter;
    splitter->addWidget(m_table);
    splitter->addWidget(makeFolders());
    splitter->setSizes({500, 340});
    layout->addWidget(splitter, 1);
    m_state = new QLabel;
    layout->addWidget(m_state);
    m_order = new QLabel;
    m_order->setWordWrap(true);
    layout->addWidget(m_order);
    m_hint = new QLabel;
    m_hint->setWordWrap(true);
    layout->addWidget(m_hint);
    connect(&m_rows, &TableViewHandler::selectedRowsChanged, this, &TablePage::showState);
    connect(&m_rows, &TableViewHandler::dragCompleted, this, &TablePage::showState);
    connect(&m_rows, &TableViewHandler::rowsMoved, this, &TablePage::showState);
    connect(m_reorders, &QCheckBox::toggled, this, &TablePage::showState);
    openFolder(u"/usr/share/backgrounds"_s);
    m_reorders->setChecked(true);
}

QString TablePage::title() const { return tr("Table"); }

QWidget *TablePage::makeControls()
{
    auto *controls = new QWidget;
    auto *layout = new QHBoxLayout(controls);
    layout->setContentsMargins({});
    auto *open = new QPushButton(tr("Open &Folder…"));
    m_reorders = new QCheckBox(tr("&Rows go where they are dropped"));
    m_many = new QCheckBox(tr("A &million rows"));
    m_up = new QPushButton(tr("Move &Up"));
    m_down = new QPushButton(tr("Move &Down"));
    layout->addWidget(open);
    layout->addWidget(m_reorders);
    layout->addWidget(m_many);
    layout->addStretch();
    layout->addWidget(m_up);
    layout->addWidget(m_down);
    m_up->setToolTip(tr("Alt and the up key do the same."));
    m_down->setToolTip(tr("Alt and the down key do the same."));
    connect(open, &QPushButton::clicked, this, &TablePage::chooseFolder);
    connect(m_reorders, &QCheckBox::toggled, &m_rows, &TableViewHandler::setReordersToDropRow);
    connect(m_many, &QCheckBox::toggled, this, &TablePage::showRows);
    connect(m_up, &QPushButton::clicked, &m_rows, &TableViewHandler::moveSelectedRowsUp);
    connect(m_down, &QPushButton::clicked, &m_rows, &TableViewHandler::moveSelectedRowsDown);
    return controls;
}

QWidget *TablePage::makeFolders()
{
    m_files->setReadOnly(true);
    m_folders->setModel(m_files);
    m_folders->setAccessibleName(tr("Folders"));
    m_folders->setHeaderHidden(true);
    for (int column = 1; column < m_files->columnCount(); ++column)
        m_folders->hideColumn(column);
    auto *folders = new QWidget;
    auto *layout = new QVBoxLayout(folders);
    layout->setContentsMargins({});
    m_reveal = new QPushButton(tr("&Show the Selected Photo in Its Folder"));
    layout->addWidget(m_folders, 1);
    layout->addWidget(m_reveal);
    connect(m_reveal, &QPushButton::clicked, this, &TablePage::revealInFolders);
    return folders;
}

void TablePage::chooseFolder()
{
    const QString path = QFileDialog::getExistingDirectory(this, tr("Open a Folder of Photos"), m_folder);
    if (!path.isEmpty())
        openFolder(path);
}

/// The outline begins two folders further out, so that there is something to open.
void TablePage::openFolder(const QString &path)
{
    m_folder = path;
    *m_photos = photosIn(path);
    QDir root(path);
    root.cdUp();
    root.cdUp();
    m_folders->setRootIndex(m_files->setRootPath(root.absolutePath()));
    m_many->setChecked(false);
    showRows();
}

void TablePage::showRows()
{
    if (m_many->isChecked() && !m_million) {
        m_million = std::make_shared<QVariantList>();
        for (int number = 1; number <= 1'000'000; ++number)
            m_million->append(number);
    }
    m_rows.setSourceData(m_many->isChecked() ? m_million : m_photos);
    m_table->scrollToTop();
    showState();
}

void TablePage::showState()
{
    const IndexSet rows = m_table->selectedRowIndexes();
    m_state->setText(tr("%L1 rows, %2 views for them. Selected: %3")
                         .arg(m_table->numberOfRows())
                         .arg(PhotoCell::count())
                         .arg(rowsText(rows)));
    m_order->setText(order());
    m_hint->setText(hint());
    m_up->setEnabled(!rows.isEmpty());
    m_down->setEnabled(!rows.isEmpty());
    m_reveal->setEnabled(!selectedPath().isEmpty());
}

QString TablePage::hint() const
{
    if (m_table->numberOfRows() == 0)
        return tr("There are no photos in %1. Open another folder, or have a million rows.").arg(m_folder);
    return m_reorders->isChecked()
               ? tr("Drag the selected rows to where they shall be, or move them with Alt and the up and down keys.")
               : tr("Drag rows that are selected here and there: wherever they are dropped, they come together at the "
                    "first of them.");
}

QString TablePage::order() const
{
    QStringList names;
    for (const QVariant &row : std::as_const(m_rows.tableData()).first(qMin(m_rows.tableData().size(), 12)))
        names << QFileInfo(row.toString()).completeBaseName().section(u"_by_"_s, 0, 0);
    if (names.size() < m_rows.tableData().size())
        names << u"…"_s;
    return tr("Order: %1").arg(names.join(u", "_s));
}

QString TablePage::selectedPath() const
{
    const auto row = qsizetype(m_table->selectedRowIndexes().first().value_or(~0ULL));
    return m_many->isChecked() ? QString() : std::as_const(*m_photos).value(row).toString();
}

void TablePage::revealInFolders()
{
    const QModelIndex file = m_files->index(selectedPath());
    selectItem(m_folders, file);
    m_folders->scrollTo(file, QAbstractItemView::PositionAtCenter);
}
