// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/zlibstream.h>

#include <dravelin/platform/exception.h>

#include <platform/largebytes.h>

#include <QtCore/QScopeGuard>

#include <algorithm>
#include <new>

#define ZLIB_CONST
#include <zlib.h>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

constexpr int WindowBits = 15;
constexpr int MemoryLevel = 8;
constexpr char OldestVersion[] = "1.2.7";
constexpr qsizetype LargestSize = std::numeric_limits<qsizetype>::max() / 2; // beyond what any machine has

void requireInitialized(int status)
{
    if (status != Z_OK)
        throw Exception(QLatin1String(NSInternalInconsistencyException), u"deflateInit failed"_s);
}

[[noreturn]] void throwOutOfMemory(qsizetype size)
{
    throw Exception(QLatin1String(NSMallocException), u"no memory for a buffer of %1 bytes"_s.arg(size));
}

QByteArray room(qsizetype size)
try {
    return detail::uninitializedBytes(size);
} catch (const std::bad_alloc &) {
    throwOutOfMemory(size);
}

void growByHalf(QByteArray &output, qsizetype limit)
{
    const auto size = std::min(qsizetype(double(output.size()) * 1.5), limit);
    try {
        detail::growBytes(output, size);
    } catch (const std::bad_alloc &) {
        throwOutOfMemory(size);
    }
}

/// Points the stream at what it has not read yet and at the room that is left.
void offerRest(z_stream &stream, QByteArrayView input, QByteArray &output, quint32 largestPiece)
{
    const auto piece = [largestPiece](uLong rest) { return uInt(std::min<uLong>(rest, largestPiece)); };
    stream.next_in = reinterpret_cast<const Bytef *>(input.data()) + stream.total_in;
    stream.avail_in = piece(uLong(input.size()) - stream.total_in);
    stream.next_out = reinterpret_cast<Bytef *>(output.data()) + stream.total_out;
    stream.avail_out = piece(uLong(output.size()) - stream.total_out);
}

bool hasRoom(const z_stream &stream, const QByteArray &output) { return stream.total_out < uLong(output.size()); }

/// Cuts to what was written, and gives the rest of the memory back; neither copies.
void cut(QByteArray &output, const z_stream &stream)
{
    output.truncate(qsizetype(stream.total_out));
    output.squeeze();
}

/// More room can never lead to the end of such a stream.
[[noreturn]] void throwBroken(const z_stream &stream, int status)
{
    QString cause = u"is truncated after %1 bytes"_s.arg(stream.total_in);
    if (status == Z_NEED_DICT)
        cause = u"needs a preset dictionary"_s;
    else if (status != Z_OK && status != Z_BUF_ERROR)
        cause = u"is broken before byte %1: %2"_s.arg(stream.total_in)
                    .arg(QLatin1String(stream.msg ? stream.msg : zError(status)));
    throw Exception(QLatin1String(NSMallocException), u"the zlib stream "_s + cause);
}

[[noreturn]] void throwTooLarge(qsizetype maximumSize)
{
    throw Exception(QLatin1String(NSRangeException), u"the zlib stream holds more than %1 bytes"_s.arg(maximumSize));
}

} // namespace

QByteArray detail::deflated(QByteArrayView bytes, quint32 largestPiece)
{
    z_stream stream{};
    requireInitialized(deflateInit2_(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, WindowBits, MemoryLevel,
                                     Z_DEFAULT_STRATEGY, OldestVersion, int(sizeof stream)));
    const auto end = qScopeGuard([&stream] { deflateEnd(&stream); });
    QByteArray output = room(qsizetype(deflateBound(&stream, uLong(bytes.size()))));
    for (;;) {
        offerRest(stream, bytes, output, largestPiece);
        const bool last = stream.total_in + stream.avail_in == uLong(bytes.size());
        if (deflate(&stream, last ? Z_FINISH : Z_NO_FLUSH) == Z_STREAM_END)
            break;
        if (!hasRoom(stream, output))
            growByHalf(output, LargestSize);
    }
    cut(output, stream);
    return output;
}

QByteArray detail::inflated(QByteArrayView stream, qsizetype maximumSize, quint32 largestPiece)
{
    z_stream state{};
    requireInitialized(inflateInit_(&state, OldestVersion, int(sizeof state)));
    const auto end = qScopeGuard([&state] { inflateEnd(&state); });
    const qsizetype limit =
        std::clamp<qsizetype>(maximumSize, 0, LargestSize - 1) + 1; // one more tells whether it is passed
    QByteArray output = room(std::min(qsizetype(double(stream.size()) * 2.5), limit));
    for (;;) {
        offerRest(state, stream, output, largestPiece);
        const int status = inflate(&state, Z_FINISH);
        if (status == Z_STREAM_END)
            break;
        const bool full = !hasRoom(state, output);
        if ((status != Z_OK && status != Z_BUF_ERROR) || (!full && state.total_in == uLong(stream.size())))
            throwBroken(state, status);
        if (full && output.size() == limit)
            throwTooLarge(maximumSize);
        if (full)
            growByHalf(output, limit);
    }
    if (qsizetype(state.total_out) > maximumSize)
        throwTooLarge(maximumSize);
    cut(output, state);
    return output;
}

} // namespace dravelin
