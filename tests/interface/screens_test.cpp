// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/interface/screens.h>
#include <dravelin/platform/display.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

#include <array>
#include <string>
#include <vector>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class StandInDisplay : public DisplayService
{
public:
    QList<ScreenInfo> infos;
    QList<WindowInfo> windows;
    QPointF pointer;

    QList<ScreenInfo> screenList() override { return infos; }
    QList<WindowInfo> windowList() override { return windows; }
    QPointF mouseLocation() override { return pointer; }
};

class ScreensTest : public testing::Test
{
protected:
    std::shared_ptr<StandInDisplay> display = std::make_shared<StandInDisplay>();
    std::array<char, 8> memory{}; ///< of screens that are only compared

    void SetUp() override { DisplayService::setCurrent(display); }
    void TearDown() override { DisplayService::setCurrent({}); }

    [[nodiscard]] QScreen *screen(qsizetype i) { return reinterpret_cast<QScreen *>(&memory.at(size_t(i))); }
    void setScreens(const QList<QRect> &areas)
    {
        display->infos.clear();
        for (const QRect &area : areas)
            display->infos.append({screen(display->infos.size()), area, area, area});
    }
};

const QRect wide(0, 0, 1920, 1080), small(1920, 180, 1280, 800);

WindowInfo bare(const QRect &bounds) { return {0, 0, {}, u"title"_s, bounds}; }
WindowInfo with(bool WindowInfo::*property, const QRect &bounds)
{
    WindowInfo window = bare(bounds);
    window.*property = true;
    return window;
}
WindowInfo window(const QRect &bounds) { return with(&WindowInfo::isDecorated, bounds); }
WindowInfo full(const QRect &bounds) { return with(&WindowInfo::isFullScreen, bounds); }
WindowInfo panel(const QRect &bounds, const QRect &left = {})
{
    WindowInfo window = with(&WindowInfo::isDock, bounds);
    window.workArea = left;
    return window;
}

} // namespace

TEST_F(ScreensTest, AreNoneAtAll)
{
    EXPECT_EQ(findMinimumScreenDimensions(), QSizeF(123455676.0, 1234567.0));
    EXPECT_TRUE(createScreensFrameList().isEmpty() && onScreenWindowList().isEmpty() && !findMouseScreen());
    for (const QScreen *gone : {static_cast<QScreen *>(nullptr), screen(0)}) {
        EXPECT_EQ(findScreenIndex(gone), -1);
        EXPECT_TRUE(frame(gone).isNull() && visibleFrame(gone).isNull());
        EXPECT_EQ(getMenubarHeight(gone), 0.0F);
        EXPECT_FALSE(isFullScreen(gone));
    }
}

TEST_F(ScreensTest, HaveFramesUpwards)
{
    setScreens({wide, small, QRect(-100, -600, 1500, 600)});
    EXPECT_EQ(frame(screen(0)), QRectF(0, 0, 1920, 1080));
    EXPECT_EQ(frame(screen(1)), QRectF(1920, 100, 1280, 800));
    EXPECT_EQ(frame(screen(2)), QRectF(-100, 1080, 1500, 600));
    EXPECT_EQ(createScreensFrameList(),
              QList<QRectF>({{0, 0, 1920, 1080}, {1920, 380, 1280, 800}, {-100, 1560, 1500, 600}}));
    EXPECT_EQ(findScreenIndex(screen(2)), 2);
    EXPECT_EQ(findMinimumScreenDimensions(), QSizeF(1280, 600));
}

TEST_F(ScreensTest, AreFoundByPoint)
{
    setScreens({wide, small, wide});
    const std::vector<std::pair<QPointF, qsizetype>> rows{
        {{0, 1080}, 0},    {{0, 1080.5}, -1}, {{0, 0}, -1},        {{0, 0.5}, 0},    {{-0.5, 500}, -1},
        {{1919.5, 90}, 0}, {{1920, 90}, -1},  {{1920, 100}, -1},   {{1920, 101}, 1}, {{3199, 900}, 1},
        {{3200, 500}, -1}, {{50, 50}, 0},     {{qQNaN(), 500}, -1}};
    for (const auto &[point, expected] : rows)
        EXPECT_EQ(findScreenIndex(findScreenForPoint(point)), expected) << point.x() << ' ' << point.y();
    const std::vector<std::pair<QPoint, qsizetype>> pixels{{{0, 0}, 0}, {{1919, 1080}, -1}, {{1920, 180}, 1}};
    for (const auto &[pixel, expected] : pixels) {
        display->pointer = pixel;
        EXPECT_EQ(findScreenIndex(findMouseScreen()), expected) << pixel.x() << ' ' << pixel.y();
    }
}

