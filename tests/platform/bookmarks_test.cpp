// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bookmarks.h>

#include <support/printers.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRandomGenerator>
#include <QtCore/QScopeGuard>
#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class Bookmarks : public testing::Test
{
protected:
    QString path(const char *name) const { return root.filePath(QString::fromUtf8(name)); }
    QUrl url(const char *name) const { return QUrl::fromLocalFile(path(name)); }
    QUrl makeFile(const char *name) const
    {
        QFile file(path(name));
        EXPECT_TRUE(QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly));
        return url(name);
    }
    void moveFile(const char *from, const char *to) const
    {
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path(to)).path()) && QFile::rename(path(from), path(to)));
    }
    std::string causeOf(const QByteArray &bookmark) const
    {
        QString error;
        EXPECT_TRUE(service->resolve(bookmark, 0, nullptr, &error).isEmpty());
        return error.toStdString();
    }
    void expectMoved(const QByteArray &bookmark, const char *to) const
    {
        bool stale = false;
        EXPECT_EQ(service->resolve(bookmark, 0, &stale), url(to));
        EXPECT_TRUE(stale) << to;
    }

    QTemporaryDir temporary;
    // Three levels down, so that no search leaves the temporary directory.
    QDir root = QDir(temporary.filePath(QStringLiteral("1/2/3")));
    std::shared_ptr<BookmarkService> service = BookmarkService::current();
};

} // namespace

TEST_F(Bookmarks, FindWhatHasMoved)
{
    const char *const rows[][2] = {
        {"plan", "plan-2"},         {"x/plan", "x/deep/er/plan"}, {"y/s/plan", "y/plan"},
        {"z/p/q/plan", "z/r/plan"}, {"old/plan", "new/plan"},     {"a b \u00E9.txt", "e\u0301"},
    };
    for (const auto &[from, to] : rows) {
        const QByteArray bookmark = service->create(makeFile(from));
        EXPECT_LT(bookmark.size(), path(from).toUtf8().size() + 96) << "compact";
        bool stale = true;
        EXPECT_EQ(service->resolve(bookmark, 0, &stale), url(from));
        EXPECT_FALSE(stale) << from;
        moveFile(from, to);
        expectMoved(bookmark, to);
    }
    const QByteArray inside = service->create(makeFile("project/src/main"));
    moveFile("project", "renamed");
    expectMoved(inside, "renamed/src/main");
}

TEST_F(Bookmarks, FindNamesThatAreNoText)
{
    const QByteArray bookmark = service->create(makeFile("plan"));
    ASSERT_EQ(std::rename(qPrintable(path("plan")), (path("%25 ").toUtf8() + '\xff').constData()), 0);
    const QUrl found = service->resolve(bookmark);
    EXPECT_TRUE(found.toEncoded().endsWith("/%2525%20%FF")) << found.toEncoded().constData();
    EXPECT_EQ(service->resolve(service->create(found)), found);
    EXPECT_TRUE(service->startAccess(found));
    service->stopAccess(found);
    EXPECT_EQ(::unlink(QByteArray::fromPercentEncoding(found.path(QUrl::FullyEncoded).toLatin1())), 0);
}

TEST_F(Bookmarks, TakeWhatReplacedTheFile)
{
    const QByteArray bookmark = service->create(makeFile("plan"));
    makeFile("plan.new");
    ASSERT_EQ(std::rename(qPrintable(path("plan.new")), qPrintable(path("plan"))), 0);
    expectMoved(bookmark, "plan");
    moveFile("plan", "target");
    ASSERT_TRUE(QFile::link(u"target"_s, path("plan")));
    expectMoved(bookmark, "plan");

    const QByteArray name = QFile::encodeName(path("plan"));
    const std::function<int()> others[] = {[&] { return ::mkfifo(name, 0600); }, [&] { return ::symlink(".", name); },
                                           [&] { return ::symlink("nowhere", name); },
                                           [&] { return ::mkdir(name, 0700); }};
    for (const auto &make : others) {
        ASSERT_TRUE(QFile::remove(path("plan")) && make() == 0);
        EXPECT_NE(causeOf(bookmark).find("no longer"), std::string::npos);
    }
    const QByteArray directory = service->create(url("plan/"));
    ASSERT_TRUE(root.rename(u"plan"_s, u"plans"_s));
    makeFile("plan");
    expectMoved(directory, "plans");
}

