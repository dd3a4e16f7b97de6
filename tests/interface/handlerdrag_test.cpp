// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Rows that are dragged by a real pointer, on an X server with a window manager that this program starts. Pictures go to
// the folder "pictures" where it runs.

#include <dravelin/interface/tableviewhandler.h>

#include <support/desktop.h>
#include <support/logrecorder.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtGui/QScreen>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>

#include <gtest/gtest.h>

#include <optional>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 20'000; ///< milliseconds for anything that is waited for

/// An X server with a window manager; neither when something is not installed.
struct Desktop
{
    std::optional<XServer> server;
    std::optional<WindowManager> manager;

    Desktop()
    {
        if (!arePrograms({u"Xvfb"_s, u"openbox"_s, u"xdotool"_s}))
            return;
        qputenv("DISPLAY", server.emplace().name());
        manager.emplace();
    }
    [[nodiscard]] bool isRunning() const { return manager && !manager->line().isEmpty(); }
};

void point(const QStringList &arguments) { QProcess::execute(u"xdotool"_s, arguments); }

void moveTo(QPoint place) { point({u"mousemove"_s, QString::number(place.x()), QString::number(place.y())}); }

class Letters : public TableViewHandler
{
public:
    using TableViewHandler::TableViewHandler;

    void updateTableView(QWidget *view, qsizetype row) override
    {
        qobject_cast<QLabel *>(view)->setText(tableData()[row].toString());
    }
    void dragComplete() override { ++drags; }
    int validateDrop(TableView *view, qsizetype row, DropOperation operation) override
    {
        proposed = row;
        return TableViewHandler::validateDrop(view, row, operation);
    }
    [[nodiscard]] QString order() const { return QVariant(tableData()).toStringList().join(QString()); }

    int drags = 0;
    qsizetype proposed = -1;
};

class HandlerDragTest : public testing::Test
{
protected:
    QWidget window;
    QPointer<TableView> table = new TableView;
    QPointer<TableView> other = new TableView;
    std::unique_ptr<Letters> handler;
    std::unique_ptr<Letters> otherHandler;
    LogRecorder log;
    QString pictures = QString::fromLatin1(testing::UnitTest::GetInstance()->current_test_info()->name());

    void SetUp() override
    {
        if (QGuiApplication::platformName() != u"xcb"_s)
            GTEST_SKIP() << "there is no Xvfb, openbox or xdotool";
        auto *layout = new QHBoxLayout(&window);
        for (TableView *view : {table.data(), other.data()}) {
            layout->addWidget(view);
            view->registerView<QLabel>(u"letter"_s);
            view->setRowHeight(30);
        }
        handler = std::make_unique<Letters>(table, u"letter"_s);
        otherHandler = std::make_unique<Letters>(other, u"letter"_s);
        fill();
        window.setGeometry(100, 100, 500, 320);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window, patience));
    }
    void fill() const
    {
        for (Letters *letters : {handler.get(), otherHandler.get()})
            letters->setSourceData(
                std::make_shared<QVariantList>(QVariantList{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s}));
    }
    static void letGo() { point({u"key"_s, u"Escape"_s, u"mouseup"_s, u"1"_s}); }
    static QPoint inRow(const TableView *view, int row, int y)
    {
        return view->viewport()->mapToGlobal(QPoint(60, 30 * row + y));
    }
    static void picture(const QString &name)
    {
        QDir().mkpath(u"pictures"_s);
        QApplication::primaryScreen()->grabWindow(0).save(u"pictures/"_s + name + u".png"_s);
    }

    /// Drags a row of the table, and with it all that are selected, to above row `to` of another or the same table.
    /// \param finish what happens there in place of letting go
    /// \return whether the drag got there and ended
    bool drag(int from, TableView *target, int to, const std::function<void()> &finish = {})
    {
        const QPoint start = inRow(table, from, 15), end = inRow(target, to, 2);
        const int before = handler->drags;
        moveTo(start);
        if (!QTest::qWaitFor([&] { return QCursor::pos() == start; }, patience))
            return false;
        point({u"mousedown"_s, u"1"_s});
        // The drag has an event loop of its own, in which the timer goes on.
        int step = 0;
        bool isThere = false;
        const QDeadlineTimer deadline(patience);
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            if (deadline.hasExpired())
                letGo();
            if (step < 8) {
                ++step;
                moveTo(start + (end - start) * step / 8);
                return;
            }
            const bool isSeen = target == other || handler->proposed == to;
            if (isThere || handler->dragSelectedRowsIndexes().isEmpty() || QCursor::pos() != end || !isSeen)
                return;
            isThere = true;
            picture(pictures + u"-over"_s);
            finish ? finish() : point({u"mouseup"_s, u"1"_s});
        });
        timer.start(40);
        const bool isEnded = QTest::qWaitFor([&] { return handler->drags > before; }, patience);
        letGo();
        return isThere && isEnded;
    }
};

} // namespace

