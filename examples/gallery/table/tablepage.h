// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "page.h"

#include <dravelin/interface.h>

#include <memory>

class QCheckBox;
class QFileSystemModel;
class QLabel;
class QPushButton;

/// The rows of the list: paths of photos, or numbers.
class PhotoRows : public dravelin::TableViewHandler
{
    Q_OBJECT

public:
    using TableViewHandler::TableViewHandler;

    void updateTableView(QWidget *view, qsizetype row) override;
};

/// Photos of a folder in an order of one's own, and the folders that they are in.
class TablePage : public Page
{
    Q_OBJECT

public:
    TablePage();

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    class TourSteps;

    QWidget *makeControls();
    QWidget *makeFolders();
    void chooseFolder();
    void openFolder(const QString &path);
    void showRows();
    void showState();
    [[nodiscard]] QString hint() const;
    void revealInFolders();
    [[nodiscard]] QString selectedPath() const;
    [[nodiscard]] QString order() const;

    dravelin::TableView *m_table;
    PhotoRows m_rows;
    std::shared_ptr<QVariantList> m_photos;
    std::shared_ptr<QVariantList> m_million;
    dravelin::OutlineView *m_folders;
    QFileSystemModel *m_files;
    QString m_folder;
    QCheckBox *m_reorders = nullptr;
    QCheckBox *m_many = nullptr;
    QPushButton *m_up = nullptr;
    QPushButton *m_down = nullptr;
    QPushButton *m_reveal = nullptr;
    QLabel *m_state = nullptr;
    QLabel *m_order = nullptr;
    QLabel *m_hint = nullptr;
};
