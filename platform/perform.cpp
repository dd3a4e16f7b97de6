// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/log.h>
#include <dravelin/platform/selector.h>

#include "platform/selector_record.h"

#include <QtCore/QMetaObject>
#include <QtCore/QVariant>

#include <memory>

namespace dravelin {

namespace {

using detail::MethodMatch;
using detail::SelectorRecord;

/// The class name in a pointer type such as "const ns::Class*", without name spaces.
QByteArray pointedClass(QByteArray type)
{
    if (!type.endsWith('*'))
        return {};
    type.chop(1);
    return type.mid(type.lastIndexOf(':') + 1).trimmed();
}

bool isOfClass(const QMetaObject *metaObject, const QByteArray &name)
{
    for (; metaObject; metaObject = metaObject->superClass()) {
        const QByteArray own(metaObject->className());
        if (own.mid(own.lastIndexOf(':') + 1) == name)
            return true;
    }
    return false;
}

bool objectFits(const MethodMatch &match, const QObject *object)
{
    if (match.takesAnyObject || !object)
        return true;
    const QMetaObject *metaObject = object->metaObject();
    if (match.fittingClass.load(std::memory_order_relaxed) == metaObject)
        return true;
    const QMetaObject *wanted = match.parameter.metaObject();
    if (wanted ? !metaObject->inherits(wanted)
               : !isOfClass(metaObject, pointedClass(match.method.parameterTypes().constFirst())))
        return false;
    const_cast<MethodMatch &>(match).fittingClass.store(metaObject, std::memory_order_relaxed);
    return true;
}

/// How well a parameter takes the kind of argument: 0 not at all, 3 as it is.
int fit(CallArgument::Kind kind, const QMetaMethod &method)
{
    const QMetaType type = method.parameterMetaType(0);
    if (type == QMetaType::fromType<QVariant>())
        return kind == CallArgument::VariantKind ? 3 : 2;
    const bool isPointer = type.isValid() ? type.flags().testFlag(QMetaType::PointerToQObject)
                                          : !pointedClass(method.parameterTypes().constFirst()).isEmpty();
    switch (kind) {
    case CallArgument::ObjectKind:
        return isPointer ? 3 : 0;
    case CallArgument::IntegerKind:
        return type == QMetaType::fromType<qint64>() ? 3
               : QMetaType::canConvert(QMetaType::fromType<qint64>(), type)
                   ? (type == QMetaType::fromType<int>() ? 3 : 1)
                   : 0;
    case CallArgument::TextKind:
        return type == QMetaType::fromType<QString>()                        ? 3
               : QMetaType::canConvert(QMetaType::fromType<QString>(), type) ? 1
                                                                             : 0;
    case CallArgument::VariantKind:
        return 1;
    case CallArgument::None:
        return 0;
    }
    return 0;
}

bool isPassedDirectly(CallArgument::Kind kind, QMetaType type)
{
    switch (kind) {
    case CallArgument::ObjectKind:
        return type != QMetaType::fromType<QVariant>();
    case CallArgument::IntegerKind:
        return type == QMetaType::fromType<qint64>();
    case CallArgument::TextKind:
        return type == QMetaType::fromType<QString>();
    case CallArgument::VariantKind:
        return type == QMetaType::fromType<QVariant>();
    case CallArgument::None:
        return false;
    }
    return false;
}

QMetaMethod findMethod(const QMetaObject *metaObject, const SelectorRecord &record, CallArgument::Kind kind)
{
    QMetaMethod best;
    int bestFit = -1;
    for (int i = metaObject->methodCount() - 1; i >= 0; --i) {
        const QMetaMethod method = metaObject->method(i);
        if (method.parameterCount() != record.argumentCount || method.name() != record.function)
            continue;
        const int methodFit = record.argumentCount == 1 && kind != CallArgument::None ? fit(kind, method) : 3;
        if (methodFit > bestFit) {
            best = method;
            bestFit = methodFit;
        }
    }
    return best;
}

void describe(MethodMatch &match, const QMetaObject *metaObject, const SelectorRecord &record, CallArgument::Kind kind)
{
    match.metaObject = metaObject;
    match.kind = kind;
    match.method = findMethod(metaObject, record, kind);
    if (!match.method.isValid())
        return;
    const QMetaObject *owner = match.method.enclosingMetaObject();
    match.metacall = owner->d.static_metacall;
    match.index = match.metacall ? match.method.methodIndex() - owner->methodOffset() : match.method.methodIndex();
    if (record.argumentCount == 1)
        match.parameter = match.method.parameterMetaType(0);
    match.passesDirectly = isPassedDirectly(kind, match.parameter);
    match.takesAnyObject = match.parameter == QMetaType::fromType<QObject *>();
    match.needsNoCheck = match.metacall && record.argumentCount <= 1
                         && (record.argumentCount == 0
                             || (match.passesDirectly && (kind != CallArgument::ObjectKind || match.takesAnyObject)));
}

/// Classes that moc made live as long as the program; those made at run time may go and leave their address to another.
bool isPermanent(const QMetaObject *metaObject)
{
    for (; metaObject; metaObject = metaObject->superClass()) {
        if (!metaObject->d.static_metacall)
            return false;
    }
    return true;
}

MethodMatch *remember(SelectorRecord &record, std::unique_ptr<MethodMatch> match)
{
    match->next = record.matches.load(std::memory_order_relaxed);
    while (!record.matches.compare_exchange_weak(match->next, match.get(), std::memory_order_release)) {
    }
    return match.release();
}

/// The match most used of all is the first, and most calls need no look at their argument.
bool invokeFirst(QObject *target, const SelectorRecord &record, const QMetaObject *metaObject,
                 const CallArgument &argument)
{
    const MethodMatch *match = record.matches.load(std::memory_order_acquire);
    if (!match || match->metaObject != metaObject || match->kind != argument.kind() || !match->needsNoCheck)
        return false;
    void *arguments[] = {nullptr, const_cast<void *>(argument.data())};
    match->metacall(target, QMetaObject::InvokeMetaMethod, match->index, arguments);
    return true;
}

const MethodMatch *remembered(const SelectorRecord &record, const QMetaObject *metaObject, CallArgument::Kind kind)
{
    for (auto *match = record.matches.load(std::memory_order_acquire); match; match = match->next) {
        if (match->metaObject == metaObject && match->kind == kind)
            return match;
    }
    return nullptr;
}

void invoke(QObject *target, const MethodMatch &match, void **arguments)
{
    if (match.metacall)
        match.metacall(target, QMetaObject::InvokeMetaMethod, match.index, arguments);
    else
        QMetaObject::metacall(target, QMetaObject::InvokeMetaMethod, match.index, arguments);
}

QVariant toVariant(const CallArgument &argument)
{
    switch (argument.kind()) {
    case CallArgument::ObjectKind:
        return QVariant::fromValue(argument.object());
    case CallArgument::IntegerKind:
        return QVariant(argument.integer());
    case CallArgument::TextKind:
        return QVariant(argument.text());
    case CallArgument::VariantKind:
        return argument.variant();
    case CallArgument::None:
        break;
    }
    return {};
}

bool invokeConverted(QObject *target, const MethodMatch &match, const CallArgument &argument)
{
    QVariant value = toVariant(argument);
    void *data = &value;
    if (match.parameter != QMetaType::fromType<QVariant>()) {
        if (!value.isValid())
            value = QVariant(match.parameter);
        else if (!value.convert(match.parameter))
            return false;
        data = value.data();
    }
    void *arguments[] = {nullptr, data};
    invoke(target, match, arguments);
    return true;
}

bool invokeWith(QObject *target, const MethodMatch &match, const CallArgument &argument)
{
    if (!match.passesDirectly)
        return invokeConverted(target, match, argument);
    if (argument.kind() == CallArgument::ObjectKind && !objectFits(match, argument.object()))
        return false;
    void *arguments[] = {nullptr, const_cast<void *>(argument.data())};
    invoke(target, match, arguments);
    return true;
}

bool invokeMatch(QObject *target, const SelectorRecord &record, const MethodMatch &match, const CallArgument &argument)
{
    if (!match.method.isValid())
        return false;
    if (record.argumentCount == 1)
        return invokeWith(target, match, argument);
    if (record.argumentCount > 1)
        return false;
    void *arguments[] = {nullptr};
    invoke(target, match, arguments);
    return true;
}

/// \param temporary holds the match of a class that may not be remembered
const MethodMatch *lookUp(SelectorRecord &record, const QMetaObject *metaObject, CallArgument::Kind kind,
                          std::unique_ptr<MethodMatch> &temporary)
{
    if (const MethodMatch *match = remembered(record, metaObject, kind))
        return match;
    temporary = std::make_unique<MethodMatch>();
    describe(*temporary, metaObject, record, kind);
    return isPermanent(metaObject) ? remember(record, std::move(temporary)) : temporary.get();
}

bool failed(const QObject *target, Selector operation)
{
    const auto className = QLatin1String(target->metaObject()->className());
    logWarning(respondsTo(target, operation)
                   ? QStringLiteral("%1 cannot take the argument given to %2").arg(className, operation.name())
                   : QStringLiteral("%1 has no operation %2").arg(className, operation.name()));
    return false;
}

} // namespace

bool respondsTo(const QObject *target, Selector operation)
{
    return target && !operation.isEmpty()
           && findMethod(target->metaObject(), *operation.record(), CallArgument::None).isValid();
}

bool perform(QObject *target, Selector operation, CallArgument argument)
{
    if (!target)
        return false;
    if (operation.isEmpty())
        return failed(target, operation);
    SelectorRecord &record = *operation.record();
    const QMetaObject *metaObject = target->metaObject();
    if (invokeFirst(target, record, metaObject, argument))
        return true;
    std::unique_ptr<MethodMatch> temporary;
    const MethodMatch *match = lookUp(record, metaObject, argument.kind(), temporary);
    return invokeMatch(target, record, *match, argument) || failed(target, operation);
}

Method methodForSelector(const QObject *target, Selector operation, CallArgument::Kind kind)
{
    Method method;
    if (!respondsTo(target, operation))
        return method;
    std::unique_ptr<MethodMatch> temporary;
    const MethodMatch *match = lookUp(*operation.record(), target->metaObject(), kind, temporary);
    method.m_operation = operation;
    if (match->needsNoCheck && !temporary) {
        method.m_metacall = match->metacall;
        method.m_index = match->index;
        method.m_kind = kind;
    }
    return method;
}

} // namespace dravelin
