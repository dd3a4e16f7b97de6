// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Notifications on a bus that the test starts: with a service of the test's own, with a real daemon, and with none.

#include <dravelin/files/notifications.h>

#include <support/logrecorder.h>
#include <support/printers.h>
#include <system/desktopsession.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnection>
#include <QtGui/QGuiApplication>
#include <QtNetwork/QLocalServer>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <functional>
#include <optional>
#include <thread>

using namespace dravelin;
using namespace Qt::StringLiterals;
using Reason = UserNotificationCenter::CloseReason;

namespace {

bool waitFor(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 30'000); }

/// Records what it is told to show.
class Service : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    struct Call
    {
        QString application;
        uint replaced;
        QString icon, title, text;
        QStringList actions;
        QVariantMap hints;
        int timeout;
    };
    QList<Call> calls;
    QList<uint> closed;
    QStringList capabilities;
    uint lastId = 6;

    Service()
    {
        QDBusConnection bus =
            QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"service"_s);
        bus.registerObject(u"/org/freedesktop/Notifications"_s, this, QDBusConnection::ExportAllContents);
        EXPECT_TRUE(bus.registerService(u"org.freedesktop.Notifications"_s));
    }
    ~Service() override { QDBusConnection::disconnectFromBus(u"service"_s); }

public Q_SLOTS:
    QStringList GetCapabilities() { return capabilities; } // NOLINT
    uint Notify(const QString &application, uint replaced, const QString &icon, const QString &title,
                const QString &text, const QStringList &actions, const QVariantMap &hints, int timeout)
    {
        calls.append({application, replaced, icon, title, text, actions, hints, timeout});
        return replaced ? replaced : ++lastId;
    }
    void CloseNotification(uint id) { closed << id; }

Q_SIGNALS:
    void ActionInvoked(uint id, const QString &key);
    void NotificationClosed(uint id, uint reason);
};

class NotificationsTest : public testing::Test
{
protected:
    std::optional<DesktopSession> session;
    std::optional<Service> service;

    void SetUp() override
    {
        session.emplace();
        ASSERT_TRUE(session->hasBus()) << "dbus-daemon does not run";
        service.emplace();
    }
    [[nodiscard]] Service::Call calledWith(const NotificationContent &content)
    {
        const qsizetype count = service->calls.size();
        (void)UserNotificationCenter::current()->deliver(content);
        EXPECT_TRUE(waitFor([&] { return service->calls.size() > count; }));
        return service->calls.value(count);
    }
    /// What another application logs that does so.
    static QByteArray showAndEnd()
    {
        QProcess child;
        child.start(QStringLiteral(NOTIFICATIONS_CHILD), QStringList());
        EXPECT_TRUE(waitFor([&] { return child.state() == QProcess::NotRunning; }));
        EXPECT_EQ(child.exitCode(), 0);
        return child.readAllStandardError();
    }
    /// An open notification.
    [[nodiscard]] static std::shared_ptr<UserNotification> opened(const QString &title)
    {
        auto notification = UserNotification::deliver({.title = title});
        QSignalSpy delivered(notification.get(), &UserNotification::delivered);
        EXPECT_TRUE(waitFor([&] { return delivered.count() == 1; }));
        return notification;
    }
};

struct Closings
{
    QList<Reason> reasons;
    explicit Closings(const std::shared_ptr<UserNotification> &notification)
    {
        QObject::connect(notification.get(), &UserNotification::closed, &context, [this](Reason r) { reasons << r; });
    }
    [[nodiscard]] bool become(const QList<Reason> &expected) const
    {
        return waitFor([&] { return reasons == expected; });
    }
    QObject context;
};

} // namespace

