// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bookmarks.h>

#include <support/printers.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>
#include <unistd.h>

using namespace dravelin;

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
        EXPECT_LT(bookmark.size(), path(row.from).toUtf8().size() + 80) << "compact";
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
    for (const QUrl &nothing : {QUrl(), url("missing"), QUrl(QStringLiteral("https://example.org/a"))}) {
        EXPECT_TRUE(service->create(nothing, 0, &error).isNull());
        EXPECT_FALSE(std::exchange(error, {}).isEmpty());
        EXPECT_FALSE(service->startAccess(nothing));
    }
    makeFile("target");
    ASSERT_TRUE(QFile::link(path("target"), path("link")));
    EXPECT_EQ(service->resolve(service->create(url("link"))), url("link"));
    EXPECT_TRUE(service->startAccess(url("target")));
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