TEST_F(Bookmarks, FollowWhatIsHeldAnywhere)
{
    const QUrl file = makeFile("a/b/c/d/plan");
    const QByteArray bookmark = service->create(file);
    ASSERT_TRUE(service->startAccess(file) && service->startAccess(file));
    moveFile("a/b/c/d/plan", "far/plan");
    service->stopAccess(url("other"));
    service->stopAccess(file);
    expectMoved(bookmark, "far/plan");
    QFile::remove(path("far/plan"));
    makeFile("far/plan (deleted)"); // as the kernel now calls it
    causeOf(bookmark);
    makeFile("a/b/c/d/x"); // would get the inode if it were free
    causeOf(bookmark);

    service->stopAccess(file);
    const QUrl again = makeFile("a/b/c/d/plan");
    const QByteArray unheld = service->create(again);
    moveFile("a/b/c/d/plan", "far/plan");
    EXPECT_NE(causeOf(unheld).find("nor nearby"), std::string::npos);
    EXPECT_FALSE(service->startAccess(again));
}

TEST_F(Bookmarks, FollowAVolumeThatIsMountedElsewhere)
{
    constexpr int impossible = 77;
    ASSERT_TRUE(QDir().mkpath(path("here")) && QDir().mkpath(path("there")));
    const QByteArray here = QFile::encodeName(path("here")), there = QFile::encodeName(path("there"));
    const auto one = [](uint id) { return "0 " + QByteArray::number(id) + " 1"; };
    const std::pair<const char *, QByteArray> rights[] = {
        {"setgroups", "deny"}, {"gid_map", one(::getegid())}, {"uid_map", one(::geteuid())}};
    const auto look = [&] { // where nobody else sees what is mounted
        bool works = ::unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
        for (const auto &[name, right] : rights) {
            QFile file(u"/proc/self/"_s + name);
            works = works && file.open(QIODevice::WriteOnly) && file.write(right) > 0;
        }
        if (!works || ::mount("/dev/stick", here, "tmpfs", 0, nullptr) != 0)
            return impossible;
        makeFile("here/deep/plan");
        const QByteArray bookmark = service->create(url("here/deep/plan"));
        if (::mount(here, there, nullptr, MS_MOVE, nullptr) != 0)
            return impossible;
        return service->resolve(bookmark) == url("there/deep/plan") ? 0 : 1;
    };
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(look());
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    if (WEXITSTATUS(status) == impossible)
        GTEST_SKIP() << "nothing can be mounted here";
    EXPECT_EQ(status, 0);
}

TEST_F(Bookmarks, HoldOnlySoManyFiles)
{
    const auto open = [] { return QDir(u"/proc/self/fd"_s).entryList(QDir::AllEntries | QDir::System).size(); };
    const auto before = open();
    QList<QUrl> files;
    for (int i = 0; i < 300; ++i) {
        files << makeFile(QByteArray::number(i));
        ASSERT_TRUE(service->startAccess(files.last()));
    }
    EXPECT_EQ(open() - before, 256);
    for (const QUrl &file : files)
        service->stopAccess(file);
    EXPECT_EQ(open(), before);

    rlimit old{}, none{};
    ASSERT_EQ(::prlimit(0, RLIMIT_NOFILE, nullptr, &old), 0);
    none.rlim_max = old.rlim_max;
    ::setrlimit(RLIMIT_NOFILE, &none);
    EXPECT_TRUE(service->startAccess(files[0]));
    ::setrlimit(RLIMIT_NOFILE, &old);
    service->stopAccess(files[0]);
}

