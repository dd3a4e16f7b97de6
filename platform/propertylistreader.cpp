// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/propertylist.h>

#include "propertylist_p.h"

#include <QtCore/QDateTime>
#include <QtCore/QRegularExpression>
#include <QtCore/QTimeZone>
#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <charconv>

namespace dravelin {

namespace propertylist {

namespace {

using namespace Qt::StringLiterals;

bool isUnitDigit(QChar c) { return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f'); }

/// The text behind the escaped form; text that only looks like it stands for itself.
QString unescaped(const QString &text)
{
    const QStringView units = text.startsWith(EscapePrefix) ? QStringView(text).mid(3) : QStringView();
    if (units.isEmpty() || units.size() % 4 != 0 || !std::all_of(units.cbegin(), units.cend(), isUnitDigit))
        return text;
    QString result;
    for (qsizetype i = 0; i < units.size(); i += 4)
        result.append(QChar(units.mid(i, 4).toUShort(nullptr, 16)));
    return result;
}

QByteArray withoutPlus(const QString &text)
{
    const QByteArray trimmed = text.trimmed().toLatin1();
    return trimmed.startsWith('+') && !trimmed.startsWith("+-") ? trimmed.mid(1) : trimmed;
}

QVariant integerFrom(const QString &text)
{
    QByteArray digits = withoutPlus(text);
    const bool negative = digits.startsWith('-');
    digits.remove(0, negative);
    const bool hexadecimal = digits.startsWith("0x") || digits.startsWith("0X");
    digits.remove(0, hexadecimal ? 2 : 0);
    quint64 magnitude = 0;
    const auto [end, error] = std::from_chars(digits.cbegin(), digits.cend(), magnitude, hexadecimal ? 16 : 10);
    const auto limit = quint64(std::numeric_limits<qint64>::max()) + negative;
    if (error != std::errc() || end != digits.cend() || (negative && magnitude > limit))
        return {};
    if (magnitude > limit)
        return magnitude;
    return qint64(negative ? 0 - magnitude : magnitude);
}

QVariant realFrom(const QString &text)
{
    const QByteArray digits = withoutPlus(text);
    double value = 0;
    const auto [end, error] = std::from_chars(digits.cbegin(), digits.cend(), value);
    return error == std::errc() && end == digits.cend() ? QVariant(value) : QVariant();
}

QVariant dateFrom(const QString &text)
{
    static const QRegularExpression form(
        u"\\A\\s*(-?\\d{4,9})-(\\d\\d)-(\\d\\d)T(\\d\\d):(\\d\\d):(\\d\\d)(?:\\.(\\d{1,3})\\d*)?Z\\s*\\z"_s);
    const QRegularExpressionMatch match = form.match(text);
    const auto number = [&match](int group) { return match.capturedView(group).toInt(); };
    const int milliseconds = match.captured(7).leftJustified(3, u'0').toInt();
    const QDateTime date(QDate(number(1), number(2), number(3)), QTime(number(4), number(5), number(6), milliseconds),
                         QTimeZone::utc());
    return match.hasMatch() && date.isValid() ? QVariant(date.toUTC()) : QVariant();
}

QVariant dataFrom(const QString &text)
{
    QByteArray characters = text.toLatin1();
    characters.removeIf([](char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; });
    const auto result = QByteArray::fromBase64Encoding(characters, QByteArray::AbortOnBase64DecodingErrors);
    if (!result || characters.size() % 4 == 1)
        return {};
    return (*result).isNull() ? QByteArray("") : *result;
}

class Reader
{
public:
    enum Uids { AsMaps, AsUids };
    explicit Reader(const QByteArray &data, Uids uids = AsMaps) : m_xml(data), m_uids(uids) {}

    QVariant document();
    QString error() const { return u"line %1: %2"_s.arg(m_xml.lineNumber()).arg(m_xml.errorString()); }

private:
    QVariant failed(const QString &cause);
    bool nextElement();
    QString text();
    QVariant leaf(QVariant (*convert)(const QString &));
    QVariant truth(bool value);
    QVariant value(int levels);
    QVariant list(int levels);
    QVariant map(int levels);

    QXmlStreamReader m_xml;
    Uids m_uids;
};

/// The reference that a map stands for, or the map itself.
QVariant withUid(const QVariantMap &map)
{
    const QVariant index = map.size() == 1 ? map.value(u"CF$UID"_s) : QVariant();
    const bool isUid = index.typeId() == QMetaType::LongLong && index.toLongLong() >= 0;
    return isUid ? QVariant::fromValue(Uid{index.toULongLong()}) : QVariant(map);
}

QVariant Reader::failed(const QString &cause)
{
    if (!m_xml.hasError()) // the first cause counts
        m_xml.raiseError(cause);
    return {};
}

/// Goes to the next child element. \return false at the parent's end, and at an error
bool Reader::nextElement()
{
    while (!m_xml.atEnd()) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            return true;
        case QXmlStreamReader::EndElement:
            return false;
        case QXmlStreamReader::DTD:
            if (!m_xml.entityDeclarations().isEmpty())
                return failed(u"the document type declares entities"_s).isValid();
            break;
        case QXmlStreamReader::EntityReference:
            return failed(u"unknown entity %1"_s.arg(m_xml.name())).isValid();
        case QXmlStreamReader::Characters:
            if (!m_xml.isWhitespace())
                return failed(u"text between elements"_s).isValid();
            break;
        default:
            break;
        }
    }
    return false;
}

/// The text of the current element, up to its end.
QString Reader::text()
{
    QString result = u""_s;
    while (m_xml.readNext() != QXmlStreamReader::EndElement && !m_xml.hasError()) {
        if (m_xml.isCharacters())
            result += m_xml.text();
        else if (!m_xml.isComment() && !m_xml.isProcessingInstruction())
            failed(u"element or entity %1 inside text"_s.arg(m_xml.name()));
    }
    return result;
}

QVariant Reader::leaf(QVariant (*convert)(const QString &))
{
    const QString name = m_xml.name().toString();
    const QString content = text();
    const QVariant result = convert(content);
    return result.isValid() ? result : failed(u"malformed %1 \"%2\""_s.arg(name, content.left(40)));
}

QVariant Reader::truth(bool value) { return text().isEmpty() ? value : failed(u"text inside a truth value"_s); }

QVariant Reader::value(int levels)
{
    const QStringView name = m_xml.name();
    if (name == "string"_L1)
        return leaf([](const QString &content) { return QVariant(unescaped(content)); });
    if (name == "integer"_L1)
        return leaf(integerFrom);
    if (name == "real"_L1)
        return leaf(realFrom);
    if (name == "date"_L1)
        return leaf(dateFrom);
    if (name == "data"_L1)
        return leaf(dataFrom);
    if (name == "true"_L1 || name == "false"_L1)
        return truth(name == "true"_L1);
    if (name != "array"_L1 && name != "dict"_L1)
        return failed(u"unknown element %1"_s.arg(name));
    if (levels == 0)
        return failed(u"lists and maps nested deeper than %1 levels"_s.arg(MaximumLevels));
    return name == "array"_L1 ? list(levels - 1) : map(levels - 1);
}

QVariant Reader::list(int levels)
{
    QVariantList result;
    while (nextElement())
        result.append(value(levels));
    return result;
}

QVariant Reader::map(int levels)
{
    QVariantMap result;
    while (nextElement()) {
        if (m_xml.name() != "key"_L1)
            return failed(u"%1 in place of a key"_s.arg(m_xml.name()));
        const QString key = unescaped(text());
        if (!nextElement())
            return failed(u"key \"%1\" without a value"_s.arg(key.left(40)));
        result.insert(key, value(levels));
    }
    return m_uids == AsUids ? withUid(result) : result;
}

QVariant Reader::document()
{
    if (!nextElement() || m_xml.name() != "plist"_L1)
        return failed(u"not a property list"_s);
    if (!nextElement())
        return failed(u"no value"_s);
    const QVariant result = value(MaximumLevels);
    if (nextElement())
        return failed(u"more than one value"_s);
    while (!m_xml.atEnd())
        m_xml.readNext();
    return m_xml.hasError() ? QVariant() : result;
}

QVariant read(Reader &&reader, QString *error)
{
    QVariant result = reader.document();
    if (!result.isValid() && error)
        *error = reader.error();
    return result;
}

} // namespace

QVariant readWithUids(const QByteArray &data, QString *error) { return read(Reader(data, Reader::AsUids), error); }

} // namespace propertylist

QVariant propertyListFromData(const QByteArray &data, QString *error)
{
    return propertylist::read(propertylist::Reader(data), error);
}

} // namespace dravelin
