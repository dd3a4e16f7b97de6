// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values/conversions.h>

#include <dravelin/platform/bookmarks.h>
#include <dravelin/platform/exception.h>

#include <platform/unicode.h>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

const QString &checked(const QString &text, QLatin1StringView function)
{
    if (text.isNull())
        throw Exception(QLatin1String(NSInvalidArgumentException), u"%1: absent text has no copy"_s.arg(function));
    return text;
}

constexpr QByteArrayView byteOrderMark("\xEF\xBB\xBF");

} // namespace

QByteArray strToData(const QString &text)
{
    if (text.isEmpty())
        return text.isNull() ? QByteArray() : QByteArray("");
    return detail::hasUtf8Form(text) ? text.toUtf8() : QByteArray();
}

QString dataToStr(const QByteArray &data)
{
    if (data.isEmpty())
        return data.isNull() ? QString() : u""_s;
    if (!data.isValidUtf8())
        return {};
    // A mark of the byte order is text like any other, but Qt takes it away.
    return data.startsWith(byteOrderMark) ? u'\uFEFF' + QString::fromUtf8(data) : QString::fromUtf8(data);
}

QString mstrToStr(const QString &text) { return checked(text, "mstrToStr"_L1); }

QString strToMstr(const QString &text) { return checked(text, "strToMstr"_L1); }

QUrl bookmarkToUrl(const QByteArray &bookmark)
{
    return BookmarkService::current()->resolve(bookmark, BookmarkService::NSURLBookmarkResolutionWithoutUI
                                                             | BookmarkService::NSURLBookmarkResolutionWithoutMounting);
}

QByteArray urlToBookmark(const QUrl &url)
{
    return BookmarkService::current()->create(url, BookmarkService::NSURLBookmarkCreationSuitableForBookmarkFile);
}

} // namespace dravelin
