// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <encoding/base64_reference.h>

#include <dravelin/encoding/base64.h>

#include <algorithm>

namespace dravelin::detail {

namespace {

/// Four characters of 6 bits each, the first in the upper bits.
void writeGroup(char16_t *out, quint32 bits)
{
    out[0] = char16_t(_base64EncodingTable[bits >> 18]);
    out[1] = char16_t(_base64EncodingTable[bits >> 12 & 63]);
    out[2] = char16_t(_base64EncodingTable[bits >> 6 & 63]);
    out[3] = char16_t(_base64EncodingTable[bits & 63]);
}

void writeLastGroup(char16_t *out, const uchar *bytes, qsizetype count)
{
    writeGroup(out, quint32(bytes[0]) << 16 | (count == 2 ? quint32(bytes[1]) << 8 : 0));
    out[3] = u'=';
    if (count == 1)
        out[2] = u'=';
}

void writeBytes(char *out, quint32 bits)
{
    out[0] = char(bits >> 16);
    out[1] = char(bits >> 8);
    out[2] = char(bits);
}

bool isAscii(const char16_t *first, const char16_t *last)
{
    return std::all_of(first, last, [](char16_t c) { return c < 128; });
}

class Decoder
{
public:
    Decoder(QStringView text, char *out) : m_in(text.utf16()), m_end(m_in + text.size()), m_out(out) {}

    /// \return behind the last byte written, null on failure
    char *decode()
    {
        for (;;) {
            if (m_accepted == 0)
                takeWholeGroups();
            if (m_in == m_end)
                return finish();
            const char16_t c = *m_in++;
            if (c == 0)
                return isAscii(m_in, m_end) ? finish() : nullptr;
            if (!take(c))
                return nullptr;
        }
    }

private:
    /// Groups of four characters of the alphabet; stops before anything else.
    void takeWholeGroups()
    {
        for (; m_end - m_in >= 4; m_in += 4, m_out += 3) {
            if ((m_in[0] | m_in[1] | m_in[2] | m_in[3]) > 255)
                return;
            const int a = _base64DecodingTable[m_in[0]], b = _base64DecodingTable[m_in[1]];
            const int c = _base64DecodingTable[m_in[2]], d = _base64DecodingTable[m_in[3]];
            if ((a | b | c | d) < 0)
                return;
            writeBytes(m_out, quint32(a << 18 | b << 12 | c << 6 | d));
        }
    }

    bool take(char16_t c)
    {
        if (c == u'=')
            return m_accepted != 1;
        const qint16 value = c < 256 ? _base64DecodingTable[c] : qint16(-2);
        if (value < 0)
            return value == -1;
        m_bits = m_bits << 6 | quint32(value);
        if (++m_accepted == 4) {
            writeBytes(m_out, m_bits);
            m_out += 3;
            m_accepted = 0;
            m_bits = 0;
        }
        return true;
    }

    /// The whole bytes of an incomplete last group.
    char *finish()
    {
        if (m_accepted == 3)
            *m_out++ = char(m_bits >> 10);
        if (m_accepted >= 2)
            *m_out++ = char(m_bits >> (m_accepted == 3 ? 2 : 4));
        return m_out;
    }

    const char16_t *m_in;
    const char16_t *m_end;
    char *m_out;
    quint32 m_bits = 0;
    int m_accepted = 0; ///< characters of the current group
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
    const char *end = Decoder(text, bytes.data()).decode();
    if (!end)
        return {};
    bytes.truncate(end - bytes.constData());
    return bytes;
}

} // namespace dravelin::detail
