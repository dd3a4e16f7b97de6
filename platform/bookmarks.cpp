// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bookmarks.h>

#include <platform/fileidentity.h>

#include <QtCore/QDataStream>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <mutex>
#include <utility>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Magic = 0x44'42'6b'6d; // "DBkm"
constexpr quint8 Version = 1;
constexpr int MaximumEntries = 20'000;

struct Record
{
    QByteArray path;
    detail::FileIdentity identity;
};

// Big-endian: magic, version, length and bytes of the path, identity, then a checksum of all that.
QByteArray write(const Record &record)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    const auto &id = record.identity;
    stream << Magic << Version << record.path << id.device << id.inode << id.birthSeconds << id.birthNanoseconds
           << id.type << id.handle;
    stream << qChecksum(bytes);
    return bytes;
}

std::optional<Record> read(const QByteArray &bytes)
{
    QDataStream stream(bytes);
    quint32 magic = 0;
    quint8 version = 0;
    quint16 checksum = 0;
    Record record;
    auto &id = record.identity;
    stream >> magic >> version;
    if (magic != Magic || version != Version)
        return {};
    stream >> record.path >> id.device >> id.inode >> id.birthSeconds >> id.birthNanoseconds >> id.type >> id.handle
        >> checksum;
    const bool whole = stream.status() == QDataStream::Ok && stream.atEnd();
    if (!whole || checksum != qChecksum(QByteArrayView(bytes).chopped(qsizetype(sizeof checksum))))
        return {};
    // What a forged record might still hold: a path that the file functions would cut short or take from elsewhere.
    return record.path.startsWith('/') && !record.path.contains('\0') ? std::optional(record) : std::nullopt;
}

void report(QString *error, const QString &cause)
{
    if (error)
        *error = cause;
}

QUrl toUrl(const QByteArray &path) { return QUrl::fromLocalFile(QFile::decodeName(path)); }

class FileBookmarks : public BookmarkService
{
public:
    QByteArray create(const QUrl &url, quint64, QString *error) override
    {
        const QString path = url.isLocalFile() ? QFileInfo(url.toLocalFile()).absoluteFilePath() : QString();
        const QByteArray encoded = QFile::encodeName(path);
        const auto identity = detail::identityOf(encoded);
        if (identity)
            return write({encoded, *identity});
        report(error, u"\"%1\" is not an existing local file"_s.arg(url.toString()));
        return {};
    }

    QUrl resolve(const QByteArray &bookmark, quint64, bool *stale, QString *error) override
    {
        const auto record = read(bookmark);
        if (!record) {
            report(error, u"the data is not a bookmark"_s);
            return {};
        }
        const auto present = detail::identityOf(record->path);
        const QByteArray path =
            present ? record->path : detail::findMoved(record->identity, record->path, MaximumEntries);
        if (path.isNull())
            report(error, u"\"%1\" is neither there nor nearby"_s.arg(QFile::decodeName(record->path)));
        else if (stale)
            *stale = !present || !present->isSameItem(record->identity);
        return path.isNull() ? QUrl() : toUrl(path);
    }
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
    return url.isLocalFile() && QFileInfo(url.toLocalFile()).isReadable();
}

void BookmarkService::stopAccess(const QUrl &) {}

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
