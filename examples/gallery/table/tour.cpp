// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the table page does on its own: drops photos in both ways, moves them by keys, shows one in its folder, and
// scrolls through a million rows.

#include "tour.h"

#include "table/photocell.h"
#include "table/tablepage.h"

#include <QtCore/QDir>
#include <QtCore/QMimeData>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QFileSystemModel>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollBar>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace dravelin;

class TablePage::TourSteps
{
public:
    TourSteps(TablePage &page, Tour &tour) : m_page(page), m_table(*page.m_table), m_tour(tour) {}

    void run()
    {
        drawPhotosIfNone();
        m_tour.waitFor([] { return PhotoCell::awaited() == 0; }, u"the thumbnails of the photos"_s);
        m_before = *m_page.m_photos;
        note(u"as found"_s);
        gather();
        moveToDropRow();
        moveByKeys();
        reveal();
        scrollMany();
        m_tour.text(u"table-orders"_s, m_report);
    }

private:
    /// Where no wallpapers are installed.
    void drawPhotosIfNone()
    {
        if (m_page.m_photos->size() >= 8)
            return;
        const QString folder = m_tour.folder().absoluteFilePath(u"config/pictures/of the tour"_s);
        QDir().mkpath(folder);
        for (int number = 0; number < 10; ++number) {
            QImage image(320, 200, QImage::Format_RGB32);
            image.fill(QColor::fromHsv(number * 36, 160, 220));
            m_tour.expect(image.save(u"%1/%2_drawn.png"_s.arg(folder).arg(QChar(u'a' + number))), u"a photo"_s);
        }
        m_page.openFolder(folder);
    }

    void note(const QString &what) { m_report += u"%1\n    %2\n"_s.arg(what, m_page.m_order->text()); }

    [[nodiscard]] bool isOrder(std::initializer_list<int> rows) const
    {
        const QVariantList &now = *m_page.m_photos;
        const auto isThere = [&, row = 0](int old) mutable { return now[row++] == m_before[old]; };
        return now.size() == m_before.size() && std::all_of(rows.begin(), rows.end(), isThere);
    }

    /// A drag as the table tells of it and the window system sends it; without a screen there are no others.
    void drag(const IndexSet &rows, int dropRow, const QString &picture)
    {
        m_table.selectRowIndexes(rows, false);
        const auto items = PasteboardItem::toMimeData({*m_page.m_rows.pasteboardWriterForRow(&m_table, 0)});
        const QPoint place(40, m_table.rowViewportPosition(dropRow) + 2);
        m_page.m_rows.willBeginAtPoint(&m_table, {}, rows);
        QDragEnterEvent enter(place, Qt::MoveAction, items.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_table.viewport(), &enter);
        QDragMoveEvent move(place, Qt::MoveAction, items.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_table.viewport(), &move);
        m_tour.expect(move.isAccepted(), u"the drop is possible"_s);
        m_tour.picture(m_page.window(), picture);
        QDropEvent drop(place, Qt::MoveAction, items.get(), Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_table.viewport(), &drop);
        m_page.m_rows.endedAtPoint(&m_table, {}, int(drop.dropAction()));
    }

    void gather()
    {
        m_page.m_reorders->setChecked(false);
        drag({1, 3, 5}, 0, u"table-1-gather-before"_s);
        m_tour.expect(isOrder({0, 1, 3, 5, 2, 4, 6, 7}), u"scattered photos come together"_s);
        m_tour.picture(m_page.window(), u"table-2-gather-after"_s);
        note(u"rows 2, 4 and 6 dropped"_s);
    }

    void moveToDropRow()
    {
        m_before = *m_page.m_photos;
        m_page.m_reorders->setChecked(true);
        drag({0, 2, 6}, 5, u"table-3-move-before"_s);
        m_tour.expect(isOrder({1, 3, 4, 0, 2, 6, 5, 7}), u"photos go where they are dropped"_s);
        m_tour.expect(m_table.selectedRowIndexes() == IndexSet{3, 4, 5}, u"and stay selected"_s);
        m_tour.picture(m_page.window(), u"table-4-move-after"_s);
        note(u"rows 1, 3 and 7 dropped above row 6"_s);
    }

    void moveByKeys()
    {
        m_before = *m_page.m_photos;
        for (const int key : {Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Down}) {
            QKeyEvent press(QEvent::KeyPress, key, Qt::AltModifier);
            QCoreApplication::sendEvent(&m_table, &press);
        }
        m_tour.expect(isOrder({0, 3, 4, 5, 1, 2, 6, 7}), u"photos move by keys"_s);
        m_tour.picture(m_page.window(), u"table-5-keys"_s);
        note(u"rows 4 to 6 moved by keys, three up and one down"_s);
    }

    void reveal()
    {
        m_table.selectRowIndexes({2}, false);
        const QString path = m_page.selectedPath();
        m_page.m_reveal->click();
        const auto isSelected = [&] {
            const QModelIndexList selected = m_page.m_folders->selectionModel()->selectedIndexes();
            return !selected.isEmpty() && m_page.m_files->filePath(selected.constFirst()) == path;
        };
        m_tour.waitFor(isSelected, u"a photo is shown in its folder"_s);
        const QModelIndex folder = m_page.m_files->index(QFileInfo(path).path());
        m_tour.waitFor([&] { return m_page.m_files->rowCount(folder) >= m_before.size(); }, u"with the others"_s);
        m_page.m_folders->scrollTo(m_page.m_files->index(path), QAbstractItemView::PositionAtCenter);
        m_tour.waitFor([&] { return m_page.m_folders->viewport()->rect().intersects(shown(path)); }, u"in sight"_s);
        m_tour.picture(m_page.window(), u"table-6-folder"_s);
        m_report += u"shown in its folder\n    %1\n"_s.arg(path);
    }

    [[nodiscard]] QRect shown(const QString &path) const
    {
        return m_page.m_folders->visualRect(m_page.m_files->index(path));
    }

    void scrollMany()
    {
        m_page.m_many->setChecked(true);
        m_tour.expect(m_table.numberOfRows() == 1'000'000, u"a million rows"_s);
        for (const double place : {0.5, 0.123, 1.0, 0.75}) {
            m_table.verticalScrollBar()->setValue(int(place * m_table.verticalScrollBar()->maximum()));
            QCoreApplication::processEvents();
        }
        m_tour.expect(PhotoCell::count() < 100, u"with %1 views"_s.arg(PhotoCell::count()));
        const auto row = quint64(m_table.rowAt(100));
        drag({row, row + 2}, int(row) + 4, u"table-7-million-before"_s);
        m_tour.expect(m_table.selectedRowIndexes() == IndexSet{row + 2, row + 3}, u"and rows among them move"_s);
        m_tour.picture(m_page.window(), u"table-8-million-after"_s);
        m_report += u"a million rows\n    %1\n"_s.arg(m_page.m_state->text());
        m_page.m_many->setChecked(false);
    }

    TablePage &m_page;
    TableView &m_table;
    Tour &m_tour;
    QVariantList m_before;
    QString m_report;
};

void TablePage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
