// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// What the keyboard page does on its own: keys and buttons light up, an event is decoded, posted events are thrown away.
// On an X server the pointer is moved and found again.

#include "tour.h"

#include "keyboard/keyboardpage.h"
#include "keyboard/keyboardview.h"
#include "keyboard/mouseview.h"

#include <dravelin/interface.h>
#include <dravelin/platform/inputstate.h>

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QLabel>

#include <memory>

using dravelin::Event;
using dravelin::InputState;
using namespace Qt::StringLiterals;

namespace {

/// What the tour holds down, since nobody is there to do so.
class HeldByTour : public InputState
{
public:
    quint64 modifierFlags() override { return Event::Shift | Event::CapsLock; }
    quint64 pressedMouseButtons() override { return 1; }
    QPointF mouseLocation() override { return {320, 240}; }
};

constexpr quint32 capsLockAndShift = 3; // the X protocol's bits

} // namespace

class KeyboardPage::TourSteps
{
public:
    TourSteps(KeyboardPage &page, Tour &tour) : m_page(page), m_tour(tour) {}

    void run()
    {
        press();
        hold();
        discard();
        if (QGuiApplication::platformName() == u"xcb"_s)
            movePointer();
    }

private:
    void send(QEvent::Type type, int key, quint32 scanCode, const QString &text = {})
    {
        QKeyEvent event(type, key, Qt::ShiftModifier, scanCode, 0, capsLockAndShift, text);
        QCoreApplication::sendEvent(m_page.m_keyboard, &event);
    }

    void press()
    {
        send(QEvent::KeyPress, Qt::Key_Shift, 50);
        send(QEvent::KeyPress, Qt::Key_G, 42, u"g"_s);
        send(QEvent::KeyPress, Qt::Key_Left, 113);
        m_tour.expect(m_page.m_keyboard->heldKeys() == QSet<quint32>{50, 42, 113}, u"three keys are lit"_s);
        m_tour.expect(m_page.m_last->text().contains(u"0x030000, 2 of the eight\ncharacters U+F702"_s),
                      u"the left arrow is decoded"_s);
        m_tour.picture(m_page.window(), u"keyboard-1-events"_s);
        send(QEvent::KeyRelease, Qt::Key_Left, 113);
        send(QEvent::KeyRelease, Qt::Key_G, 42);
        send(QEvent::KeyRelease, Qt::Key_Shift, 50);
        m_tour.expect(m_page.m_keyboard->heldKeys().isEmpty(), u"released keys are dark"_s);
    }

    void hold()
    {
        const auto before = InputState::setCurrent(std::make_shared<HeldByTour>());
        m_page.showNow();
        m_tour.expect(m_page.m_now->text().contains(u"0x030000, 1 of the main four"_s),
                      u"shift and caps lock are held"_s);
        m_tour.picture(m_page.window(), u"keyboard-2-held"_s);
        InputState::setCurrent(before);
    }

    void discard()
    {
        m_page.m_keys = m_page.m_presses = 0;
        QCoreApplication::postEvent(m_page.m_keyboard, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, {}, u"a"_s));
        QCoreApplication::postEvent(
            m_page.m_keyboard, new QMouseEvent(QEvent::MouseButtonPress, {}, {}, Qt::LeftButton, Qt::LeftButton, {}));
        m_page.m_blockSeconds = 0;
        m_page.block(dravelin::discardAllMouseEvents);
        m_tour.waitFor([this] { return m_page.m_keys == 1; }, u"the key that waited arrives"_s);
        m_tour.expect(m_page.m_presses == 0, u"the click that waited does not"_s);
        m_page.m_blockSeconds = 2;
    }

    void movePointer()
    {
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        QCursor::setPos(screen.topLeft() + QPoint(50, 60));
        const QPointF expected(50, screen.height() - 60);
        m_tour.waitFor([=] { return dravelin::currentMouseLocation() == expected; }, u"the pointer is found"_s);
        m_page.showNow();
        m_tour.picture(m_page.window(), u"keyboard-3-live"_s);
    }

    KeyboardPage &m_page;
    Tour &m_tour;
};

void KeyboardPage::runTour(Tour &tour) { TourSteps(*this, tour).run(); }
