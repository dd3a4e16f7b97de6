// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/console.h>
#include <dravelin/diagnostics/consolewindow.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QDir>
#include <QtCore/QStandardPaths>
#include <QtCore/QTemporaryDir>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtGui/QTextBlock>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QScrollBar>

#include <gtest/gtest.h>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class ConsoleWindowTest : public testing::Test
{
protected:
    ConsoleWindowTest() { showConsole(); }
    ~ConsoleWindowTest() override { killConsole(); }

    [[nodiscard]] static QPlainTextEdit *view() { return currentConsole()->textDisplay(); }
    template <class Part>
    [[nodiscard]] static Part *part(const QString &name)
    {
        return currentConsole()->window()->findChild<Part *>(name);
    }
    [[nodiscard]] static bool shows(const QString &text)
    {
        return QTest::qWaitFor([&] { return view()->toPlainText() == text; }, 30'000);
    }
    static void printNumbers(int first, int last)
    {
        for (int i = first; i <= last; ++i)
            consoleInteger(i);
    }
    [[nodiscard]] static bool showsUpTo(int last)
    {
        return QTest::qWaitFor([&] { return view()->document()->lastBlock().previous().text().toInt() == last; },
                               30'000);
    }

    LogRecorder log;
};

/// An application's own interface file, where Bundle finds it.
class OwnInterface
{
public:
    explicit OwnInterface(const QByteArray &content)
        : m_file(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + u"/ConsoleWindow.ui"_s)
    {
        QDir().mkpath(QFileInfo(m_file).path());
        EXPECT_TRUE(m_file.open(QIODevice::WriteOnly) && m_file.write(content) == content.size());
        m_file.close();
    }
    ~OwnInterface() { m_file.remove(); }
    Q_DISABLE_COPY_MOVE(OwnInterface)

private:
    QFile m_file;
};

} // namespace

TEST_F(ConsoleWindowTest, ShowsTheTextReadOnlyInAFixedPitch)
{
    console(u"one"_s);
    console(u"two\rthree\n\0end"_s);
    EXPECT_TRUE(shows(u"one\ntwo\nthree\n␀end\n"_s));
    EXPECT_TRUE(view()->isReadOnly());
    const QFont font = view()->document()->firstBlock().begin().fragment().charFormat().font();
    EXPECT_EQ(font.families().value(0), u"Monaco"_s);
    EXPECT_EQ(font.pointSizeF(), 12.0);
    EXPECT_TRUE(QFontInfo(font).fixedPitch());

    part<QAbstractButton>(u"clearButton"_s)->click();
    EXPECT_EQ(currentConsole()->length(), 0);
    EXPECT_TRUE(shows(u""_s));
    currentConsole()->appendText(u"open"_s);
    EXPECT_TRUE(shows(u"open"_s));
    currentConsole()->appendText(u" run\r"_s);
    EXPECT_TRUE(shows(u"open run\n"_s));
}

TEST_F(ConsoleWindowTest, ShowsTheBeginningOfLongLines)
{
    const QString fits(10'000, u'x');
    console(fits);
    console(fits + u"y"_s);
    currentConsole()->appendText(fits);
    EXPECT_TRUE(shows(fits + u'\n' + fits + u"…\n"_s + fits));
    currentConsole()->appendText(u"y"_s);
    EXPECT_TRUE(shows(fits + u'\n' + fits + u"…\n"_s + fits + u"…"_s));
    currentConsole()->appendText(u"z"_s);
    console(u"z"_s);
    console(u"next"_s);
    EXPECT_TRUE(shows(fits + u'\n' + fits + u"…\n"_s + fits + u"…\nnext\n"_s));
}

TEST_F(ConsoleWindowTest, FollowsTheEndUnlessTheReaderScrolledUp)
{
    QScrollBar *bar = view()->verticalScrollBar();
    printNumbers(1, 5000);
    ASSERT_TRUE(showsUpTo(5000));
    EXPECT_EQ(bar->value(), bar->maximum());
    bar->setValue(100);
    printNumbers(5001, 6000);
    ASSERT_TRUE(showsUpTo(6000));
    EXPECT_EQ(bar->value(), 100);
    bar->setValue(bar->maximum());
    printNumbers(6001, 7000);
    ASSERT_TRUE(showsUpTo(7000));
    EXPECT_EQ(bar->value(), bar->maximum());
}

TEST_F(ConsoleWindowTest, KeepsTheTextWhileClosed)
{
    console(u"one"_s);
    ASSERT_TRUE(shows(u"one\n"_s));
    QWidget *window = currentConsole()->window();
    window->close();
    console(u"two"_s);
    showConsole();
    EXPECT_EQ(currentConsole()->window(), window);
    EXPECT_TRUE(shows(u"one\ntwo\n"_s));
}

TEST_F(ConsoleWindowTest, FindsCopiesAndSaves)
{
    console(u"Alpha beta"_s);
    console(u"gamma ALPHA"_s);
    ASSERT_TRUE(shows(u"Alpha beta\ngamma ALPHA\n"_s));
    const auto position = [] { return view()->textCursor().selectionStart(); };
    part<QLineEdit>(u"findField"_s)->setText(u"alpha"_s);
    for (const auto &[button, expected] : {std::pair(u"findNextButton"_s, 0),
                                           {u"findNextButton"_s, 17},
                                           {u"findNextButton"_s, 0},
                                           {u"findPreviousButton"_s, 17},
                                           {u"findPreviousButton"_s, 0}}) {
        part<QAbstractButton>(button)->click();
        EXPECT_EQ(position(), expected);
    }
    EXPECT_FALSE(currentConsole()->find(u"delta"_s));
    EXPECT_FALSE(currentConsole()->find({}));
    EXPECT_EQ(position(), 0);

    part<QAbstractButton>(u"copyButton"_s)->click();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Alpha"_s);
    view()->moveCursor(QTextCursor::End);
    currentConsole()->copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Alpha beta\ngamma ALPHA\n"_s);

    const QTemporaryDir directory;
    QFile file(directory.filePath(u"console.txt"_s));
    EXPECT_TRUE(currentConsole()->saveText(file.fileName()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "Alpha beta\ngamma ALPHA\n");
    static_cast<void>(log.take());
    EXPECT_FALSE(currentConsole()->saveText(directory.filePath(u"missing/console.txt"_s)));
    EXPECT_FALSE(currentConsole()->saveText(directory.path()));
    EXPECT_EQ(log.lines().size(), 2);
}

TEST_F(ConsoleWindowTest, ShowsTheTextInAnotherView)
{
    console(u"one"_s);
    const QSignalSpy spy(currentConsole(), &ConsoleWindowController::textDisplayChanged);
    auto other = std::make_unique<QPlainTextEdit>(u"old"_s);
    other->show();
    currentConsole()->setTextDisplay(other.get());
    currentConsole()->setTextDisplay(other.get());
    EXPECT_TRUE(shows(u"one\n"_s));
    EXPECT_EQ(spy.size(), 1);
    other.reset();
    EXPECT_EQ(view(), nullptr);
    console(u"two"_s); // seen by nobody
    EXPECT_EQ(currentConsole()->text(), u"one\rtwo\r"_s);
}

TEST_F(ConsoleWindowTest, MayBeLaidOutByTheApplication)
{
    killConsole();
    {
        const OwnInterface own(R"(<ui version="4.0"><widget class="QFrame" name="Own">
            <widget class="QPlainTextEdit" name="textDisplay"/></widget></ui>)");
        showConsole();
        EXPECT_EQ(currentConsole()->window()->objectName(), u"Own"_s);
        console(u"own"_s);
        EXPECT_TRUE(shows(u"own\n"_s));
        killConsole();
    }
    static_cast<void>(log.take());
    {
        const OwnInterface broken("<ui");
        showConsole();
        EXPECT_NE(view(), nullptr);
        EXPECT_EQ(log.take().size(), 1);
        killConsole();
    }
    const OwnInterface unknown(R"(<ui version="4.0"><widget class="QWidget" name="w">
        <widget class="app::Missing" name="missing"/></widget></ui>)");
    showConsole();
    EXPECT_EQ(view(), nullptr);
    console(u"unseen"_s);
    EXPECT_EQ(currentConsole()->text(), u"unseen\r"_s);
    ASSERT_EQ(log.lines().size(), 2);
    EXPECT_TRUE(log.lines().constFirst().contains(u"app::Missing"_s)) << log.lines().constFirst().toStdString();
}
