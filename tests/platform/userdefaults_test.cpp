// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/propertylist.h>
#include <dravelin/platform/userdefaults.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QUrl>
#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

using namespace dravelin;
using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class UserDefaultsTest : public testing::Test
{
protected:
    void writeFile(const QByteArray &content)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(content);
    }
    QByteArray fileContent() const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    QVariantMap fileValues() const { return propertyListFromData(fileContent()).toMap(); }
    QStringList damagedFiles() const { return QDir(directory.path()).entryList({u"*.damaged-*"_s}); }

    QTemporaryDir directory;
    QString path = directory.filePath(u"s.plist"_s);
    LogRecorder log;
};

mode_t modeOf(const QString &path)
{
    struct stat status = {};
    ::stat(QFile::encodeName(path).constData(), &status);
    return status.st_mode & 07777;
}

} // namespace

TEST_F(UserDefaultsTest, GivesAnotherStoreWhatWasSynchronised)
{
    const QVariantMap values{{u"text"_s, u" a\r\n"_s},
                             {u"dir/key with = []"_s, true},
                             {u"int"_s, 12},
                             {u"real"_s, 0.1f},
                             {u"\0\xd800"_s, QByteArray("\0", 1)},
                             {u""_s, QStringList{u"a"_s}},
                             {u"date"_s, QDateTime(QDate(2024, 2, 29), QTime(1, 2, 3, 4))},
                             {u"map"_s, QVariantMap{{u"k"_s, 2}}}};
    UserDefaults store(path);
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry)
        store.setObject(*entry, entry.key());
    const QVariantMap before = store.dictionaryRepresentation();
    ASSERT_TRUE(store.synchronize());
    const UserDefaults other(path);
    EXPECT_EQ(other.dictionaryRepresentation(), before);
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry) {
        EXPECT_EQ(other.objectForKey(entry.key()), propertyListValue(*entry));
        EXPECT_EQ(store.objectForKey(entry.key()).typeId(), other.objectForKey(entry.key()).typeId())
            << entry.key().toStdString();
    }
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(UserDefaultsTest, AbsentValuesRemoveAndUnsuitableOnesAreRefused)
{
    UserDefaults store(path);
    for (const QVariant &absent : {QVariant(), QVariant(QString()), QVariant(QByteArray())}) {
        store.setObject(1, u"k"_s);
        store.setObject(absent, u"k"_s);
        EXPECT_FALSE(store.objectForKey(u"k"_s).isValid());
    }
    store.setObject(1, u"k"_s);
    store.setObject(QUrl(u"a:b"_s), u"k"_s);
    EXPECT_EQ(store.objectForKey(u"k"_s), QVariant(1));
    EXPECT_THAT(log.take(),
                ElementsAre(u"\"k\" keeps its value in the user defaults, which cannot hold a value of type QUrl"_s));
}

TEST_F(UserDefaultsTest, LooksUpDomainsInOrder)
{
    const QString globalPath = directory.filePath(u"global.plist"_s);
    {
        UserDefaults shared(globalPath);
        for (const QString &key : {u"a"_s, u"b"_s, u"c"_s})
            shared.setObject(u"global"_s, key);
    }
    UserDefaults store(path, globalPath, {u"-program"_s, u"-a"_s, u"argument"_s});
    store.setObject(u"application"_s, u"a"_s);
    store.setObject(u"application"_s, u"b"_s);
    store.registerDefaults({{u"a"_s, 1}, {u"c"_s, 1}, {u"d"_s, u"registered"_s}});
    const QVariantMap expected{
        {u"a"_s, u"argument"_s}, {u"b"_s, u"application"_s}, {u"c"_s, u"global"_s}, {u"d"_s, u"registered"_s}};
    EXPECT_EQ(store.dictionaryRepresentation(), expected);
    for (auto entry = expected.cbegin(); entry != expected.cend(); ++entry)
        EXPECT_EQ(store.objectForKey(entry.key()), *entry);
    for (const QString &key : expected.keys())
        store.removeObjectForKey(key);
    EXPECT_EQ(store.objectForKey(u"b"_s), QVariant(u"global"_s));
    EXPECT_TRUE(store.synchronize());
    EXPECT_EQ(UserDefaults(path).dictionaryRepresentation(), QVariantMap());
    EXPECT_EQ(UserDefaults(globalPath).dictionaryRepresentation().size(), 3);
}

