// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bookmarks.h>

#include <platform/accessgrants.h>
#include <platform/bookmarkrecord.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

constexpr int MaximumEntries = 20'000;

void report(QString *error, const QString &cause)
{
    if (error)
        *error = cause;
}

QUrl toUrl(const QByteArray &path) { return QUrl::fromLocalFile(QFile::decodeName(path)); }

/// Absolute and without a slash at the end, which would follow a link; absent for what is no local file.
QByteArray toPath(const QUrl &url)
{
    if (!url.isLocalFile() || (!url.host().isEmpty() && url.host() != "localhost"_L1))
        return {};
    QString path = url.path(QUrl::FullyDecoded);
    if (!path.startsWith(u'/'))
        path = path.isEmpty() ? path : QDir::currentPath() + u'/' + path;
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path.contains(QChar(u'\0')) ? QByteArray() : QFile::encodeName(path);
}

/// Whether the whole grant that the options ask for can be had; otherwise errno has the cause.
bool isAccessible(const QByteArray &path, quint64 options)
{
    if (!(options & BookmarkService::NSURLBookmarkCreationWithSecurityScope))
        return true;
    const bool readOnly = options & BookmarkService::NSURLBookmarkCreationSecurityScopeAllowOnlyReadAccess;
    return ::faccessat(AT_FDCWD, path.constData(), readOnly ? R_OK : R_OK | W_OK, AT_EACCESS) == 0;
}

/// Nobody who chose a file expects a directory under its name, or the other way round.
bool isReplacement(const detail::FileIdentity &present, const detail::FileIdentity &former)
{
    const bool isSwapped =
        (present.type == S_IFDIR && former.type == S_IFREG) || (present.type == S_IFREG && former.type == S_IFDIR);
    return !isSwapped;
}

class FileBookmarks : public BookmarkService
{
public:
    QByteArray create(const QUrl &url, quint64 options, QString *error) override
    {
        const QByteArray path = toPath(url);
        if (path.isEmpty()) {
            report(error, u"\"%1\" is no local file"_s.arg(url.toString()));
            return {};
        }
        const auto identity = detail::identityOf(path);
        if (identity && isAccessible(path, options))
            return detail::writeBookmark(
                {path, *identity, bool(options & NSURLBookmarkCreationSecurityScopeAllowOnlyReadAccess)});
        const int cause = errno;
        report(error, u"\"%1\": %2"_s.arg(QFile::decodeName(path), qt_error_string(cause)));
        return {};
    }

    QUrl resolve(const QByteArray &bookmark, quint64, bool *stale, QString *error) override
    {
        const auto record = detail::readBookmark(bookmark, error);
        if (!record)
            return {};
        const auto present = detail::identityOf(record->path);
        const bool isPathValid = present && isReplacement(*present, record->identity);
        const QByteArray path = isPathValid ? record->path : find(*record);
        if (path.isNull())
            report(error, explainLoss(*record, present.has_value()));
        else if (stale)
            *stale = !isPathValid || !present->isSameItem(record->identity);
        return path.isNull() ? QUrl() : toUrl(path);
    }

    bool startAccess(const QUrl &url) override
    {
        const QByteArray path = toPath(url);
        return !path.isEmpty() && m_grants.start(path);
    }

    void stopAccess(const QUrl &url) override { m_grants.stop(toPath(url)); }

private:
    [[nodiscard]] QByteArray find(const detail::BookmarkRecord &record) const
    {
        const QByteArray held = m_grants.pathOf(record.identity);
        return held.isNull() ? detail::findMoved(record.identity, record.path, MaximumEntries) : held;
    }

    static QString explainLoss(const detail::BookmarkRecord &record, bool isOther)
    {
        const QString path = QFile::decodeName(record.path);
        if (isOther)
            return u"\"%1\" is no longer the file or directory that it was, which is not nearby"_s.arg(path);
        const bool isMounted = detail::isVolumePresent(record.identity, record.path);
        return u"\"%1\" is neither there nor nearby%2"_s.arg(path,
                                                             isMounted ? u""_s : u"; its volume may not be mounted"_s);
    }

    detail::AccessGrants m_grants;
};

std::mutex serviceMutex;

std::shared_ptr<BookmarkService> &currentService()
{
    static std::shared_ptr<BookmarkService> service;
    return service;
}

} // namespace

BookmarkService::~BookmarkService() = default;

bool BookmarkService::startAccess(const QUrl &url)
{
    const QByteArray path = toPath(url);
    return !path.isEmpty() && ::faccessat(AT_FDCWD, path.constData(), R_OK, AT_EACCESS) == 0;
}

void BookmarkService::stopAccess(const QUrl &) {}

std::optional<BookmarkContents> BookmarkService::contents(const QByteArray &bookmark, QString *error)
{
    const auto record = detail::readBookmark(bookmark, error);
    if (!record)
        return {};
    const auto &id = record->identity;
    BookmarkContents contents{toUrl(record->path), {}, std::nullopt, record->isReadOnly};
    if (id.hasBirthTime())
        contents.created =
            QDateTime::fromMSecsSinceEpoch(id.birthSeconds * 1000 + id.birthNanoseconds / 1'000'000, Qt::UTC);
    if (id.size != detail::FileIdentity::UnknownSize)
        contents.size = qint64(id.size);
    return contents;
}

std::shared_ptr<BookmarkService> BookmarkService::current()
{
    static const auto fallback = std::make_shared<FileBookmarks>();
    const std::lock_guard lock(serviceMutex);
    return currentService() ? currentService() : fallback;
}

std::shared_ptr<BookmarkService> BookmarkService::setCurrent(std::shared_ptr<BookmarkService> service)
{
    const std::lock_guard lock(serviceMutex);
    return std::exchange(currentService(), std::move(service));
}

} // namespace dravelin
