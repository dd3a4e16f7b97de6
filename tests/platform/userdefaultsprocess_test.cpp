// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// The store among several processes, killed processes and full disks.

#include <dravelin/platform/propertylist.h>
#include <dravelin/platform/userdefaults.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/file.h>
#include <sys/mount.h>
#include <sys/resource.h>

#include <fcntl.h>
#include <unistd.h>

#include <csignal>
#include <functional>

using namespace dravelin;
using namespace Qt::StringLiterals;
using testing::UnorderedElementsAre;

namespace {

class Child : public QProcess
{
public:
    Child(const QString &path, const QString &prefix, int count)
    {
        setProcessChannelMode(QProcess::ForwardedErrorChannel);
        start(QStringLiteral(USERDEFAULTS_CHILD), {path, prefix, QString::number(count)});
    }

    /// How many keys it has reported as being on the disk.
    int reported()
    {
        m_output += readAllStandardOutput();
        return int(m_output.count('\n'));
    }

private:
    QByteArray m_output;
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

TEST(UserDefaultsProcesses, LoseNothingWhenTheyWriteAtOnce)
{
    constexpr int Keys = 60;
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"s.plist"_s);
    Child a(path, u"a"_s, Keys), b(path, u"b"_s, Keys);
    UserDefaults store(path);
    int failures = 0;
    for (int i = 0; i < Keys; ++i) {
        store.setObject(i, u"c%1"_s.arg(i));
        while (!store.synchronize()) // on a slow machine others may come first
            ASSERT_LT(++failures, 20);
    }
    ASSERT_TRUE(a.waitForFinished(120'000) && b.waitForFinished(120'000));
    EXPECT_EQ(a.exitCode(), 0);
    EXPECT_EQ(b.exitCode(), 0);
    ASSERT_TRUE(store.synchronize());
    for (int i = 0; i < Keys; ++i) {
        for (const auto &prefix : {u"a"_s, u"b"_s, u"c"_s})
            EXPECT_EQ(store.objectForKey(prefix + QString::number(i)), QVariant(i)) << prefix.toStdString();
    }
}

TEST(UserDefaultsProcesses, KeepWhatWasReportedWhenKilled)
{
    const quint32 seed = QRandomGenerator::global()->generate();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    QRandomGenerator random(seed);
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"s.plist"_s);
    for (int round = 0; round < 40; ++round) {
        const QString prefix = u"%1-"_s.arg(round);
        Child child(path, prefix, 100'000);
        const int enough = int(random.bounded(1, 12));
        while (child.reported() < enough)
            ASSERT_TRUE(child.waitForReadyRead());
        ::usleep(random.bounded(1500U)); // anywhere within the next write
        child.kill();
        ASSERT_TRUE(child.waitForFinished());
        QString error;
        const QVariantMap values = propertyListFromData(contentOf(path), &error).toMap();
        ASSERT_EQ(error, QString());
        for (int i = 0; i < child.reported(); ++i)
            ASSERT_EQ(values.value(prefix + QString::number(i)), QVariant(i)) << round;
    }
    UserDefaults store(path);
    store.setObject(1, u"last"_s);
    EXPECT_TRUE(store.synchronize()); // the lock of the last one killed is gone
    EXPECT_THAT(QDir(directory.path()).entryList(QDir::Files), UnorderedElementsAre(u"s.plist"_s, u"s.plist.lock"_s));
}

TEST(UserDefaultsProcesses, WriteTheStandardStoreAtTheEnd)
{
    const QString path = qEnvironmentVariable("XDG_CONFIG_HOME") + u"/userdefaults_child.plist"_s;
    for (const QString &how : {u"end"_s, u"quit"_s}) {
        QFile::remove(path);
        Child child(how, u"k"_s, 0);
        ASSERT_TRUE(child.waitForFinished());
        EXPECT_EQ(child.exitCode(), 0);
        EXPECT_EQ(propertyListFromData(contentOf(path)), QVariant(QVariantMap{{u"ka"_s, 1}, {u"kb"_s, 2}}))
            << how.toStdString();
    }
}

TEST(UserDefaultsProcesses, DoNotWaitForASuspendedOneForEver)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"s.plist"_s);
    UserDefaults store(path);
    store.setObject(1, u"k"_s);
    ASSERT_TRUE(store.synchronize());
    LogRecorder log;
    store.setObject(2, u"k"_s);
    {
        QFile holder(path + u".lock"_s);
        ASSERT_TRUE(holder.open(QIODevice::ReadOnly));
        ASSERT_EQ(::flock(holder.handle(), LOCK_EX), 0);
        EXPECT_FALSE(store.synchronize());
        EXPECT_EQ(log.lines().size(), 1);
    }
    EXPECT_TRUE(store.synchronize());
}

namespace {

/// A write fails for want of space: nothing is lost, and it works when there is space again.
void expectNothingLost(const QString &path, const std::function<void()> &fill, const std::function<void()> &clear)
{
    UserDefaults store(path);
    store.setObject(u"old"_s, u"k"_s);
    ASSERT_TRUE(store.synchronize());
    const QByteArray before = contentOf(path);
    LogRecorder log;
    fill();
    store.setObject(QString(200'000, u'x'), u"k"_s);
    EXPECT_FALSE(store.synchronize());
    EXPECT_FALSE(store.synchronize());
    clear();
    EXPECT_EQ(contentOf(path), before);
    EXPECT_EQ(log.take().filter(path + u" cannot be written: "_s).size(), 2);
    EXPECT_EQ(QDir(QFileInfo(path).path()).entryList({u"s.plist*"_s}).size(), 2);
    EXPECT_TRUE(store.synchronize());
    EXPECT_EQ(UserDefaults(path).objectForKey(u"k"_s).toString().size(), 200'000);
}

} // namespace

TEST(UserDefaultsProcesses, SurviveAFullDisk)
{
    const QTemporaryDir directory;
    const QByteArray mountPoint = QFile::encodeName(directory.path());
    if (::mount("tmpfs", mountPoint.constData(), "tmpfs", 0, "size=1m") != 0)
        GTEST_SKIP() << "may not mount a small file system";
    const auto unmount = qScopeGuard([&] { ::umount(mountPoint.constData()); });
    QFile filler(directory.filePath(u"filler"_s));
    ASSERT_TRUE(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    expectNothingLost(
        directory.filePath(u"s.plist"_s), [&] { EXPECT_LT(filler.write(QByteArray(2 << 20, 'x')), 2 << 20); },
        [&] { filler.resize(0); });
}

TEST(UserDefaultsProcesses, SurviveALimitOfFileSizes)
{
    const QTemporaryDir directory;
    rlimit before;
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    const auto restore = qScopeGuard([&] {
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, previous);
    });
    const rlimit small{64 * 1024, before.rlim_max};
    expectNothingLost(
        directory.filePath(u"s.plist"_s), [&] { ::setrlimit(RLIMIT_FSIZE, &small); },
        [&] { ::setrlimit(RLIMIT_FSIZE, &before); });
}
