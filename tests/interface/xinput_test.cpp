// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Keyboard and mouse of a real X server, which the program starts and runs on, driven by xdotool.

#include <dravelin/interface/input.h>
#include <dravelin/platform/inputstate.h>

#include "platform/xinput.h"

#include <support/desktop.h>
#include <support/printers.h>

#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

#include <gtest/gtest.h>

#include <functional>
#include <iostream>

#include <unistd.h>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

/// Returns when the server has the input; the application's events wait meanwhile.
void xdotool(const QString &arguments)
{
    ASSERT_EQ(QProcess::execute(u"xdotool"_s, arguments.split(u' ')), 0) << arguments.toStdString();
}

class Recorder : public QWidget
{
public:
    Recorder()
    {
        setGeometry(100, 100, 300, 200);
        setFocusPolicy(Qt::StrongFocus);
        setMouseTracking(true);
    }
    QList<Event> events;
    QString keys;
    std::function<void()> onPress = [] {};

    [[nodiscard]] qsizetype count(Event::Type type) const
    {
        return std::count_if(events.begin(), events.end(), [type](const Event &e) { return e.type() == type; });
    }

protected:
    bool event(QEvent *event) override
    {
        const Event input(event->type() == QEvent::ShortcutOverride ? nullptr : event);
        if (input.type() != Event::NoType)
            events << input;
        if (input.type() == Event::KeyDown)
            keys += input.characters();
        if (input.type() == Event::LeftMouseDown) // a double click's as well
            onPress();
        return QWidget::event(event);
    }
};

class XInputTest : public testing::Test
{
protected:
    void SetUp() override
    {
        xdotool(u"mousemove 30 40"_s);
        widget.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget, 30'000));
        xdotool(u"mousemove 150 150 windowfocus %1"_s.arg(widget.winId()));
        ASSERT_TRUE(becomes([&] { return widget.hasFocus() && widget.underMouse(); }));
        widget.events.clear();
    }
    Recorder widget;
};

} // namespace

TEST_F(XInputTest, TellsWhatIsHeldBeforeAnyEventCame)
{
    const std::pair<const char *, quint64> rows[] = {{"Shift_L", Event::Shift},
                                                     {"Shift_R", Event::Shift},
                                                     {"Control_L", Event::Control},
                                                     {"Alt_L", Event::Option},
                                                     {"Super_L", Event::Command},
                                                     {"Super_R", Event::Command},
                                                     {"a", 0}};
    for (const auto &[name, flags] : rows) {
        xdotool(u"keydown "_s + QLatin1String(name));
        EXPECT_EQ(InputState::current()->modifierFlags(), flags) << name;
        EXPECT_EQ(isShiftKeyPressed(), flags == Event::Shift);
        EXPECT_EQ(isCommandKeyPressed(), flags == Event::Command);
        xdotool(u"keyup "_s + QLatin1String(name));
        EXPECT_EQ(InputState::current()->modifierFlags(), 0U) << name;
    }
    xdotool(u"mousemove 30 40 mousedown 1"_s);
    EXPECT_TRUE(isLeftMouseButtonPressed() && !isRightMouseButtonPressed());
    EXPECT_EQ(currentMouseLocation(), QPointF(30, 560));
    xdotool(u"mouseup 1 mousedown 3 mousedown 2"_s);
    EXPECT_TRUE(!isLeftMouseButtonPressed() && isRightMouseButtonPressed());
    EXPECT_EQ(InputState::current()->pressedMouseButtons(), 6U);
    xdotool(u"mouseup 2 mouseup 3"_s);
    EXPECT_EQ(InputState::current()->pressedMouseButtons(), 0U);
}

TEST_F(XInputTest, FollowsTheKeyboardMap)
{
    if (QStandardPaths::findExecutable(u"xmodmap"_s).isEmpty())
        GTEST_SKIP() << "there is no xmodmap to exchange modifiers";
    const auto exchange = [](const QString &ofAlt, const QString &ofSuper) {
        const QString changes = u"-e,clear mod1,-e,clear mod4,-e,add %1 = Alt_L,-e,add %2 = Super_L"_s;
        return QProcess::execute(u"xmodmap"_s, changes.arg(ofAlt, ofSuper).split(u','));
    };
    EXPECT_EQ(InputState::current()->modifierFlags(), 0U) << "read before the change";
    ASSERT_EQ(exchange(u"mod4"_s, u"mod1"_s), 0);
    xdotool(u"keydown Super_L"_s);
    EXPECT_TRUE(isCommandKeyPressed() && !isOptionKeyPressed());
    xdotool(u"keyup Super_L keydown Alt_L"_s);
    EXPECT_TRUE(isOptionKeyPressed() && !isCommandKeyPressed());
    xdotool(u"keyup Alt_L"_s);
    ASSERT_EQ(exchange(u"mod1"_s, u"mod4"_s), 0);
}

