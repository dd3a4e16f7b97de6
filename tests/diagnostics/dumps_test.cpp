// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/dumps.h>
#include <dravelin/platform/display.h>

#include <support/decimalcomma.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtGui/QImage>
#include <QtGui/QPageLayout>
#include <QtGui/QPainter>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class StandInDisplay : public DisplayService
{
public:
    QList<QRect> areas;
    QList<WindowInfo> windows;

    QList<QRect> screens() override { return areas; }
    QList<WindowInfo> windowList() override { return windows; }
};

class DumpsTest : public testing::Test
{
protected:
    std::shared_ptr<StandInDisplay> display = std::make_shared<StandInDisplay>();

    void SetUp() override { DisplayService::setCurrent(display); }
    void TearDown() override { DisplayService::setCurrent({}); }
};

} // namespace

TEST_F(DumpsTest, WritesOneLineForEachWindow)
{
    EXPECT_TRUE(dumpWindowList().isEmpty());
    display->windows = {{1, 10, u"shell"_s, u"100 %2 done"_s, QRect(-10, 20, 640, 480)},
                        {2, 0, {}, {}, QRect()},
                        {3, 11, u"panel"_s, u""_s, QRect(0, 1060, 1920, 20)}};
    EXPECT_EQ(dumpWindowList(), u"shell - 100 %2 done: {{-10, 20}, {640, 480}}\r(null) - (null): {{0, 0}, {0, 0}}\r"
                                "panel - : {{0, 1060}, {1920, 20}}\r"_s);
}

TEST_F(DumpsTest, WritesFramesOfScreensUpwards)
{
    EXPECT_TRUE(dumpScreens().isEmpty());
    display->areas = {QRect(0, 0, 1440, 900)};
    EXPECT_EQ(dumpScreens(), u"Screen 0: {{0, 0}, {1440, 900}}\r"_s);
    display->areas << QRect(1440, -100, 800, 600) << QRect(-1024, 500, 1024, 768);
    EXPECT_EQ(dumpScreens(), u"Screen 0: {{0, 0}, {1440, 900}}\rScreen 1: {{1440, 400}, {800, 600}}\r"
                             "Screen 2: {{-1024, -368}, {1024, 768}}\r"_s);

    DisplayService::setCurrent({});
    EXPECT_EQ(dumpScreens(), u"Screen 0: {{0, 0}, {800, 800}}\r"_s); // the offscreen platform's own
}

TEST(Dump, WritesPaperInInches)
{
    const DecimalComma comma;
    const auto dumped = [](const QPageSize &size, QPageLayout::Orientation orientation = QPageLayout::Portrait) {
        return dump(QPageLayout(size, orientation, QMarginsF(10, 10, 10, 10)));
    };
    EXPECT_EQ(dumped(QPageSize(QPageSize::Letter)),
              u"NSPrintInfo:\r  Paper Name: Letter\r  Paper Size: 8.50, 11.00\r"_s);
    EXPECT_EQ(dumped(QPageSize(QPageSize::A4), QPageLayout::Landscape),
              u"NSPrintInfo:\r  Paper Name: A4\r  Paper Size: 11.69, 8.26\r"_s);
    EXPECT_TRUE(dumped(QPageSize(QSizeF(100, 1), QPageSize::Inch)).endsWith(u"Paper Size: 100.00, 1.00\r"_s));
    EXPECT_EQ(dump(QPageLayout()), u"NSPrintInfo:\r  Paper Name: (null)\r  Paper Size: 0.00, 0.00\r"_s);
}

TEST(DebugView, MarksOriginAndBounds)
{
    DebugView view;
    view.resize(60, 40);
    const QImage drawn = view.grab().toImage();
    const auto color = [&](int x, int y) { return QColor(drawn.pixel(x, y)); };
    const QColor blank = color(30, 20);
    EXPECT_EQ(color(4, 4), QColor(Qt::red));
    EXPECT_EQ(color(5, 5), blank);
    for (const QPoint corner : {QPoint(0, 0), QPoint(59, 0), QPoint(0, 39), QPoint(59, 39), QPoint(30, 39)})
        EXPECT_EQ(color(corner.x(), corner.y()), QColor(Qt::green)) << corner.x() << ' ' << corner.y();
    EXPECT_EQ(color(58, 38), blank);

    QImage around(80, 60, QImage::Format_RGB32);
    around.fill(Qt::white);
    QPainter painter(&around);
    painter.translate(10, 10);
    painter.setPen(Qt::blue);
    view.drawRect(painter, view.rect());
    EXPECT_EQ(painter.pen().color(), QColor(Qt::blue));
    painter.end();
    EXPECT_EQ(around.pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(around.pixelColor(4, 4), QColor(Qt::white));
}
