// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <encoding/variantset.h>

namespace dravelin::detail {

namespace {

bool isNumber(QMetaType type)
{
    switch (type.id()) {
    case QMetaType::Bool:
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
    case QMetaType::Float:
    case QMetaType::Double:
        return true;
    default:
        return type.flags().testFlag(QMetaType::IsEnumeration);
    }
}

// Numbers that compare equal have equal doubles, save for those that wrap round to another sign: they share a bucket.
size_t numberKey(double value) { return value >= 0 && value < 0x1p63 ? qHash(value) : 0; }

/// Equal objects have equal keys.
size_t keyOf(const QVariant &object)
{
    const QMetaType type = object.metaType();
    if (type.id() == QMetaType::QString)
        return qHash(*static_cast<const QString *>(object.constData()));
    if (type.flags().testFlag(QMetaType::IsEnumeration))
        return numberKey(double(object.toLongLong()));
    if (isNumber(type))
        return numberKey(object.toDouble());
    if (type.flags().testFlag(QMetaType::PointerToQObject))
        return qHash(*static_cast<QObject *const *>(object.constData()));
    return qHash(type.id());
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
    return bucket != m_buckets.cend() && bucket->contains(object);
}

} // namespace dravelin::detail
