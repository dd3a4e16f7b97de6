// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/action.h>
#include <dravelin/platform/selector.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtCore/QVariant>

using namespace dravelin;
using namespace Qt::StringLiterals;

class Undeclared;

namespace {

class Receiver : public Object
{
    Q_OBJECT

public:
    QStringList calls;

    Q_INVOKABLE int plain()
    {
        calls << u"plain"_s;
        return 7;
    }
    Q_INVOKABLE void objectArgument(QObject *object) { calls << (object ? object->objectName() : u"none"_s); }
    Q_INVOKABLE void receiverArgument(Receiver *object) { calls << u"receiver "_s + object->objectName(); }
    Q_INVOKABLE void undeclaredArgument(Undeclared *) { calls << u"undeclared"_s; }
    Q_INVOKABLE void wide(qint64 number) { calls << QString::number(number); }
    Q_INVOKABLE void narrow(int number) { calls << QString::number(number); }
    Q_INVOKABLE void real(double number) { calls << QString::number(number); }
    Q_INVOKABLE void text(const QString &words) { calls << words; }
    Q_INVOKABLE void any(const QVariant &value) { calls << u"any "_s + value.toString(); }
    Q_INVOKABLE void overloaded(const QString &words) { calls << u"text "_s + words; }
    Q_INVOKABLE void overloaded(qint64 number) { calls << u"integer %1"_s.arg(number); }
    Q_INVOKABLE void three(int, int, int) {}
    virtual Q_INVOKABLE void overridden() { calls << u"base"_s; }

private Q_SLOTS:
    void hidden() { calls << u"hidden"_s; }
};

class Derived : public Receiver
{
    Q_OBJECT

public:
    void overridden() override { calls << u"derived"_s; }
    Q_INVOKABLE void text(const QString &words) { calls << u"derived "_s + words; }
};

} // namespace

class Undeclared : public Receiver
{
    Q_OBJECT
};

TEST(Selector, NamesFunctionAndArguments)
{
    EXPECT_TRUE(Selector().isEmpty());
    EXPECT_TRUE(Selector("").isEmpty());
    EXPECT_EQ(Selector("tick").argumentCount(), 0);
    EXPECT_EQ(Selector("changeState:info:delay:").argumentCount(), 3);
    EXPECT_EQ(Selector(u"größer:"_s).name(), u"größer:"_s);
    EXPECT_EQ(Selector("tick:"), Selector(u"tick:"_s));
    EXPECT_NE(Selector("tick:"), Selector("tick"));
}

TEST(Perform, PassesEveryKindOfArgument)
{
    Receiver receiver;
    Derived derived;
    Undeclared undeclared;
    receiver.setObjectName(u"r"_s);
    derived.setObjectName(u"d"_s);
    const QVariant number(12.5);

    const struct
    {
        const char *operation;
        CallArgument argument;
        QString call;
    } rows[] = {
        {"plain", {}, u"plain"_s},
        {"hidden", {}, u"hidden"_s},
        {"plain", CallArgument(1), u"plain"_s}, // an argument too many is ignored
        {"objectArgument:", &receiver, u"r"_s},
        {"objectArgument:", static_cast<QObject *>(nullptr), u"none"_s},
        {"objectArgument:", {}, u"none"_s},
        {"receiverArgument:", &derived, u"receiver d"_s},
        {"receiverArgument:", &receiver, u"receiver r"_s},
        {"undeclaredArgument:", &undeclared, u"undeclared"_s},
        {"wide:", 1LL << 40, u"1099511627776"_s},
        {"narrow:", -3, u"-3"_s},
        {"real:", 4, u"4"_s},
        {"real:", number, u"12.5"_s},
        {"text:", number, u"12.5"_s},
        {"any:", 8, u"any 8"_s},
        {"any:", number, u"any 12.5"_s},
        {"overloaded:", 5, u"integer 5"_s},
    };
    for (int round = 0; round < 2; ++round) { // the second time from the cache
        for (const auto &row : rows) {
            EXPECT_TRUE(perform(&receiver, row.operation, row.argument)) << row.operation;
            EXPECT_EQ(receiver.calls.isEmpty() ? QString() : receiver.calls.takeLast(), row.call) << row.operation;
        }
    }
    EXPECT_TRUE(perform(&receiver, "overloaded:", u"words"_s));
    EXPECT_EQ(receiver.calls.takeLast(), u"text words"_s);
}

