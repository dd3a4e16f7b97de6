// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// The windows of a real X server, which the test starts.

#include <dravelin/platform/display.h>

#include <support/desktop.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtTest/QTest>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

/// Names a display by `DISPLAY` while it lives.
class DisplayName
{
public:
    explicit DisplayName(const QByteArray &name) : m_before(qgetenv("DISPLAY")) { qputenv("DISPLAY", name); }
    ~DisplayName() { m_before.isEmpty() ? qunsetenv("DISPLAY") : qputenv("DISPLAY", m_before); }
    Q_DISABLE_COPY_MOVE(DisplayName)

private:
    QByteArray m_before;
};

class XWindowsTest : public testing::Test
{
protected:
    void SetUp() override
    {
        if (!arePrograms({u"Xvfb"_s}))
            GTEST_SKIP() << "there is no Xvfb to run an X server";
        ASSERT_FALSE(server.emplace().name().isEmpty()) << "Xvfb did not start";
        name = std::make_unique<DisplayName>(server->name());
    }
    void TearDown() override
    {
        for (const auto &client : clients)
            stop(*client);
    }
    static void stop(QProcess &process)
    {
        process.kill();
        process.waitForFinished();
    }

    std::optional<XServer> server;
    std::unique_ptr<DisplayName> name;
    std::vector<std::unique_ptr<QProcess>> clients;

    void openWindow(const QStringList &arguments)
    {
        clients.push_back(std::make_unique<QProcess>());
        clients.back()->start(QStringLiteral(X_CLIENT), arguments);
    }
    static QList<WindowInfo> windowsOnceThereAre(qsizetype count)
    {
        QList<WindowInfo> windows;
        (void)QTest::qWaitFor([&] { return (windows = DisplayService::current()->windowList()).size() == count; },
                              30'000);
        return windows;
    }
};

} // namespace

TEST_F(XWindowsTest, AreListedFrontToBackWithTheirOwners)
{
    EXPECT_TRUE(DisplayService::current()->windowList().isEmpty());
    openWindow({u"Überschrift"_s, u"10"_s, u"20"_s, u"300"_s, u"200"_s});
    ASSERT_EQ(windowsOnceThereAre(1).size(), 1);
    openWindow({u"front"_s, u"50"_s, u"60"_s, u"70"_s, u"80"_s});
    const QList<WindowInfo> windows = windowsOnceThereAre(2);
    ASSERT_EQ(windows.size(), 2);
    EXPECT_EQ(windows[0].name, u"front"_s);
    EXPECT_EQ(windows[0].bounds, QRect(50, 60, 70, 80));
    EXPECT_EQ(windows[1].name, u"Überschrift"_s);
    EXPECT_EQ(windows[1].bounds, QRect(10, 20, 300, 200));
    EXPECT_EQ(windows[1].processId, clients[0]->processId());
    EXPECT_EQ(windows[1].ownerName, QFileInfo(QStringLiteral(X_CLIENT)).fileName());
    EXPECT_FALSE(windows[1].isFullScreen || windows[1].isDock);
}

TEST_F(XWindowsTest, AreDescribedByTheWindowManager)
{
    if (!arePrograms({u"openbox"_s}))
        GTEST_SKIP() << "there is no openbox to manage windows";
    clients.push_back(std::make_unique<QProcess>());
    clients.back()->start(u"openbox"_s, {u"--startup"_s, u"echo ready"_s}); // it manages windows by then
    while (!clients.back()->canReadLine())
        ASSERT_TRUE(clients.back()->waitForReadyRead(30'000)) << "openbox did not start";
    const auto find = [](const QString &title) {
        const QList<WindowInfo> windows = DisplayService::current()->windowList();
        const auto found = std::find_if(windows.begin(), windows.end(), [&](auto &w) { return w.name == title; });
        return found == windows.end() ? WindowInfo() : *found;
    };
    const auto becomes = [&](const QString &title, auto &&condition) {
        if (QTest::qWaitFor([&] { return condition(find(title)); }, 30'000))
            return testing::AssertionSuccess();
        const WindowInfo last = find(title);
        return testing::AssertionFailure() << last.identifier << ": " << last.bounds.x() << ' ' << last.bounds.y()
                                           << ' ' << last.bounds.width() << ' ' << last.bounds.height();
    };
    openWindow({u"framed"_s, u"100"_s, u"100"_s, u"300"_s, u"200"_s});
    EXPECT_TRUE(becomes(u"framed"_s, [](const WindowInfo &w) {
        return w.bounds.width() >= 300 && w.bounds.height() > 210 && !w.isFullScreen && !w.isDock;
    })) << "the title bar is part of the window";
    openWindow({u"panel"_s, u"0"_s, u"560"_s, u"800"_s, u"40"_s, u"dock"_s});
    EXPECT_TRUE(becomes(u"panel"_s, [](const WindowInfo &w) { return w.isDock && w.bounds.height() == 40; }));
    openWindow({u"full"_s, u"10"_s, u"10"_s, u"200"_s, u"200"_s, u"fullscreen"_s});
    EXPECT_TRUE(
        becomes(u"full"_s, [](const WindowInfo &w) { return w.isFullScreen && w.bounds == QRect(0, 0, 800, 600); }));
    openWindow({u"hides"_s, u"10"_s, u"10"_s, u"200"_s, u"200"_s});
    EXPECT_TRUE(becomes(u"hides"_s, [](const WindowInfo &w) { return w.identifier != 0; }));
    clients.back()->write("minimize");
    EXPECT_TRUE(becomes(u"hides"_s, [](const WindowInfo &w) { return w.identifier == 0; }));
    EXPECT_EQ(clients.back()->state(), QProcess::Running);
}

TEST(XWindows, AreNoneWithoutAServer)
{
    const DisplayName nowhere(":65000");
    EXPECT_TRUE(DisplayService::current()->windowList().isEmpty());
}
