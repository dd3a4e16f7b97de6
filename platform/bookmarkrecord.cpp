// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/bookmarkrecord.h>

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QtEndian>

#include <zlib.h>

#include <climits>

namespace dravelin::detail {

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Magic = 0x44'42'6b'6d; // "DBkm"
constexpr quint8 Version = 2;
constexpr quint8 ReadOnly = 1;

quint32 checksumOf(QByteArrayView bytes)
{
    return quint32(crc32_z(0, reinterpret_cast<const Bytef *>(bytes.data()), size_t(bytes.size())));
}

/// The first version had a short one, and neither size nor flags.
int checksumSize(quint8 version) { return version > 1 ? sizeof(quint32) : sizeof(quint16); }

bool isWhole(const QByteArray &bytes, quint8 version)
{
    const auto content = QByteArrayView(bytes).chopped(checksumSize(version));
    return version > 1 ? qFromBigEndian<quint32>(content.end()) == checksumOf(content)
                       : qFromBigEndian<quint16>(content.end()) == qChecksum(content);
}

/// All after the version; false when that is not all there is.
bool readFields(QDataStream &stream, quint8 version, BookmarkRecord &record)
{
    auto &id = record.identity;
    stream >> record.path >> id.device >> id.inode >> id.birthSeconds >> id.birthNanoseconds >> id.type >> id.handle;
    if (quint8 flags = 0; version > 1) {
        stream >> id.size >> flags;
        record.isReadOnly = flags & ReadOnly;
    }
    return stream.skipRawData(checksumSize(version)) == checksumSize(version) && stream.status() == QDataStream::Ok
           && stream.atEnd();
}

/// No path that the file functions would refuse, cut short or take from elsewhere, and no date beyond every calendar.
bool isUsable(const BookmarkRecord &record)
{
    constexpr qint64 farAway = qint64(1) << 50; // seconds
    const qint64 birth = record.identity.birthSeconds;
    const bool isPath = record.path.startsWith('/') && !record.path.contains('\0') && record.path.size() < PATH_MAX;
    return isPath && birth > -farAway && birth < farAway;
}

std::optional<BookmarkRecord> fail(QString *error, const QString &cause)
{
    if (error)
        *error = cause;
    return {};
}

} // namespace

// Big-endian: magic, version, length and bytes of the path, identity, size, flags, then a checksum of all that.
QByteArray writeBookmark(const BookmarkRecord &record)
{
    QByteArray bytes;
    bytes.reserve(record.path.size() + 96);
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_0);
    const auto &id = record.identity;
    stream << Magic << Version << record.path << id.device << id.inode << id.birthSeconds << id.birthNanoseconds
           << id.type << id.handle << id.size << quint8(record.isReadOnly ? ReadOnly : 0);
    stream << checksumOf(bytes);
    return bytes;
}

std::optional<BookmarkRecord> readBookmark(const QByteArray &bookmark, QString *error)
{
    if (bookmark.isEmpty())
        return fail(error, u"there is no bookmark"_s);
    QDataStream stream(bookmark);
    stream.setVersion(QDataStream::Qt_6_0);
    quint32 magic = 0;
    quint8 version = 0;
    stream >> magic >> version;
    if (magic != Magic || version == 0)
        return fail(error, u"the data is not a bookmark"_s);
    if (version > Version)
        return fail(error, u"the bookmark is of version %1, which is too new"_s.arg(version));
    BookmarkRecord record;
    if (!isWhole(bookmark, version) || !readFields(stream, version, record) || !isUsable(record))
        return fail(error, u"the bookmark is damaged"_s);
    return record;
}

} // namespace dravelin::detail
