// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/securityscopedbookmark.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>

#include <gtest/gtest.h>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

/// Answers from a script, and writes down what it is asked. What is not scripted succeeds with "bytes" and "u:/".
class ScriptedBookmarks : public BookmarkService
{
public:
    struct Answer
    {
        QByteArray bytes;
        QUrl url;
        QString error = {};
        bool stale = false;
    };
    QList<Answer> answers;
    bool grants = true;
    QStringList calls;

    QByteArray create(const QUrl &url, quint64 options, QString *error) override
    {
        return answer(u"create %1 %2"_s.arg(url.toString()).arg(options), nullptr, error).bytes;
    }
    QUrl resolve(const QByteArray &bookmark, quint64 options, bool *stale, QString *error) override
    {
        return answer(u"resolve %1 %2"_s.arg(QString::fromUtf8(bookmark)).arg(options), stale, error).url;
    }
    bool startAccess(const QUrl &url) override
    {
        calls << u"start "_s + url.toString();
        return grants;
    }
    void stopAccess(const QUrl &url) override { calls << u"stop "_s + url.toString(); }

    QStringList take() { return std::exchange(calls, {}); }

private:
    Answer answer(const QString &call, bool *stale, QString *error)
    {
        calls << call;
        const Answer next = answers.isEmpty() ? Answer{"bytes", QUrl(u"u:/"_s)} : answers.takeFirst();
        if (stale)
            *stale = next.stale;
        if (error && !next.error.isNull())
            *error = next.error;
        return next;
    }
};

class ScriptedBookmark : public testing::Test
{
protected:
    ScriptedBookmark() { BookmarkService::setCurrent(service); }
    ~ScriptedBookmark() override { BookmarkService::setCurrent({}); }

    std::shared_ptr<ScriptedBookmarks> service = std::make_shared<ScriptedBookmarks>();
    LogRecorder log;
    const QUrl a{u"a:/"_s}, b{u"b:/"_s};
};

} // namespace

