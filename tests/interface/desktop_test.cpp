// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Screens and windows of a real desktop: an X server with two monitors and a window manager, which the program starts.

#include <dravelin/interface/screens.h>

#include "platform/xconnection.h"

#include <support/desktop.h>

#include <gtest/gtest.h>

#include <QtCore/QProcess>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <array>
#include <optional>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

/// The strip that a panel keeps clear at the upper edge of the X server's area.
void claimTop(const QWidget &panel, quint32 height)
{
    const XConnection server;
    const std::array<quint32, 12> claim{0, 0, height, 0, 0, 0, 0, 0, 1000, 1599, 0, 0};
    xcb_change_property(server.get(), XCB_PROP_MODE_REPLACE, xcb_window_t(panel.effectiveWinId()),
                        server.atom(XAtom::StrutPartial), XCB_ATOM_CARDINAL, 32, claim.size(), claim.data());
    server.synchronise();
}

class DesktopTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (QGuiApplication::platformName() != u"xcb"_s)
            GTEST_SKIP() << "there is no Xvfb, openbox or xrandr to make a desktop";
        ASSERT_TRUE(becomes([] { return QGuiApplication::screens().size() == 2; }));
        left = QGuiApplication::primaryScreen();
        right = QGuiApplication::screens().value(1);
    }

    bool areFull(bool first, bool second)
    {
        return becomes([&] { return isFullScreen(left) == first && isFullScreen(right) == second; });
    }

    QScreen *left = nullptr, *right = nullptr;
};

} // namespace

TEST_F(DesktopTest, HasTwoScreens)
{
    EXPECT_EQ(frame(left), QRectF(0, 0, 1000, 700));
    EXPECT_EQ(frame(right), QRectF(1000, 0, 600, 500));
    QCursor::setPos(right, 1000, 200);
    EXPECT_TRUE(becomes([&] { return findMouseScreen() == right; }));
    QCursor::setPos(left, 999, 200);
    EXPECT_TRUE(becomes([&] { return findMouseScreen() == left; }));
    EXPECT_EQ(findScreenForPoint(upwardPoint(QPointF(1100, 20))), nullptr);
}

TEST_F(DesktopTest, ShowsWhoIsFullScreen)
{
    EXPECT_TRUE(areFull(false, false));
    QWidget ours(nullptr, Qt::FramelessWindowHint);
    ours.setGeometry(1100, 300, 200, 100);
    ours.show();
    ASSERT_TRUE(becomes([] { return !onScreenWindowList().isEmpty(); }));
    EXPECT_TRUE(areFull(false, false));
    ours.showFullScreen();
    EXPECT_TRUE(areFull(false, true));
    Server another(QStringLiteral(X_CLIENT), {u"another"_s, u"10"_s, u"10"_s, u"200"_s, u"200"_s, u"fullscreen"_s});
    EXPECT_TRUE(areFull(true, true));
    ours.showNormal();
    EXPECT_TRUE(areFull(true, false));
    another.stop();
    EXPECT_TRUE(areFull(false, false));
    ours.showMaximized();
    ASSERT_TRUE(becomes([&] { return ours.frameGeometry() == right->geometry(); }));
    EXPECT_TRUE(areFull(false, false));
}

TEST_F(DesktopTest, HasPanels)
{
    const auto menubars = [&](const QScreen *screen) {
        const QList<WindowRecord> windows = onScreenWindowList(screen);
        return std::count_if(windows.begin(), windows.end(), [](auto &window) { return window.name == u"Menubar"_s; });
    };
    EXPECT_EQ(getMenubarHeight(right), 0.0F);
    QWidget panel;
    panel.winId(); // a native window takes the type at once
    panel.setAttribute(Qt::WA_X11NetWmWindowTypeDock);
    panel.setGeometry(1000, 200, 600, 30);
    panel.show();
    ASSERT_TRUE(becomes([&] { return menubars(right) == 1 && menubars(left) == 0; }));
    claimTop(panel, 230); // through what is above the right screen
    EXPECT_TRUE(becomes([&] { return getMenubarHeight(right) == 30.0F; }));
    EXPECT_EQ(visibleFrame(left), frame(left));
    EXPECT_EQ(menubars(nullptr), 1);
    Server another(QStringLiteral(X_CLIENT), {u"another"_s, u"1100"_s, u"300"_s, u"200"_s, u"200"_s, u"fullscreen"_s});
    EXPECT_TRUE(areFull(false, true));
    EXPECT_EQ(menubars(right), 0);
    another.stop();
    EXPECT_TRUE(becomes([&] { return menubars(right) == 1; }));
    panel.hide();
    EXPECT_TRUE(becomes([&] { return menubars(right) == 0 && getMenubarHeight(right) == 0.0F; }));
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    std::optional<XServer> server;
    std::optional<WindowManager> manager;
    if (arePrograms({u"Xvfb"_s, u"openbox"_s, u"xrandr"_s})) {
        qputenv("DISPLAY", server.emplace(u"1600x700"_s).name());
        for (const char *monitor : {"*left 1000/260x700/185+0+0 screen", "right 600/160x500/130+1000+200 none"})
            QProcess::execute(u"xrandr"_s, QStringList(u"--setmonitor"_s) + QString::fromLatin1(monitor).split(u' '));
        manager.emplace();
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // which the windows would tell about themselves
    }
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
