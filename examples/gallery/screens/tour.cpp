// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the screens page does on its own: it shows the screens and, on an X server, the windows; under a window manager it
// makes its own window fill the screen and leaves again.

#include "tour.h"

#include "screens/screenspage.h"

#include <dravelin/interface/screens.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

class ScreensPage::TourSteps
{
public:
    TourSteps(ScreensPage &page, Tour &tour) : m_page(page), m_tour(tour) {}

    void run()
    {
        m_tour.expect(m_page.m_timer.isActive(), u"the screens are watched while they are shown"_s);
        m_tour.expect(m_page.m_table->rowCount() == dravelin::createScreensFrameList().size(),
                      u"there is a row for each screen"_s);
        const bool isX = QGuiApplication::platformName() == "xcb"_L1;
        if (isX)
            m_tour.waitFor([this] { return seesItself(); }, u"the gallery's window is among the windows"_s);
        m_page.refresh();
        record(u"screens-1-desktop"_s);
        if (isX && m_page.window()->frameGeometry() != m_page.window()->geometry()) // there is a window manager
            canFillScreen() ? fillScreen() : m_tour.did(u"too small a screen to fill: left out"_s);
    }

private:
    [[nodiscard]] bool seesItself() const
    {
        m_page.refresh();
        const auto isOurs = [this](auto &window) { return window.title.contains(m_page.window()->windowTitle()); };
        const QList<DesktopView::Window> &windows = m_page.m_view->scene().windows;
        return std::any_of(windows.begin(), windows.end(), isOurs);
    }

    [[nodiscard]] bool canFillScreen() const
    {
        const QSize least = m_page.window()->minimumSizeHint();
        return least.boundedTo(m_page.screen()->size()) == least;
    }

    void fillScreen()
    {
        const QScreen *screen = m_page.screen();
        m_page.m_toggle->click();
        m_tour.waitFor([=] { return dravelin::isFullScreen(screen); }, u"the window fills the screen"_s);
        m_tour.waitFor([this] { return m_page.window()->size() == m_page.screen()->size(); }, u"it is laid out"_s);
        m_page.refresh();
        record(u"screens-2-full"_s);
        m_page.m_toggle->click();
        m_tour.waitFor([=] { return !dravelin::isFullScreen(screen); }, u"the window leaves full screen"_s);
    }

    void record(const QString &name)
    {
        m_tour.picture(m_page.window(), name);
        m_tour.text(name, m_page.answers());
    }

    ScreensPage &m_page;
    Tour &m_tour;
};

void ScreensPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
