// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <encoding/variantset.h>

#include <platform/numbertypes.h>

#include <algorithm>
#include <cmath>

namespace dravelin::detail {

namespace {

enum class Kind { Number, QObjectPointer, Text, Other };

Kind kindOf(QMetaType type)
{
    if (isNumberType(type))
        return Kind::Number;
    if (type.id() == QMetaType::QString)
        return Kind::Text;
    return type.flags().testFlag(QMetaType::PointerToQObject) ? Kind::QObjectPointer : Kind::Other;
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

QObject *pointerOf(const QVariant &object) { return *static_cast<QObject *const *>(object.constData()); }

/// Equal objects have equal keys.
size_t keyOf(const QVariant &object)
{
    switch (kindOf(object.metaType())) {
    case Kind::Number: {
        const auto number = double(numberOf(object));
        return std::isnan(number) ? 0 : qHash(number);
    }
    case Kind::QObjectPointer:
        return qHash(pointerOf(object));
    case Kind::Text:
        return qHash(*static_cast<const QString *>(object.constData()));
    case Kind::Other:
        break;
    }
    return qHash(object.typeId());
}

bool isEqual(const QVariant &a, const QVariant &b)
{
    const Kind kind = kindOf(a.metaType());
    if (kind != kindOf(b.metaType()))
        return false;
    if (kind == Kind::QObjectPointer)
        return pointerOf(a) == pointerOf(b);
    if (kind != Kind::Number)
        return a.metaType() == b.metaType() && a == b;
    const long double x = numberOf(a), y = numberOf(b);
    return x == y || (std::isnan(x) && std::isnan(y));
}

} // namespace

VariantSet::VariantSet(const QVariantList &objects)
{
    for (const QVariant &object : objects)
        m_buckets[keyOf(object)].append(object);
}

bool VariantSet::contains(const QVariant &object) const
{
    const auto bucket = m_buckets.constFind(keyOf(object));
    return bucket != m_buckets.cend()
           && std::any_of(bucket->cbegin(), bucket->cend(),
                          [&object](const QVariant &other) { return isEqual(object, other); });
}

} // namespace dravelin::detail
