// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QMetaType>
#include <QtCore/QString>

#include <concepts>
#include <functional>
#include <memory>
#include <typeinfo>

namespace dravelin {

class KeyedArchiver;
class KeyedUnarchiver;

/// What a class derives from so that its objects can be archived; a QObject class beside its QObject base.
///
///     class Shape : public dravelin::Coding
///     {
///     public:
///         void encodeWithCoder(dravelin::KeyedArchiver &coder) const override
///         {
///             coder.encodeObject(name, "name");
///             coder.encodeObject(next, "next");
///         }
///         bool initWithCoder(dravelin::KeyedUnarchiver &coder) override
///         {
///             name = coder.decodeObjectForKey<QString>("name");
///             next = coder.decodeObjectForKey<Shape>("next");
///             return true;
///         }
///         QString name;
///         std::shared_ptr<Shape> next;
///     };
///
///     dravelin::registerCodingClass<Shape>("Shape");      // once, for instance in main()
///
/// A class that derives from such a class calls its base's two functions first. Its keys must differ from the base's.
class DRAVELIN_EXPORT Coding
{
public:
    Coding() = default;
    Coding(const Coding &) = default;
    Coding &operator=(const Coding &) = default;
    virtual ~Coding();

    /// Writes the object's fields. Called once per archive, not while another object's fields are being written but
    /// afterwards, before the archiver's operation returns to the code outside all objects.
    /// \operation{encodeWithCoder:}
    virtual void encodeWithCoder(KeyedArchiver &coder) const = 0;

    /// Fills the new, default-constructed object. The objects it decodes have been filled before they are handed over,
    /// but for those that lead back to this one and those at the end of a chain of more than 500 objects: keep them,
    /// but leave looking into them for later.
    /// \return false when the fields make no object: it is then absent, and that is a line in the log
    /// \operation{initWithCoder:}
    virtual bool initWithCoder(KeyedUnarchiver &coder) = 0;
};

/// How an archive's objects are held in a QVariant. Objects in a `std::shared_ptr` to their own, registered class are
/// archived too, and `value<std::shared_ptr<Shape>>()` works on what comes back.
using CodingPointer = std::shared_ptr<Coding>;

/// A class whose objects can be archived.
template <class T>
concept CodingClass = std::derived_from<T, Coding>;

namespace detail {
DRAVELIN_EXPORT void registerCodingClass(const std::type_info &type, const QString &name,
                                         const std::function<CodingPointer()> &create);
} // namespace detail

/// Makes a class known to archivers and unarchivers under a name, which is what archives hold: keep it when the class is
/// renamed. A class that is registered again keeps its first name for writing, and is read under the others too; a name
/// belongs to the class that it was registered for last. From any thread.
template <CodingClass T>
requires std::default_initializable<T>
void registerCodingClass(const QString &name)
{
    detail::registerCodingClass(typeid(T), name, [] { return CodingPointer(std::make_shared<T>()); });
    if (QMetaType::hasRegisteredConverterFunction<std::shared_ptr<T>, CodingPointer>())
        return;
    QMetaType::registerConverter<std::shared_ptr<T>, CodingPointer>(
        [](const std::shared_ptr<T> &object) { return CodingPointer(object); });
    QMetaType::registerConverter<CodingPointer, std::shared_ptr<T>>(
        [](const CodingPointer &object) { return std::dynamic_pointer_cast<T>(object); });
}

} // namespace dravelin
