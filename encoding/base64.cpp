// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/base64.h>

#include <dravelin/platform/exception.h>
#include <dravelin/values/conversions.h>

#include <encoding/base64_decoder.h>
#include <platform/largebytes.h>

namespace dravelin {

namespace {

const uchar *begin(QByteArrayView bytes) { return reinterpret_cast<const uchar *>(bytes.data()); }

/// The vectorised pieces. Where they find little to take, as in text with white space all over, they are asked less often.
template <typename Char>
class FastPieces
{
public:
    void takeGroups(detail::Base64Cursor<Char> &at)
    {
        if (m_pause > 0 && m_pause-- > 0)
            return;
        const Char *const start = at.in;
        detail::decodeBase64Groups(at);
        if (at.in - start < worthwhile && at.in != at.end)
            m_pause = worthwhile;
    }

    void takeLines(detail::Base64Cursor<Char> &at, std::size_t length, std::size_t separatorLength) const
    {
        if (length >= worthwhile)
            detail::decodeBase64Lines(at, length, separatorLength);
    }

private:
    static constexpr int worthwhile = 16;

    int m_pause = 0;
};

/// \return absent bytes on failure
template <typename Char>
QByteArray decoded(const Char *text, qsizetype size)
{
    QByteArray bytes = detail::uninitializedBytes(decodedBase64Capacity(size));
    auto *out = reinterpret_cast<uchar *>(bytes.data());
    const uchar *end = detail::Base64Decoder<Char, FastPieces<Char>>(text, std::size_t(size), out).decode();
    if (!end)
        return {};
    bytes.truncate(end - out);
    return bytes;
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
    detail::encodeBase64(begin(data), std::size_t(data.size()), reinterpret_cast<char16_t *>(text.data()));
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
    detail::encodeBase64(begin(data), std::size_t(data.size()), reinterpret_cast<uchar *>(text.data()));
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
    detail::encodeBase64(begin(data), std::size_t(data.size()), reinterpret_cast<uchar *>(text.data()));
    return size;
}

qsizetype decodeBase64Into(std::span<char> bytes, QByteArrayView text)
{
    checkRoom(qsizetype(bytes.size()), decodedBase64Capacity(text.size()));
    if (text.isEmpty())
        return 0;
    auto *out = reinterpret_cast<uchar *>(bytes.data());
    detail::Base64Decoder<uchar, FastPieces<uchar>> decoder(begin(text), std::size_t(text.size()), out);
    const uchar *end = decoder.decode();
    return end ? end - out : -1;
}

} // namespace dravelin
