// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "preferences/decoded.h"

#include <dravelin/encoding/base64.h>
#include <dravelin/encoding/collections.h>
#include <dravelin/preferences/manager.h>

#include <QtCore/QStringList>

using namespace Qt::StringLiterals;

namespace {

QString decodedLine(const QString &line)
{
    QString key;
    QString value;
    if (dravelin::PreferenceManager::parsePreferenceLine(line, &key, &value))
        return u"%1 = \"%2\""_s.arg(key, value);
    return u"version %1"_s.arg(dravelin::decodeBase64ToString(line));
}

} // namespace

QString decodedExport(const QString &text)
{
    const QStringList lines = dravelin::splitIntoLines(dravelin::decodeBase64ToString(text));
    QString steps =
        u"The file:\n%1\n\nDecoded once, line by line:\n%2\n\nEach field decoded:\n"_s.arg(text, lines.join(u'\n'));
    for (const QString &line : lines)
        steps += decodedLine(line) + u'\n';
    return steps;
}
