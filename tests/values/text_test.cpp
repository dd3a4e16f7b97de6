// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bookmarks.h>
#include <dravelin/platform/exception.h>
#include <dravelin/values.h>

#include <support/printers.h>

#include <gtest/gtest.h>

using namespace dravelin;

TEST(DataToStr, RefusesWhatIsNotUtf8)
{
    for (const char *bytes : {"\xFF", "caf\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "a\xE2\x82"})
        EXPECT_TRUE(dataToStr(bytes).isNull()) << QByteArray(bytes).toHex().constData();
    EXPECT_TRUE(dataToStr(QByteArray()).isNull());
}

TEST(DataToStr, ReversesStrToData)
{
    const QString texts[] = {QStringLiteral(""), QStringLiteral("plain"), QStringLiteral("caf\u00E9 \u20AC \U0001F600"),
                             QStringLiteral("\uFEFFmark"), QStringLiteral("a") + QChar(0) + QStringLiteral("b")};
    for (const QString &text : texts) {
        EXPECT_EQ(dataToStr(strToData(text)), text);
        EXPECT_FALSE(dataToStr(strToData(text)).isNull());
    }
    EXPECT_EQ(strToData(QStringLiteral("\u00E9")), QByteArray("\xC3\xA9"));
}

TEST(StrToData, RefusesAbsentTextAndHalfPairs)
{
    EXPECT_TRUE(strToData(QString()).isNull());
    EXPECT_TRUE(strToData(QStringLiteral("a") + QChar(0xD83D)).isNull());
    EXPECT_TRUE(strToData(QChar(0xDE00) + QStringLiteral("a")).isNull());
}

TEST(StringCopies, RefuseAbsentText)
{
    for (const auto copy : {mstrToStr, strToMstr}) {
        EXPECT_EQ(copy(QStringLiteral("a")), QStringLiteral("a"));
        EXPECT_FALSE(copy(QStringLiteral("")).isNull());
        try {
            (void)copy(QString());
            ADD_FAILURE() << "no exception";
        } catch (const Exception &exception) {
            EXPECT_EQ(exception.name(), QLatin1String(NSInvalidArgumentException));
        }
    }
}

namespace {

class RecordingBookmarks : public BookmarkService
{
public:
    QByteArray create(const QUrl &url, quint64 options, QString *) override
    {
        creationOptions = options;
        return url.toEncoded();
    }
    QUrl resolve(const QByteArray &bookmark, quint64 options, bool *, QString *) override
    {
        resolutionOptions = options;
        return QUrl::fromEncoded(bookmark);
    }
    quint64 creationOptions = 0, resolutionOptions = 0;
};

} // namespace

TEST(Bookmarks, GoThroughTheServiceInUse)
{
    const auto service = std::make_shared<RecordingBookmarks>();
    const auto previous = BookmarkService::setCurrent(service);
    const QUrl url(QStringLiteral("file:///a%20b"));
    EXPECT_EQ(bookmarkToUrl(urlToBookmark(url)), url);
    EXPECT_EQ(service->creationOptions, 1024U);
    EXPECT_EQ(service->resolutionOptions, 768U);
    EXPECT_EQ(BookmarkService::setCurrent(previous), service);
}