TEST_F(NotificationsTest, ShowTextsAsTheyStand)
{
    const QString pair = u"𝄞"_s;
    const struct
    {
        const char *name;
        QString given, plain, markup;
    } rows[] = {
        {"absent", {}, u""_s, u""_s},
        {"markup", u"a <b>&amp;\"</b>"_s, u"a <b>&amp;\"</b>"_s, u"a &lt;b&gt;&amp;amp;&quot;&lt;/b&gt;"_s},
        {"NUL and controls", "a" + QString(QChar()) + u"\u0007\tb"_s, u"a\uFFFD\uFFFD\tb"_s, u"a\uFFFD\uFFFD\tb"_s},
        {"half a pair", pair.left(1) + u"x"_s + pair.right(1), u"\uFFFDx\uFFFD"_s, u"\uFFFDx\uFFFD"_s},
        {"noncharacter", QString(QChar(0xFFFE)) + pair, u"\uFFFD"_s + pair, u"\uFFFD"_s + pair},
        {"line ends", u"a\r\nb\rc\nd"_s, u"a\nb\nc\nd"_s, u"a\nb\nc\nd"_s},
        {"fits", QString(5000, u'&'), QString(5000, u'&'), u"&amp;"_s.repeated(5000)},
        {"too long", QString(1 << 20, u'm'), QString(4999, u'm') + u'…', QString(4999, u'm') + u'…'},
        {"cut at a pair", QString(4998, u'm') + pair + u"x"_s, QString(4998, u'm') + u'…', QString(4998, u'm') + u'…'},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        service->capabilities.clear();
        EXPECT_EQ(calledWith({.informativeText = row.given}).text, row.plain);
        service->capabilities = {u"actions"_s, u"body-markup"_s};
        EXPECT_EQ(calledWith({.informativeText = row.given}).text, row.markup);
        EXPECT_EQ(calledWith({.title = row.given}).title.left(400), row.plain.left(400)) << "titles have no markup";
    }
}

TEST_F(NotificationsTest, BearTheApplicationsNameAndIcon)
{
    QGuiApplication::setApplicationDisplayName(u"Sketch"_s);
    QGuiApplication::setDesktopFileName(u"org.example.sketch"_s);
    QPixmap pixels(3, 2);
    pixels.fill(QColor(1, 2, 3));
    QGuiApplication::setWindowIcon(pixels);
    std::thread([] { showNotification(u"T"_s, u"M"_s); }).join();
    ASSERT_TRUE(waitFor([&] { return !service->calls.isEmpty(); }));
    QGuiApplication::setWindowIcon({});

    const Service::Call call = service->calls.constFirst();
    EXPECT_EQ(call.application, u"Sketch"_s);
    EXPECT_EQ(call.title + call.text, u"TM"_s);
    EXPECT_EQ(call.timeout, -1);
    EXPECT_TRUE(call.actions.isEmpty() && call.replaced == 0 && call.icon.isEmpty());
    EXPECT_EQ(call.hints.keys(), (QStringList{u"desktop-entry"_s, u"image-data"_s, u"suppress-sound"_s, u"urgency"_s}));
    EXPECT_EQ(call.hints[u"suppress-sound"_s], QVariant(true));
    EXPECT_EQ(call.hints[u"desktop-entry"_s], u"org.example.sketch"_s);
    const auto picture = call.hints[u"image-data"_s].value<QDBusArgument>();
    ASSERT_EQ(picture.currentSignature(), u"(iiibiiay)"_s);
    int width, height, stride, bits, channels;
    bool alpha;
    QByteArray bytes;
    picture.beginStructure();
    picture >> width >> height >> stride >> alpha >> bits >> channels >> bytes;
    picture.endStructure();
    EXPECT_EQ((QList{width, height, stride, bits, channels}), (QList{3, 2, 12, 8, 4}));
    EXPECT_EQ(bytes, QByteArray("\1\2\3\xFF").repeated(6));
}

TEST_F(NotificationsTest, PassOnWhatIsAskedFor)
{
    const Service::Call loud = calledWith({.soundName = u"bell"_s,
                                           .actions = {{u"open"_s, u"Öffnen"_s}, {u"default"_s, {}}},
                                           .icon = QIcon::fromTheme(u"no-such-icon"_s),
                                           .urgency = NotificationUrgency::Critical,
                                           .timeout = 1.5});
    EXPECT_EQ(loud.actions, (QStringList{u"open"_s, u"Öffnen"_s, u"default"_s, u""_s}));
    EXPECT_EQ(loud.hints.value(u"sound-name"_s), u"bell"_s);
    EXPECT_FALSE(loud.hints.contains(u"suppress-sound"_s));
    EXPECT_EQ(loud.hints[u"urgency"_s], QVariant::fromValue(uchar(2)));
    EXPECT_EQ(calledWith({.soundName = u"/a.wav"_s}).hints.value(u"sound-file"_s), u"/a.wav"_s);
    const struct
    {
        double seconds;
        int expected;
    } rows[] = {{1.5, 1500}, {0, 0}, {1e-9, 1}, {-3, -1}, {qQNaN(), -1}, {1e300, INT_MAX}};
    for (const auto &row : rows)
        EXPECT_EQ(calledWith({.timeout = row.seconds}).timeout, row.expected) << row.seconds;
}

