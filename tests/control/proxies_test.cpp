// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gtest/gtest.h>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class Document : public Object
{
    Q_OBJECT
    Q_PROPERTY(int pages MEMBER pages NOTIFY pagesChanged)

public:
    int pages = 1;

Q_SIGNALS:
    void pagesChanged();
};

class Target : public Object
{
    Q_OBJECT

public:
    QStringList calls;

    Q_INVOKABLE void pagesChanged(dravelin::KVOProxy *proxy)
    {
        calls << u"%1 %2->%3"_s.arg(proxy->keyPath(), proxy->getOldValue().toString(), proxy->getNewValue().toString());
    }
    Q_INVOKABLE void savedAction(dravelin::Notification *notification) { calls << notification->name(); }
    Q_INVOKABLE void Action(dravelin::Notification *) { calls << u"nameless"_s; }
    void checked(Notification *) { calls << u"checked"_s; }
};

class ProxyTest : public testing::Test
{
protected:
    Document document;
    Target target;
};

using KVOProxyTest = ProxyTest;

class ObserverProxyTest : public ProxyTest
{
protected:
    std::shared_ptr<NotificationCenter> center = std::make_shared<NotificationCenter>();
    ObserverProxy proxy{&target, center};

    QStringList post(const QString &name)
    {
        target.calls.clear();
        ObserverProxy::sendNotification(name, center);
        return target.calls;
    }
};

} // namespace

TEST_F(KVOProxyTest, CallsTheTargetWithOldAndNewValue)
{
    {
        const KVOProxy byName(&document, u"pages"_s, &target, "pagesChanged:");
        const KVOProxy checked(&document, u"pages"_s, &target, &Target::pagesChanged);
        document.setProperty("pages", 2);
        EXPECT_EQ(target.calls, (QStringList{u"pages 1->2"_s, u"pages 1->2"_s}));
        EXPECT_EQ(byName.object(), &document);
        EXPECT_FALSE(byName.getOldValue().isValid());
        EXPECT_FALSE(byName.getNewValue().isValid());
    }
    document.setProperty("pages", 3);
    EXPECT_EQ(target.calls.size(), 2);
}

TEST_F(KVOProxyTest, ReadsTheOuterChangeAgainAfterOneMadeWithin)
{
    KVOProxy proxy(&document, u"pages"_s, &target, [&](KVOProxy *p) {
        if (p->getNewValue() == QVariant(2))
            document.setProperty("pages", 3);
        target.pagesChanged(p);
    });
    document.setProperty("pages", 2);
    EXPECT_EQ(target.calls, (QStringList{u"pages 2->3"_s, u"pages 1->2"_s}));
}

TEST_F(KVOProxyTest, ToleratesTargetsObjectsAndProxiesThatGo)
{
    auto mortal = std::make_unique<Target>();
    KVOProxy targetless(&document, u"pages"_s, mortal.get(), "pagesChanged:");
    mortal.reset();
    document.setProperty("pages", 2); // heard by nobody

    auto observed = std::make_unique<Document>();
    auto *proxy = new KVOProxy(observed.get(), u"pages"_s, &target, [&](KVOProxy *p) {
        if (p->getNewValue() == QVariant(5))
            delete p;
        else
            observed->setProperty("pages", 5); // the inner call destroys the proxy of the outer one
    });
    QPointer<KVOProxy> watch = proxy;
    observed->setProperty("pages", 4);
    EXPECT_FALSE(watch);

    KVOProxy objectless(observed.get(), u"pages"_s, &target, "pagesChanged:");
    observed.reset();
    EXPECT_EQ(objectless.object(), nullptr);
}

TEST_F(KVOProxyTest, RestoresItselfWhenTheActionThrows)
{
    KVOProxy proxy(&document, u"pages"_s, &target, [](KVOProxy *) { throw 1; });
    EXPECT_THROW(document.setProperty("pages", 2), int);
    EXPECT_FALSE(proxy.getNewValue().isValid());
}

TEST_F(ObserverProxyTest, RegistersOperationsByNotificationName)
{
    proxy.addObserverForKey(u"saved"_s);
    proxy.addObserverForKey(u""_s);
    proxy.addObserverForKey(u"closed"_s, &Target::checked);
    EXPECT_EQ(post(u"saved"_s), QStringList{u"saved"_s});
    EXPECT_EQ(post(u""_s), QStringList{u"nameless"_s});
    EXPECT_EQ(post(u"closed"_s), QStringList{u"checked"_s});
    EXPECT_EQ(proxy.keyPaths(), (QVariantMap{{u""_s, u""_s}, {u"closed"_s, u""_s}, {u"saved"_s, u""_s}}));
}

TEST_F(ObserverProxyTest, KeepsNamesUntilAllAreRemoved)
{
    proxy.addObserverForKey(u"saved"_s);
    proxy.addObserverForKey(u"saved"_s, &document);
    target.calls.clear();
    ObserverProxy::sendNotification(u"saved"_s, &document, center);
    EXPECT_EQ(target.calls.size(), 2);
    proxy.removeObserverWithKey(u"saved"_s);
    EXPECT_TRUE(post(u"saved"_s).isEmpty());
    EXPECT_EQ(proxy.keyPaths().size(), 1);
    proxy.removeAllObservers();
    EXPECT_TRUE(proxy.keyPaths().isEmpty());
}

TEST_F(ObserverProxyTest, GoesWithItsRegistrations)
{
    {
        ObserverProxy other(&target, center);
        other.addObserverForKey(u"saved"_s);
        EXPECT_EQ(post(u"saved"_s).size(), 1);
    }
    EXPECT_TRUE(post(u"saved"_s).isEmpty());

    LogRecorder log;
    proxy.addObserverForKey(QString());
    EXPECT_EQ(log.take().size(), 1);
    EXPECT_TRUE(proxy.keyPaths().isEmpty());
    proxy.addObserverForKey(u"saved"_s, &Document::pagesChanged); // not a function of the target
    EXPECT_EQ(log.take().size(), 1);
}

TEST_F(ObserverProxyTest, PostsWithItselfOrAnObjectAsSender)
{
    QObject *sender = nullptr;
    center->addObserver(&target, [&](Notification *n) { sender = n->object(); }, {});
    proxy.postNotification(u"saved"_s);
    EXPECT_EQ(sender, &proxy);
    ObserverProxy::sendNotification(u"saved"_s, &document, center);
    EXPECT_EQ(sender, &document);

    ObserverProxy byDefault(&target);
    byDefault.addObserverForKey(u"saved"_s);
    target.calls.clear();
    ObserverProxy::sendNotification(u"saved"_s);
    ObserverProxy::sendNotification(u"saved"_s, &document);
    EXPECT_EQ(target.calls.size(), 2);
}

#include "proxies_test.moc"