TEST_F(Bookmarks, ReportWhatIsGone)
{
    const QByteArray bookmark = service->create(makeFile("gone"));
    moveFile("gone", ".Trash-1000/files/gone");
    EXPECT_EQ(causeOf(bookmark), '"' + path("gone").toStdString() + "\" is in the trash");
    QFile::remove(path(".Trash-1000/files/gone"));
    makeFile("other"); // may well get the inode
    EXPECT_EQ(causeOf(bookmark), '"' + path("gone").toStdString() + "\" is neither there nor nearby");
}

TEST_F(Bookmarks, GiveUpAfterManyEntries)
{
    const QByteArray near = service->create(makeFile("near/plan")),
                     lower = service->create(makeFile("near/lower/plan"));
    moveFile("near/plan", "away/a");
    moveFile("near/lower/plan", "away/b");
    makeFile("near/0");
    for (int i = 1; i < 20'001; ++i)
        ASSERT_EQ(::link(qPrintable(path("near/0")), qPrintable(path("near/") + QString::number(i))), 0);
    expectMoved(near, "away/a"); // its own directory does not count
    causeOf(lower);
}

TEST_F(Bookmarks, AreForExistingLocalFiles)
{
    QString error;
    makeFile("target");
    const QUrl foreign(u"file://elsewhere"_s + path("target")), cut(url("target").toString() + u"%00x"_s);
    const QUrl page(u"https://example.org/a"_s), bare(path("target"));
    for (const QUrl &nothing : {QUrl(), url("missing"), url("target/x"), page, bare, foreign, cut}) {
        EXPECT_TRUE(service->create(nothing, 0, &error).isNull()) << nothing.toString().toStdString();
        EXPECT_FALSE(std::exchange(error, {}).isEmpty());
        EXPECT_FALSE(service->startAccess(nothing));
    }
    ASSERT_TRUE(QFile::link(path("target"), path("link")) && QFile::link(path("missing"), path("dangling")));
    ASSERT_EQ(::mkfifo(qPrintable(path("pipe")), 0600), 0);
    for (const char *name : {"target", "link", "dangling", "pipe", "."}) {
        EXPECT_EQ(service->resolve(service->create(url(name))), url(name)) << name;
        EXPECT_EQ(service->startAccess(url(name)), name != QByteArray("dangling"));
        service->stopAccess(url(name));
    }

    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(root.path()));
    EXPECT_EQ(service->resolve(service->create(QUrl(u"file:target"_s))), url("target"));
    QDir::setCurrent(before);
}

TEST_F(Bookmarks, AreMadeForTheAccessThatCanBeHad)
{
    // The user who may do everything borrows the rights of one who may not.
    const bool isRoot = ::geteuid() == 0;
    ASSERT_EQ(::chmod(qPrintable(temporary.path()), 0755), 0);
    for (const auto &[name, mode] : {std::pair("readable", 0444), std::pair("closed", 0), std::pair("open", 0666)}) {
        makeFile(name);
        ASSERT_EQ(::chmod(qPrintable(path(name)), mode_t(mode)), 0);
    }
    const auto back = qScopeGuard([] { EXPECT_EQ(::seteuid(::getuid()), 0); });
    ASSERT_EQ(isRoot ? ::seteuid(65534) : 0, 0);
    const auto readOnly = [&](const char *name, quint64 options) {
        const auto contents = BookmarkService::contents(service->create(url(name), options));
        return contents ? int(contents->isReadOnly) : -1;
    };
    EXPECT_EQ(readOnly("open", 2048), 0);
    EXPECT_EQ(readOnly("readable", 2048), -1);
    EXPECT_EQ(readOnly("readable", 6144), 1);
    EXPECT_EQ(readOnly("closed", 6144), -1);
    EXPECT_EQ(readOnly("closed", 0), 0) << "nothing is to be read";
    EXPECT_FALSE(service->startAccess(url("closed")));

    const QByteArray bookmark = service->create(url("closed"));
    ASSERT_EQ(::seteuid(::getuid()) + ::chmod(qPrintable(root.path()), 0), 0);
    ASSERT_EQ(isRoot ? ::seteuid(65534) : 0, 0);
    const std::string cause = causeOf(bookmark);
    ASSERT_EQ(::seteuid(::getuid()) + ::chmod(qPrintable(root.path()), 0700), 0);
    EXPECT_EQ(cause, '"' + path("closed").toStdString() + "\": Permission denied");
}