TEST_F(ScreensTest, LeaveOutPanels)
{
    setScreens({wide});
    display->infos[0].availableGeometry = QRect(0, 25, 1920, 1015);
    EXPECT_EQ(visibleFrame(screen(0)), QRectF(0, 40, 1920, 1015));
    EXPECT_EQ(getMenubarHeight(screen(0)), 25.0F);
    // The second one is above the first; its panel's strip starts at the upper edge of the third. Two pixels are a point.
    setScreens({wide, QRect(0, -500, 1000, 500), QRect(0, -900, 1000, 400)});
    display->infos[1].pixels = QRect(0, 800, 2000, 1000);
    display->infos[2].pixels = QRect(0, 0, 2000, 800);
    display->infos[0].pixels.moveTop(1800);
    display->windows = {window(wide), panel(QRect(0, 800, 2000, 51), QRect(0, 851, 2000, 2029))};
    EXPECT_EQ(visibleFrame(screen(1)), QRectF(0, 1080, 1000, 474.5));
    EXPECT_EQ(getMenubarHeight(screen(1)), 25.5F);
    EXPECT_EQ(visibleFrame(screen(2)), frame(screen(2)));
    EXPECT_EQ(visibleFrame(screen(0)), frame(screen(0)));
}

TEST_F(ScreensTest, CompareExactly)
{
    const QRectF area(0, 0, 1920, 1080);
    const auto dock = [](const QRectF &bounds, const QString &name = u"Fullscreen Backdrop"_s) {
        return WindowRecord{u"Dock"_s, name, bounds};
    };
    const auto server = [](const QRectF &bounds, const QString &name = u"Menubar"_s) {
        return WindowRecord{u"Window Server"_s, name, bounds};
    };
    const QRectF bar(0, 0, 1920, 25), other(1920, 0, 1280, 800), nearly(0, 1e-14, 1920, 1080);
    const std::vector<std::tuple<const char *, QList<WindowRecord>, bool>> rows{
        {"nothing", {}, false},
        {"backdrop", {dock(area)}, true},
        {"menu bar", {dock(area), server(bar)}, false},
        {"menu bar first, another later", {server(bar), server(other), dock(area)}, false},
        {"menu bar elsewhere", {dock(area), server(other)}, true},
        {"another window of the server", {dock(area), server(bar, u"Cursor"_s), server(bar, {})}, true},
        {"no name", {dock(area, {})}, true},
        {"empty name", {dock(area, u""_s)}, false},
        {"a later one decides", {dock(area), dock(other, {})}, false},
        {"the later one is right", {dock(other), dock(area)}, true},
        {"later ones with another name", {dock(area), dock(other, u"Wallpaper"_s)}, true},
        {"another owner", {{u"dock"_s, u"Fullscreen Backdrop"_s, area}, {{}, {}, area}}, false},
        {"not quite", {dock(nearly)}, false}};
    for (const auto &[name, windows, expected] : rows)
        EXPECT_EQ(dockFullScreenMethod(windows, area), expected) << name;
    EXPECT_FALSE(foundMenubar(server(nearly), area));
    EXPECT_TRUE(foundMenubar(server(QRectF(0, -0.0, 1, 1)), area));
}

