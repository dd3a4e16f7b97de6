// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/securityscopedbookmark.h>

#include <support/logrecorder.h>
#include <support/printers.h>

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
    const struct
    {
        const char *name;
        QList<ScriptedBookmarks::Answer> answers;
        QByteArray data;
        QString error;
    } rows[] = {
        {"made", {bytes}, "x", {}},
        {"made with an error", {oddly}, "x", u"odd"_s},
        {"read-only", {failed, bytes}, "x", {}},
        {"read-only with an error", {failed, oddly}, "x", u"odd"_s},
        {"failed", {none, failed}, "bytes", u"no (%1)"_s}, // made by another attempt
        {"failed without saying why", {failed, none}, "bytes", {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        service->answers = row.answers;
        {
            SecurityScopedBookmark bookmark(a);
            EXPECT_TRUE(bookmark.hasSecurityAccess() && bookmark.options() == 0);
            const QStringList calls{u"create a:/ 2048"_s, u"create a:/ 6144"_s};
            EXPECT_EQ(service->take(), calls.first(row.answers.size()));
            const QString line = u"SSBM: Error in creating bookmark data. ("_s + row.error + u')';
            EXPECT_EQ(log.take(), row.error.isNull() ? QStringList() : QStringList(line));
            EXPECT_EQ(bookmark.getBookmarkData(), row.data);
            service->take();
        }
        EXPECT_EQ(service->take(), QStringList{u"stop a:/"_s}) << "though never started";
    }
}

TEST_F(ScriptedBookmark, ResolvesAndRenews)
{
    const ScriptedBookmarks::Answer there{{}, a}, other{{}, b}, gone{{}, b, u"gone"_s}, moved{{}, a, {}, true},
        renewed{"new", {}}, none{};
    const QString renewing = u"resolve old 1792, start a:/, create a:/ 2048, "_s,
                  renewal = renewing + u"resolve new 1792, stop a:/"_s,
                  failure = renewing + u"create a:/ 6144, resolve  1792, stop a:/"_s,
                  uncreated = u"SSBM: Error in creating bookmark data. (gone)"_s,
                  unresolved = u"SSBM: Error in resolving stale bookmark. (gone)"_s;
    const struct
    {
        const char *name;
        QList<ScriptedBookmarks::Answer> answers;
        QUrl url;
        QByteArray data;
        QString calls;
        QStringList lines;
    } rows[] = {
        {"there", {there}, a, "old", u"resolve old 1792, start a:/, stop a:/"_s, {}},
        {"gone", {gone}, {}, "old", u"resolve old 1792"_s, {}},
        {"stale", {moved, renewed, other}, b, "new", renewal + u", start b:/, stop b:/"_s, {}},
        {"stale and then gone", {moved, renewed, gone}, {}, "new", renewal, {unresolved}},
        {"stale and not made anew", {moved, none, gone, gone}, {}, {}, failure, {uncreated, unresolved}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        service->answers = row.answers;
        {
            SecurityScopedBookmark bookmark(QByteArray("old"));
            EXPECT_EQ(bookmark.hasSecurityAccess(), !row.url.isEmpty());
            EXPECT_EQ(bookmark.getSecurityUrl(), row.url);
            EXPECT_EQ(bookmark.getBookmarkData(), row.data);
        }
        EXPECT_EQ(service->take().join(u", "_s), row.calls);
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
    const auto regular = [](const QString &path) {
        return SecurityScopedBookmark(QUrl::fromLocalFile(path)).getRegularUrlFromData().toEncoded();
    };
    for (const char *path : {"/home/me/plan-1_~!$&'()*+,;=:@.txt", "/", "/100%25", "/q?x#y"})
        EXPECT_EQ(regular(QLatin1String(path)), path);
    EXPECT_EQ(regular(u"/home/dir/"_s), "/home/dir");
    for (const char16_t *path : {u"/a b", u"/\u00E9", u"/100%", u"/100%2", u"/100%zz", u"/a#b#c", u"/a[1]"})
        EXPECT_EQ(regular(QString::fromUtf16(path)), "") << QString::fromUtf16(path).toStdString();
}
