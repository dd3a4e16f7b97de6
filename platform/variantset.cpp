// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/variantset.h"

#include "platform/numbertypes.h"

#include <QtCore/QDateTime>
#include <QtCore/QUrl>
#include <QtCore/QUuid>

#include <algorithm>
#include <cmath>
#include <optional>

namespace dravelin::detail {

namespace {

enum class Kind { Number, QObjectPointer, List, Map, Other };

Kind kindOf(QMetaType type)
{
    if (isNumberType(type))
        return Kind::Number;
    if (type.id() == QMetaType::QVariantList)
        return Kind::List;
    if (type.id() == QMetaType::QVariantMap)
        return Kind::Map;
    return type.flags().testFlag(QMetaType::PointerToQObject) ? Kind::QObjectPointer : Kind::Other;
}

template <class Value>
const Value &as(const QVariant &object)
{
    return *static_cast<const Value *>(object.constData());
}

/// Holds every number exactly.
long double numberOf(const QVariant &object)
{
    const QMetaType type = object.metaType();
    if (type.id() == QMetaType::Double || type.id() == QMetaType::Float)
        return object.toDouble();
    if (type.id() == QMetaType::ULongLong || type.id() == QMetaType::ULong)
        return object.toULongLong();
    return object.toLongLong();
}

size_t keyOf(const QVariant &object);

size_t keyOfNumber(const QVariant &object)
{
    const auto number = double(numberOf(object));
    return std::isnan(number) ? 0 : qHash(number);
}

size_t keyOfList(const QVariantList &list)
{
    size_t key = qHash(list.size());
    for (const QVariant &object : list)
        key = qHash(keyOf(object), key);
    return key;
}

size_t keyOfMap(const QVariantMap &map)
{
    size_t key = qHash(map.size());
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        key = qHash(keyOf(entry.value()), qHash(entry.key(), key));
    return key;
}

/// Of a value that is equal to others of its type only; empty when the type has no hash.
std::optional<size_t> keyWithinType(const QVariant &object)
{
    switch (object.typeId()) {
    case QMetaType::QString:
        return qHash(as<QString>(object));
    case QMetaType::QByteArray:
        return qHash(as<QByteArray>(object));
    case QMetaType::QStringList:
        return qHash(as<QStringList>(object));
    case QMetaType::QDate:
        return qHash(as<QDate>(object));
    case QMetaType::QTime:
        return qHash(as<QTime>(object));
    case QMetaType::QDateTime:
        return qHash(as<QDateTime>(object));
    case QMetaType::QUrl:
        return qHash(as<QUrl>(object));
    case QMetaType::QUuid:
        return qHash(as<QUuid>(object));
    default:
        if (object.metaType().flags().testFlag(QMetaType::IsPointer))
            return qHash(as<const void *>(object));
        return std::nullopt;
    }
}

/// Equal objects have equal keys.
size_t keyOf(const QVariant &object)
{
    switch (kindOf(object.metaType())) {
    case Kind::Number:
        return keyOfNumber(object);
    case Kind::QObjectPointer:
        return qHash(as<QObject *>(object));
    case Kind::List:
        return keyOfList(as<QVariantList>(object));
    case Kind::Map:
        return keyOfMap(as<QVariantMap>(object));
    case Kind::Other:
        break;
    }
    return keyWithinType(object).value_or(qHash(object.typeId()));
}

bool isEqual(const QVariant &a, const QVariant &b);

bool areEqualNumbers(const QVariant &a, const QVariant &b)
{
    const long double x = numberOf(a), y = numberOf(b);
    return x == y || (std::isnan(x) && std::isnan(y));
}

bool areEqualLists(const QVariantList &a, const QVariantList &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isEqual);
}

bool areEqualMaps(const QVariantMap &a, const QVariantMap &b)
{
    const auto x = a.asKeyValueRange(), y = b.asKeyValueRange();
    return std::equal(x.begin(), x.end(), y.begin(), y.end(), [](const auto &one, const auto &other) {
        return one.first == other.first && isEqual(one.second, other.second);
    });
}

bool isEqual(const QVariant &a, const QVariant &b)
{
    const Kind kind = kindOf(a.metaType());
    if (kind != kindOf(b.metaType()))
        return false;
    switch (kind) {
    case Kind::Number:
        return areEqualNumbers(a, b);
    case Kind::QObjectPointer:
        return as<QObject *>(a) == as<QObject *>(b);
    case Kind::List:
        return areEqualLists(as<QVariantList>(a), as<QVariantList>(b));
    case Kind::Map:
        return areEqualMaps(as<QVariantMap>(a), as<QVariantMap>(b));
    case Kind::Other:
        break;
    }
    return a.metaType() == b.metaType() && a == b;
}

/// Of which there may be many, without a hash.
bool isOnlyOrdered(const QVariant &object)
{
    return kindOf(object.metaType()) == Kind::Other && object.metaType().isOrdered() && !keyWithinType(object);
}

bool isLess(const QVariant &a, const QVariant &b)
{
    return a.metaType().compare(a.constData(), b.constData()) == QPartialOrdering::Less;
}

} // namespace

VariantSet::VariantSet(const QVariantList &objects)
{
    for (const QVariant &object : objects) {
        if (isOnlyOrdered(object))
            m_ordered[object.typeId()].append(object);
        else
            m_buckets[keyOf(object)].append(object);
    }
    for (QVariantList &ordered : m_ordered)
        std::sort(ordered.begin(), ordered.end(), isLess);
}

bool VariantSet::contains(const QVariant &object) const
{
    const auto equals = [&object](const QVariant &other) { return isEqual(object, other); };
    if (isOnlyOrdered(object)) {
        const auto ordered = m_ordered.constFind(object.typeId());
        if (ordered == m_ordered.cend())
            return false;
        const auto [first, last] = std::equal_range(ordered->cbegin(), ordered->cend(), object, isLess);
        return std::any_of(first, last, equals);
    }
    const auto bucket = m_buckets.constFind(keyOf(object));
    return bucket != m_buckets.cend() && std::any_of(bucket->cbegin(), bucket->cend(), equals);
}

} // namespace dravelin::detail
