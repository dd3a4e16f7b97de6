// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/selector.h>

#include <QtCore/QByteArray>
#include <QtCore/QMetaMethod>

#include <atomic>

namespace dravelin::detail {

/// The function that an operation comes to on a class, for one kind of argument.
struct MethodMatch
{
    const QMetaObject *metaObject = nullptr; ///< of the target
    CallArgument::Kind kind = CallArgument::None;
    QMetaMethod method; ///< invalid when the class has none
    /// The class's call table with the method's number in it; null for classes made at run time.
    QMetaObject::Data::StaticMetacallFunction metacall = nullptr;
    int index = -1;
    QMetaType parameter; ///< invalid when the type is not known to Qt, such as a pointer to a class only declared
    bool passesDirectly = false; ///< the argument is handed over as it is
    bool takesAnyObject = false;
    bool needsNoCheck = false; ///< any argument of the kind can be handed over
    /// The class of the last object that was found to fit the parameter.
    std::atomic<const QMetaObject *> fittingClass = nullptr;
    MethodMatch *next = nullptr;
};

/// One per operation name and process, with what the name came to on the classes it was called on: a list that only
/// grows.
struct SelectorRecord
{
    explicit SelectorRecord(const QByteArray &text);

    const QByteArray name;
    const QByteArray function;
    const int argumentCount;
    std::atomic<MethodMatch *> matches = nullptr;
};

} // namespace dravelin::detail
