// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "propertylist_p.h"

#include <QtCore/QDateTime>

#include <algorithm>
#include <charconv>

namespace dravelin::propertylist {

namespace {

bool isPlain(char16_t c)
{
    return c >= 0x20 ? (c < 0xd800 || (c > 0xdfff && c < 0xfffe)) : c == '\t' || c == '\n' || c == '\r';
}

bool isPair(QStringView text, qsizetype i)
{
    return text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
}

/// Whether XML can carry the text and a reader takes it for what it is.
bool isLiteral(QStringView text)
{
    if (text.startsWith(EscapePrefix))
        return false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (isPlain(text[i].unicode()))
            continue;
        if (!isPair(text, i))
            return false;
        ++i;
    }
    return true;
}

void appendUnits(QByteArray &out, QStringView text)
{
    out.append(QStringView(EscapePrefix).toLatin1());
    for (const QChar c : text)
        out.append(QByteArray::number(c.unicode(), 16).rightJustified(4, '0'));
}

void appendMarkup(QByteArray &out, const QByteArray &text)
{
    for (const char c : text) {
        switch (c) {
        case '&':
            out.append("&amp;");
            break;
        case '<':
            out.append("&lt;");
            break;
        case '>':
            out.append("&gt;");
            break;
        case '\r': // readers turn a bare one into a line feed
            out.append("&#13;");
            break;
        default:
            out.append(c);
        }
    }
}

void appendText(QByteArray &out, const QString &text)
{
    if (isLiteral(text))
        appendMarkup(out, text.toUtf8());
    else
        appendUnits(out, text);
}

QByteArray realText(double value)
{
    char text[32];
    return {text, std::to_chars(std::begin(text), std::end(text), value).ptr - text};
}

/// Four digits of the year at least, more and a sign as needed.
QByteArray dateText(const QDateTime &value)
{
    const QDate date = value.date();
    const QTime time = value.time();
    QByteArray text = QByteArray::number(qAbs(date.year())).rightJustified(4, '0');
    if (date.year() < 0)
        text.prepend('-');
    text += date.toString(u"-MM-dd").toLatin1() + 'T' + time.toString(u"HH:mm:ss").toLatin1();
    if (time.msec() != 0)
        text += '.' + QByteArray::number(time.msec()).rightJustified(3, '0');
    return text + 'Z';
}

void appendElement(QByteArray &out, const char *name, const QByteArray &text)
{
    out.append('<').append(name).append('>').append(text).append("</").append(name).append(">\n");
}

void appendList(QByteArray &out, const QVariantList &list, int indent)
{
    out.append("<array>\n");
    for (const QVariant &item : list)
        appendValue(out, item, indent + 1);
    out.append(indent, '\t').append("</array>\n");
}

void appendMap(QByteArray &out, const QVariantMap &map, int indent)
{
    out.append("<dict>\n");
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        appendEntry(out, entry.key(), *entry, indent + 1);
    out.append(indent, '\t').append("</dict>\n");
}

void appendUid(QByteArray &out, Uid uid, int indent)
{
    out.append("<dict>\n");
    appendEntry(out, QStringLiteral("CF$UID"), qlonglong(uid.index), indent + 1);
    out.append(indent, '\t').append("</dict>\n");
}

} // namespace

void appendValue(QByteArray &out, const QVariant &value, int indent)
{
    out.append(indent, '\t');
    switch (value.typeId()) {
    case QMetaType::QString:
        out.append("<string>");
        appendText(out, value.toString());
        out.append("</string>\n");
        return;
    case QMetaType::Bool:
        out.append(value.toBool() ? "<true/>\n" : "<false/>\n");
        return;
    case QMetaType::LongLong:
        return appendElement(out, "integer", QByteArray::number(value.toLongLong()));
    case QMetaType::ULongLong:
        return appendElement(out, "integer", QByteArray::number(value.toULongLong()));
    case QMetaType::Double:
        return appendElement(out, "real", realText(value.toDouble()));
    case QMetaType::QDateTime:
        return appendElement(out, "date", dateText(value.toDateTime()));
    case QMetaType::QByteArray:
        return appendElement(out, "data", value.toByteArray().toBase64());
    case QMetaType::QVariantList:
        return appendList(out, value.toList(), indent);
    case QMetaType::QVariantMap:
        return appendMap(out, value.toMap(), indent);
    default:
        return appendUid(out, value.value<Uid>(), indent);
    }
}

void appendEntry(QByteArray &out, const QString &key, const QVariant &value, int indent)
{
    out.append(indent, '\t').append("<key>");
    appendText(out, key);
    out.append("</key>\n");
    appendValue(out, value, indent);
}

} // namespace dravelin::propertylist
