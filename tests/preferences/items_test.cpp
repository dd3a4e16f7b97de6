// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "record.h"

#include <dravelin/control/proxies.h>
#include <dravelin/platform/exception.h>
#include <dravelin/platform/keyvalue.h>
#include <dravelin/platform/userdefaults.h>
#include <dravelin/preferences.h>
#include <dravelin/values.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <memory>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

using Items = std::vector<std::shared_ptr<PreferenceItem>>;

template <class Item>
std::shared_ptr<PreferenceItem> make(Record *record, const QString &key)
{
    return std::make_shared<Item>(record, key);
}

struct Type
{
    const char *key;
    std::shared_ptr<PreferenceItem> (*item)(Record *, const QString &);
};

constexpr Type Flag{"flag", make<PreferenceBOOLItem>}, Text{"text", make<PreferenceStringItem>},
    Number{"number", make<PreferenceIntegerItem>}, Single{"single", make<PreferenceFloatItem>},
    Real{"real", make<PreferenceDoubleItem>}, Colour{"color", make<PreferenceColorItem>},
    QtColour{"qtColor", make<PreferenceColorItem>}, Bytes{"bytes", make<PreferenceDataItem>},
    Orientation{"orientation", make<PreferenceIntegerItem>};

class PreferenceItems : public testing::Test
{
protected:
    ScopedUserDefaults isolated;
    std::shared_ptr<Record> record = std::make_shared<Record>();

    [[nodiscard]] static QVariant stored(const char *key)
    {
        return UserDefaults::standardUserDefaults()->objectForKey(QLatin1String(key));
    }
    /// What another process would find.
    [[nodiscard]] static QVariant onDisk(const char *key)
    {
        return UserDefaults(UserDefaults::standardUserDefaults()->filePath()).objectForKey(QLatin1String(key));
    }
    [[nodiscard]] std::shared_ptr<PreferenceItem> item(const Type &type) const
    {
        return type.item(record.get(), QLatin1String(type.key));
    }
};

} // namespace

TEST_F(PreferenceItems, SeedTheStoreAndSaveEveryChange)
{
    const struct
    {
        Type type;
        QVariant seed;
        QVariant change;
        QVariant saved;
    } rows[] = {
        {Flag, u"YES"_s, false, u"NO"_s},
        {Text, u"Ada"_s, u"Grace"_s, u"Grace"_s},
        {Number, u"3"_s, qint64(4294967298), u"2"_s},
        {Single, u"0.10000000"_s, 2.5f, u"2.50000000"_s},
        {Real, u"0.100000000000000"_s, -1e-3, u"-0.001000000000000"_s},
        {Colour, u"1.000 1.000 1.000 1.000"_s, QVariant::fromValue(Color(QColor(0, 0, 255, 0))),
         u"0.000 0.000 1.000 0.000"_s},
        {QtColour, u"1.000 0.000 0.000 1.000"_s, QColor(0, 255, 0), u"0.000 1.000 0.000 1.000"_s},
        {Bytes, u"raw"_s, "gr\xC3\xBC\xC3\x9F"_ba, u"grüß"_s},
        {Orientation, u"2"_s, Qt::Horizontal, u"1"_s},
    };
    for (const auto &row : rows) {
        const auto bound = item(row.type);
        EXPECT_EQ(onDisk(row.type.key), row.seed) << row.type.key;
        record->setProperty(row.type.key, row.change);
        EXPECT_EQ(stored(row.type.key), row.saved) << row.type.key;
        EXPECT_EQ(onDisk(row.type.key), row.saved) << row.type.key;
    }
}

