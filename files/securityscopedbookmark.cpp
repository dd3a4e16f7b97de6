// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/securityscopedbookmark.h>

#include <dravelin/platform/log.h>

#include <utility>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 CreateFully = BookmarkService::NSURLBookmarkCreationWithSecurityScope;
constexpr quint64 CreateReadOnly = CreateFully | BookmarkService::NSURLBookmarkCreationSecurityScopeAllowOnlyReadAccess;
constexpr quint64 ResolveSilently =
    BookmarkService::NSURLBookmarkResolutionWithoutUI | BookmarkService::NSURLBookmarkResolutionWithoutMounting;

bool isUrlCharacter(QChar c)
{
    const char16_t code = c.unicode();
    const bool isAlphanumeric = code < 128 && c.isLetterOrNumber();
    return isAlphanumeric || u"-._~!$&'()*+,;=:@/?#%"_s.contains(c);
}

bool isHexDigit(QChar c) { return u"0123456789abcdefABCDEF"_s.contains(c); }

/// QUrl would take letters of any script and mend the rest.
bool isUrlText(const QString &text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!isUrlCharacter(text[i]))
            return false;
        if (text[i] == u'%' && (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2])))
            return false;
    }
    return text.count(u'#') < 2;
}

QString pathOf(const QUrl &url)
{
    const QString path = url.path(QUrl::FullyDecoded);
    return path.size() > 1 && path.endsWith(u'/') ? path.chopped(1) : path;
}

} // namespace

SecurityScopedBookmark::SecurityScopedBookmark(const QUrl &url)
    : m_service(BookmarkService::current()), m_securityScopedUrl(url), m_hasSecurityAccess(true)
{
    createBookmarkData(url);
}

SecurityScopedBookmark::SecurityScopedBookmark(const QByteArray &bookmarkData) : m_service(BookmarkService::current())
{
    if (bookmarkData.isEmpty())
        return;
    m_bookmarkData = bookmarkData;
    resolveWithUI(false);
}

SecurityScopedBookmark::SecurityScopedBookmark(SecurityScopedBookmark &&other) noexcept
    : m_service(other.m_service),
      m_securityScopedUrl(std::exchange(other.m_securityScopedUrl, {})),
      m_bookmarkData(std::exchange(other.m_bookmarkData, {})),
      m_hasSecurityAccess(std::exchange(other.m_hasSecurityAccess, false))
{}

SecurityScopedBookmark &SecurityScopedBookmark::operator=(SecurityScopedBookmark &&other) noexcept
{
    SecurityScopedBookmark taken(std::move(other)); // first, for an object that is assigned to itself
    std::swap(m_service, taken.m_service);
    m_securityScopedUrl.swap(taken.m_securityScopedUrl);
    m_bookmarkData.swap(taken.m_bookmarkData);
    std::swap(m_hasSecurityAccess, taken.m_hasSecurityAccess);
    return *this;
}

SecurityScopedBookmark::~SecurityScopedBookmark() { stopAccess(); }

QUrl SecurityScopedBookmark::getSecurityUrl() { return startAccess() ? m_securityScopedUrl : QUrl(); }

QUrl SecurityScopedBookmark::getRegularUrlFromData()
{
    const QString path = pathOf(getSecurityUrl());
    return isUrlText(path) ? QUrl(path, QUrl::StrictMode) : QUrl();
}

QByteArray SecurityScopedBookmark::getBookmarkData()
{
    if (m_bookmarkData.isNull())
        createBookmarkData(m_securityScopedUrl);
    return m_bookmarkData;
}

bool SecurityScopedBookmark::startAccess()
{
    if (!m_hasSecurityAccess)
        m_hasSecurityAccess = !m_securityScopedUrl.isEmpty() && m_service->startAccess(m_securityScopedUrl);
    return m_hasSecurityAccess;
}

void SecurityScopedBookmark::stopAccess()
{
    const bool hadAccess = std::exchange(m_hasSecurityAccess, false);
    if (hadAccess && !m_securityScopedUrl.isEmpty())
        m_service->stopAccess(m_securityScopedUrl);
}

void SecurityScopedBookmark::installUrl(const QUrl &url)
{
    stopAccess();
    m_securityScopedUrl = url;
    startAccess();
}

void SecurityScopedBookmark::resolveWithUI(bool mayAsk)
{
    m_securityScopedUrl = resolveSecurityUrl(mayAsk ? 0 : ResolveSilently);
    startAccess();
}

QUrl SecurityScopedBookmark::resolveSecurityUrl(quint64 options)
{
    options |= BookmarkService::NSURLBookmarkResolutionWithSecurityScope;
    bool isStale = false;
    QString error;
    const QUrl found = m_service->resolve(m_bookmarkData, options, &isStale, &error);
    if (!error.isNull())
        return {};
    if (!isStale)
        return found;
    installUrl(found);
    createBookmarkData(found);
    const QUrl url = m_service->resolve(m_bookmarkData, options, nullptr, &error);
    if (!error.isNull()) {
        handleError(error, u"Error in resolving stale bookmark."_s);
        stopAccess();
        return {};
    }
    installUrl(url);
    return url;
}

void SecurityScopedBookmark::createBookmarkData(const QUrl &url)
{
    m_bookmarkData = {};
    if (url.isEmpty())
        return;
    QString error;
    m_bookmarkData = m_service->create(url, CreateFully, &error);
    if (m_bookmarkData.isNull()) {
        error = {};
        m_bookmarkData = m_service->create(url, CreateReadOnly, &error);
    }
    if (!error.isNull())
        handleError(error, u"Error in creating bookmark data."_s);
}

void SecurityScopedBookmark::handleError(const QString &error, const QString &context) const
{
    logWarning(error.isNull() ? u"SSBM: %1"_s.arg(context) : u"SSBM: %1 (%2)"_s.arg(context, error));
}

} // namespace dravelin