TEST_F(Bookmarks, SayWhatTheyHold)
{
    QFile file(makeFile("plan").toLocalFile());
    const QDateTime before = QDateTime::currentDateTimeUtc();
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("four") == 4 && file.flush());
    const QByteArray bookmark = service->create(url("plan"));
    const auto contents = BookmarkService::contents(bookmark);
    ASSERT_TRUE(contents);
    EXPECT_EQ(contents->url, url("plan"));
    EXPECT_EQ(contents->size, 4);
    EXPECT_TRUE(!contents->created.isValid() || qAbs(contents->created.msecsTo(before)) < 60'000);

    // The first version ended before the size, and had a shorter checksum.
    constexpr qsizetype sizeFlagsAndChecksum = 13;
    QByteArray older = bookmark.chopped(sizeFlagsAndChecksum);
    older[4] = 1;
    const auto withChecksum = [](QByteArray bytes) {
        const quint16 checksum = qToBigEndian(qChecksum(bytes));
        return bytes.append(reinterpret_cast<const char *>(&checksum), sizeof checksum);
    };
    EXPECT_EQ(BookmarkService::contents(withChecksum(older))->size, std::nullopt);
    bool stale = true;
    EXPECT_EQ(service->resolve(withChecksum(older), 0, &stale), url("plan"));
    EXPECT_FALSE(stale);

    file.remove();
    EXPECT_EQ(causeOf(bookmark).find("mounted"), std::string::npos);
    older[9 + path("plan").toUtf8().size()] ^= 1; // as if on another device
    EXPECT_NE(causeOf(withChecksum(older)).find("mounted"), std::string::npos);
    constexpr quint32 endless = 1 << 20;
    qToBigEndian(endless, older.replace(9, path("plan").toUtf8().size(), QByteArray(endless, '/')).data() + 5);
    EXPECT_EQ(causeOf(withChecksum(older)), "the bookmark is damaged") << "no path is as long";
}

TEST_F(Bookmarks, ExplainWhatTheyCannotRead)
{
    const QByteArray bookmark = service->create(makeFile("plan"));
    QByteArray newer = bookmark;
    newer[4] = 3;
    EXPECT_EQ(causeOf({}), "there is no bookmark");
    EXPECT_EQ(causeOf("bplist00"), "the data is not a bookmark");
    EXPECT_EQ(causeOf(newer), "the bookmark is of version 3, which is too new");
    EXPECT_EQ(causeOf(bookmark + QByteArray(1 << 20, 'x')), "the bookmark is damaged");

    QByteArrayList damaged{bookmark + 'x'};
    for (qsizetype size = 1; size < bookmark.size(); ++size)
        damaged << bookmark.left(size);
    for (qsizetype bit = 0; bit < bookmark.size() * 8; ++bit)
        (damaged << bookmark).last()[bit / 8] ^= char(1 << bit % 8);
    QRandomGenerator random(17);
    for (qsizetype size = 1; size <= 1 << 20; size = size * 2 + 1) {
        QByteArray noise(size, Qt::Uninitialized);
        std::generate(noise.begin(), noise.end(), [&] { return char(random()); });
        damaged << noise << noise.replace(0, 5, bookmark.left(5)); // and as if it were one
    }
    for (const QByteArray &bytes : damaged)
        EXPECT_NE(causeOf(bytes), "") << bytes.left(200).toHex().constData();
}
