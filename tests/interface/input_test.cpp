// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/input.h>
#include <dravelin/platform/inputstate.h>

#include <support/printers.h>

#include <QtCore/QTimer>
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <bit>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

constexpr quint32 lockMask = 2;
constexpr quint64 allFlags = 0xFF0000;

QKeyEvent key(int code, Qt::KeyboardModifiers modifiers = {}, const QString &text = {}, quint32 native = 0,
              QEvent::Type type = QEvent::KeyPress)
{
    return {type, code, modifiers, 38, 0, native, text};
}

QMouseEvent mouse(QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    return {type, {}, QPointF(10, 20), button, buttons, Qt::AltModifier};
}

/// A keyboard that holds what the test says.
class Held : public InputState
{
public:
    quint64 flags = 0;
    quint64 modifierFlags() override { return flags; }
};

struct Modifier
{
    quint64 flag;
    bool (*is)(const Event &) noexcept;
    bool (*isOnly)(const Event &) noexcept;
};
constexpr Modifier modifiers[] = {{Event::CapsLock, capsLockKey, capsLockKeyOnly},
                                  {Event::Shift, shiftKey, shiftKeyOnly},
                                  {Event::Control, controlKey, controlKeyOnly},
                                  {Event::Option, optionKey, optionKeyOnly},
                                  {Event::Command, commandKey, commandKeyOnly},
                                  {Event::NumericPad, numericPadKey, numericPadKeyOnly},
                                  {Event::Help, helpKey, helpKeyOnly},
                                  {Event::Function, functionKey, functionKeyOnly}};
constexpr std::pair<char16_t, bool (*)(const Event &)> codes[] = {{u'\uF700', upArrowKey},
                                                                  {u'\uF701', downArrowKey},
                                                                  {u'\uF702', leftArrowKey},
                                                                  {u'\uF703', rightArrowKey},
                                                                  {u'\x1b', escapeKey}};

/// Notes what it gets.
class Recorder : public QWidget
{
public:
    QString keys;
    int presses = 0;

protected:
    void keyPressEvent(QKeyEvent *event) override { keys += event->text(); }
    void mousePressEvent(QMouseEvent *) override { ++presses; }
};

} // namespace

TEST(EventTest, KeysHaveTheirCharactersFlagsAndTypes)
{
    struct Row
    {
        QKeyEvent event;
        QString characters;
        quint64 flags = 0;
        Event::Type type = Event::KeyDown;
    };
    const auto native = [](Qt::KeyboardModifiers held, quint32 mask) { return key(Qt::Key_A, held, u"A"_s, mask); };
    const Row rows[] = {
        {key(Qt::Key_Up), u"\uF700"_s},
        {key(Qt::Key_Down), u"\uF701"_s},
        {key(Qt::Key_Right, Qt::ShiftModifier), u"\uF703"_s, Event::Shift},
        {key(Qt::Key_Left, Qt::KeypadModifier), u"\uF702"_s, Event::NumericPad},
        {key(Qt::Key_5, Qt::KeypadModifier, u"5"_s), u"5"_s, Event::NumericPad},
        {key(Qt::Key_Escape, {}, u"\x1b"_s), u"\x1b"_s},
        {key(Qt::Key_Backspace, {}, u"\b"_s), u"\x7f"_s},
        {key(Qt::Key_Delete, {}, u"\x7f"_s), u"\uF728"_s},
        {key(Qt::Key_F1), u"\uF704"_s, Event::Function},
        {key(Qt::Key_F35), u"\uF726"_s, Event::Function},
        {key(Qt::Key_Help), u"\uF746"_s, Event::Help},
        {key(Qt::Key_S, Qt::ControlModifier, u"\x13"_s), u"\x13"_s, Event::Control},
        {key(Qt::Key_S, Qt::ControlModifier | Qt::MetaModifier, u"\x13"_s), u"\x13"_s, Event::Control | Event::Command},
        {key(Qt::Key_A, Qt::AltModifier, u"a"_s), u"a"_s, Event::Option},
        {key(Qt::Key_F2, Qt::KeyboardModifiers(0x3E000000), {}, lockMask), u"\uF705"_s, allFlags & ~Event::Help},
        {native({}, lockMask), u"A"_s, Event::CapsLock},
        {native(Qt::ShiftModifier, lockMask | 1), u"A"_s, Event::CapsLock | Event::Shift},
        {native(Qt::ShiftModifier, 1), u"A"_s, Event::Shift},
        {key(Qt::Key_Shift), u""_s, Event::Shift, Event::FlagsChanged},
        {key(Qt::Key_Shift, Qt::ShiftModifier), u""_s, Event::Shift, Event::FlagsChanged},
        {key(Qt::Key_Alt, Qt::AltModifier, {}, 0, QEvent::KeyRelease), u""_s, 0, Event::FlagsChanged},
        {key(Qt::Key_Super_L), u""_s, Event::Command, Event::FlagsChanged},
        {key(Qt::Key_A, {}, u"a"_s, 0, QEvent::KeyRelease), u"a"_s, 0, Event::KeyUp},
    };
    for (const Row &row : rows) {
        const Event event(row.event);
        EXPECT_EQ(event.characters(), row.characters) << row.event.key();
        EXPECT_EQ(event.modifierFlags(), row.flags) << row.event.key();
        EXPECT_EQ(event.type(), row.type) << row.event.key();
        EXPECT_FALSE(event.characters().isNull());
        EXPECT_TRUE(isCharacter(event, row.characters));
        EXPECT_FALSE(isCharacter(event, row.characters + u'b') || isCharacter(event, u"B"_s) || isCharacter(event, {}));
        EXPECT_EQ(modifierPressedCount(event), quint64(std::popcount(row.flags)));
        for (const auto &[flag, is, isOnly] : modifiers) {
            EXPECT_EQ(is(event), (row.flags & flag) != 0) << row.event.key() << ' ' << flag;
            EXPECT_EQ(isOnly(event), row.flags == flag) << row.event.key() << ' ' << flag;
        }
        for (const auto &[code, is] : codes)
            EXPECT_EQ(is(event), row.characters.startsWith(QChar(code))) << row.event.key() << ' ' << int(code);
    }
}

