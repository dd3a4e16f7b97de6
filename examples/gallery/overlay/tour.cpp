// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the overlay page does on its own: moves the sliders, and finds every icon tinted, its transparency kept, and the
// icons themselves untouched.

#include "tour.h"

#include "overlay/overlaypage.h"

#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QSlider>

using namespace Qt::StringLiterals;

class OverlayPage::TourSteps
{
public:
    TourSteps(OverlayPage &page, Tour &tour) : m_page(page), m_tour(tour) {}

    void run()
    {
        const QList<QImage> originals = m_page.m_originals->images();
        m_tour.expect(originals.size() >= 5, u"there are icons"_s);
        for (const int hue : {0, 333, 600}) {
            m_page.m_hue->setValue(hue);
            m_tour.expect(keepAlpha(), u"hue %1 keeps the transparency"_s.arg(hue));
        }
        m_tour.picture(m_page.window(), u"overlay-1-blue"_s);
        m_report += m_page.m_state->text() + u'\n';
        m_page.m_grey->setChecked(true);
        m_tour.expect(keepAlpha(), u"grey keeps the transparency"_s);
        m_tour.picture(m_page.window(), u"overlay-2-darkened"_s);
        m_report += m_page.m_state->text() + u'\n';
        m_page.m_grey->setChecked(false);
        m_page.m_background->setChecked(true);
        m_page.m_hue->setValue(110);
        m_tour.expect(m_page.m_results->images().constFirst().pixelColor(128, 10).alpha() == 255,
                      u"the background fills what was clear"_s);
        m_tour.picture(m_page.window(), u"overlay-3-background"_s);
        m_report += m_page.m_state->text() + u'\n';
        m_tour.expect(m_page.m_originals->images() == originals, u"the icons are as they were"_s);
        m_tour.text(u"overlay-times"_s, m_report);
    }

private:
    [[nodiscard]] bool keepAlpha() const
    {
        const QList<QImage> &before = m_page.m_originals->images(), &after = m_page.m_results->images();
        for (qsizetype i = 0; i < before.size(); ++i) {
            if (before[i].convertToFormat(QImage::Format_Alpha8) != after[i].convertToFormat(QImage::Format_Alpha8))
                return false;
        }
        return before.size() == after.size();
    }

    OverlayPage &m_page;
    Tour &m_tour;
    QString m_report;
};

void OverlayPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