TEST(Perform, PrefersTheDerivedClass)
{
    Derived derived;
    perform(&derived, "overridden");
    perform(&derived, "text:", u"t"_s);
    EXPECT_EQ(derived.calls, (QStringList{u"derived"_s, u"derived t"_s}));
}

TEST(Perform, SaysWhatItCannotCall)
{
    LogRecorder log;
    Receiver receiver;
    QObject stranger;
    const QVariant list(QVariantList{1});
    for (int round = 0; round < 2; ++round) {
        EXPECT_FALSE(perform(&receiver, "missing:", 1));
        EXPECT_FALSE(perform(&receiver, "plain:", 1)); // the number of arguments counts
        EXPECT_FALSE(perform(&receiver, "receiverArgument:", &stranger));
        EXPECT_FALSE(perform(&receiver, "undeclaredArgument:", &receiver));
        EXPECT_FALSE(perform(&receiver, "narrow:", list));
        EXPECT_FALSE(perform(&receiver, "three:::", 1));
        EXPECT_FALSE(perform(nullptr, "plain"));
        EXPECT_TRUE(receiver.calls.isEmpty());
        const QStringList lines = log.take();
        ASSERT_EQ(lines.size(), 6);
        EXPECT_TRUE(lines[0].endsWith(u"Receiver has no operation missing:"_s)) << lines[0].toStdString();
        EXPECT_TRUE(lines[2].endsWith(u"Receiver cannot take the argument given to receiverArgument:"_s));
    }
    EXPECT_TRUE(respondsTo(&receiver, "three:::"));
    EXPECT_FALSE(respondsTo(&receiver, "three:"));
    EXPECT_FALSE(respondsTo(nullptr, "plain"));
}

TEST(Method, IsLookedUpOnceAndStillChecksItsArgument)
{
    LogRecorder log;
    Receiver receiver;
    QObject stranger;
    const Method any = methodForSelector(&receiver, "objectArgument:");
    const Method typed = methodForSelector(&receiver, "receiverArgument:");
    EXPECT_TRUE(any(&receiver, &stranger));
    EXPECT_TRUE(typed(&receiver, &receiver));
    EXPECT_FALSE(typed(&receiver, &stranger));
    EXPECT_EQ(receiver.calls, (QStringList{u""_s, u"receiver "_s}));
    EXPECT_FALSE(methodForSelector(&receiver, "missing:").isValid());
    EXPECT_FALSE(methodForSelector(nullptr, "plain").isValid());
}

TEST(Action, CallsByNameMemberAndCallable)
{
    Receiver receiver;
    Receiver argument;
    argument.setObjectName(u"a"_s);
    using ReceiverAction = Action<Receiver *>;
    EXPECT_TRUE(ReceiverAction(&receiver, "receiverArgument:")(&argument));
    EXPECT_TRUE(ReceiverAction(&receiver, &Receiver::receiverArgument)(&argument));
    EXPECT_TRUE(ReceiverAction(&receiver, &Receiver::plain)(&argument));
    EXPECT_TRUE(
        ReceiverAction(&receiver, [&](Receiver *r) { receiver.calls << u"lambda "_s + r->objectName(); })(&argument));
    EXPECT_TRUE(ReceiverAction(&receiver, [&] { receiver.calls << u"bare"_s; })(&argument));
    EXPECT_EQ(receiver.calls, (QStringList{u"receiver a"_s, u"receiver a"_s, u"plain"_s, u"lambda a"_s, u"bare"_s}));
    EXPECT_FALSE(ReceiverAction()(&argument));
}

TEST(Action, HoldsItsTargetWeaklyButThroughACall)
{
    auto receiver = std::make_shared<Receiver>();
    std::weak_ptr<Receiver> watch = receiver;
    bool aliveInside = false;
    Action<Receiver *> action(receiver.get(), [&] {
        receiver.reset();
        aliveInside = !watch.expired();
        action = {};
    });
    EXPECT_TRUE(action(nullptr));
    EXPECT_TRUE(aliveInside);
    EXPECT_TRUE(watch.expired());
    EXPECT_FALSE(action(nullptr));
}

#include "perform_test.moc"