TEST_F(UserDefaultsTest, TakesPairsFromTheCommandLine)
{
    const std::pair<QStringList, QVariantMap> rows[] = {
        {{}, {}},
        {{u"-p"_s, u"v"_s}, {}},
        {{u"p"_s, u"-k"_s}, {}},
        {{u"p"_s, u"-k"_s, u""_s, u"-z"_s, u"YES"_s}, {{u"k"_s, u""_s}, {u"z"_s, u"YES"_s}}},
        {{u"p"_s, u"-k"_s, u"-1.5e3"_s, u"file"_s}, {{u"k"_s, u"-1.5e3"_s}}},
        {{u"p"_s, u"-flag"_s, u"-k"_s, u"v"_s}, {{u"k"_s, u"v"_s}}},
        {{u"p"_s, u"--long"_s, u"v"_s, u"-"_s, u"v"_s, u"-5"_s, u"v"_s}, {}},
        {{u"p"_s, u"-k"_s, u"1"_s, u"-k"_s, u"2"_s}, {{u"k"_s, u"2"_s}}}};
    for (const auto &[arguments, pairs] : rows)
        EXPECT_EQ(UserDefaults(path, {}, arguments).dictionaryRepresentation(), pairs)
            << arguments.join(u' ').toStdString();
}

TEST_F(UserDefaultsTest, WritesNothingForUnchangedValues)
{
    UserDefaults store(path);
    store.setObject(1, u"k"_s);
    ASSERT_TRUE(store.synchronize());
    const auto written = [&] {
        struct stat status = {};
        ::stat(QFile::encodeName(path).constData(), &status);
        return status.st_ino;
    };
    const auto first = written();
    QSignalSpy changes(&store, &UserDefaults::defaultsChanged);
    store.setObject(1LL, u"k"_s);
    store.removeObjectForKey(u"absent"_s);
    EXPECT_TRUE(store.synchronize());
    EXPECT_EQ(written(), first);
    EXPECT_EQ(changes.size(), 0);
    store.setObject(1.0, u"k"_s); // equal, of another type
    EXPECT_TRUE(store.synchronize());
    EXPECT_NE(written(), first);
    EXPECT_EQ(changes.size(), 1);
}

TEST_F(UserDefaultsTest, MergesWithOtherStoresAndForeignEdits)
{
    UserDefaults a(path), b(path);
    a.setObject(1, u"a"_s);
    a.setObject(1, u"both"_s);
    b.setObject(2, u"b"_s);
    b.setObject(2, u"both"_s);
    ASSERT_TRUE(a.synchronize());
    ASSERT_TRUE(b.synchronize());
    QSignalSpy changes(&a, &UserDefaults::defaultsChanged);
    ASSERT_TRUE(a.synchronize());
    EXPECT_EQ(a.dictionaryRepresentation(), b.dictionaryRepresentation());
    ASSERT_EQ(changes.size(), 1);
    EXPECT_EQ(changes[0][0].toStringList(), (QStringList{u"b"_s, u"both"_s}));

    b.removeObjectForKey(u"a"_s);
    writeFile(propertyListData(QVariantMap{{u"a"_s, 5}, {u"foreign"_s, 6}}));
    ASSERT_TRUE(b.synchronize());
    ASSERT_TRUE(a.synchronize());
    EXPECT_EQ(fileValues(), (QVariantMap{{u"foreign"_s, 6}}));
    EXPECT_EQ(a.dictionaryRepresentation(), fileValues());

    QFile::remove(path); // as a reset by hand
    ASSERT_TRUE(a.synchronize());
    EXPECT_EQ(a.dictionaryRepresentation(), QVariantMap());
}

TEST_F(UserDefaultsTest, SetsDamagedFilesAside)
{
    const QByteArray good = propertyListData(QVariantMap{{u"k"_s, 1}});
    const QByteArray rows[] = {
        "",          good.left(good.size() / 2),       QByteArray(4096, '\0'), "[General]\nk=1\n",
        good + good, propertyListData(QVariantList{1})};
    for (const QByteArray &row : rows) {
        writeFile(row);
        UserDefaults store(path);
        EXPECT_FALSE(store.synchronize());
        EXPECT_EQ(log.take().size(), 1); // said once
        EXPECT_EQ(fileContent(), row);   // nothing to write, nothing touched
        store.setObject(2, u"n"_s);
        EXPECT_TRUE(store.synchronize());
        EXPECT_EQ(fileValues(), (QVariantMap{{u"n"_s, 2}}));
        ASSERT_EQ(damagedFiles().size(), 1);
        QFile aside(directory.filePath(damagedFiles().constFirst()));
        ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
        EXPECT_EQ(aside.readAll(), row);
        aside.remove();
        EXPECT_THAT(log.take(), ElementsAre(path + u" was damaged and has been set aside as "_s + aside.fileName()));
    }
}