TEST_F(HandlerDragTest, Reorders)
{
    const struct
    {
        const char *name;
        bool toDropRow;
        IndexSet selected;
        int from;
        int to;
        const char *after;
        IndexSet selectedAfter;
    } cases[] = {
        {"one", false, {4}, 4, 1, "abcdef", {}},
        {"several", false, {1, 2}, 2, 5, "abcdef", {}},
        {"scattered", false, {1, 3, 5}, 3, 0, "abdfce", {}},
        {"one to its place", true, {4}, 4, 1, "aebcdf", {1}},
        {"several to their place", true, {1, 2}, 2, 5, "adebcf", {3, 4}},
        {"scattered to their place", true, {1, 3, 5}, 3, 0, "bdface", {0, 1, 2}},
        {"behind the last", true, {0, 2}, 0, 6, "bdefac", {4, 5}},
    };
    for (const auto &[name, toDropRow, selected, from, to, after, selectedAfter] : cases) {
        fill();
        handler->setReordersToDropRow(toDropRow);
        table->selectRowIndexes(selected, false);
        pictures = QString::fromLatin1(name).replace(u' ', u'-');
        table->setFocus();
        QCoreApplication::processEvents();
        picture(pictures + u"-before"_s);
        EXPECT_TRUE(drag(from, table, to)) << name;
        QCoreApplication::processEvents();
        picture(pictures + u"-after"_s);
        EXPECT_EQ(handler->order(), QString::fromLatin1(after)) << name;
        EXPECT_EQ(table->selectedRowIndexes(), selectedAfter) << name;
    }
}

TEST_F(HandlerDragTest, RefusesRowsOfAnotherTable)
{
    table->selectRowIndexes({1, 2}, false);
    handler->setReordersToDropRow(true);
    otherHandler->setReordersToDropRow(true);
    EXPECT_TRUE(drag(1, other, 4));
    EXPECT_EQ(handler->order() + otherHandler->order(), u"abcdefabcdef"_s);
    EXPECT_EQ(otherHandler->proposed, -1);
}

TEST_F(HandlerDragTest, MayEndInAnyWay)
{
    handler->setReordersToDropRow(true);
    const auto dragTo = [this](int to, const IndexSet &rows, const std::function<void()> &finish) {
        table->selectRowIndexes(rows, false);
        EXPECT_TRUE(drag(int(rows.first().value_or(0)), table, to, finish)) << to;
        EXPECT_TRUE(handler->dragSelectedRowsIndexes().isEmpty());
        return handler->order();
    };
    const auto keep = [this](qsizetype rows) {
        handler->tableData().resize(rows);
        handler->dataChanged();
        point({u"mouseup"_s, u"1"_s});
    };
    EXPECT_EQ(dragTo(5, {1, 2}, [] { point({u"key"_s, u"Escape"_s}); }), u"abcdef"_s);
    const auto replace = [&] {
        handler->setSourceData(std::make_shared<QVariantList>(QVariantList{1, 2, 3, 4, 5}));
        keep(5);
    };
    EXPECT_EQ(dragTo(5, {1, 2}, replace), u"12345"_s);
    EXPECT_EQ(log.take().size(), 1);
    EXPECT_EQ(dragTo(4, {1, 2}, [&] { keep(2); }), u"12"_s);
    EXPECT_EQ(dragTo(1, {0}, [this] { delete table.data(); }), u"12"_s);
    EXPECT_FALSE(table);
    EXPECT_EQ(handler->drags, 4);
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const Desktop desktop;
    qputenv("QT_QPA_PLATFORM", desktop.isRunning() ? "xcb" : "offscreen");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:"); // the desktop is this program's alone
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
