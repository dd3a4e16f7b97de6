// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/exception.h>
#include <dravelin/platform/keyvalue.h>
#include <dravelin/platform/log.h>

#include <QtCore/QMetaProperty>
#include <QtCore/QStringList>

namespace dravelin {

namespace {

QMetaProperty findProperty(const QObject *object, const QByteArray &key)
{
    const QMetaObject *metaObject = object->metaObject();
    return metaObject->property(metaObject->indexOfProperty(key.constData()));
}

bool hasDynamicProperty(const QObject *object, const QByteArray &key)
{
    return object->dynamicPropertyNames().contains(key);
}

[[noreturn]] void raiseUndefinedKey(const QObject *object, const QString &key, const QString &what)
{
    throw Exception(QLatin1String(NSUndefinedKeyException),
                    QStringLiteral("%1 %2 \"%3\"").arg(QLatin1String(object->metaObject()->className()), what, key));
}

bool isAbsent(const QVariant &value) { return !value.isValid() || value.metaType().id() == QMetaType::Nullptr; }

bool isScalar(QMetaType type)
{
    return (type.id() >= QMetaType::Bool && type.id() <= QMetaType::Double) || type.id() == QMetaType::Float
           || (type.id() >= QMetaType::Long && type.id() <= QMetaType::UChar)
           || type.flags().testFlag(QMetaType::IsEnumeration);
}

/// An absent value as a property of the type takes it.
QVariant emptyValue(const QObject *object, const QMetaProperty &property)
{
    const QMetaType type = property.metaType();
    if (isScalar(type)) {
        throw Exception(QLatin1String(NSInvalidArgumentException),
                        QStringLiteral("no value given for the %1 \"%2\" of %3")
                            .arg(QLatin1String(type.name()), QLatin1String(property.name()),
                                 QLatin1String(object->metaObject()->className())));
    }
    return type == QMetaType::fromType<QVariant>() ? QVariant() : QVariant(type);
}

void writeProperty(QObject *object, const QMetaProperty &property, const QVariant &value)
{
    if (!property.isWritable())
        raiseUndefinedKey(object, QString::fromUtf8(property.name()), QStringLiteral("cannot set its property"));
    if (!property.write(object, isAbsent(value) ? emptyValue(object, property) : value)) {
        logWarning(QStringLiteral("%1: a value of type %2 cannot be set as property \"%3\" of type %4")
                       .arg(QLatin1String(object->metaObject()->className()), QLatin1String(value.metaType().name()),
                            QLatin1String(property.name()), QLatin1String(property.metaType().name())));
    }
}

} // namespace

QVariant valueForKey(const QObject *object, const QString &key)
{
    if (!object)
        return {};
    const QByteArray name = key.toUtf8();
    if (const QMetaProperty property = findProperty(object, name); property.isValid())
        return property.read(object);
    if (!hasDynamicProperty(object, name))
        raiseUndefinedKey(object, key, QStringLiteral("has no property"));
    return object->property(name.constData());
}

QVariant valueForKeyPath(const QObject *object, const QString &keyPath)
{
    QVariant value;
    const QStringList keys = keyPath.split(u'.');
    for (qsizetype i = 0; i < keys.size(); ++i) {
        value = valueForKey(object, keys.at(i));
        object = i + 1 < keys.size() ? value.value<QObject *>() : nullptr;
    }
    return value;
}

void setValue(QObject *object, const QVariant &value, const QString &forKey)
{
    if (!object)
        return;
    const QByteArray name = forKey.toUtf8();
    if (const QMetaProperty property = findProperty(object, name); property.isValid())
        writeProperty(object, property, value);
    else if (hasDynamicProperty(object, name))
        object->setProperty(name.constData(), value);
    else
        raiseUndefinedKey(object, forKey, QStringLiteral("has no property"));
}

} // namespace dravelin
