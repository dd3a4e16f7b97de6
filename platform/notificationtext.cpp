// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/notificationtext.h"

#include <QtCore/QList>

namespace dravelin::detail {

using namespace Qt::StringLiterals;

namespace {

bool isText(uint character)
{
    if (QChar::category(character) == QChar::Other_Control)
        return character == '\n' || character == '\t';
    return !QChar::isNonCharacter(character);
}

QString cut(const QString &text, qsizetype limit)
{
    if (text.size() <= limit)
        return text;
    const bool isWithinPair = text[limit - 2].isHighSurrogate();
    return text.left(limit - (isWithinPair ? 2 : 1)) + u'…';
}

} // namespace

QString notificationText(const QString &text, qsizetype limit)
{
    QString unified = cut(text, limit);
    unified.replace("\r\n"_L1, "\n"_L1).replace(u'\r', u'\n');
    QString result;
    for (const uint character : unified.toUcs4()) // has U+FFFD for halves of pairs
        result += QChar::fromUcs4(isText(character) ? char32_t(character) : char32_t(QChar::ReplacementCharacter));
    return result;
}

} // namespace dravelin::detail
