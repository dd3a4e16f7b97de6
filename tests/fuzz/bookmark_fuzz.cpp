// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/bookmarks.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <zlib.h>

#include <cstdint>
#include <cstdlib>

using namespace dravelin;

namespace {

/// So deep that no search leaves it; of a fixed name, so that seeds may contain it.
const QString &folder()
{
    static const QString path = [] {
        const QString top = QDir::tempPath() + QStringLiteral("/dravelin-bookmark-fuzz");
        const QString deep = top + QStringLiteral("/1/2/3");
        if (!QDir().mkpath(deep) || !QFile(deep + QStringLiteral("/plan")).open(QIODevice::WriteOnly))
            std::abort();
        return deep;
    }();
    return path;
}

/// Otherwise hardly any input would get beyond the check. The first version had a shorter one.
QByteArray withChecksum(QByteArray bytes)
{
    const bool isFirst = bytes.size() > 4 && bytes[4] == 1;
    const qsizetype size = isFirst ? sizeof(quint16) : sizeof(quint32);
    if (bytes.size() <= size)
        return bytes;
    const auto content = QByteArrayView(bytes).chopped(size);
    char *end = bytes.data() + content.size();
    if (isFirst)
        qToBigEndian(qChecksum(content), end);
    else
        qToBigEndian(quint32(::crc32(0, reinterpret_cast<const Bytef *>(content.data()), uInt(content.size()))), end);
    return bytes;
}

void check(const QByteArray &bytes)
{
    QString error;
    const auto contents = BookmarkService::contents(bytes, &error);
    if (contents.has_value() != error.isNull())
        std::abort();
    if (contents && !QDir::cleanPath(contents->url.toLocalFile()).startsWith(folder() + u'/'))
        return; // a search elsewhere would be slow, and its result would not be the input's
    const QUrl url = BookmarkService::current()->resolve(bytes, 0, nullptr, &error);
    if (url.isEmpty() == error.isNull())
        std::abort();
}

} // namespace

// Whatever the bytes are, there is either a result or a cause.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    check(bytes);
    check(withChecksum(bytes));
    return 0;
}
