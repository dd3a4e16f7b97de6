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
#include <sys/stat.h>
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

    QTemporaryDir temporary;
    // Three levels down, so that no search leaves the temporary directory.
    QDir root = QDir(temporary.filePath(QStringLiteral("1/2/3")));
    std::shared_ptr<BookmarkService> service = BookmarkService::current();
};

} // namespace

TEST_F(Bookmarks, FindWhatHasMoved)
{
    const struct
    {
        const char *from, *to;
    } rows[] = {
        {"a b \u00E9.txt", "a b \u00E9.txt"}, {"plan", "plan-2"},
        {"x/plan", "x/deep/er/plan"},         {"y/s/plan", "y/plan"},
        {"z/p/q/plan", "z/r/plan"},           {"old/plan", "new/plan"},
    };
    for (const auto &row : rows) {
        const QByteArray bookmark = service->create(makeFile(row.from));
        const bool moves = QByteArrayView(row.from) != row.to;
        if (moves)
            moveFile(row.from, row.to);
        bool stale = !moves;
        EXPECT_EQ(service->resolve(bookmark, 0, &stale), url(row.to)) << row.to;
        EXPECT_EQ(stale, moves) << row.to;
        EXPECT_LT(bookmark.size(), path(row.from).toUtf8().size() + 96) << "compact";
    }
}

TEST_F(Bookmarks, FollowARenamedDirectory)
{
    const QByteArray bookmark = service->create(makeFile("project/src/main"));
    moveFile("project", "renamed");
    bool stale = false;
    EXPECT_EQ(service->resolve(bookmark, 0, &stale), url("renamed/src/main"));
    EXPECT_TRUE(stale);
}

TEST_F(Bookmarks, TakeWhatReplacedTheFile)
{
    const QByteArray bookmark = service->create(makeFile("plan"));
    makeFile("plan.new");
    ASSERT_EQ(std::rename(qPrintable(path("plan.new")), qPrintable(path("plan"))), 0);
    bool stale = false;
    EXPECT_EQ(service->resolve(bookmark, 0, &stale), url("plan"));
    EXPECT_TRUE(stale);

    QFile::remove(path("plan"));
    ASSERT_TRUE(root.mkdir(u"plan"_s));
    EXPECT_NE(causeOf(bookmark).find("no longer"), std::string::npos) << "a directory is no replacement";
    const QByteArray directory = service->create(url("plan/"));
    ASSERT_TRUE(root.rename(u"plan"_s, u"plans"_s));
    makeFile("plan");
    EXPECT_EQ(service->resolve(directory, 0, &stale), url("plans"));
}

TEST_F(Bookmarks, FollowWhatIsHeldAnywhere)
{
    const QUrl file = makeFile("a/b/c/d/plan");
    const QByteArray bookmark = service->create(file);
    ASSERT_TRUE(service->startAccess(file) && service->startAccess(file));
    moveFile("a/b/c/d/plan", "far/plan");
    service->stopAccess(url("other"));
    service->stopAccess(file);
    bool stale = false;
    EXPECT_EQ(service->resolve(bookmark, 0, &stale), url("far/plan"));
    EXPECT_TRUE(stale);
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

TEST_F(Bookmarks, ReportWhatIsGone)
{
    const QByteArray bookmark = service->create(makeFile("gone"));
    QFile::remove(path("gone"));
    makeFile("other"); // may well get the inode
    QString error;
    EXPECT_TRUE(service->resolve(bookmark, 0, nullptr, &error).isEmpty());
    EXPECT_TRUE(error.contains(path("gone"))) << error.toStdString();
}

TEST_F(Bookmarks, GiveUpAfterManyEntries)
{
    const QByteArray bookmark = service->create(makeFile("near/plan"));
    moveFile("near/plan", "away/plan");
    for (int i = 0; i < 20'001; ++i)
        ASSERT_EQ(::symlink("nowhere", qPrintable(path("near/") + QString::number(i))), 0);
    EXPECT_TRUE(service->resolve(bookmark).isEmpty());
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
}

TEST_F(Bookmarks, ExplainWhatTheyCannotRead)
{
    const QByteArray bookmark = service->create(makeFile("plan"));
    QByteArray newer = bookmark, damaged = bookmark;
    newer[4] = 3;
    damaged[20] = char(damaged[20] + 1);
    const std::pair<QByteArray, const char *> rows[] = {
        {{}, "the data is not a bookmark"},
        {"bplist00", "the data is not a bookmark"},
        {newer, "the bookmark is of version 3, which is too new"},
        {damaged, "the bookmark is damaged"},
        {bookmark + QByteArray(1 << 20, 'x'), "the bookmark is damaged"},
    };
    for (const auto &[bytes, cause] : rows)
        EXPECT_EQ(causeOf(bytes), cause);

    QRandomGenerator random(17);
    for (qsizetype size = 1; size <= 1 << 20; size = size * 2 + 1) {
        QByteArray noise(size, Qt::Uninitialized);
        std::generate(noise.begin(), noise.end(), [&] { return char(random()); });
        EXPECT_NE(causeOf(noise), "") << size;
        noise.replace(0, 5, bookmark.left(5)); // and as if it were one
        EXPECT_NE(causeOf(noise), "") << size;
    }
}

TEST_F(Bookmarks, RefuseDamage)
{
    const QByteArray bookmark = service->create(makeFile("plan"));
    for (qsizetype size = 0; size < bookmark.size(); ++size)
        EXPECT_TRUE(service->resolve(bookmark.left(size)).isEmpty()) << size;
    EXPECT_TRUE(service->resolve(bookmark + 'x').isEmpty());
    for (qsizetype i = 0; i < bookmark.size() * 8; ++i) {
        QByteArray damaged = bookmark;
        damaged[i / 8] = char(damaged[i / 8] ^ (1 << i % 8));
        EXPECT_TRUE(service->resolve(damaged).isEmpty()) << i;
    }
}