TEST_F(UserDefaultsTest, WritesKnownEntriesAgainAfterDamageAtRunTime)
{
    UserDefaults store(path);
    store.setObject(1, u"k"_s);
    ASSERT_TRUE(store.synchronize());
    for (int i = 1; i <= 3; ++i) { // within one second: the names must differ
        writeFile("x");
        EXPECT_FALSE(store.synchronize());
        EXPECT_EQ(store.objectForKey(u"k"_s), QVariant(1));
        store.setObject(i, u"n"_s);
        EXPECT_TRUE(store.synchronize());
        EXPECT_EQ(fileValues(), (QVariantMap{{u"k"_s, 1}, {u"n"_s, i}}));
        EXPECT_EQ(damagedFiles().size(), i);
    }
}

TEST_F(UserDefaultsTest, RefusesWhereItCannotWrite)
{
    writeFile("no directory");
    ASSERT_TRUE(QDir(directory.path()).mkdir(u"directory"_s));
    ASSERT_TRUE(QFile::link(u"/dev/zero"_s, directory.filePath(u"device"_s)));
    for (const QString &bad :
         {path + u"/below.plist"_s, u"/proc/dravelin/s.plist"_s, directory.filePath(u"directory"_s),
          directory.filePath(u"device"_s), directory.filePath(QString(255, u'n'))}) {
        UserDefaults store(bad);
        store.setObject(1, u"k"_s);
        Q_UNUSED(log.take()) // some show on loading, and when the last store went
        QString reason;
        QObject::connect(&store, &UserDefaults::writeFailed, [&](const QString &text) { reason = text; });
        EXPECT_FALSE(store.synchronize()) << bad.toStdString();
        EXPECT_EQ(QStringList{reason}, log.lines()) << bad.toStdString();
        EXPECT_THAT(log.take(), ElementsAre(testing::Truly([&](const QString &line) { return line.startsWith(bad); })));
        EXPECT_EQ(store.objectForKey(u"k"_s), QVariant(1));
    }
    EXPECT_EQ(fileContent(), "no directory");
}

TEST_F(UserDefaultsTest, KeepsLinksAndPermissions)
{
    const QString made = directory.filePath(u"new/deep/s.plist"_s);
    ASSERT_TRUE(QFile::link(u"new/deep/s.plist"_s, path)); // to nothing yet
    UserDefaults store(path);
    store.setObject(1, u"k"_s);
    ASSERT_TRUE(store.synchronize());
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(modeOf(made), 0600U);
    EXPECT_EQ(modeOf(QFileInfo(made).path()), 0700U);
    ::chmod(QFile::encodeName(made).constData(), 0644);
    store.setObject(2, u"k"_s);
    ASSERT_TRUE(store.synchronize());
    EXPECT_TRUE(QFileInfo(path).isSymLink());
    EXPECT_EQ(modeOf(made), 0644U);
    EXPECT_EQ(UserDefaults(made).objectForKey(u"k"_s), QVariant(2));
    EXPECT_THAT(QDir(QFileInfo(made).path()).entryList(QDir::Files), ElementsAre(u"s.plist"_s, u"s.plist.lock"_s));
}

// What an administrator runs once must not lock the user out afterwards.
TEST_F(UserDefaultsTest, LeavesTheFilesToTheOwnerOfTheDirectory)
{
    constexpr uint Somebody = 12345;
    if (::chown(QFile::encodeName(directory.path()).constData(), Somebody, Somebody) != 0)
        GTEST_SKIP() << "only the administrator can give files away";
    const QString made = directory.filePath(u"new/s.plist"_s);
    UserDefaults store(made);
    for (int i = 0; i < 2; ++i) {
        store.setObject(i, u"k"_s);
        ASSERT_TRUE(store.synchronize());
        for (const QString &name : {QFileInfo(made).path(), made, made + u".lock"_s})
            EXPECT_EQ(QFileInfo(name).ownerId(), Somebody) << name.toStdString();
    }
}