TEST_F(NotificationsTest, ReportActionsAndClosing)
{
    auto notification = opened(u"a"_s);
    const std::weak_ptr<UserNotification> watch = notification;
    const uint id = service->lastId;
    QSignalSpy activated(notification.get(), &UserNotification::activated);
    QSignalSpy changes(notification.get(), &UserNotification::openChanged);
    const Closings closings(notification);
    notification.reset();
    ASSERT_FALSE(watch.expired()) << "an open one keeps itself";
    Q_EMIT service->ActionInvoked(id + 1, u"foreign"_s);
    Q_EMIT service->NotificationClosed(0, 2);
    Q_EMIT service->ActionInvoked(id, u"open"_s);
    Q_EMIT service->NotificationClosed(id, 2);
    EXPECT_TRUE(closings.become({Reason::Dismissed}));
    EXPECT_EQ(activated.count(), 1);
    EXPECT_EQ(activated.value(0).value(0), u"open"_s);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(watch.expired());

    for (const auto &[reason, expected] : {std::pair(1U, Reason::Expired), std::pair(77U, Reason::Unknown)}) {
        const auto other = opened(u"b"_s);
        const Closings otherClosings(other);
        Q_EMIT service->NotificationClosed(service->lastId, reason);
        EXPECT_TRUE(otherClosings.become({expected}));
        EXPECT_FALSE(other->isOpen());
    }
}

TEST_F(NotificationsTest, AreReplacedAndWithdrawn)
{
    const auto notification = UserNotification::deliver({.title = u"0"_s});
    const Closings closings(notification);
    for (int i = 1; i < 10; ++i)
        notification->replace({.title = QString::number(i)}); // the first answer is still out
    ASSERT_TRUE(waitFor([&] { return !service->calls.isEmpty(); }));
    notification->replace({.title = u"10"_s});
    ASSERT_TRUE(waitFor([&] { return service->calls.size() == 2; }));
    EXPECT_EQ(service->calls[0].title + service->calls[1].title, u"910"_s) << "only the latest is worth showing";
    EXPECT_EQ(service->calls[1].replaced, service->lastId);

    QSignalSpy delivered(notification.get(), &UserNotification::delivered);
    ASSERT_TRUE(waitFor([&] { return delivered.count() == 1; }));
    notification->withdraw();
    EXPECT_TRUE(closings.become({Reason::Withdrawn}));
    EXPECT_TRUE(waitFor([&] { return service->closed == QList{service->lastId}; }));
    notification->withdraw();
    Q_EMIT service->NotificationClosed(service->lastId, 3);

    notification->replace({.title = u"again"_s});
    notification->withdraw();
    EXPECT_TRUE(closings.become({Reason::Withdrawn, Reason::Withdrawn})) << "before it was shown";
    notification->replace({.title = u"and again"_s});
    EXPECT_TRUE(waitFor([&] { return service->calls.size() == 3; }));
    EXPECT_EQ(service->calls[2].title, u"and again"_s);
    EXPECT_EQ(service->calls[2].replaced, 0U);
    notification->withdraw(); // while the service shows it
    EXPECT_TRUE(waitFor([&] { return service->closed == QList({service->lastId - 1, service->lastId}); }));
    EXPECT_EQ(closings.reasons.size(), 3);
}

