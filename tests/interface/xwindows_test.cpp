// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// The windows of a real X server, which the test starts.

#include <dravelin/platform/display.h>

#include "platform/xwindowlist.h"

#include <support/desktop.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QFileInfo>
#include <QtCore/QRandomGenerator>
#include <QtCore/QTimer>
#include <QtTest/QTest>

#include <functional>
#include <optional>
#include <utility>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

QList<WindowInfo> windowList() { return DisplayService::current()->windowList(); }

/// Where windows are listened to.
void inEventLoop(const std::function<void()> &function)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        function();
        loop.quit();
    });
    loop.exec();
}

/// An application with bare windows, some of them within others.
class Client
{
public:
    explicit Client(size_t count)
    {
        for (windows.resize(count); auto &window : windows)
            window = open();
        server.synchronise();
    }
    xcb_window_t open()
    {
        const xcb_window_t window = xcb_generate_id(server.get());
        xcb_create_window(server.get(), XCB_COPY_FROM_PARENT, window, server.root(), 5, 5, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(server.get(), window);
        return window;
    }
    void set(xcb_window_t window, xcb_atom_t property, const Cards &cards)
    {
        xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_CARDINAL, 32,
                            quint32(cards.size()), cards.data());
        server.synchronise();
    }
    void changeSomething(QRandomGenerator &random)
    {
        const size_t index = random() % windows.size();
        xcb_window_t &window = windows[index];
        const quint32 x = random() % 200, y = random() % 200;
        constexpr quint16 movesAndRestacks =
            XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_HEIGHT | XCB_CONFIG_WINDOW_STACK_MODE;
        const Cards place{x, y + 1, x % 2};
        const auto value = [&](XAtom name) { return x % 2 ? server.atom(name) : random() % 9; };
        switch (random() % 7) {
        case 0:
            return void(xcb_configure_window(server.get(), window, movesAndRestacks, place.data()));
        case 1:
            return void(x % 2 ? xcb_map_window(server.get(), window) : xcb_unmap_window(server.get(), window));
        case 2: // the server refuses a window within itself
            xcb_reparent_window(server.get(), window, x % 8 ? windows[index / 2] : server.root(), qint16(x), qint16(y));
            return void(xcb_map_window(server.get(), window));
        case 3:
            xcb_destroy_window(server.get(), x % 8 ? xcb_window_t(XCB_WINDOW_NONE) : std::exchange(window, open()));
            return;
        case 4:
            xcb_delete_property(server.get(), server.root(), server.atom(XAtom::ClientListStacking));
            return set(server.root(), x % 8 ? server.atom(XAtom::ClientListStacking) : xcb_atom_t(XCB_ATOM_WM_HINTS),
                       {windows.begin() + ptrdiff_t(y % windows.size()), windows.end()});
        default:
            return set(window, properties[random() % properties.size()],
                       {value(XAtom::Hidden), value(XAtom::FullScreen), 0xFFFFFFFF, value(XAtom::Dock)});
        }
    }
    /// By whichever client.
    [[nodiscard]] bool isListenedTo(xcb_window_t window) const
    {
        const detail::XcbReply<xcb_get_window_attributes_reply_t> reply(
            xcb_get_window_attributes_reply(server.get(), xcb_get_window_attributes(server.get(), window), nullptr));
        return reply && (reply->all_event_masks & XCB_EVENT_MASK_PROPERTY_CHANGE);
    }

    const XConnection server;
    const Cards properties{
        XCB_ATOM_WM_NAME,
        XCB_ATOM_WM_COMMAND, // which does not matter
        server.atom(XAtom::WmName), server.atom(XAtom::FrameExtents), server.atom(XAtom::StrutPartial),
        server.atom(XAtom::Strut),  server.atom(XAtom::WmState),      server.atom(XAtom::WindowType)};
    Cards windows;
};

class XWindowsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!arePrograms({u"Xvfb"_s}))
            GTEST_SKIP() << "there is no Xvfb to run an X server";
        ASSERT_FALSE(server.emplace().name().isEmpty()) << "Xvfb did not start";
        qputenv("DISPLAY", server->name());
    }
    std::optional<XServer> server;
};

} // namespace

TEST_F(XWindowsTest, AreListedFrontToBackWithTheirOwners)
{
    EXPECT_TRUE(windowList().isEmpty());
    const QString program = QStringLiteral(X_CLIENT);
    Server behind(program, {u"Überschrift"_s, u"10"_s, u"20"_s, u"300"_s, u"200"_s});
    ASSERT_TRUE(becomes([] { return windowList().size() == 1; }));
    const Server front(program, {u"front"_s, u"50"_s, u"60"_s, u"70"_s, u"80"_s});
    ASSERT_TRUE(becomes([] { return windowList().size() == 2; }));
    const QList<WindowInfo> windows = windowList();
    EXPECT_EQ(windows[0].name, u"front"_s);
    EXPECT_EQ(windows[0].bounds, QRect(50, 60, 70, 80));
    EXPECT_EQ(windows[1].name, u"Überschrift"_s);
    EXPECT_EQ(windows[1].bounds, QRect(10, 20, 300, 200));
    EXPECT_EQ(windows[1].processId, behind.process().processId());
    EXPECT_EQ(windows[1].ownerName, QFileInfo(program).fileName());
}

TEST_F(XWindowsTest, AreDescribedByTheWindowManager)
{
    if (!arePrograms({u"openbox"_s}))
        GTEST_SKIP() << "there is no openbox to manage windows";
    const WindowManager manager;
    inEventLoop([&] {
        Server application(QStringLiteral(X_CLIENT), {u"framed"_s, u"100"_s, u"100"_s, u"300"_s, u"200"_s});
        EXPECT_TRUE(becomes([] {
            const WindowInfo window = windowList().value(0);
            return window.bounds.width() >= 300 && window.bounds.height() > 210 && window.isDecorated;
        })) << "the title bar is part of the window";
        application.process().write("minimize");
        EXPECT_TRUE(becomes([] { return windowList().isEmpty(); }));
        EXPECT_EQ(application.process().state(), QProcess::Running);
    });
}

TEST_F(XWindowsTest, AreKnownAsTheyAreWhateverChanges)
{
    Client client(8);
    const XConnection another;
    QRandomGenerator random(7);
    inEventLoop([&] {
        for (int step = 0; step < 2000; ++step) {
            client.changeSomething(random);
            client.server.synchronise();
            ASSERT_EQ(windowList(), listXWindows(another, nullptr)) << step;
            if (random() % 8 == 0)
                QCoreApplication::processEvents();
        }
    });
}

TEST_F(XWindowsTest, AreListenedToOnlyWhileSomebodyAsks)
{
    Client client(1);
    const xcb_window_t window = client.windows[0];
    const auto isListenedTo = [&] { return client.isListenedTo(window) || client.isListenedTo(client.server.root()); };
    const auto isForgotten = [&](xcb_atom_t property) {
        EXPECT_EQ(windowList().size(), 1);
        EXPECT_TRUE(client.isListenedTo(window) && client.isListenedTo(client.server.root()));
        return becomes([&] {
            client.set(window, property, {'a'});
            return !isListenedTo();
        });
    };
    EXPECT_EQ(windowList().size(), 1);
    EXPECT_FALSE(isListenedTo()) << "nothing would read what the server tells";
    inEventLoop([&] {
        EXPECT_TRUE(isForgotten(XCB_ATOM_WM_NAME)) << "a change";
        EXPECT_TRUE(isForgotten(XCB_ATOM_WM_COMMAND)) << "something else, and nobody asks any more";
        EXPECT_EQ(windowList().size(), 1);
        server->stop();
        EXPECT_TRUE(
            becomes([] { return !QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents); }));
        EXPECT_TRUE(windowList().isEmpty());
    });
}
