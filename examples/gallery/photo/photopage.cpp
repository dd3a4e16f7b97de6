// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "photo/photopage.h"

#include "photo/inputsliders.h"
#include "photo/looks.h"
#include "photo/splitview.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFormLayout>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpinBox>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize lookSize(120, 80);

} // namespace

PhotoPage::PhotoPage()
{
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(makeChain());
    layout->addWidget(makePictures(), 1);
    connect(&m_watcher, &QFutureWatcher<QImage>::finished, this, &PhotoPage::takeResult);
    connect(&m_watcher, &QFutureWatcher<QImage>::progressRangeChanged, m_progress, &QProgressBar::setRange);
    connect(&m_watcher, &QFutureWatcher<QImage>::progressValueChanged, m_progress, &QProgressBar::setValue);
    QString name;
    const QImage photo = somePhoto(&name);
    setPhoto(photo, name);
}

PhotoPage::~PhotoPage()
{
    m_watcher.disconnect(this);
    m_watcher.cancel();
    m_watcher.waitForFinished();
}

QString PhotoPage::title() const { return tr("Photo"); }

QWidget *PhotoPage::makeChain()
{
    auto *panel = new QWidget;
    panel->setFixedWidth(260);
    auto *layout = new QVBoxLayout(panel);
    auto *form = new QFormLayout;
    m_catalogue = new QComboBox;
    for (const CatalogueEntry &entry : wholeCatalogue())
        m_catalogue->addItem(QLatin1String(entry.name));
    m_level = new QSpinBox;
    m_level->setMaximum(int(m_chain.levelCount()) - 1);
    m_index = new QSpinBox;
    form->addRow(tr("&Filter:"), m_catalogue);
    form->addRow(tr("&Level:"), m_level);
    form->addRow(tr("&Index:"), m_index);
    layout->addLayout(form);
    const auto button = [&](const QString &text, auto operation) {
        auto *push = new QPushButton(text);
        connect(push, &QPushButton::clicked, this, operation);
        layout->addWidget(push);
    };
    button(tr("&Add or Move"), [this] { add(m_catalogue->currentIndex()); });
    m_list = new QListWidget;
    m_list->setAccessibleName(tr("Chain"));
    connect(m_list, &QListWidget::currentRowChanged, this, &PhotoPage::showChosen);
    layout->addWidget(m_list, 1);
    button(tr("&Remove"), [this] { removeChosen(); });
    m_sliders = new InputSliders;
    connect(m_sliders, &InputSliders::changed, this, &PhotoPage::render);
    layout->addWidget(m_sliders);
    button(tr("&Open a Photograph…"), [this] { openFile(); });
    return panel;
}

QWidget *PhotoPage::makePictures()
{
    auto *panel = new QWidget;
    auto *layout = new QVBoxLayout(panel);
    m_split = new SplitView;
    layout->addWidget(m_split, 1);
    m_progress = new QProgressBar;
    m_progress->setMaximumHeight(12);
    layout->addWidget(m_progress);
    m_state = new QLabel;
    layout->addWidget(m_state);
    m_looks = new QListWidget;
    m_looks->setViewMode(QListView::IconMode);
    m_looks->setFlow(QListView::LeftToRight);
    m_looks->setWrapping(false);
    m_looks->setIconSize(lookSize);
    m_looks->setFixedHeight(130);
    m_looks->setAccessibleName(tr("Looks"));
    connect(m_looks, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem *item) { add(item->data(Qt::UserRole).toInt()); });
    layout->addWidget(m_looks);
    return panel;
}

void PhotoPage::openFile()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open a Photograph"), u"/usr/share/backgrounds"_s);
    if (path.isEmpty())
        return;
    const QImage photo(path);
    if (photo.isNull())
        QMessageBox::warning(this, tr("Open a Photograph"), tr("%1 is no picture.").arg(path));
    else
        setPhoto(photo, QFileInfo(path).fileName());
}

void PhotoPage::setPhoto(const QImage &photo, const QString &name)
{
    m_photo =
        photo.convertToFormat(photo.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    m_second = m_photo.mirrored(true, true);
    m_name = name;
    m_split->setBefore(m_photo);
    showLooks();
    render();
}

void PhotoPage::add(int entry)
{
    m_chain.addFilter(wholeCatalogue()[entry].make(m_second), m_level->value(), m_index->value());
    showChain();
    render();
}

void PhotoPage::removeChosen()
{
    if (const auto filter = m_chain.getAllFilters().value(m_list->currentRow()))
        m_chain.deleteFilterWithName(filter->name());
    showChain();
    render();
}

void PhotoPage::showChain()
{
    m_list->clear();
    for (qint64 level = 0; level < m_chain.levelCount(); ++level) {
        const dravelin::FilterLevel items = m_chain.filterItems(level);
        for (const auto &item : items)
            m_list->addItem(u"%1   (%2, %3)"_s.arg(item->filter->name()).arg(level).arg(item->index));
    }
    m_list->setCurrentRow(m_list->count() - 1);
    showChosen();
}

void PhotoPage::showChosen() { m_sliders->setFilter(m_chain.getAllFilters().value(m_list->currentRow())); }

void PhotoPage::showLooks()
{
    m_looks->clear();
    const QImage small = m_photo.scaled(lookSize, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    const QList<CatalogueEntry> &entries = wholeCatalogue();
    for (int i = 0; i < entries.size(); ++i) {
        if (!entries[i].isLook)
            continue;
        dravelin::FilterProcessor look(1);
        look.addFilter(entries[i].make(small), 0, 0);
        auto *item = new QListWidgetItem(QIcon(QPixmap::fromImage(look.applyFilters(small))),
                                         QLatin1String(entries[i].name), m_looks);
        item->setData(Qt::UserRole, i);
    }
}

void PhotoPage::render()
{
    m_isStale = m_watcher.isRunning();
    if (m_isStale) {
        m_watcher.cancel();
        return;
    }
    m_clock.start();
    m_watcher.setFuture(m_chain.applyFiltersAsync(m_photo));
}

void PhotoPage::takeResult()
{
    if (m_isStale) {
        render();
        return;
    }
    if (m_watcher.future().resultCount() == 0)
        return;
    m_split->setAfter(m_watcher.result());
    m_state->setText(tr("%1, %2 x %3, %4 filters in %5 ms")
                         .arg(m_name)
                         .arg(m_photo.width())
                         .arg(m_photo.height())
                         .arg(m_chain.filterCount())
                         .arg(m_clock.elapsed()));
}