TEST_F(ScriptedBookmark, OfAUrlIsMadeInTwoAttempts)
{
    const ScriptedBookmarks::Answer none{}, bytes{"x", {}}, oddly{"x", {}, u"odd"_s}, failed{{}, {}, u"no (%1)"_s};
    const QStringList once{u"create a:/ 2048"_s}, twice = once + QStringList{u"create a:/ 6144"_s};
    const struct
    {
        const char *name;
        QList<ScriptedBookmarks::Answer> answers;
        QStringList calls;
        QByteArray data;
        QStringList lines;
    } rows[] = {
        {"made", {bytes}, once, "x", {}},
        {"made with an error", {oddly}, once, "x", {u"SSBM: Error in creating bookmark data. (odd)"_s}},
        {"read-only", {failed, bytes}, twice, "x", {}},
        {"read-only with an error", {failed, oddly}, twice, "x", {u"SSBM: Error in creating bookmark data. (odd)"_s}},
        {"failed", {none, failed}, twice, {}, {u"SSBM: Error in creating bookmark data. (no (%1))"_s}},
        {"failed without saying why", {failed, none}, twice, {}, {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        service->answers = row.answers;
        {
            SecurityScopedBookmark bookmark(a);
            EXPECT_TRUE(bookmark.hasSecurityAccess());
            EXPECT_EQ(bookmark.options(), 0U);
            EXPECT_EQ(service->take(), row.calls);
            EXPECT_EQ(log.take(), row.lines);
            if (!row.data.isNull())
                EXPECT_EQ(bookmark.getBookmarkData(), row.data);
            else
                EXPECT_EQ(bookmark.getBookmarkData(), "bytes") << "another attempt";
            service->take();
        }
        EXPECT_EQ(service->take(), QStringList{u"stop a:/"_s}) << "though never started";
    }
}

TEST_F(ScriptedBookmark, ResolvesAndRenews)
{
    const ScriptedBookmarks::Answer there{{}, a}, gone{{}, b, u"gone"_s}, moved{{}, a, {}, true}, renewed{"new", {}};
    const QStringList renewing{u"resolve old 1792"_s, u"start a:/"_s, u"create a:/ 2048"_s, u"resolve new 1792"_s};
    const struct
    {
        const char *name;
        QList<ScriptedBookmarks::Answer> answers;
        QUrl url;
        QByteArray data;
        QStringList calls, atEnd, lines;
    } rows[] = {
        {"there", {there}, a, "old", {u"resolve old 1792"_s, u"start a:/"_s}, {u"stop a:/"_s}, {}},
        {"gone", {gone}, {}, "old", {u"resolve old 1792"_s}, {}, {}},
        {"stale",
         {moved, renewed, {{}, b}},
         b,
         "new",
         renewing + QStringList{u"stop a:/"_s, u"start b:/"_s},
         {u"stop b:/"_s},
         {}},
        {"stale and then gone",
         {moved, renewed, gone},
         {},
         "new",
         renewing + QStringList{u"stop a:/"_s},
         {},
         {u"SSBM: Error in resolving stale bookmark. (gone)"_s}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        service->answers = row.answers;
        {
            SecurityScopedBookmark bookmark(QByteArray("old"));
            EXPECT_EQ(service->take(), row.calls);
            EXPECT_EQ(bookmark.hasSecurityAccess(), !row.url.isEmpty());
            EXPECT_EQ(bookmark.getSecurityUrl(), row.url);
            EXPECT_EQ(bookmark.getBookmarkData(), row.data);
        }
        EXPECT_EQ(service->take(), row.atEnd);
        EXPECT_EQ(log.take(), row.lines);
    }
}

TEST_F(ScriptedBookmark, StartsAndStopsInPairs)
{
    SecurityScopedBookmark bookmark(a);
    service->take();
    bookmark.stopAccess();
    bookmark.stopAccess();
    EXPECT_TRUE(bookmark.startAccess() && bookmark.startAccess());
    bookmark.installUrl(b);
    EXPECT_EQ(service->take(), QStringList({u"stop a:/"_s, u"start a:/"_s, u"stop a:/"_s, u"start b:/"_s}));
    service->grants = false;
    bookmark.installUrl(a);
    EXPECT_TRUE(bookmark.getSecurityUrl().isEmpty() && bookmark.getRegularUrlFromData().isEmpty());
    service->grants = true;
    EXPECT_EQ(bookmark.getSecurityUrl(), a);
    service->take();

    bookmark.stopAccess();
    service->answers = {{{}, b}};
    bookmark.resolveWithUI(true);
    EXPECT_EQ(service->take(), QStringList({u"stop a:/"_s, u"resolve bytes 1024"_s, u"start b:/"_s}));

    SecurityScopedBookmark other(std::move(bookmark));
    other = SecurityScopedBookmark(a);
    EXPECT_EQ(service->take(), QStringList({u"create a:/ 2048"_s, u"stop b:/"_s}));
    EXPECT_EQ(other.getSecurityUrl(), a);
}

TEST_F(ScriptedBookmark, WithoutUrlAsksNothing)
{
    for (const QByteArray &nothing : {QByteArray(), QByteArray("")}) {
        SecurityScopedBookmark bookmark(nothing);
        EXPECT_TRUE(bookmark.getSecurityUrl().isEmpty() && bookmark.getRegularUrlFromData().isEmpty());
        EXPECT_TRUE(bookmark.getBookmarkData().isNull());
    }
    EXPECT_TRUE(SecurityScopedBookmark(QUrl()).hasSecurityAccess());
    EXPECT_EQ(service->take(), QStringList());
    const SecurityScopedBookmark empty{QByteArray()};
    empty.handleError({}, u"50%1"_s);
    empty.handleError(u""_s, u"half"_s);
    EXPECT_EQ(log.take(), QStringList({u"SSBM: 50%1"_s, u"SSBM: half ()"_s}));
}

TEST_F(ScriptedBookmark, GivesThePathAsUrlText)
{
    const struct
    {
        const char *path, *regular;
    } rows[] = {
        {"/home/me/plan-1_~!$&'()*+,;=:@.txt", "/home/me/plan-1_~!$&'()*+,;=:@.txt"},
        {"/home/dir/", "/home/dir"},
        {"/", "/"},
        {"/100%25", "/100%25"},
        {"/q?x#y", "/q?x#y"},
        {"/a b", ""},
        {"/\u00E9", ""},
        {"/100%", ""},
        {"/100%2", ""},
        {"/100%zz", ""},
        {"/a#b#c", ""},
        {"/a[1]", ""},
    };
    for (const auto &row : rows) {
        SecurityScopedBookmark bookmark(QUrl::fromLocalFile(QString::fromUtf8(row.path)));
        EXPECT_EQ(bookmark.getRegularUrlFromData().toEncoded(), row.regular) << row.path;
    }
}

TEST(SecurityScopedBookmarkTest, FindsFilesAgain)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"1/2/3/plan a.txt"_s), renamed = folder.filePath(u"1/2/3/plan b.txt"_s);
    ASSERT_TRUE(QDir().mkpath(folder.filePath(u"1/2/3"_s)));
    ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    const LogRecorder log;
    const QByteArray data = SecurityScopedBookmark(QUrl::fromLocalFile(path)).getBookmarkData();
    EXPECT_EQ(SecurityScopedBookmark(data).getBookmarkData(), data);

    ASSERT_TRUE(QFile::rename(path, renamed));
    QProcess other; // another program, or the next start of this one
    other.start(QStringLiteral(BOOKMARK_CHILD), {QString::fromLatin1(data.toBase64())});
    ASSERT_TRUE(other.waitForFinished());
    EXPECT_EQ(QFile::decodeName(other.readAll()), renamed);
    SecurityScopedBookmark moved(data);
    EXPECT_EQ(moved.getSecurityUrl(), QUrl::fromLocalFile(renamed));
    EXPECT_TRUE(moved.getRegularUrlFromData().isEmpty()) << "a space is no URL text";
    EXPECT_NE(moved.getBookmarkData(), data);
    EXPECT_EQ(SecurityScopedBookmark(moved.getBookmarkData()).getBookmarkData(), moved.getBookmarkData());

    moved.stopAccess();
    ASSERT_TRUE(QFile::remove(renamed));
    SecurityScopedBookmark gone(data);
    EXPECT_TRUE(gone.getSecurityUrl().isEmpty());
    EXPECT_EQ(gone.getBookmarkData(), data) << "it may come back";
    EXPECT_TRUE(moved.getSecurityUrl().isEmpty());
    EXPECT_EQ(log.lines(), QStringList());
    const SecurityScopedBookmark missing(QUrl::fromLocalFile(path));
    EXPECT_EQ(log.lines().size(), 1);
}
