// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "files/filespage.h"

#include "files/filelist.h"

#include <dravelin/platform/userdefaults.h>

#include <QtCore/QStandardPaths>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace dravelin;

namespace {

constexpr auto key = "chosenFiles"_L1;

QDir sampleFolder() { return {QStandardPaths::writableLocation(QStandardPaths::CacheLocation) + u"/samples"_s}; }

} // namespace

FilesPage::FilesPage() : m_sample(sampleFolder(), u"sample.txt"_s), m_state(new QLabel), m_unsaved(new QLabel)
{
    auto *layout = new QVBoxLayout(this);
    auto *explanation = new QLabel(tr("Choose files, quit the gallery, rename or replace them, and start it again: "
                                      "the list finds them. Files can be dragged here, too."));
    explanation->setWordWrap(true);
    layout->addWidget(explanation);
    layout->addWidget(makeList(), 1);
    layout->addWidget(makeButtons());
    layout->addWidget(makeSampleButtons());
    m_state->setAccessibleName(tr("What happened"));
    m_state->setWordWrap(true);
    layout->addWidget(m_state);
    m_unsaved->setText(tr("The preferences cannot be written: the next start will not know these files."));
    m_unsaved->setWordWrap(true);
    layout->addWidget(m_unsaved);
    load();
}

QString FilesPage::title() const { return tr("Files"); }

QWidget *FilesPage::makeList()
{
    m_list = new FileList;
    connect(m_list, &FileList::filesDropped, this, &FilesPage::choose);
    return m_list;
}

QPushButton *FilesPage::addButton(QBoxLayout *layout, const QString &text, void (FilesPage::*operation)())
{
    auto *button = new QPushButton(text);
    connect(button, &QPushButton::clicked, this, operation);
    layout->addWidget(button);
    return button;
}

QWidget *FilesPage::makeButtons()
{
    auto *panel = new QWidget;
    auto *layout = new QHBoxLayout(panel);
    layout->setContentsMargins({});
    addButton(layout, tr("&Choose Files…"), &FilesPage::openDialog);
    m_forSelection = {
        addButton(layout, tr("&Look Again"), &FilesPage::lookAgain),
        addButton(layout, tr("&Stop or Start Access"), &FilesPage::toggleAccess),
        addButton(layout, tr("&Remove from the List"), &FilesPage::removeSelected),
    };
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, &FilesPage::enableButtons);
    layout->addStretch();
    return panel;
}

QWidget *FilesPage::makeSampleButtons()
{
    auto *panel = new QGroupBox(tr("Try it with a sample file"));
    auto *layout = new QHBoxLayout(panel);
    addButton(layout, tr("&Make and Choose It"), &FilesPage::makeSample);
    m_forSample = {
        addButton(layout, tr("Re&name It"), &FilesPage::renameSample),
        addButton(layout, tr("Re&place It"), &FilesPage::replaceSample),
        addButton(layout, tr("&Delete It"), &FilesPage::deleteSample),
    };
    layout->addSpacing(24);
    addButton(layout, tr("Read the List &as at the Next Start"), &FilesPage::load);
    layout->addStretch();
    return panel;
}

void FilesPage::enableButtons()
{
    for (QPushButton *button : std::as_const(m_forSelection))
        button->setEnabled(!m_list->selectedItems().isEmpty());
    for (QPushButton *button : std::as_const(m_forSample))
        button->setEnabled(m_sample.exists());
}

void FilesPage::load()
{
    m_files.clear(); // first: access ends as it does when the gallery is closed
    const QVariantList stored = UserDefaults::standardUserDefaults()->objectForKey(key).toList();
    for (const QVariant &bookmark : stored)
        m_files.emplace_back(bookmark.toByteArray());
    save();
    showFiles();
    if (!stored.isEmpty())
        m_state->setText(tr("The list was read from the preferences."));
}

