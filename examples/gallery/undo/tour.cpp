// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the undo page does on its own: makes shapes, drags one with the mouse, changes them, then walks back to the empty
// page and forth again through the menu, and finds every state as it was.

#include "tour.h"

#include "undo/undopage.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QAction>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QMenu>

using namespace Qt::StringLiterals;

class UndoPage::TourSteps
{
public:
    TourSteps(UndoPage &page, Tour &tour) : m_page(page), m_tour(tour) {}

    void run()
    {
        remember();
        for (int i = 0; i < 4; ++i)
            choose(u"&Add a Shape"_s);
        drag();
        choose(u"&Colour"_s);
        m_tour.picture(m_page.window(), u"undo-1-edited"_s);
        choose(u"&Shake"_s);
        choose(u"&Delete"_s);
        m_tour.expect(m_page.m_undo.undoMenuItemTitle() == u"Undo Delete"_s, u"the menu names the last change"_s);
        back();
        forth();
    }

private:
    [[nodiscard]] const QList<Shape> &shapes() const { return m_page.m_canvas->shapes(); }
    [[nodiscard]] QAction *undo() const { return m_page.m_menu->actions().at(0); }
    [[nodiscard]] QAction *redo() const { return m_page.m_menu->actions().at(1); }

    void remember() { m_states << shapes(); }

    /// Triggers a menu item, and lets the event end.
    void choose(const QString &text)
    {
        const QList<QAction *> actions = m_page.m_menu->actions();
        for (QAction *action : actions) {
            if (action->text() == text)
                action->trigger();
        }
        QCoreApplication::processEvents();
        remember();
    }

    void mouse(QEvent::Type type, QPoint place)
    {
        QMouseEvent event(type, place, m_page.m_canvas->mapToGlobal(place), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_page.m_canvas, &event);
        QCoreApplication::processEvents();
    }

    void drag()
    {
        const QPoint from = shapes().constFirst().centre;
        mouse(QEvent::MouseButtonPress, from);
        for (int i = 1; i <= 8; ++i)
            mouse(QEvent::MouseMove, from + QPoint(20, 30) * i);
        mouse(QEvent::MouseButtonRelease, from + QPoint(160, 240));
        m_tour.expect(shapes().constFirst().centre == from + QPoint(160, 240), u"the mouse drags a shape"_s);
        remember();
    }

    void back()
    {
        for (qsizetype i = m_states.size() - 2; i >= 0; --i) {
            m_tour.expect(undo()->isEnabled(), undo()->text());
            undo()->trigger();
            m_tour.expect(shapes() == m_states[i],
                          u"the page is as it was %1 changes before"_s.arg(m_states.size() - 1 - i));
            if (i == 4)
                showMenu();
        }
        m_tour.expect(!undo()->isEnabled(), u"then there is nothing to undo"_s);
    }

    void showMenu()
    {
        m_tour.picture(m_page.window(), u"undo-2-undone"_s);
        m_page.m_menu->popup(m_page.mapToGlobal(QPoint(20, 40)));
        m_tour.picture(m_page.m_menu, u"undo-3-menu"_s);
        m_page.m_menu->hide();
    }

    void forth()
    {
        for (qsizetype i = 1; i < m_states.size(); ++i) {
            m_tour.expect(redo()->isEnabled(), redo()->text());
            redo()->trigger();
            m_tour.expect(shapes() == m_states[i], u"redone, the page is as it was after change %1"_s.arg(i));
        }
        m_tour.expect(!redo()->isEnabled(), u"then there is nothing to redo"_s);
        m_tour.picture(m_page.window(), u"undo-4-redone"_s);
    }

    UndoPage &m_page;
    Tour &m_tour;
    QList<QList<Shape>> m_states;
};

void UndoPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
