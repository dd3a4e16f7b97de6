// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/propertylist.h>

#include "propertylist_p.h"

#include <QtCore/QDateTime>
#include <QtCore/QStringList>

namespace dravelin {

namespace propertylist {

namespace {

using namespace Qt::StringLiterals;

QVariant refused(const QString &cause, QString *error)
{
    *error = cause;
    return {};
}

QVariant canonicalInteger(const QVariant &value)
{
    const bool isUnsigned = value.metaType().flags().testFlag(QMetaType::IsUnsignedEnumeration)
                            || value.typeId() == QMetaType::ULongLong || value.typeId() == QMetaType::ULong;
    if (isUnsigned && value.toULongLong() > quint64(std::numeric_limits<qint64>::max()))
        return value.toULongLong();
    return value.toLongLong();
}

QVariant canonicalDate(const QVariant &value, QString *error)
{
    const QDateTime date = value.toDateTime().toUTC();
    return date.isValid() ? QVariant(date) : refused(u"an invalid date"_s, error);
}

QVariant canonicalList(const QVariantList &list, int levels, QString *error)
{
    QVariantList result;
    result.reserve(list.size());
    for (const QVariant &item : list) {
        result.append(canonical(item, levels, error));
        if (!result.constLast().isValid())
            return {};
    }
    return result;
}

QVariant canonicalMap(const QVariantMap &map, int levels, QString *error)
{
    QVariantMap result;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry) {
        QVariant value = canonical(*entry, levels, error);
        if (!value.isValid())
            return {};
        result.insert(result.cend(), entry.key(), std::move(value));
    }
    return result;
}

QVariant canonicalContainer(const QVariant &value, int levels, QString *error)
{
    if (levels == 0)
        return refused(u"lists and maps nested deeper than %1 levels"_s.arg(MaximumLevels), error);
    const bool isMap = value.typeId() == QMetaType::QVariantMap || value.typeId() == QMetaType::QVariantHash;
    return isMap ? canonicalMap(value.toMap(), levels - 1, error) : canonicalList(value.toList(), levels - 1, error);
}

QVariant canonicalOther(const QVariant &value, QString *error)
{
    if (value.metaType().flags().testFlag(QMetaType::IsEnumeration))
        return canonicalInteger(value);
    if (!value.isValid() || value.typeId() == QMetaType::Nullptr)
        return refused(u"a null value"_s, error);
    return refused(u"a value of type "_s + QLatin1String(value.typeName()), error);
}

} // namespace

QVariant canonical(const QVariant &value, int levels, QString *error)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return value.toString().isNull() ? QVariant(u""_s) : value;
    case QMetaType::QByteArray:
        return value.toByteArray().isNull() ? QVariant(QByteArray("")) : value;
    case QMetaType::Bool:
    case QMetaType::Double:
        return value;
    case QMetaType::Float:
        return value.toDouble();
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return canonicalInteger(value);
    case QMetaType::QDateTime:
        return canonicalDate(value, error);
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return canonicalContainer(value, levels, error);
    default:
        return canonicalOther(value, error);
    }
}

} // namespace propertylist

QVariant propertyListValue(const QVariant &value, QString *error)
{
    QString ignored;
    return propertylist::canonical(value, propertylist::MaximumLevels, error ? error : &ignored);
}

QByteArray propertyListData(const QVariant &value, QString *error)
{
    const QVariant storable = propertyListValue(value, error);
    if (!storable.isValid())
        return {};
    QByteArray data = propertylist::Header;
    propertylist::appendValue(data, storable, 0);
    return data.append(propertylist::Footer);
}

} // namespace dravelin