/// Also after reading: what was stale has been renewed.
void FilesPage::save()
{
    QVariantList stored;
    for (ChosenFile &file : m_files)
        stored << file.data();
    UserDefaults::standardUserDefaults()->setObject(stored, key);
    m_unsaved->setVisible(!UserDefaults::standardUserDefaults()->synchronize());
}

void FilesPage::showFiles()
{
    m_list->clear();
    for (ChosenFile &file : m_files) {
        const QFileInfo info(file.path());
        auto *item = new QTreeWidgetItem(
            m_list, {info.fileName(), file.stateText(), file.sizeText(), file.accessText(), info.path()});
        if (file.state() == ChosenFile::State::Lost)
            item->setForeground(1, Qt::red);
    }
    enableButtons();
}

void FilesPage::openDialog() { choose(QFileDialog::getOpenFileUrls(this, tr("Choose Files"))); }

void FilesPage::choose(const QList<QUrl> &urls)
{
    QStringList refused;
    for (const QUrl &url : urls) {
        const auto isIt = [path = url.toLocalFile()](ChosenFile &file) {
            return file.state() != ChosenFile::State::Lost && file.path() == path;
        };
        ChosenFile file(url);
        if (file.data().isNull())
            refused << url.toDisplayString(QUrl::PreferLocalFile);
        else if (std::none_of(m_files.begin(), m_files.end(), isIt))
            m_files.push_back(std::move(file));
    }
    save();
    showFiles();
    if (!urls.isEmpty())
        tell(refused.isEmpty(), tr("Files chosen: %1").arg(urls.size()),
             tr("No bookmark can be made of %1.").arg(refused.join(u", "_s)));
}

void FilesPage::withSelected(const std::function<void(ChosenFile &)> &operation)
{
    QList<int> rows;
    const QList<QTreeWidgetItem *> items = m_list->selectedItems();
    for (QTreeWidgetItem *item : items)
        rows << m_list->indexOfTopLevelItem(item);
    for (const int row : rows)
        operation(m_files[size_t(row)]);
    save();
    showFiles();
    for (const int row : rows)
        m_list->topLevelItem(row)->setSelected(true);
}

void FilesPage::lookAgain()
{
    withSelected(&ChosenFile::lookAgain);
    m_state->setText(tr("The selected files were looked for."));
}

void FilesPage::toggleAccess()
{
    withSelected(&ChosenFile::toggleAccess);
    m_state->setText(tr("Access to the selected files was stopped or started."));
}

void FilesPage::removeSelected()
{
    std::vector<ChosenFile> kept;
    for (int row = 0; row < m_list->topLevelItemCount(); ++row) {
        if (!m_list->topLevelItem(row)->isSelected())
            kept.push_back(std::move(m_files[size_t(row)]));
    }
    m_files = std::move(kept);
    m_state->setText(tr("The selected files were removed from the list."));
    save();
    showFiles();
}

void FilesPage::makeSample()
{
    const bool made = m_sample.make();
    if (made)
        choose({m_sample.url()});
    tell(made, tr("%1 was made and chosen.").arg(m_sample.path()), tr("%1 cannot be written.").arg(m_sample.path()));
}

void FilesPage::renameSample()
{
    const bool renamed = m_sample.rename();
    tell(renamed,
         tr("The file is %1 now. Look Again finds it, and so does the next start.").arg(m_sample.url().fileName()),
         tr("The sample file cannot be renamed."));
}

void FilesPage::replaceSample()
{
    tell(m_sample.replace(), tr("A new file has taken the sample file's place, as editors save."),
         tr("The sample file cannot be replaced."));
}

void FilesPage::deleteSample()
{
    tell(m_sample.remove(), tr("The sample file was deleted."), tr("The sample file cannot be deleted."));
}

void FilesPage::tell(bool worked, const QString &what, const QString &otherwise)
{
    m_state->setText(worked ? what : otherwise);
    enableButtons();
}
