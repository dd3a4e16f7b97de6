// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bookmarks.h>

#include <platform/accessgrants.h>
#include <platform/bookmarkrecord.h>
#include <platform/movedfile.h>

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

/// Bytes of a name that are no text become escapes, which toPath() reads again; QUrl::toLocalFile() cannot.
QUrl toUrl(const QByteArray &path)
{
    if (path.isValidUtf8())
        return QUrl::fromLocalFile(QFile::decodeName(path));
    return QUrl(u"file://"_s + QString::fromLatin1(path.toPercentEncoding("/")));
}

/// Absolute and without a slash at the end, which would follow a link; absent for what is no local file.
QByteArray toPath(const QUrl &url)
{
    if (!url.isLocalFile() || (!url.host().isEmpty() && url.host() != "localhost"_L1))
        return {};
    QByteArray path = QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1());
    if (!path.isEmpty() && !path.startsWith('/'))
        path.prepend(QFile::encodeName(QDir::currentPath()) + '/');
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path.contains('\0') ? QByteArray() : path;
}

/// Whether the whole grant that the options ask for can be had; otherwise errno has the cause.
bool isAccessible(const QByteArray &path, quint64 options)
{
    if (!(options & BookmarkService::NSURLBookmarkCreationWithSecurityScope))
        return true;
    const bool readOnly = options & BookmarkService::NSURLBookmarkCreationSecurityScopeAllowOnlyReadAccess;
    return ::faccessat(AT_FDCWD, path.constData(), readOnly ? R_OK : R_OK | W_OK, AT_EACCESS) == 0;
}

/// Nobody who chose a file expects a directory, a pipe or a link to nowhere under its name.
bool isReplacement(const QByteArray &path, quint16 formerType)
{
    struct stat present = {};
    if (formerType != S_IFREG && formerType != S_IFDIR)
        return true;
    return ::stat(path.constData(), &present) == 0 && (present.st_mode & S_IFMT) == formerType;
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
        const int cause = present ? 0 : errno;
        const bool isSame = present && present->isSameItem(record->identity);
        const bool isThere = isSame || (present && isReplacement(record->path, record->identity.type));
        const QByteArray path = isThere ? record->path : find(*record);
        if (path.isNull() || (!isThere && isThrownAway(*record, path))) {
            report(error, explainLoss(*record, path, cause));
            return {};
        }
        if (stale)
            *stale = !isSame;
        return toUrl(path);
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
        QByteArray path = m_grants.pathOf(record.identity);
        if (path.isNull() && !detail::isVolumePresent(record.identity, record.path))
            path = detail::findOnMovedVolume(record.identity, record.path);
        return path.isNull() ? detail::findMoved(record.identity, record.path, MaximumEntries) : path;
    }

    static bool isThrownAway(const detail::BookmarkRecord &record, const QByteArray &path)
    {
        return detail::isInTrash(path) && !detail::isInTrash(record.path);
    }

    /// \param path in the trash, or absent
    /// \param cause why the old path could not be asked, 0 when it could
    static QString explainLoss(const detail::BookmarkRecord &record, const QByteArray &path, int cause)
    {
        QString text = u"\"%1\" is neither there nor nearby"_s;
        if (!path.isNull())
            text = u"\"%1\" is in the trash"_s;
        else if (cause == 0)
            text = u"\"%1\" is no longer the file or directory that it was, which is not nearby"_s;
        else if (cause != ENOENT && cause != ENOTDIR)
            text = u"\"%1\": "_s + qt_error_string(cause);
        else if (!detail::isVolumePresent(record.identity, record.path))
            text += u"; its volume may not be mounted"_s;
        return text.arg(QFile::decodeName(record.path));
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
