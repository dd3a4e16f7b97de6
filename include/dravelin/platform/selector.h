// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QHashFunctions>
#include <QtCore/QObject>
#include <QtCore/QString>

namespace dravelin {

namespace detail {
struct MethodMatch;
struct SelectorRecord;
} // namespace detail

/// The name of an operation, such as "documentSavedAction:". Each colon stands for an argument; the text before the
/// first one is the name of the C++ function. Cheap to copy and to compare; each name is kept once for the whole
/// process.
///
/// An operation is found at run time among the slots, signals and Q_INVOKABLE functions of an object's class:
///
///     dravelin::perform(ruler, "marginChanged:", proxy);   // ruler->marginChanged(proxy)
class DRAVELIN_EXPORT Selector
{
public:
    /// Names no operation.
    Selector() noexcept = default;
    Selector(const char *name);    // NOLINT: implicit, so that operations can be written as plain texts
    Selector(const QString &name); // NOLINT

    [[nodiscard]] QString name() const;
    /// The number of colons.
    [[nodiscard]] int argumentCount() const noexcept;
    [[nodiscard]] bool isEmpty() const noexcept { return !m_record; }

    friend bool operator==(const Selector &, const Selector &) noexcept = default;
    friend size_t qHash(const Selector &selector, size_t seed = 0) noexcept { return ::qHash(selector.m_record, seed); }

    /// \internal
    [[nodiscard]] detail::SelectorRecord *record() const noexcept { return m_record; }

private:
    detail::SelectorRecord *m_record = nullptr;
};

/// The one argument of a call by name: an object, an integer, a text or any value. Refers to what it was made from.
class DRAVELIN_EXPORT CallArgument
{
public:
    enum Kind { None, ObjectKind, IntegerKind, TextKind, VariantKind };

    CallArgument() noexcept : m_kind(None) {}
    CallArgument(QObject *object) noexcept : m_kind(ObjectKind), m_object(object) {}         // NOLINT
    CallArgument(qint64 integer) noexcept : m_kind(IntegerKind), m_integer(integer) {}       // NOLINT
    CallArgument(int integer) noexcept : CallArgument(qint64(integer)) {}                    // NOLINT
    CallArgument(const QString &text) noexcept : m_kind(TextKind), m_text(&text) {}          // NOLINT
    CallArgument(const QVariant &value) noexcept : m_kind(VariantKind), m_variant(&value) {} // NOLINT

    [[nodiscard]] Kind kind() const noexcept { return m_kind; }
    /// What the kind says; the others must not be asked for.
    [[nodiscard]] QObject *object() const noexcept { return m_object; }
    [[nodiscard]] qint64 integer() const noexcept { return m_integer; }
    [[nodiscard]] const QString &text() const noexcept { return *m_text; }
    [[nodiscard]] const QVariant &variant() const noexcept { return *m_variant; }
    /// Where the object's address, the integer, the text or the value lies.
    [[nodiscard]] const void *data() const noexcept
    {
        return m_kind == TextKind ? m_text : m_kind == VariantKind ? static_cast<const void *>(m_variant) : &m_object;
    }

private:
    Kind m_kind;
    union {
        QObject *m_object = nullptr;
        qint64 m_integer;
        const QString *m_text;
        const QVariant *m_variant;
    };
};

/// Whether the class of `target` has a function of the operation's name and number of arguments. False for no target
/// and for an empty selector.
[[nodiscard]] DRAVELIN_EXPORT bool respondsTo(const QObject *target, Selector operation);

/// Calls the operation, on the calling thread; its result is dropped. Objects are passed to parameters of their own
/// class or a base of it, values are converted where Qt knows how. Of several functions that match, the one whose
/// parameter fits the argument best is called, those of derived classes first. An operation without arguments ignores
/// the one given.
/// \return false when there is no target, or nothing that takes the argument: the log then names class and operation
/// \cost a few nanoseconds after the first call of an operation on a class
DRAVELIN_EXPORT bool perform(QObject *target, Selector operation, CallArgument argument = {});

/// The function that an operation comes to on a class, looked up ahead: for calling the same thing very often.
///
///     const auto step = dravelin::methodForSelector(target, "step:");
///     for (QObject *object : objects)
///         step(target, object);
class DRAVELIN_EXPORT Method
{
public:
    /// Calls nothing.
    Method() noexcept = default;

    [[nodiscard]] bool isValid() const noexcept { return !m_operation.isEmpty(); }

    /// As perform(). `target` is of the class that the method was looked up for.
    bool operator()(QObject *target, CallArgument argument = {}) const
    {
        if (!m_metacall || m_kind != argument.kind())
            return perform(target, m_operation, argument);
        void *arguments[] = {nullptr, const_cast<void *>(argument.data())};
        m_metacall(target, QMetaObject::InvokeMetaMethod, m_index, arguments);
        return true;
    }

private:
    friend DRAVELIN_EXPORT Method methodForSelector(const QObject *target, Selector operation, CallArgument::Kind kind);

    QMetaObject::Data::StaticMetacallFunction m_metacall =
        nullptr; ///< null when each call needs a look at its argument
    int m_index = -1;
    CallArgument::Kind m_kind = CallArgument::None;
    Selector m_operation;
};

/// Looks an operation up on the class of `target` for arguments of one kind.
/// \return an invalid method when the class does not have the operation
/// \operation{methodForSelector:}
[[nodiscard]] DRAVELIN_EXPORT Method methodForSelector(const QObject *target, Selector operation,
                                                       CallArgument::Kind kind = CallArgument::ObjectKind);

} // namespace dravelin