TEST_F(NotificationsTest, AreShownAnewWhenClosedDuringAReplacement)
{
    const auto notification = opened(u"a"_s);
    const Closings closings(notification);
    Q_EMIT service->NotificationClosed(service->lastId, 2);
    notification->replace({.title = u"b"_s}); // the closing is on its way
    ASSERT_TRUE(waitFor([&] { return service->calls.size() == 2; }));
    EXPECT_EQ(service->calls[1].replaced, 0U);
    EXPECT_TRUE(closings.reasons.isEmpty());
    Q_EMIT service->NotificationClosed(service->lastId, 2);
    EXPECT_TRUE(closings.become({Reason::Dismissed}));
}

TEST_F(NotificationsTest, OutliveAServiceThatGoesAway)
{
    const auto notification = opened(u"a"_s);
    const Closings closings(notification);
    const auto waiting = UserNotification::deliver({.title = u"waits"_s});
    const Closings waitingClosings(waiting);
    const LogRecorder log;
    service.reset();
    EXPECT_TRUE(closings.become({Reason::Gone}));
    EXPECT_TRUE(waitingClosings.become({Reason::NotShown}));
    notification->replace({.title = u"nobody"_s});
    EXPECT_TRUE(closings.become({Reason::Gone, Reason::NotShown}));
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_THAT(log.lines()[0].toStdString(), testing::StartsWith("Notification \"waits\" is not shown: "));

    service.emplace();
    notification->replace({.title = u"back"_s});
    ASSERT_TRUE(waitFor([&] { return service->calls.size() == 1; }));
    Q_EMIT service->ActionInvoked(service->lastId, u"key"_s);
    QSignalSpy activated(notification.get(), &UserNotification::activated);
    EXPECT_TRUE(waitFor([&] { return activated.count() == 1; })) << "the new service is heard";
}

TEST_F(NotificationsTest, OutliveTheBus)
{
    const Closings closings(opened(u"a"_s));
    session.reset();
    EXPECT_TRUE(closings.become({Reason::Gone}));
}

TEST_F(NotificationsTest, AreHarmlessWithoutABus)
{
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
    const LogRecorder log;
    for (int i = 0; i < 3; ++i) {
        const auto notification = UserNotification::deliver({.title = u"a"_s});
        const Closings closings(notification);
        EXPECT_TRUE(notification->isOpen());
        EXPECT_TRUE(closings.become({Reason::NotShown}));
        notification->withdraw();
    }
    EXPECT_EQ(log.lines().size(), 1);
}

TEST_F(NotificationsTest, WaitForABusThatIsSilent)
{
    const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    const QTemporaryDir folder;
    QLocalServer silent;
    ASSERT_TRUE(silent.listen(folder.filePath(u"bus"_s)));
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + QFile::encodeName(silent.fullServerName()));
    showNotification(u"a"_s, {});
    const auto notification = UserNotification::deliver({.title = u"b"_s});
    EXPECT_TRUE(waitFor([&] { return silent.hasPendingConnections(); }));
    EXPECT_TRUE(notification->isOpen());
    EXPECT_TRUE(showAndEnd().startsWith("dravelin: Notification \"last\" is not shown: "));
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    showNotification(u"c"_s, {});
    ASSERT_TRUE(waitFor([&] { return service->calls.size() == 3; }));
    EXPECT_EQ(service->calls[0].title + service->calls[1].title + service->calls[2].title, u"abc");
}

TEST_F(NotificationsTest, AreSentBeforeTheApplicationEnds)
{
    EXPECT_EQ(showAndEnd(), "");
    ASSERT_EQ(service->calls.size(), 1);
    EXPECT_EQ(service->calls[0].title + service->calls[0].text, u"lastwords"_s);
}

TEST_F(NotificationsTest, AreShownByARealDaemon)
{
    service.reset();
    if (!session->startDesktop())
        GTEST_SKIP() << "there is no Xvfb or no dunst";
    const auto notification = UserNotification::deliver({.title = u"Export"_s, .timeout = 0});
    const Closings closings(notification);
    ASSERT_TRUE(waitFor([&] { return !session->notificationArea().isNull(); }));
    session->click(1);
    EXPECT_TRUE(closings.become({Reason::Dismissed}));
    const auto brief = UserNotification::deliver({.title = u"brief"_s, .timeout = 0.05});
    EXPECT_TRUE(Closings(brief).become({Reason::Expired}));
}

#include "notifications_test.moc"
