// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the files page does on its own: four files in a temporary folder are dragged to a page, which is closed. Then
// one is renamed, one replaced and one deleted, and a new page shows what it found again.

#include "tour.h"

#include "files/filelist.h"
#include "files/filespage.h"

#include <QtCore/QMimeData>
#include <QtCore/QTemporaryDir>
#include <QtGui/QDropEvent>
#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

class FilesPage::TourSteps
{
public:
    TourSteps(FilesPage &page, Tour &tour) : m_page(page), m_tour(tour) {}

    void run()
    {
        chooseAndQuit();
        m_tour.expect(m_renamed.rename() && m_replaced.replace() && m_deleted.remove(),
                      u"files renamed, replaced and deleted while no page was open"_s);
        if (startAgain())
            work();
        m_tour.text(u"files-list"_s, m_report);
    }

private:
    void chooseAndQuit()
    {
        QMimeData dragged;
        QList<QUrl> urls;
        for (SampleFile *file : {&m_left, &m_renamed, &m_replaced, &m_deleted}) {
            m_tour.expect(file->make(), u"file made: "_s + file->url().fileName());
            urls << file->url();
        }
        dragged.setUrls(urls);
        FilesPage first;
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop({50, 50}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        for (QEvent *event : {static_cast<QEvent *>(&enter), static_cast<QEvent *>(&drop)})
            QCoreApplication::sendEvent(first.m_list->viewport(), event);
        m_tour.expect(states(first) == QList<State>(4, State::Chosen), u"four files dragged to the list"_s);
        record(u"chosen"_s, first);
        m_page.load();
        m_tour.picture(m_page.window(), u"files-chosen"_s);
        m_page.m_files.clear(); // as if the gallery were closed
    }

    bool startAgain()
    {
        m_page.load();
        record(u"after the next start"_s, m_page);
        m_tour.picture(m_page.window(), u"files-regained"_s);
        if (!m_tour.expect(states(m_page) == QList<State>({State::InPlace, State::Stale, State::Stale, State::Lost}),
                           u"found again: one in its place, two stale, one lost"_s))
            return false;
        m_tour.expect(m_page.m_files[1].path() == m_renamed.path(), u"the renamed file has its new name"_s);
        m_page.load();
        return m_tour.expect(states(m_page)[1] == State::InPlace, u"what was stale had been renewed"_s);
    }

    void work()
    {
        select(0);
        m_page.toggleAccess();
        m_tour.expect(!m_page.m_files[0].hasAccess(), u"access stopped"_s);
        m_page.toggleAccess();
        m_tour.expect(m_page.m_files[0].hasAccess(), u"access started"_s);
        m_tour.expect(m_left.rename(), u"a file renamed while the list is shown"_s);
        m_page.lookAgain();
        m_tour.expect(m_page.m_files[0].path() == m_left.path(), u"Look Again finds it"_s);
        select(3);
        m_page.removeSelected();
        record(u"at the end"_s, m_page);
        m_tour.picture(m_page.window(), u"files-at-the-end"_s);
        m_page.m_list->selectAll();
        m_page.removeSelected();
        m_page.load();
        m_tour.expect(m_page.m_files.empty(), u"the list is empty at the end"_s);
    }

    using State = ChosenFile::State;

    static QList<State> states(const FilesPage &page)
    {
        QList<State> states;
        for (const ChosenFile &file : page.m_files)
            states << file.state();
        return states;
    }

    void select(int row)
    {
        m_page.m_list->clearSelection();
        m_page.m_list->topLevelItem(row)->setSelected(true);
    }

    void record(const QString &when, const FilesPage &page)
    {
        m_report += u"== %1\n%2\n"_s.arg(when, page.m_list->text());
    }

    FilesPage &m_page;
    Tour &m_tour;
    QTemporaryDir m_folder;
    SampleFile m_left{m_folder.path(), u"left.txt"_s};
    SampleFile m_renamed{m_folder.path(), u"renamed.txt"_s};
    SampleFile m_replaced{m_folder.path(), u"replaced.txt"_s};
    SampleFile m_deleted{m_folder.path(), u"deleted.txt"_s};
    QString m_report;
};

void FilesPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
