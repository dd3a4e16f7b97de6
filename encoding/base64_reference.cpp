// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <encoding/base64_reference.h>

#include <encoding/base64_decoder.h>

#include <dravelin/encoding/base64.h>

namespace dravelin::detail {

namespace {

/// Four characters of 6 bits each, the first in the upper bits.
void writeGroup(char16_t *out, quint32 bits)
{
    for (int i = 0; i < 4; ++i)
        out[i] = char16_t(_base64EncodingTable[bits >> (18 - 6 * i) & 63]);
}

void writeLastGroup(char16_t *out, const uchar *bytes, qsizetype count)
{
    writeGroup(out, quint32(bytes[0]) << 16 | (count == 2 ? quint32(bytes[1]) << 8 : 0));
    out[3] = u'=';
    if (count == 1)
        out[2] = u'=';
}

/// Every character by the rules, none by a short cut.
struct NoPieces
{
    void takeGroups(const Base64Cursor<char16_t> &) const {}
    void takeLines(const Base64Cursor<char16_t> &, std::size_t, std::size_t) const {}
};

} // namespace

QString encodeBase64Reference(QByteArrayView data)
{
    if (data.isEmpty())
        return {};
    QString text((data.size() + 2) / 3 * 4, Qt::Uninitialized);
    auto *out = reinterpret_cast<char16_t *>(text.data());
    const auto *in = reinterpret_cast<const uchar *>(data.data());
    qsizetype left = data.size();
    for (; left >= 3; left -= 3, in += 3, out += 4)
        writeGroup(out, quint32(in[0]) << 16 | quint32(in[1]) << 8 | in[2]);
    if (left > 0)
        writeLastGroup(out, in, left);
    return text;
}

QByteArray decodeBase64Reference(QStringView text)
{
    if (text.isEmpty())
        return text.isNull() ? QByteArray() : QByteArray("");
    QByteArray bytes((text.size() + 3) / 4 * 3, Qt::Uninitialized);
    auto *out = reinterpret_cast<uchar *>(bytes.data());
    const uchar *end = Base64Decoder<char16_t, NoPieces>(text.utf16(), std::size_t(text.size()), out).decode();
    if (!end)
        return {};
    bytes.truncate(end - out);
    return bytes;
}

} // namespace dravelin::detail
