// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/base64.h>

#include <dravelin/platform/exception.h>
#include <dravelin/values/conversions.h>

#include <encoding/base64_decoder.h>
#include <encoding/base64_pieces.h>
#include <platform/largebytes.h>

namespace dravelin {

namespace {

const uchar *begin(QByteArrayView bytes) { return reinterpret_cast<const uchar *>(bytes.data()); }

/// \return behind the last byte written, null on failure
template <typename Char>
uchar *decode(const Char *text, qsizetype size, uchar *bytes)
{
    const auto count = std::size_t(size);
    const bool isLarge = count / 4 * 3 >= detail::streamedSize;
    if (isLarge && !detail::decodesBase64PastCaches())
        return detail::Base64Decoder<Char, detail::StreamedPieces<Char>>(text, count, bytes).decode();
    uchar *end = detail::Base64Decoder<Char, detail::FastPieces<Char>>(text, count, bytes, isLarge).decode();
    if (isLarge)
        detail::finishStreamCopies();
    return end;
}

/// \return absent bytes on failure
template <typename Char>
QByteArray decoded(const Char *text, qsizetype size)
{
    QByteArray bytes = detail::uninitializedBytes(decodedBase64Capacity(size));
    auto *out = reinterpret_cast<uchar *>(bytes.data());
    const uchar *end = decode(text, size, out);
    if (!end)
        return {};
    bytes.truncate(end - out);
    return bytes;
}

template <typename Char>
void encode(const uchar *bytes, qsizetype size, Char *text)
{
    constexpr qsizetype pieceBytes = 12288, pieceChars = encodedBase64Size(pieceBytes);
    if (std::size_t(encodedBase64Size(size)) * sizeof(Char) >= detail::streamedSize) {
        alignas(64) Char piece[pieceChars];
        for (; size >= pieceBytes; bytes += pieceBytes, size -= pieceBytes, text += pieceChars) {
            detail::encodeBase64(bytes, pieceBytes, piece);
            detail::streamCopy(text, piece, sizeof piece);
        }
        detail::finishStreamCopies();
    }
    detail::encodeBase64(bytes, std::size_t(size), text);
}

void checkRoom(qsizetype room, qsizetype needed)
{
    if (room < needed)
        throw Exception(QLatin1String(NSRangeException),
                        QStringLiteral("Base64 into %1 bytes of room where %2 are needed").arg(room).arg(needed));
}

} // namespace

QString encodeBase64WithData(const QByteArray &data)
{
    if (data.isEmpty())
        return {};
    QString text = detail::uninitializedText(encodedBase64Size(data.size()));
    encode(begin(data), data.size(), reinterpret_cast<char16_t *>(text.data()));
    return text;
}

QString encodeBase64WithString(const QString &text) { return encodeBase64WithData(strToData(text)); }

QByteArray decodeBase64ToData(const QString &text)
{
    if (text.isEmpty())
        return text.isNull() ? QByteArray() : QByteArray("");
    return decoded(QStringView(text).utf16(), text.size());
}

QString decodeBase64ToString(const QString &text) { return dataToStr(decodeBase64ToData(text)); }

QByteArray encodeBase64ToBytes(QByteArrayView data)
{
    if (data.isEmpty())
        return {};
    QByteArray text = detail::uninitializedBytes(encodedBase64Size(data.size()));
    encode(begin(data), data.size(), reinterpret_cast<uchar *>(text.data()));
    return text;
}

QByteArray decodeBase64FromBytes(QByteArrayView text)
{
    if (text.isEmpty())
        return text.isNull() ? QByteArray() : QByteArray("");
    return decoded(begin(text), text.size());
}

qsizetype encodeBase64Into(std::span<char> text, QByteArrayView data)
{
    const qsizetype size = encodedBase64Size(data.size());
    checkRoom(qsizetype(text.size()), size);
    encode(begin(data), data.size(), reinterpret_cast<uchar *>(text.data()));
    return size;
}

qsizetype decodeBase64Into(std::span<char> bytes, QByteArrayView text)
{
    checkRoom(qsizetype(bytes.size()), decodedBase64Capacity(text.size()));
    if (text.isEmpty())
        return 0;
    auto *out = reinterpret_cast<uchar *>(bytes.data());
    const uchar *end = decode(begin(text), text.size(), out);
    return end ? end - out : -1;
}

} // namespace dravelin
