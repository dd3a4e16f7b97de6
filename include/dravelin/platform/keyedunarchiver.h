// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/coding.h>
#include <dravelin/platform/export.h>
#include <dravelin/platform/keyedarchiver.h>

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace dravelin {

/// What is asked for as T: a `std::shared_ptr<T>` when T is a class of archived objects, otherwise a T.
template <class T>
using Decoded = std::conditional_t<CodingClass<T>, std::shared_ptr<T>, T>;

/// Reads what a KeyedArchiver wrote, and XML archives of other programs.
///
///     dravelin::KeyedUnarchiver unarchiver(file.readAll());
///     if (!unarchiver.isValid())
///         return warn(unarchiver.error());
///     shapes = unarchiver.decodeObjectsForKey<Shape>("shapes");
///     zoom = unarchiver.decodeDoubleForKey("zoom");
///
/// Each object of the archive is made once, however often it is referred to, and held by the unarchiver until that goes,
/// so objects may refer to each other weakly. Objects are made of registered classes only, so an archive from anywhere
/// may be read. What is damaged is absent and a line in the log, at most ten for one archive: references to nothing,
/// unknown classes, fields of the wrong kind, lists that hold themselves, lists and maps in each other more than 256
/// deep. A key that is not there is just absent.
///
/// Lists that occur many times in an archive share their data: a short archive may hold lists that would be endless if
/// written out. Reading and archiving them again is quick; comparing or printing them is as long as they are.
///
/// \cost linear in the length of the archive. Use an unarchiver from one thread.
class DRAVELIN_EXPORT KeyedUnarchiver
{
public:
    explicit KeyedUnarchiver(const QByteArray &data);
    ~KeyedUnarchiver();
    Q_DISABLE_COPY_MOVE(KeyedUnarchiver)

    /// The object under the key "root"; absent when `data` is no archive, which is a line in the log.
    /// \operation{unarchiveObjectWithData:}
    [[nodiscard]] static QVariant unarchiveObjectWithData(const QByteArray &data, QString *error = nullptr);
    /// The same in the form of decodeObjectForKey<T>().
    template <class T>
    [[nodiscard]] static Decoded<T> unarchiveObjectWithData(const QByteArray &data, QString *error = nullptr)
    {
        return typed<T>(unarchiveObjectWithData(data, error));
    }

    /// Whether this is an archive; what it holds may be damaged all the same. Of no archive every key is absent.
    [[nodiscard]] bool isValid() const;

    /// What was damaged first, or why this is no archive; absent when nothing was.
    [[nodiscard]] QString error() const;

    /// \name Fields
    /// Of the object whose initWithCoder() runs, otherwise of the archive itself.
    /// @{

    /// Whether there is a field under this key, be it an absent value.
    /// \operation{containsValueForKey:}
    [[nodiscard]] bool containsValueForKey(const QString &key) const;

    /// \return as KeyedArchiver's table says
    /// \operation{decodeObjectForKey:}
    [[nodiscard]] QVariant decodeObjectForKey(const QString &key);

    /// The same in its own type: null for an object of another class; other values are converted as QVariant::value()
    /// does.
    template <class T>
    [[nodiscard]] Decoded<T> decodeObjectForKey(const QString &key)
    {
        return typed<T>(decodeObjectForKey(key));
    }

    /// The objects of a list, without those that are absent or of another class.
    template <CodingClass T>
    [[nodiscard]] QList<std::shared_ptr<T>> decodeObjectsForKey(const QString &key)
    {
        QList<std::shared_ptr<T>> objects;
        const QVariantList list = decodeObjectForKey<QVariantList>(key);
        for (const QVariant &item : list) {
            if (auto object = typed<T>(item))
                objects.append(std::move(object));
        }
        return objects;
    }

    /// decodeObjectForKey() of the key "root".
    [[nodiscard]] QVariant decodeRootObject() { return decodeObjectForKey(QLatin1String(NSKeyedArchiveRootObjectKey)); }

    /// False without one. A number other than 0 is true.
    /// \operation{decodeBoolForKey:}
    [[nodiscard]] bool decodeBoolForKey(const QString &key);
    /// 0 without one. A number beyond 32 bits is a line in the log and 0.
    /// \operation{decodeInt32ForKey:}
    [[nodiscard]] qint32 decodeInt32ForKey(const QString &key);
    /// As decodeIntegerForKey().
    /// \operation{decodeInt64ForKey:}
    [[nodiscard]] qint64 decodeInt64ForKey(const QString &key) { return decodeIntegerForKey(key); }
    /// 0 without one. A real number loses its fraction; a number beyond 64 bits is a line in the log and 0.
    /// \operation{decodeIntegerForKey:}
    [[nodiscard]] qint64 decodeIntegerForKey(const QString &key);
    /// 0 without one; rounded to nearest, infinite when too large for a float.
    /// \operation{decodeFloatForKey:}
    [[nodiscard]] float decodeFloatForKey(const QString &key) { return float(decodeDoubleForKey(key)); }
    /// 0 without one.
    /// \operation{decodeDoubleForKey:}
    [[nodiscard]] double decodeDoubleForKey(const QString &key);
    /// Absent bytes without any.
    /// \operation{decodeBytesForKey:}
    [[nodiscard]] QByteArray decodeBytesForKey(const QString &key);
    /// @}

    /// Ends reading: every key is absent from then on. Objects that came out live on.
    /// \operation{finishDecoding}
    void finishDecoding();

private:
    class Private;

    template <class T>
    static Decoded<T> typed(const QVariant &value)
    {
        if constexpr (CodingClass<T>) {
            const auto object = value.value<CodingPointer>();
            auto result = std::dynamic_pointer_cast<T>(object);
            if (value.isValid() && !result)
                reportOtherClass(value, typeid(T));
            return result;
        } else {
            return value.value<T>();
        }
    }
    static void reportOtherClass(const QVariant &value, const std::type_info &expected);

    std::unique_ptr<Private> d;
};

} // namespace dravelin
