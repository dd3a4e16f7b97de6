// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/archivedvalues.h"

#include <QtCore/QDateTime>
#include <QtCore/QHash>
#include <QtCore/QStringList>
#include <QtCore/QTimeZone>
#include <QtCore/QUrl>
#include <QtCore/QUuid>

#include <algorithm>
#include <cmath>

namespace dravelin::detail {

using namespace Qt::StringLiterals;

namespace {

using Fields = std::optional<QVariantMap>;

// Seconds from 1970 to 2001, where the dates of archives begin.
constexpr qint64 Epoch = 978307200;

QVariant reference(ArchiveWriter &writer, const QVariant &value)
{
    return QVariant::fromValue(writer.reference(value));
}

Fields encodeList(ArchiveWriter &writer, const QVariant &value)
{
    return QVariantMap{{u"NS.objects"_s, writer.references(value.toList())}};
}

QVariant decodeList(ArchiveReader &reader, const QVariantMap &fields)
{
    return reader.resolvedList(fields.value(u"NS.objects"_s));
}

QVariant decodeTexts(ArchiveReader &reader, const QVariantMap &fields)
{
    const QVariant list = decodeList(reader, fields);
    return list.isValid() ? QVariant(list.toStringList()) : list;
}

Fields encodeMap(ArchiveWriter &writer, const QVariant &value)
{
    const QVariantMap map = value.toMap();
    QVariantList keys;
    for (auto entry = map.keyBegin(); entry != map.keyEnd(); ++entry)
        keys.append(entry->isNull() ? u""_s : *entry);
    return QVariantMap{{u"NS.keys"_s, writer.references(keys)}, {u"NS.objects"_s, writer.references(map.values())}};
}

QVariant decodeMap(ArchiveReader &reader, const QVariantMap &fields)
{
    const QVariant keys = reader.resolvedList(fields.value(u"NS.keys"_s));
    const QVariant values = reader.resolvedList(fields.value(u"NS.objects"_s));
    const QVariantList names = keys.toList(), objects = values.toList();
    if (!keys.isValid() || !values.isValid() || names.size() != objects.size())
        return {};
    QVariantMap map;
    for (qsizetype i = 0; i < names.size(); ++i) {
        if (names[i].typeId() != QMetaType::QString)
            return {};
        map.insert(names[i].toString(), objects[i]);
    }
    return map;
}

QVariant decodeHash(ArchiveReader &reader, const QVariantMap &fields)
{
    const QVariant map = decodeMap(reader, fields);
    return map.isValid() ? QVariant(map.toHash()) : map;
}

Fields encodeNull(ArchiveWriter &, const QVariant &) { return QVariantMap(); }

QVariant decodeNull(ArchiveReader &, const QVariantMap &) { return QVariant::fromValue(nullptr); }

// A double holds the milliseconds of some 285,000 years.
bool isExact(double milliseconds) { return std::abs(milliseconds) < 0x1p53; }

Fields encodeDateTime(ArchiveWriter &, const QVariant &value)
{
    const QDateTime date = value.toDateTime();
    const auto milliseconds = double(date.toMSecsSinceEpoch() - Epoch * 1000);
    if (!date.isValid() || !isExact(milliseconds))
        return {};
    return QVariantMap{{u"NS.time"_s, milliseconds / 1000}};
}

QVariant decodeDateTime(ArchiveReader &, const QVariantMap &fields)
{
    const std::optional<double> time = realIn(fields.value(u"NS.time"_s));
    const double milliseconds = std::round(time.value_or(NAN) * 1000);
    if (!isExact(milliseconds))
        return {};
    return QDateTime::fromMSecsSinceEpoch(qint64(milliseconds) + Epoch * 1000, QTimeZone::utc()).toUTC();
}

Fields encodeDate(ArchiveWriter &, const QVariant &value)
{
    const QDate date = value.toDate();
    return date.isValid() ? QVariantMap{{u"julianDay"_s, date.toJulianDay()}} : QVariantMap();
}

QVariant decodeDate(ArchiveReader &, const QVariantMap &fields)
{
    const std::optional<qint64> day = integerIn(fields.value(u"julianDay"_s));
    const QDate date = day ? QDate::fromJulianDay(*day) : QDate();
    return date.isValid() || !fields.contains(u"julianDay"_s) ? QVariant(date) : QVariant();
}

Fields encodeTime(ArchiveWriter &, const QVariant &value)
{
    const QTime time = value.toTime();
    return time.isValid() ? QVariantMap{{u"milliseconds"_s, qlonglong(time.msecsSinceStartOfDay())}} : QVariantMap();
}

QVariant decodeTime(ArchiveReader &, const QVariantMap &fields)
{
    constexpr int Day = 24 * 60 * 60 * 1000;
    const std::optional<qint64> time = integerIn(fields.value(u"milliseconds"_s));
    if (!time)
        return fields.contains(u"milliseconds"_s) ? QVariant() : QVariant(QTime());
    return *time >= 0 && *time < Day ? QVariant(QTime::fromMSecsSinceStartOfDay(int(*time))) : QVariant();
}

Fields encodeUrl(ArchiveWriter &writer, const QVariant &value)
{
    const QString text = QString::fromLatin1(value.toUrl().toEncoded());
    return QVariantMap{{u"NS.base"_s, reference(writer, {})},
                       {u"NS.relative"_s, reference(writer, text.isNull() ? u""_s : text)}};
}

QVariant decodeUrl(ArchiveReader &reader, const QVariantMap &fields)
{
    const QVariant text = reader.resolved(fields.value(u"NS.relative"_s));
    if (text.typeId() != QMetaType::QString)
        return {};
    const QUrl url = QUrl::fromEncoded(text.toString().toUtf8());
    const QUrl base = reader.resolved(fields.value(u"NS.base"_s)).toUrl();
    return base.isValid() ? base.resolved(url) : url;
}

Fields encodeUuid(ArchiveWriter &, const QVariant &value)
{
    return QVariantMap{{u"NS.uuidbytes"_s, value.toUuid().toRfc4122()}};
}

QVariant decodeUuid(ArchiveReader &, const QVariantMap &fields)
{
    const QByteArray bytes = fields.value(u"NS.uuidbytes"_s).toByteArray();
    return bytes.size() == 16 ? QVariant(QUuid::fromRfc4122(bytes)) : QVariant();
}

template <char Letter>
QVariant decodePlain(ArchiveReader &reader, const QVariantMap &fields)
{
    constexpr bool isText = Letter == 's';
    const QVariant value = reader.resolved(fields.value(isText ? u"NS.string"_s : u"NS.data"_s));
    return value.typeId() == (isText ? QMetaType::QString : QMetaType::QByteArray) ? value : QVariant();
}

std::vector<ValueClass> allValueClasses()
{
    const auto type = [](int id) { return QMetaType(id); };
    std::vector<ValueClass> classes{
        {type(QMetaType::QVariantList), "NSArray", nullptr, encodeList, decodeList, 1},
        {type(QMetaType::QStringList), "QStringList", "NSArray", encodeList, decodeTexts, 1},
        {type(QMetaType::QVariantMap), "NSDictionary", nullptr, encodeMap, decodeMap, 1},
        {type(QMetaType::QVariantHash), "QVariantHash", "NSDictionary", encodeMap, decodeHash, 1},
        {type(QMetaType::Nullptr), "NSNull", nullptr, encodeNull, decodeNull},
        {type(QMetaType::QDateTime), "NSDate", nullptr, encodeDateTime, decodeDateTime},
        {type(QMetaType::QDate), "QDate", nullptr, encodeDate, decodeDate},
        {type(QMetaType::QTime), "QTime", nullptr, encodeTime, decodeTime},
        {type(QMetaType::QUrl), "NSURL", nullptr, encodeUrl, decodeUrl},
        {type(QMetaType::QUuid), "NSUUID", nullptr, encodeUuid, decodeUuid},
        // What other programs write.
        {{}, "NSMutableArray", nullptr, nullptr, decodeList, 1},
        {{}, "NSSet", nullptr, nullptr, decodeList, 1},
        {{}, "NSMutableSet", nullptr, nullptr, decodeList, 1},
        {{}, "NSMutableDictionary", nullptr, nullptr, decodeMap, 1},
        {{}, "NSString", nullptr, nullptr, decodePlain<'s'>},
        {{}, "NSMutableString", nullptr, nullptr, decodePlain<'s'>},
        {{}, "NSData", nullptr, nullptr, decodePlain<'d'>},
        {{}, "NSMutableData", nullptr, nullptr, decodePlain<'d'>},
    };
    const std::vector<ValueClass> &graphics = graphicsValueClasses();
    classes.insert(classes.end(), graphics.begin(), graphics.end());
    return classes;
}

const std::vector<ValueClass> &valueClasses()
{
    static const std::vector<ValueClass> classes = allValueClasses();
    return classes;
}

template <class Key, class KeyOf>
QHash<Key, const ValueClass *> indexed(KeyOf keyOf)
{
    QHash<Key, const ValueClass *> index;
    for (const ValueClass &valueClass : valueClasses())
        index.insert(keyOf(valueClass), &valueClass);
    return index;
}

} // namespace

std::optional<double> realIn(const QVariant &field)
{
    if (field.typeId() == QMetaType::Double || field.typeId() == QMetaType::ULongLong)
        return field.toDouble();
    const auto integer = integerIn(field);
    return integer ? std::optional(double(*integer)) : std::nullopt;
}

std::optional<qint64> integerIn(const QVariant &field)
{
    return field.typeId() == QMetaType::LongLong ? std::optional(field.toLongLong()) : std::nullopt;
}

const ValueClass *valueClassOf(QMetaType type)
{
    static const auto index = indexed<int>([](const ValueClass &valueClass) { return valueClass.type.id(); });
    return type.isValid() ? index.value(type.id()) : nullptr;
}

const ValueClass *valueClassNamed(const QString &name)
{
    static const auto index =
        indexed<QString>([](const ValueClass &valueClass) { return QString::fromLatin1(valueClass.name); });
    return index.value(name);
}

} // namespace dravelin::detail