TEST(EventTest, MouseEventsHaveTypeAndPlace)
{
    using enum Qt::MouseButton;
    const std::tuple<QEvent::Type, Qt::MouseButton, Qt::MouseButtons, Event::Type> rows[] = {
        {QEvent::MouseButtonPress, LeftButton, LeftButton | RightButton, Event::LeftMouseDown},
        {QEvent::MouseButtonDblClick, RightButton, RightButton, Event::RightMouseDown},
        {QEvent::MouseButtonPress, MiddleButton, MiddleButton, Event::OtherMouseDown},
        {QEvent::MouseButtonRelease, LeftButton, NoButton, Event::LeftMouseUp},
        {QEvent::MouseMove, NoButton, NoButton, Event::MouseMoved},
        {QEvent::MouseMove, NoButton, LeftButton | RightButton, Event::LeftMouseDragged},
        {QEvent::MouseMove, NoButton, RightButton | MiddleButton, Event::RightMouseDragged},
        {QEvent::MouseMove, NoButton, BackButton, Event::OtherMouseDragged},
    };
    const double height = QGuiApplication::primaryScreen()->geometry().height();
    for (const auto &[type, button, buttons, expected] : rows) {
        const Event event(mouse(type, button, buttons));
        EXPECT_EQ(event.type(), expected);
        EXPECT_EQ(event.modifierFlags(), Event::Option);
        EXPECT_EQ(event.location(), QPointF(10, height - 20));
        EXPECT_TRUE(event.characters().isNull());
        EXPECT_FALSE(upArrowKey(event) || escapeKey(event) || isCharacter(event, u""_s));
    }
    QMouseEvent timed = mouse(QEvent::MouseMove, NoButton, NoButton);
    timed.setTimestamp(12'345);
    EXPECT_EQ(Event(timed).timestamp(), 12.345);
    EXPECT_EQ(Event(QEvent(QEvent::Leave)).type(), Event::MouseExited);
    EXPECT_EQ(Event(QEvent(QEvent::Timer)).type(), Event::NoType);
    EXPECT_EQ(Event(nullptr).type(), Event::NoType);
}

TEST(ModifierKeyFlagsTest, CountsOnRequestOnly)
{
    const auto held = std::make_shared<Held>();
    InputState::setCurrent(held);
    held->flags = Event::Shift | Event::CapsLock;
    ModifierKeyFlags flags;
    EXPECT_TRUE(flags.shiftKeyPressedOnly()) << "caps lock is none of the four";
    flags.setCommandKey(true);
    flags.setOptionKey(true);
    EXPECT_EQ(flags.pressedCount(), 1U);
    EXPECT_TRUE(flags.shiftKeyPressedOnly() && flags.commandKeyPressedOnly() && flags.optionKeyPressedOnly());
    flags.keyPressedCount();
    EXPECT_EQ(flags.pressedCount(), 3U);
    EXPECT_FALSE(flags.shiftKeyPressedOnly() || flags.commandKeyPressedOnly());
    flags.clear();
    EXPECT_FALSE(flags.shiftKey() || flags.commandKey() || flags.optionKey() || flags.pressedCount() != 0);
    held->flags = Event::Control | Event::Option;
    flags.refresh();
    EXPECT_TRUE(flags.controlKey() && flags.optionKey() && !flags.shiftKey() && flags.pressedCount() == 2);
    EXPECT_TRUE(isControlKeyPressed() && isOptionKeyPressed());
    EXPECT_FALSE(isShiftKeyPressed() || isCommandKeyPressed());
    InputState::setCurrent(nullptr);
}

TEST(DiscardTest, RemovesPostedInputAndNothingElse)
{
    Recorder widget;
    int timers = 0;
    const auto post = [&] {
        QCoreApplication::postEvent(&widget, mouse(QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton).clone());
        QCoreApplication::postEvent(&widget, key(Qt::Key_A, {}, u"a"_s).clone());
        QTimer::singleShot(0, &widget, [&] { ++timers; });
    };
    post();
    discardAllMouseEvents();
    EXPECT_TRUE(QTest::qWaitFor([&] { return timers == 1 && widget.keys == u"a"_s; }));
    EXPECT_EQ(widget.presses, 0);
    post();
    discardAllEvents();
    EXPECT_TRUE(QTest::qWaitFor([&] { return timers == 2; }));
    QTest::mouseClick(&widget, Qt::LeftButton);
    QTest::keyClick(&widget, Qt::Key_B);
    EXPECT_EQ(widget.keys, u"ab"_s);
    EXPECT_EQ(widget.presses, 1);
}
