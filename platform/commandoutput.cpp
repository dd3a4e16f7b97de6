// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/commandoutput.h"

#include "platform/filedescriptor.h"
#include "platform/largebytes.h"
#include "platform/utf8pieces.h"
#include "platform/utf8text.h"

#include <QtCore/QStringConverter>

#include <fcntl.h>

#include <algorithm>
#include <cstring>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

constexpr qsizetype UsualPipe = qsizetype(64) << 10;
constexpr qsizetype LargePipe = qsizetype(1) << 20;
constexpr auto Exactly = QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom;

/// Text that pieces of UTF-8 are added to while they are in the processor's cache.
class TextOfPieces
{
public:
    void add(QByteArrayView bytes)
    {
        if (!m_valid)
            return;
        makeRoom(bytes.size() + 1);
        const qsizetype added = detail::utf8ToUtf16(bytes, m_text.data() + m_used);
        m_used += added;
        m_valid = added >= 0;
        if (!m_valid)
            m_text = {};
    }

    [[nodiscard]] QString take()
    {
        if (!m_valid)
            return {};
        if (m_used == 0)
            return u""_s;
        m_text.resize(m_used);
        m_text.squeeze();
        return std::move(m_text);
    }

private:
    void makeRoom(qsizetype units)
    {
        if (m_text.size() - m_used < units)
            detail::growText(m_text, std::max(m_used + units, 2 * m_text.size()));
    }

    QString m_text;
    qsizetype m_used = 0;
    bool m_valid = true;
};

} // namespace

QString detail::readText(int pipe)
{
    TextOfPieces text;
    QByteArray buffer = uninitializedBytes(4 * UsualPipe);
    qsizetype cut = 0; // bytes in front, the beginning of a character
    ssize_t count = 0;
    while ((count = retried([&] { return read(pipe, buffer.data() + cut, size_t(buffer.size() - cut)); })) > 0) {
        if (count == UsualPipe)
            fcntl(pipe, F_SETPIPE_SZ, int(LargePipe)); // it was full; may be refused
        const auto bytes = QByteArrayView(buffer).first(cut + count);
        cut = cutCharacter(bytes);
        text.add(bytes.chopped(cut));
        std::memmove(buffer.data(), bytes.end() - cut, size_t(cut));
    }
    text.add(QByteArrayView(buffer).first(cut));
    return text.take();
}

QString detail::toText(QByteArrayView bytes) { return QStringDecoder(QStringConverter::Utf8, Exactly).decode(bytes); }

} // namespace dravelin