TEST_F(ScreensTest, ShowFullScreenWindows)
{
    const QRect above(0, -2160, 3840, 2160); // its frame in the list starts where the first one's does
    const WindowInfo bar = panel(QRect(0, 0, 1920, 30), QRect(0, 30, 3200, 1050));
    const WindowInfo barRight = panel(QRect(1920, 180, 1280, 30));
    const WindowInfo maximized = with(&WindowInfo::isMaximized, QRect(0, 30, 1920, 1050));
    const WindowInfo maximizedAll = with(&WindowInfo::isMaximized, wide), framed = window(wide);
    const WindowInfo ground = with(&WindowInfo::isDesktop, wide);
    const WindowInfo impostor{0, 0, u"Dock"_s, {}, wide, false, false, false, false, true};
    const std::vector<std::tuple<const char *, QList<QRect>, QList<WindowInfo>, std::string>> rows{
        {"nothing", {wide}, {}, "0"},
        {"full", {wide}, {full(wide)}, "1"},
        {"full, not all of it", {wide}, {full(QRect(0, 0, 1920, 1078))}, "0"},
        {"rounded pixels", {wide}, {full(QRect(0, 0, 1920, 1079))}, "1"},
        {"panel behind", {wide}, {full(wide), bar}, "1"},
        {"panel in front", {wide}, {bar, full(wide)}, "0"},
        {"panel at the bottom", {wide}, {panel(QRect(0, 1050, 1920, 30)), full(wide)}, "1"},
        {"panel at the side", {wide}, {panel(QRect(0, 0, 60, 1080)), full(wide)}, "1"},
        {"panel of the other screen", {wide, small}, {barRight, full(wide), full(small)}, "10"},
        {"dialog in front", {wide}, {window(QRect(500, 400, 300, 200)), full(wide)}, "1"},
        {"hidden by a maximised one", {wide}, {maximized, full(wide), bar}, "0"},
        {"both screens", {wide, small}, {full(small), full(wide)}, "11"},
        {"second screen only", {wide, small}, {full(small), bar, window(wide)}, "01"},
        {"one window over both", {wide, small}, {full(QRect(0, 0, 3200, 1080)), bar}, "11"},
        {"as large as the screen, bare", {wide}, {bare(wide), bar}, "1"},
        {"bare, not in front", {wide}, {window(QRect(5, 5, 9, 9)), bare(wide)}, "0"},
        {"bare, larger", {wide}, {bare(QRect(0, 0, 3200, 1080))}, "0"},
        {"maximised, framed, ground", {wide}, {ground, maximizedAll, framed}, "0"},
        {"a process called Dock", {wide}, {impostor}, "0"},
        {"frames with one origin", {wide, above}, {panel(QRect(0, -2160, 3840, 30)), full(wide)}, "10"}};
    for (const auto &[name, screens, windows, expected] : rows) {
        setScreens(screens);
        display->windows = windows;
        std::string found; // a digit for each screen
        for (qsizetype i = 0; i < screens.size(); ++i)
            found += isFullScreen(screen(i)) ? '1' : '0';
        EXPECT_EQ(found, expected) << name;
    }
}

TEST_F(ScreensTest, ListRecordsFrontToBack)
{
    setScreens({wide, small});
    display->infos[1].pixels = QRect(1920, 180, 2560, 1600);
    display->windows = {panel(QRect(1920, 180, 2560, 60)), full(wide), window(QRect(2020, 280, 200, 100))};
    display->windows.last().ownerName = u"shell"_s;
    const QList<WindowRecord> records = onScreenWindowList();
    ASSERT_EQ(records.size(), 4);
    EXPECT_EQ(records[0].ownerName + records[0].name, u"Window ServerMenubar"_s);
    EXPECT_EQ(records[0].bounds, QRectF(1920, 380, 1280, 30));
    EXPECT_EQ(records[1].bounds, QRectF(wide));
    EXPECT_EQ(records[2].ownerName + records[2].name, u"DockFullscreen Backdrop"_s);
    EXPECT_EQ(records[2].bounds, QRectF(wide));
    EXPECT_EQ(records[3].ownerName + records[3].name, u"shelltitle"_s);
    EXPECT_EQ(records[3].bounds, QRectF(1970, 230, 100, 50));
}

TEST(Screens, AnswerWithoutAnXServer)
{
    QScreen *screen = QGuiApplication::primaryScreen();
    LogRecorder log;
    EXPECT_FALSE(isFullScreen(screen) || isFullScreen(screen));
    EXPECT_LE(log.lines().size(), 1);
    EXPECT_EQ(frame(screen), QRectF(0, 0, 800, 800)); // the offscreen platform's own
    EXPECT_EQ(visibleFrame(screen), QRectF(screen->availableGeometry()));
    EXPECT_EQ(findScreenForPoint(QPointF(1, 1)), screen);
}
