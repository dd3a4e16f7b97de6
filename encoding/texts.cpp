// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/collections.h>

#include <platform/whitespace.h>

#include <QtCore/QSet>

#include <algorithm>
#include <bitset>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

/// The character that starts at the position: two units if they are a surrogate pair, else one.
QStringView characterAt(QStringView text, qsizetype position)
{
    const bool pair =
        position + 1 < text.size() && text[position].isHighSurrogate() && text[position + 1].isLowSurrogate();
    return text.sliced(position, pair ? 2 : 1);
}

class CharacterSet
{
public:
    explicit CharacterSet(QStringView characters)
    {
        for (qsizetype i = 0; i < characters.size();) {
            const QStringView character = characterAt(characters, i);
            insert(character);
            i += character.size();
        }
    }

    bool contains(QStringView character) const
    {
        return character.size() == 1 ? m_units[character.front().unicode()] : m_pairs.contains(pairCode(character));
    }

private:
    static char32_t pairCode(QStringView pair) { return QChar::surrogateToUcs4(pair.front(), pair.back()); }

    void insert(QStringView character)
    {
        if (character.size() == 2)
            m_pairs.insert(pairCode(character));
        else
            m_units[character.front().unicode()] = !detail::isWhiteSpace(character.front());
    }

    std::bitset<0x10000> m_units;
    QSet<char32_t> m_pairs;
};

} // namespace

inline namespace Utilities {

bool isEmpty(const QString &text) noexcept { return text.isEmpty(); }

QString trimWhiteSpace(const QString &text)
{
    const auto first = std::find_if_not(text.begin(), text.end(), detail::isWhiteSpace);
    const auto last = std::find_if_not(text.rbegin(), std::make_reverse_iterator(first), detail::isWhiteSpace).base();
    return text.mid(first - text.begin(), last - first);
}

QString leftString(const QString &text, qint64 count)
{
    return count < 0 || count >= text.size() ? text : text.first(qsizetype(count));
}

QString rightString(const QString &text, qint64 index)
{
    if (text.isNull())
        return text;
    return index < 0 || index >= text.size() ? u""_s : text.sliced(qsizetype(index));
}

QStringList splitIntoLines(const QString &text)
{
    return text.isNull() ? QStringList() : normalizeLineEndings(text, 0).split(u'\r');
}

QString normalizeLineEndings(const QString &text, qint32 mode)
{
    const qsizetype first = text.indexOf(u'\r');
    const bool cr = first >= 0;
    if (!cr && !text.contains(u'\n'))
        return text;
    const bool crlf = !cr || QStringView(text).sliced(first + 1).startsWith(u'\n');
    QString copy = text;
    switch (mode) {
    case 0:
        return cr ? text : copy.replace(u'\n', u'\r');
    case 1:
        return cr && crlf ? text : copy.replace(cr ? u'\r' : u'\n', "\r\n"_L1);
    case 2:
        return crlf ? text : copy.replace(u'\r', u'\n');
    default:
        return {};
    }
}

QString stripString(const QString &text, const QString &characters)
{
    if (text.isNull())
        return text;
    const CharacterSet kept(characters);
    QString result = u""_s;
    for (qsizetype i = 0; i < text.size();) {
        const QStringView character = characterAt(text, i);
        if (kept.contains(character))
            result.append(character);
        i += character.size();
    }
    return result;
}

QString unichar(char16_t code) { return QString(QChar(code)); }

} // namespace Utilities

} // namespace dravelin
