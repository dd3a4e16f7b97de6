// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "files/chosenfile.h"
#include "files/samplefile.h"
#include "page.h"

#include <functional>
#include <vector>

class FileList;
class QBoxLayout;
class QLabel;
class QPushButton;

/// Files that the user chose: the list is there again at the next start, also of files that were renamed or replaced
/// in between.
class FilesPage : public Page
{
    Q_OBJECT

public:
    FilesPage();

    [[nodiscard]] QString title() const override;
    void runTour(Tour &tour) override;

private:
    class TourSteps;

    QWidget *makeList();
    QWidget *makeButtons();
    QWidget *makeSampleButtons();
    QPushButton *addButton(QBoxLayout *layout, const QString &text, void (FilesPage::*operation)());
    void enableButtons();

    /// As at a start: what is stored is all that is known.
    void load();
    void save();
    void showFiles();

    void openDialog();
    void choose(const QList<QUrl> &urls);
    void lookAgain();
    void toggleAccess();
    void removeSelected();
    void withSelected(const std::function<void(ChosenFile &)> &operation);

    void makeSample();
    void renameSample();
    void replaceSample();
    void deleteSample();
    /// \param what that it worked, or what did not
    void tell(bool worked, const QString &what, const QString &otherwise);

    std::vector<ChosenFile> m_files;
    SampleFile m_sample;
    FileList *m_list = nullptr;
    QList<QPushButton *> m_forSelection, m_forSample;
    QLabel *m_state = nullptr;
    QLabel *m_unsaved = nullptr;
};
