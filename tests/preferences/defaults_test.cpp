// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/userdefaults.h>
#include <dravelin/preferences.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gtest/gtest.h>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class Defaults : public testing::Test
{
protected:
    ScopedUserDefaults isolated;
};

const QString Key = u"key"_s;

} // namespace

TEST_F(Defaults, TellMissingFromEmpty)
{
    EXPECT_FALSE(hasUserDefault(Key));
    EXPECT_EQ(getUserDefault(Key), QVariant(u""_s));
    EXPECT_EQ(getUserDefaultWithDefault(Key, 5), QVariant(5));
    EXPECT_EQ(getStringDefault(Key, u"x"_s), QVariant(u"x"_s));
    EXPECT_FALSE(hasUserDefault(Key)); // a default is not stored
    setUserDefault(Key, QVariantList{1, u"b"_s});
    EXPECT_EQ(getUserDefault(Key), QVariant(QVariantList{1, u"b"_s}));
    setUserDefault(Key, {});
    EXPECT_FALSE(hasUserDefault(Key));
}

TEST_F(Defaults, StoreTypedValuesAsText)
{
    const struct
    {
        std::function<void()> set;
        QVariant stored;
    } rows[] = {
        {[] { setBOOLDefault(Key, 2); }, u"YES"_s},
        {[] { setBOOLDefault(Key, false); }, u"NO"_s},
        {[] { setIntegerDefault(Key, -1); }, u"-1"_s},
        {[] { setIntegerDefault(Key, 2147483648); }, u"-2147483648"_s},
        {[] { setFloatDefault(Key, 0.1f); }, u"0.1000000"_s},
        {[] { setStringDefault(Key, u"t\r\n"_s); }, u"t\r\n"_s},
        {[] { setStringDefault(Key, {}); }, u""_s}, // absent removes
        {[] { setDataDefault(Key, "gr\xC3\xBCn"_ba); }, u"grün"_s},
        {[] { setDataDefault(Key, "\xFF"_ba); }, u""_s}, // not UTF-8 removes
    };
    for (const auto &row : rows) {
        row.set();
        EXPECT_EQ(getUserDefault(Key), row.stored);
    }
}

TEST_F(Defaults, ReadTextAndNumbers)
{
    const struct
    {
        QVariant stored;
        bool truth;
        qint64 integer;
        float real;
    } rows[] = {
        {u"yes"_s, true, 0, 0},
        {u"0"_s, false, 0, 0},
        {u" 12.5kg"_s, true, 12, 12.5f},
        {u"99999999999"_s, true, 2147483647, 99999999999.f},
        {7, true, 7, 7},
        {2.75, true, 2, 2.75f},
        {true, true, 1, 1},
        {u""_s, false, 0, 0},
    };
    for (const auto &row : rows) {
        setUserDefault(Key, row.stored);
        EXPECT_EQ(getBOOLdefault(Key, !row.truth), row.truth) << row.stored.toString().toStdString();
        EXPECT_EQ(getIntegerDefault(Key, 99), row.integer) << row.stored.toString().toStdString();
        EXPECT_EQ(getFloatDefault(Key, 99), row.real) << row.stored.toString().toStdString();
    }
}

TEST_F(Defaults, PassTheDefaultThroughItsTextForm)
{
    EXPECT_EQ(getIntegerDefault(Key, 4294967297), 1);
    EXPECT_EQ(getFloatDefault(Key, 0.123456789f), 0.1234568f);
    EXPECT_EQ(getFloatDefault(Key, 1.5f), 1.5f);
    EXPECT_TRUE(getBOOLdefault(Key, true));
    EXPECT_EQ(getDataDefault(Key, "abc"_ba), "abc"_ba);
    LogRecorder log;
    EXPECT_TRUE(getDataDefault(Key, "\xFF"_ba).isNull());
    setUserDefault(Key, 5);
    EXPECT_TRUE(getDataDefault(Key, "abc"_ba).isNull());
    EXPECT_EQ(log.lines().size(), 1); // for the stored number
}

TEST_F(Defaults, AreRemovedFromTheApplicationsDomainOnly)
{
    UserDefaults *store = UserDefaults::standardUserDefaults();
    store->registerDefaults({{u"registered"_s, 1}});
    setIntegerDefault(u"registered"_s, 2);
    setIntegerDefault(Key, 3);
    EXPECT_TRUE(savePreferences());
    removeAllPreferences();
    EXPECT_FALSE(hasUserDefault(Key));
    EXPECT_EQ(getUserDefault(u"registered"_s), QVariant(1));
    // Not on disk yet.
    EXPECT_TRUE(UserDefaults(store->filePath()).objectForKey(Key).isValid());
    EXPECT_TRUE(savePreferences());
    EXPECT_FALSE(UserDefaults(store->filePath()).objectForKey(Key).isValid());
}
