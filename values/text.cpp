// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values/conversions.h>

#include <dravelin/platform/bookmarks.h>
#include <dravelin/platform/exception.h>

#include <QtCore/QStringConverter>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

const QString &checked(const QString &text, QLatin1StringView function)
{
    if (text.isNull())
        throw Exception(QLatin1String(NSInvalidArgumentException), u"%1: absent text has no copy"_s.arg(function));
    return text;
}

// Errors show also at the end of the input, and a byte-order mark is text like any other.
constexpr auto Exact = QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom;

} // namespace

QByteArray strToData(const QString &text)
{
    if (text.isEmpty())
        return text.isNull() ? QByteArray() : QByteArray("");
    QStringEncoder encoder(QStringEncoder::Utf8, QStringConverter::Flag::Stateless);
    QByteArray bytes = encoder(text);
    return encoder.hasError() ? QByteArray() : bytes;
}

QString dataToStr(const QByteArray &data)
{
    if (data.isEmpty())
        return data.isNull() ? QString() : u""_s;
    QStringDecoder decoder(QStringDecoder::Utf8, Exact);
    QString text = decoder(data);
    return decoder.hasError() ? QString() : text;
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