TEST_F(UserDefaultsTest, BatchesWriteOnceAtTheEnd)
{
    auto store = std::make_unique<UserDefaults>(path);
    {
        const UserDefaults::Batch outer(store.get());
        {
            const UserDefaults::Batch inner(store.get());
            store->setObject(1, u"k"_s);
        }
        EXPECT_TRUE(store->synchronize());
        EXPECT_FALSE(QFile::exists(path));
    }
    EXPECT_EQ(fileValues(), (QVariantMap{{u"k"_s, 1}}));
    const UserDefaults::Batch orphan(store.get());
    store->setObject(2, u"k"_s);
    store.reset();
    EXPECT_EQ(fileValues(), (QVariantMap{{u"k"_s, 2}}));
}

TEST_F(UserDefaultsTest, TheEventLoopWritesWhatNobodySynchronises)
{
    UserDefaults store(path);
    store.setObject(1, u"k"_s);
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_TRUE(QTest::qWaitFor([&] { return fileValues().contains(u"k"_s); }, 30'000));
}

TEST_F(UserDefaultsTest, WatchingTakesInWhatOthersWrite)
{
    const QString far = directory.filePath(u"not/yet/s.plist"_s);
    UserDefaults store(far);
    QSignalSpy toggles(&store, &UserDefaults::watchingChanged);
    store.setWatching(true);
    store.setWatching(true);
    EXPECT_EQ(toggles.size(), 1);
    UserDefaults other(far);
    for (int i = 1; i <= 3; ++i) { // every write replaces the watched file
        other.setObject(i, u"k"_s);
        ASSERT_TRUE(other.synchronize());
        EXPECT_TRUE(QTest::qWaitFor([&] { return store.objectForKey(u"k"_s) == QVariant(i); }, 30'000)) << i;
    }
    store.setWatching(false);
    other.setObject(4, u"k"_s);
    ASSERT_TRUE(other.synchronize());
    EXPECT_FALSE(QTest::qWaitFor([&] { return store.objectForKey(u"k"_s) == QVariant(4); }, 200));
}

TEST_F(UserDefaultsTest, SlotsMayDestroyTheStore)
{
    auto *watching = new UserDefaults(path);
    watching->setWatching(true);
    const QPointer<UserDefaults> guard(watching);
    QObject::connect(watching, &UserDefaults::defaultsChanged, [watching] { delete watching; });
    UserDefaults other(path);
    other.setObject(1, u"k"_s);
    ASSERT_TRUE(other.synchronize());
    EXPECT_TRUE(QTest::qWaitFor([&] { return guard.isNull(); }, 30'000));
}

TEST_F(UserDefaultsTest, AnnouncesOnlyWhatIsVisible)
{
    UserDefaults store(path, {}, {u"p"_s, u"-fixed"_s, u"1"_s});
    QSignalSpy changes(&store, &UserDefaults::defaultsChanged);
    store.setObject(2, u"fixed"_s);
    store.registerDefaults({{u"fixed"_s, 3}});
    EXPECT_EQ(changes.size(), 0);
    store.registerDefaults({{u"free"_s, 3}});
    store.setObject(2, u"free"_s);
    EXPECT_EQ(changes.size(), 2);
    UserDefaults(path).setObject(4, u"fixed"_s);
    EXPECT_TRUE(store.synchronize());
    EXPECT_EQ(changes.size(), 2);
}

TEST(ScopedUserDefaults, IsolatesAndNests)
{
    auto *const own = UserDefaults::standardUserDefaults();
    EXPECT_TRUE(own->filePath().endsWith(u"/config/Dravelin/tests.plist"_s)) << own->filePath().toStdString();
    QString path;
    {
        const ScopedUserDefaults outer;
        UserDefaults::standardUserDefaults()->setObject(1, u"k"_s);
        {
            const ScopedUserDefaults inner;
            path = inner.store()->filePath();
            EXPECT_FALSE(UserDefaults::standardUserDefaults()->objectForKey(u"k"_s).isValid());
            inner.store()->setObject(2, u"k"_s);
        }
        EXPECT_EQ(UserDefaults::standardUserDefaults(), outer.store());
        EXPECT_EQ(outer.store()->objectForKey(u"k"_s), QVariant(1));
    }
    EXPECT_EQ(UserDefaults::standardUserDefaults(), own);
    EXPECT_FALSE(QDir(QFileInfo(path).path()).exists());
    EXPECT_FALSE(QFile::exists(own->filePath()));
}
