// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the stack page does on its own: finds the view arranged by the interface file, then goes through the alignments,
// spreads the children, resizes and removes some with keys and mouse, down to the view without children.

#include "tour.h"

#include "stack/block.h"
#include "stack/stackpage.h"

#include <dravelin/platform/geometry.h>

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>

using namespace Qt::StringLiterals;
using namespace dravelin;

class StackPage::TourSteps
{
public:
    TourSteps(StackPage &page, Tour &tour) : m_page(page), m_tour(tour) {}

    void run()
    {
        align();
        spread();
        resize();
        removeAll();
        m_page.load();
        m_tour.expect(frame(m_page.m_column) == QRectF(24, 24, 100, 76), u"the file is read again"_s);
        m_tour.text(u"stack-frames"_s, m_report);
    }

private:
    using Places = QList<QPointF>;

    [[nodiscard]] QList<Block *> blocks() const { return m_page.m_column->findChildren<Block *>(); }

    [[nodiscard]] Places places() const
    {
        Places result;
        for (const Block *block : blocks())
            result << frame(block).topLeft();
        return result;
    }

    void record(const QString &what) { m_report += u"== %1\n%2\n"_s.arg(what, m_page.m_frames->text()); }

    void align()
    {
        m_tour.expect(frame(m_page.m_column) == QRectF(24, 24, 100, 76), u"the file's view fits its children"_s);
        const Places expected[] = {
            {{0, 0}, {0, 28}, {0, 66}}, {{0, 0}, {25, 28}, {10, 66}}, {{0, 0}, {50, 28}, {20, 66}}};
        for (int alignment = 0; alignment < 4; ++alignment) {
            m_page.m_alignment->setCurrentIndex(alignment);
            m_tour.expect(places() == expected[alignment % 3], u"stack view aligned by %1"_s.arg(alignment));
            m_tour.picture(m_page.window(), u"stack-1-alignment-%1"_s.arg(alignment));
            record(u"alignment %1"_s.arg(alignment));
        }
    }

    void spread()
    {
        m_page.m_alignment->setCurrentIndex(0);
        m_page.m_sizeToFit->setChecked(false);
        m_page.m_height->setValue(100);
        m_tour.expect(places() == Places{{0, 0}, {0, double(33.333332F)}, {0, double(76.666664F)}},
                      u"the children are spread over 100 pixels"_s);
        record(u"spread over 100"_s);
        m_page.m_height->setValue(360);
        m_tour.picture(m_page.window(), u"stack-2-spread"_s);
        record(u"spread over 360"_s);
        m_page.m_height->setValue(30);
        m_tour.expect(m_page.m_column->calculateItemSpacing() == -10, u"the gap is negative in too low a view"_s);
        m_tour.picture(m_page.window(), u"stack-3-overlap"_s);
        m_page.m_sizeToFit->setChecked(true);
    }

    void press(Block *block, int key)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::ShiftModifier);
        QCoreApplication::sendEvent(block, &event);
        QCoreApplication::processEvents();
    }

    static void mouse(Block *block, QEvent::Type type, const QPointF &place)
    {
        QMouseEvent event(type, block->mapFromGlobal(place), place, Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(block, &event);
    }

    void resize()
    {
        m_page.addBlock();
        m_page.m_childHeight->setValue(40.25);
        m_page.m_alignment->setCurrentIndex(1);
        press(blocks()[0], Qt::Key_Right);
        m_tour.expect(frame(blocks()[0]).width() == 110, u"a key widens a child"_s);
        Block *second = blocks()[1];
        const QPointF corner = second->mapToGlobal(QPointF(49, 29));
        mouse(second, QEvent::MouseButtonPress, corner);
        for (int i = 1; i <= 5; ++i)
            mouse(second, QEvent::MouseMove, corner + QPointF(20, 8) * i);
        mouse(second, QEvent::MouseButtonRelease, corner + QPointF(100, 40));
        m_tour.expect(frame(second).size() == QSizeF(150, 70), u"the mouse resizes a child"_s);
        m_tour.expect(frame(m_page.m_column).size() == QSizeF(150, 164.25), u"and the view fits it"_s);
        m_tour.picture(m_page.window(), u"stack-4-resized"_s);
        record(u"resized"_s);
    }

    void removeAll()
    {
        while (!blocks().isEmpty()) {
            m_page.select(blocks().constLast());
            press(blocks().constLast(), Qt::Key_Delete);
        }
        m_tour.expect(frame(m_page.m_column) == QRectF(24, 24, 0, -8),
                      u"without children the view is minus one gap high"_s);
        record(u"no children"_s);
    }

    StackPage &m_page;
    Tour &m_tour;
    QString m_report;
};

void StackPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
