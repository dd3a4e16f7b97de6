// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bundle.h>
#include <dravelin/platform/notificationcenter.h>

#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

QStringList heard;

class Listener : public Object
{
    Q_OBJECT

public:
    explicit Listener(const QString &name) { setObjectName(name); }
    Q_INVOKABLE void savedAction(dravelin::Notification *notification)
    {
        heard << objectName() + u' ' + notification->name()
                     + (notification->object() ? u' ' + notification->object()->objectName() : QString());
    }
};

class NotificationCenterTest : public testing::Test
{
protected:
    void SetUp() override
    {
        heard.clear();
        sender.setObjectName(u"doc"_s);
    }
    NotificationCenter center;
    Listener a{u"a"_s}, b{u"b"_s};
    QObject sender, other;
};

} // namespace

TEST_F(NotificationCenterTest, DeliversInOrderOfRegistrationByNameAndSender)
{
    center.addObserver(&a, "savedAction:", u"saved"_s);
    center.addObserver(&b, &Listener::savedAction, {}); // every name
    center.addObserver(&a, "savedAction:", u"saved"_s, &sender);
    center.addObserver(
        &b, [](Notification *n) { heard << u"lambda "_s + n->userInfo().value(u"k"_s).toString(); }, u"saved"_s);
    center.addObserver(&a, "savedAction:", u""_s); // the empty name is a name
    center.postNotificationName(u"saved"_s, &sender, {{u"k"_s, 1}});
    EXPECT_EQ(heard, (QStringList{u"a saved doc"_s, u"b saved doc"_s, u"a saved doc"_s, u"lambda 1"_s}));
    heard.clear();
    center.postNotificationName(u"saved"_s, &other);
    EXPECT_EQ(heard, (QStringList{u"a saved "_s, u"b saved "_s, u"lambda "_s}));
    heard.clear();
    center.postNotificationName(u""_s);
    EXPECT_EQ(heard, (QStringList{u"b "_s, u"a "_s}));
}

TEST_F(NotificationCenterTest, RemovesByObserverNameAndSender)
{
    const auto registerAll = [this] {
        center.addObserver(&a, "savedAction:", u"saved"_s);
        center.addObserver(&a, "savedAction:", u"saved"_s, &sender);
        center.addObserver(&a, "savedAction:", u"closed"_s);
        center.addObserver(&b, "savedAction:", u"saved"_s);
    };
    const auto post = [this] {
        heard.clear();
        center.postNotificationName(u"saved"_s, &sender);
        center.postNotificationName(u"closed"_s);
        return heard;
    };
    registerAll();
    center.removeObserver(&a, u"saved"_s, &sender);
    EXPECT_EQ(post(), (QStringList{u"a saved doc"_s, u"b saved doc"_s, u"a closed"_s}));
    center.removeObserver(&a, u"saved"_s);
    EXPECT_EQ(post(), (QStringList{u"b saved doc"_s, u"a closed"_s}));
    registerAll();
    center.removeObserver(&a);
    EXPECT_EQ(post(), (QStringList{u"b saved doc"_s, u"b saved doc"_s}));
    center.removeObserver(nullptr);
    center.removeObserver(&sender, u"unknown"_s);
    EXPECT_EQ(post().size(), 2);
}

TEST_F(NotificationCenterTest, AllowsComingAndGoingDuringDelivery)
{
    auto gone = std::make_unique<Listener>(u"gone"_s);
    auto *gonePointer = gone.get();
    center.addObserver(
        &a,
        [&] {
            heard << u"first"_s;
            gone.reset();
            center.removeObserver(&b, u"saved"_s);
            center.addObserver(&a, "savedAction:", u"saved"_s);
            center.removeObserver(&a, u"unknown"_s);
        },
        u"saved"_s);
    center.addObserver(gonePointer, "savedAction:", u"saved"_s);
    center.addObserver(&b, "savedAction:", u"saved"_s);
    center.postNotificationName(u"saved"_s);
    EXPECT_EQ(heard, QStringList{u"first"_s});
    heard.clear();
    center.postNotificationName(u"saved"_s);
    EXPECT_EQ(heard, (QStringList{u"first"_s, u"a saved"_s}));
}

TEST_F(NotificationCenterTest, MayBeDestroyedByAnObserver)
{
    auto own = std::make_unique<NotificationCenter>();
    own->addObserver(
        &a, [&] { own.reset(); }, u"saved"_s);
    own->addObserver(&a, "savedAction:", u"saved"_s);
    own->postNotificationName(u"saved"_s);
    EXPECT_EQ(heard, QStringList{u"a saved"_s});
}

TEST_F(NotificationCenterTest, ForgetsSendersThatAreGone)
{
    // A new object may get the address of the old one.
    alignas(QObject) std::byte place[sizeof(QObject)];
    auto *first = new (place) QObject;
    center.addObserver(&a, "savedAction:", u"saved"_s, first);
    first->~QObject();
    auto *second = new (place) QObject;
    center.postNotificationName(u"saved"_s, second);
    second->~QObject();
    center.postNotificationName(u"saved"_s); // from nobody
    EXPECT_TRUE(heard.isEmpty());
}

TEST(Bundle, TellsVersionAndFindsResources)
{
    Bundle &bundle = Bundle::mainBundle();
    EXPECT_EQ(bundle.objectForInfoDictionaryKey(u"CFBundleShortVersionString"_s), QVariant(u"1.2"_s));
    EXPECT_FALSE(bundle.objectForInfoDictionaryKey(u"CFBundleVersion"_s).isValid());
    bundle.setObject(u"2041"_s, u"CFBundleVersion"_s);
    EXPECT_EQ(bundle.infoDictionary().value(u"CFBundleVersion"_s), QVariant(u"2041"_s));
    bundle.setObject({}, u"CFBundleVersion"_s);
    EXPECT_FALSE(bundle.infoDictionary().contains(u"CFBundleVersion"_s));

    const QString beside = QCoreApplication::applicationDirPath() + u"/dravelin-note.txt"_s;
    QFile file(beside);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(bundle.pathForResource(u"dravelin-note"_s, u"txt"_s), beside);
    file.remove();
    EXPECT_TRUE(bundle.pathForResource(u"dravelin-note"_s, u"txt"_s).isNull());
    EXPECT_EQ(bundle.pathForResource(u"qpdf/qpdfa_metadata.xml"_s), u":/qpdf/qpdfa_metadata.xml"_s);
}

#include "notificationcenter_test.moc"
