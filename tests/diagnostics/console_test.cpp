// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/console.h>
#include <dravelin/diagnostics/consolewindow.h>

#include <support/decimalcomma.h>
#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <limits>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class ConsoleTest : public testing::Test
{
protected:
    ~ConsoleTest() override
    {
        inhibitConsole(false);
        killConsole();
    }
    LogRecorder log;
};

} // namespace

TEST_F(ConsoleTest, PrintsLinesAndLogsThem)
{
    const DecimalComma comma;
    consoleRect({0, -1.5, 640, 0.1});
    consoleSize({3, 1e21});
    consolePoint({-0.25, 1e-7});
    consoleRange({1, std::numeric_limits<quint64>::max()});
    for (const float value : {1.5F, -0.1F, std::numeric_limits<float>::infinity(), -std::nanf("")})
        consoleFloat(value);
    for (const qint64 value : {Q_INT64_C(4294967297), Q_INT64_C(-1), Q_INT64_C(2147483648)})
        consoleInteger(value);
    console(u"a\rb ☂"_s);
    console(u""_s);
    const QStringList lines{u"{{0, -1.5}, {640, 0.10000000000000001}}"_s,
                            u"{3, 1e+21}"_s,
                            u"{-0.25, 9.9999999999999995e-08}"_s,
                            u"{1, 18446744073709551615}"_s,
                            u"1.5000000"_s,
                            u"-0.1000000"_s,
                            u"inf"_s,
                            u"nan"_s,
                            u"1"_s,
                            u"-1"_s,
                            u"-2147483648"_s};
    EXPECT_EQ(currentConsole()->text(), lines.join(u'\r') + u"\ra\rb ☂\r\r"_s);
    EXPECT_EQ(log.lines(), lines + (QStringList{u"a\\rb ☂"_s, u""_s}));
}

TEST_F(ConsoleTest, IsCreatedByWhateverNeedsIt)
{
    struct Row
    {
        const char *name;
        void (*call)();
        bool creates;
        bool createsWhileInhibited;
    };
    const Row rows[] = {
        {"initialize", initializeConsole, true, true},
        {"show", showConsole, true, false},
        {"showNextToWindow", [] { showConsoleNextToWindow({}); }, true, false},
        {"clear", clearConsole, false, false},
        {"absent text", [] { console({}); }, true, false},
        {"inhibit", [] { inhibitConsole(false); }, false, false},
        {"kill", killConsole, false, false},
    };
    for (const auto &[name, call, creates, createsWhileInhibited] : rows) {
        SCOPED_TRACE(name);
        for (const bool inhibited : {false, true}) {
            inhibitConsole(inhibited);
            call();
            EXPECT_EQ(currentConsole() != nullptr, inhibited ? createsWhileInhibited : creates);
            killConsole();
        }
    }
    EXPECT_TRUE(log.lines().isEmpty());
}

TEST_F(ConsoleTest, IsSilentWhileInhibited)
{
    console(u"kept"_s);
    inhibitConsole(true);
    console(u"lost"_s);
    clearConsole();
    showConsole();
    EXPECT_EQ(currentConsole()->text(), u"kept\r"_s);
    EXPECT_FALSE(currentConsole()->window()->isVisible());
    inhibitConsole(false);
    clearConsole();
    EXPECT_EQ(currentConsole()->text(), QString());
    EXPECT_EQ(log.lines(), QStringList{u"kept"_s});

    console(u"old"_s);
    killConsole();
    EXPECT_EQ(currentConsole(), nullptr);
    console(u"new"_s);
    EXPECT_EQ(currentConsole()->text(), u"new\r"_s);
}

TEST_F(ConsoleTest, SurvivesBeingKilledByWhatHearsOfALine)
{
    initializeConsole();
    QObject::connect(currentConsole(), &ConsoleWindowController::textAppended, [] { killConsole(); });
    console(u"last words"_s);
    EXPECT_EQ(currentConsole(), nullptr);
    EXPECT_EQ(log.lines(), QStringList{u"last words"_s});
}

TEST_F(ConsoleTest, IsPlacedBesideAWindow)
{
    initializeConsole();
    QWidget *window = currentConsole()->window();
    window->resize(600, 150);
    const int bottom = QGuiApplication::primaryScreen()->geometry().bottom() + 1;
    // 200 above the lower edge of the screen, and 400 high
    showConsoleNextToWindow(QRectF(100, bottom - 600, 300, 400));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->frameGeometry().topLeft(), QPoint(420, bottom - 600));
    EXPECT_EQ(bottom - (window->frameGeometry().y() + 150), 450);
    EXPECT_EQ(window->size(), QSize(600, 150));
}

TEST_F(ConsoleTest, TakesEveryText)
{
    const QString withNul = u"a\0b"_s;
    console(withNul);
    EXPECT_EQ(currentConsole()->text(), withNul + u'\r');
    const QString huge(100'000'000, u'x');
    console(huge);
    console(u"after"_s);
    EXPECT_EQ(currentConsole()->length(), 4 + huge.size() + 1 + 6);
    EXPECT_EQ(log.take().constLast(), u"after"_s);
}
