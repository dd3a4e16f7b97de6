// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "record.h"

#include <dravelin/encoding/base64.h>
#include <dravelin/platform/bundle.h>
#include <dravelin/platform/userdefaults.h>
#include <dravelin/preferences.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <QtCore/QFile>

#include <memory>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class PreferenceManagerTest : public testing::Test
{
protected:
    ScopedUserDefaults isolated;
    std::shared_ptr<Record> record = std::make_shared<Record>();
    PreferenceManager manager{record, u" beta\r\n"_s};

    [[nodiscard]] static QVariant stored(const char *key)
    {
        return UserDefaults::standardUserDefaults()->objectForKey(QLatin1String(key));
    }
    [[nodiscard]] static QByteArray storeFile()
    {
        QFile file(UserDefaults::standardUserDefaults()->filePath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// A preference file with a line for the version and `lines` below it.
    [[nodiscard]] static QString fileOf(const QString &version, const QStringList &lines = {})
    {
        return encodeBase64WithString((QStringList(encodeBase64WithString(version)) + lines).join(u'\r'));
    }
    [[nodiscard]] static QString line(const QString &key, const QString &value)
    {
        return encodeBase64WithString(key) + u',' + encodeBase64WithString(value);
    }
};

constexpr auto NoPreferences = "No preferences available in the file.";
constexpr auto OtherVersion = "The imported Quendle preferences must be from the same version.";

} // namespace

TEST_F(PreferenceManagerTest, StartsTheRecordInOrder)
{
    EXPECT_EQ(record->events, (QStringList{u"manager"_s, u"reset"_s, u"install"_s}));
    EXPECT_EQ(record->manager(), &manager);
    EXPECT_EQ(manager.preferenceItems().size(), 7);
    EXPECT_EQ(manager.suffix(), u"beta"_s);
    EXPECT_EQ(manager.preferenceItems().value(u"flag"_s)->nameWithSuffix(), u"flag"_s); // the suffix takes no part
    EXPECT_EQ(manager.preferenceItems().value(u"flag"_s)->manager(), nullptr);
    EXPECT_TRUE(PreferenceManager(std::make_shared<Record>(), u" \t"_s).suffix().isNull());
    EXPECT_TRUE(storeFile().contains("<key>flag</key>"));
}

TEST_F(PreferenceManagerTest, ResetsThroughTheProperties)
{
    record->setProperty("number", 8);
    record->setProperty("text", u"kept"_s); // the record's defaults leave it alone
    manager.resetPreferencesToDefaults();
    EXPECT_EQ(stored("number"), QVariant(u"3"_s));
    EXPECT_EQ(stored("text"), QVariant(u"kept"_s));
}

TEST_F(PreferenceManagerTest, ExportsWhatItImports)
{
    record->setProperty("text", u"Grüße,\r\n\"☂\""_s);
    record->setProperty("real", 1.5);
    UserDefaults::standardUserDefaults()->setObject(u""_s, u"bytes"_s);
    const QString exported = manager.exportPreferences();
    EXPECT_FALSE(exported.contains(u'\r'));

    const QStringList lines = decodeBase64ToString(exported).split(u'\r');
    EXPECT_EQ(lines.size(), 8);
    EXPECT_EQ(lines.first(), encodeBase64WithString(u"1.2"_s));
    EXPECT_TRUE(lines.contains(encodeBase64WithString(u"bytes"_s) + u",(null)"_s)); // the empty text
    EXPECT_TRUE(lines.contains(line(u"real"_s, u"1.500000000000000"_s)));

    const ScopedUserDefaults second;
    const auto otherRecord = std::make_shared<Record>();
    PreferenceManager other(otherRecord);
    QString message = u"stale"_s;
    EXPECT_TRUE(other.importPreferences(exported, &message));
    EXPECT_EQ(message, u""_s);
    EXPECT_EQ(otherRecord->text, record->text);
    EXPECT_EQ(otherRecord->real, 1.5);
    EXPECT_EQ(stored("bytes"), QVariant(u""_s));
    EXPECT_TRUE(otherRecord->bytes.isEmpty());
    EXPECT_EQ(otherRecord->events.count(u"install"_s), 2);
    EXPECT_TRUE(storeFile().contains("1.500000000000000"));
}

TEST_F(PreferenceManagerTest, ExportsTheVersionAloneWithoutItems)
{
    PreferenceManager empty(std::make_shared<PreferenceData>());
    EXPECT_EQ(empty.exportPreferences(), encodeBase64WithString(encodeBase64WithString(u"1.2"_s)));
    EXPECT_TRUE(empty.importPreferences(empty.exportPreferences()));

    LogRecorder log;
    UserDefaults::standardUserDefaults()->setObject(5, u"text"_s);
    EXPECT_TRUE(
        decodeBase64ToString(manager.exportPreferences()).contains(encodeBase64WithString(u"text"_s) + u",(null)"_s));
    EXPECT_EQ(log.lines().size(), 1);
}

TEST_F(PreferenceManagerTest, RefusesWhatIsNoExportOfThisVersion)
{
    const struct
    {
        const char *row;
        QString text;
        const char *message;
    } rows[] = {
        {"absent", QString(), NoPreferences},
        {"empty", u""_s, NoPreferences},
        {"not Base64", u"no, really not"_s, NoPreferences},
        {"white space", encodeBase64WithString(u" \r\n "_s), NoPreferences},
        {"not UTF-8", encodeBase64WithData("\xFF\xFE\xFF"_ba), NoPreferences},
        {"megabytes of text", QString(4'000'000, u'Q'), OtherVersion},
        {"megabytes of noise", QString(4'000'000, u'/'), NoPreferences},
        {"other version", fileOf(u"1.2.0"_s, {line(u"number"_s, u"9"_s)}), OtherVersion},
        {"no version line", encodeBase64WithString(line(u"number"_s, u"9"_s)), OtherVersion},
        {"version not Base64", encodeBase64WithString(u"1.2"_s), OtherVersion},
    };
    const QByteArray before = storeFile();
    for (const auto &row : rows) {
        QString message;
        EXPECT_FALSE(manager.importPreferences(row.text, &message)) << row.row;
        EXPECT_EQ(message, QLatin1String(row.message)) << row.row;
    }
    EXPECT_FALSE(manager.importPreferences({}));
    EXPECT_EQ(storeFile(), before);
    EXPECT_EQ(record->events.count(u"install"_s), 1);
}

TEST_F(PreferenceManagerTest, SkipsLinesThatItCannotTake)
{
    record->refused = {u"flag"_s};
    const QString file = fileOf(u"\t1.2 "_s, {
                                                 u"%1,%1,%1"_s.arg(encodeBase64WithString(u"number"_s)), // three fields
                                                 encodeBase64WithString(u"number"_s),                    // one
                                                 line(u"unknown"_s, u"1"_s),
                                                 line(u"flag"_s, u"NO"_s),
                                                 encodeBase64WithString(u"text"_s) + u','
                                                     + encodeBase64WithData("\xFF"_ba), // a value that is no text
                                                 u""_s,
                                                 line(u"real"_s, u"2.25"_s),
                                             });
    UserDefaults::standardUserDefaults()->setObject(u"kept"_s, u"text"_s);
    QString message;
    EXPECT_TRUE(manager.importPreferences(file, &message));
    EXPECT_EQ(message, u""_s);
    EXPECT_EQ(record->real, 2.25);
    EXPECT_EQ(record->number, 3);
    EXPECT_TRUE(record->flag);
    EXPECT_EQ(stored("text"), QVariant(u"kept"_s));
    EXPECT_FALSE(stored("unknown").isValid());
}

TEST_F(PreferenceManagerTest, ParsesLines)
{
    QString key = u"stale"_s;
    QString value = u"stale"_s;
    EXPECT_FALSE(PreferenceManager::parsePreferenceLine(u"QQ==,QQ==,QQ=="_s, &key, &value));
    EXPECT_TRUE(key.isNull());
    EXPECT_TRUE(value.isNull());
    EXPECT_TRUE(PreferenceManager::parsePreferenceLine(u"QQ==,(null)"_s, &key, &value));
    EXPECT_EQ(key, u"A"_s);
    EXPECT_EQ(value, u""_s);
    EXPECT_FALSE(value.isNull());
}

TEST_F(PreferenceManagerTest, DumpsEveryItem)
{
    const QString dump = manager.dumpPreferences();
    EXPECT_EQ(dump.count(u'\r'), 7);
    EXPECT_TRUE(dump.contains(u"flag - YES\r"_s));
    EXPECT_TRUE(dump.endsWith(u'\r'));
}

TEST_F(PreferenceManagerTest, FollowsTheStoreOnRequest)
{
    UserDefaults *store = UserDefaults::standardUserDefaults();
    QObject::connect(store, &UserDefaults::defaultsChanged, &manager, &PreferenceManager::restorePreferences);
    store->setWatching(true);
    UserDefaults otherProcess(store->filePath());
    otherProcess.setObject(u"41"_s, u"number"_s);
    otherProcess.synchronize();
    store->synchronize(); // takes in what the other wrote
    EXPECT_EQ(record->number, 41);
}

TEST(PreferenceManagerLifetime, KeepsTheRecordButNotTheOtherWayRound)
{
    const ScopedUserDefaults isolated;
    std::weak_ptr<Record> watch;
    std::shared_ptr<Record> record = std::make_shared<Record>();
    watch = record;
    {
        PreferenceManager manager(std::exchange(record, nullptr));
        EXPECT_FALSE(watch.expired());
        record = watch.lock();
    }
    EXPECT_EQ(record->manager(), nullptr);
    record->setProperty("number", 77); // nobody saves it any more
    EXPECT_NE(UserDefaults::standardUserDefaults()->objectForKey(u"number"_s), QVariant(u"77"_s));
    const PreferenceManager without(nullptr);
    EXPECT_TRUE(without.preferenceItems().isEmpty());
}