TEST_F(XInputTest, KnowsCapsLock)
{
    xdotool(u"key Caps_Lock keydown Shift_L"_s);
    EXPECT_TRUE(ModifierKeyFlags().shiftKeyPressedOnly());
    xdotool(u"key a keyup Shift_L click 1 key Caps_Lock"_s);
    ASSERT_TRUE(becomes([&] { return widget.keys == u"a"_s && widget.count(Event::LeftMouseUp) > 0; }))
        << widget.keys.toStdString();
    const auto typed = std::find_if(widget.events.begin(), widget.events.end(),
                                    [](const Event &event) { return event.type() == Event::KeyDown; });
    EXPECT_EQ(typed->modifierFlags(), Event::CapsLock | Event::Shift);
    EXPECT_FALSE(shiftKeyOnly(*typed));
    EXPECT_EQ(InputState::current()->modifierFlags(), 0U);
    EXPECT_NEAR(typed->timestamp(), InputState::current()->currentTime(), 30);
}

TEST_F(XInputTest, KnowsThePressInItsHandlerAndAfterADialog)
{
    QList<bool> downs;
    widget.onPress = [&] {
        downs << isMouseDownEvent();
        QDialog dialog;
        QTimer::singleShot(0, &dialog, [&] {
            QKeyEvent inner(QEvent::KeyPress, Qt::Key_A, {});
            QCoreApplication::sendEvent(&dialog, &inner);
            downs << isMouseDownEvent();
            dialog.accept();
        });
        dialog.exec();
        downs << isMouseDownEvent();
    };
    xdotool(u"click 1"_s);
    EXPECT_TRUE(becomes([&] { return downs.size() == 3 && widget.count(Event::LeftMouseDown) == 1; }));
    EXPECT_EQ(downs, (QList<bool>{true, false, true}));
    xdotool(u"key b"_s);
    EXPECT_TRUE(becomes([&] { return widget.keys == u"b"_s; }));
    EXPECT_FALSE(isMouseDownEvent());
}

TEST_F(XInputTest, DiscardsWhatWaits)
{
    xdotool(u"key a click 1 key b click --repeat 2 4 mousemove 160 160 click 3"_s);
    discardAllMouseEvents();
    xdotool(u"key c click 1"_s);
    EXPECT_TRUE(becomes([&] { return widget.keys == u"abc"_s && widget.count(Event::LeftMouseUp) > 0; }))
        << widget.keys.toStdString();
    EXPECT_EQ(widget.count(Event::LeftMouseDown), 1) << "what came after the call stays";
    EXPECT_EQ(widget.count(Event::RightMouseDown) + widget.count(Event::MouseMoved), 0);
    EXPECT_EQ(widget.count(Event::ScrollWheel), 2);

    widget.events.clear();
    xdotool(u"key a click 1 click 3 click 4 click 2 mousemove 30 40"_s);
    discardAllEvents();
    xdotool(u"mousemove 150 150 key d click 1"_s);
    EXPECT_TRUE(becomes([&] { return widget.keys == u"abcd"_s && widget.count(Event::LeftMouseUp) > 0; }))
        << widget.keys.toStdString();
    EXPECT_EQ(widget.count(Event::LeftMouseDown), 1);
    EXPECT_EQ(widget.count(Event::RightMouseDown) + widget.count(Event::OtherMouseDown), 0);
    EXPECT_EQ(widget.count(Event::ScrollWheel), 0);
}

TEST_F(XInputTest, DiscardsWithinAHandlerAndLeavesWidgetsSound)
{
    widget.onPress = [&] {
        widget.onPress = [] {};
        xdotool(u"mouseup 1 click 3 key a mousemove 30 40"_s);
        discardAllEvents();
    };
    xdotool(u"mousedown 1"_s);
    EXPECT_TRUE(becomes([&] { return widget.count(Event::LeftMouseDown) == 1 && !widget.underMouse(); }));
    EXPECT_EQ(widget.count(Event::MouseExited), 0);
    xdotool(u"mousemove 150 150 mousemove 155 155"_s);
    EXPECT_TRUE(becomes([&] { return widget.underMouse() && widget.count(Event::MouseMoved) > 0; }));
    EXPECT_EQ(widget.count(Event::LeftMouseUp) + widget.count(Event::RightMouseDown), 0);
    EXPECT_EQ(widget.keys, QString());
}

TEST(XInputServerTest, MayGoAndComeBack)
{
    const QByteArray before = qgetenv("DISPLAY");
    XInput input;
    const QString name =
        u":%1"_s.arg(1000 + getpid() % 30'000); // no server that picks its own number takes it meanwhile
    auto server = std::make_unique<XServer>(u"640x480"_s, name);
    qputenv("DISPLAY", server->name());
    ASSERT_TRUE(input.state().has_value());
    const quint32 earlier = input.time().value();
    EXPECT_LT(input.time().value() - earlier, 60'000); // goes round
    server.reset();
    EXPECT_FALSE(input.state() || input.time());
    server = std::make_unique<XServer>(u"800x600"_s, name);
    EXPECT_EQ(input.state().value().rootHeight, 600);
    qputenv("DISPLAY", before);
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (!arePrograms({u"Xvfb"_s, u"xdotool"_s})) {
        std::cout << "Skipped: there is no Xvfb or xdotool\n";
        return 0;
    }
    const XServer server;
    qputenv("DISPLAY", server.name());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // accessibility is not tested, and its bus leaks
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
