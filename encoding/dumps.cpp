// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/collections.h>

namespace dravelin {

using namespace Qt::StringLiterals;

inline namespace Utilities {

QString dumpAllKeys(const QVariantMap &map)
{
    QString text = u""_s;
    for (auto entry = map.keyBegin(); entry != map.keyEnd(); ++entry)
        text.append(*entry).append(u'\r');
    return text;
}

QString dump(const QByteArray &bytes)
{
    constexpr char16_t Digits[] = u"0123456789ABCDEF";
    QString text = u""_s;
    text.reserve(bytes.size() * 3);
    for (const char c : bytes) {
        const auto byte = static_cast<uchar>(c);
        text.append(Digits[byte >> 4]).append(Digits[byte & 15]).append(u' ');
    }
    return text;
}

} // namespace Utilities

} // namespace dravelin