TEST_F(PreferenceItems, RestoreStoredValues)
{
    const struct
    {
        Type type;
        QVariant entry;
        QVariant value;
        QVariant rewritten; ///< how the entry reads once the restored value was announced
    } rows[] = {
        {Flag, u"NO"_s, false, u"NO"_s},
        {Flag, u"maybe"_s, false, u"NO"_s},
        {Flag, 1, true, 1}, // unchanged, so not announced
        {Text, u"Grace"_s, u"Grace"_s, u"Grace"_s},
        {Number, u"12abc"_s, 12, u"12"_s},
        {Number, u"abc"_s, 0, u"0"_s},
        {Number, u"99999999999"_s, 2147483647, u"2147483647"_s},
        {Number, 7, 7, u"7"_s},
        {Single, u"0.5"_s, 0.5f, u"0.50000000"_s},
        {Real, u" 1e3x"_s, 1000.0, u"1000.000000000000000"_s},
        {Colour, u"0.25 2"_s, QVariant::fromValue(stringToColor(u"0.25 2 0 0"_s)), u"0.250 2.000 0.000 0.000"_s},
        {QtColour, u"0 0 1 1"_s, QColor(Qt::blue), u"0.000 0.000 1.000 1.000"_s},
        {Bytes, u"grün"_s, "gr\xC3\xBCn"_ba, u"grün"_s},
        {Orientation, u"1"_s, QVariant::fromValue(Qt::Horizontal), u"1"_s},
    };
    for (const auto &row : rows) {
        record = std::make_shared<Record>();
        UserDefaults::standardUserDefaults()->setObject(row.entry, QLatin1String(row.type.key));
        const auto bound = item(row.type);
        EXPECT_EQ(record->property(row.type.key), row.value) << row.type.key;
        EXPECT_EQ(stored(row.type.key), row.rewritten) << row.type.key;
    }
}

TEST_F(PreferenceItems, ShowFailuresInTheStoredValue)
{
    const auto bytes = item(Bytes);
    const auto color = item(Colour);
    record->setProperty("bytes", "\xFF\xFE"_ba); // not UTF-8
    EXPECT_FALSE(stored("bytes").isValid());
    record->setProperty("color", QVariant::fromValue(Color()));
    EXPECT_EQ(stored("color"), QVariant(u"0.000 0.000 0.000 0.000"_s));
    const auto text = item(Text);
    record->setProperty("text", QString());
    EXPECT_FALSE(stored("text").isValid());
}

TEST_F(PreferenceItems, RaiseForPropertiesThatDoNotExist)
{
    LogRecorder log;
    for (const QString &name : {u"typo"_s, u"color.red"_s}) {
        try {
            record->addDoubleWithName(name);
            FAIL() << name.toStdString();
        } catch (const Exception &exception) {
            EXPECT_EQ(exception.name(), QLatin1String(NSUndefinedKeyException));
            EXPECT_TRUE(exception.reason().contains(name)) << exception.what();
        }
    }
    EXPECT_FALSE(log.lines().isEmpty());
}

TEST_F(PreferenceItems, TellWhatTheyKeep)
{
    const auto number = item(Number);
    EXPECT_TRUE(number->preferenceExists());
    EXPECT_EQ(number->dumpPreference(), u"number - 3"_s);
    number->save({});
    EXPECT_FALSE(number->preferenceExists());
    EXPECT_FALSE(number->load().isValid());
    EXPECT_EQ(number->dumpPreference(), u"number - "_s);
    number->setNSNumber(8);
    EXPECT_EQ(number->getNSNumber(), QVariant(8));
    EXPECT_EQ(number->proxy()->object(), record.get());
}

TEST_F(PreferenceItems, OutliveTheirRecord)
{
    const auto number = item(Number);
    record.reset();
    EXPECT_FALSE(number->getNSNumber().isValid());
    number->setNSNumber(5);
    number->save(u"9"_s);
    EXPECT_EQ(stored("number"), QVariant(u"9"_s));
}

TEST_F(PreferenceItems, AreRegisteredByNotifySignal)
{
    PreferenceManager manager(record);
    record->addPreference(&Record::orientationChanged);
    record->addPreference(&Record::qtColorChanged);
    const auto items = manager.preferenceItems();
    EXPECT_TRUE(std::dynamic_pointer_cast<PreferenceIntegerItem>(items.value(u"orientation"_s)));
    EXPECT_TRUE(std::dynamic_pointer_cast<PreferenceColorItem>(items.value(u"qtColor"_s)));
    EXPECT_THROW(record->addPreference(&Record::rectChanged), Exception);    // no item keeps rectangles
    EXPECT_THROW(record->addPreference(&Record::twinChanged), Exception);    // announces two properties
    EXPECT_THROW(record->addPreference(&Record::managerChanged), Exception); // a pointer
}
