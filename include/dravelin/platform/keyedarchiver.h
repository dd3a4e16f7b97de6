// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/coding.h>
#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>

namespace dravelin {

/// The key of an archive's one object where there is but one.
inline constexpr char NSKeyedArchiveRootObjectKey[] = "root";

/// Writes values and objects, with all that they refer to, into an archive: an XML property list that keeps who refers
/// to whom. An object that is met several times is written once; cycles are no trouble.
///
///     const QByteArray data = dravelin::KeyedArchiver::archivedDataWithRootObject(shape);
///     auto copy = dravelin::KeyedUnarchiver::unarchiveObjectWithData<Shape>(data);
///
///     dravelin::KeyedArchiver archiver;               // or several things side by side
///     archiver.encodeObject(shapes, "shapes");
///     archiver.encodeDouble(zoom, "zoom");
///     file.write(archiver.encodedData());
///
/// | Archived                                            | Comes back as                                          |
/// |-----------------------------------------------------|--------------------------------------------------------|
/// | invalid QVariant, absent text or bytes, null object | invalid                                                |
/// | bool, QString, QByteArray, double                   | the same                                               |
/// | float                                               | double                                                 |
/// | integers of every width, enumerators                | qlonglong, or qulonglong beyond its range              |
/// | QDateTime                                           | QDateTime in UTC, to the millisecond                   |
/// | QDate, QTime, QUrl, QUuid                           | the same                                               |
/// | QPoint, QSize, QRect, and with F                    | the same                                               |
/// | Range, Color (no patterns)                          | the same                                               |
/// | QColor                                              | QColor, in RGB                                         |
/// | QVariant::fromValue(nullptr)                        | the same                                               |
/// | QVariantList, QStringList, QVariantMap, QVariantHash| the same                                               |
/// | `std::shared_ptr` to an object of a registered class| CodingPointer to an object of that class               |
///
/// Anything else, and lists and maps in each other more than 256 deep, cannot be archived: that is a line in the log and
/// in error(), and an invalid value stands in its place. Chains and trees of objects may be of any depth.
///
/// Lists and maps that share their data (Qt's implicit sharing) are written once and share it again when read, so an
/// archive is never larger than what is in memory. What is archived is kept until the archiver goes. Use an archiver from
/// one thread.
class DRAVELIN_EXPORT KeyedArchiver
{
public:
    KeyedArchiver();
    ~KeyedArchiver();
    Q_DISABLE_COPY_MOVE(KeyedArchiver)

    /// The archive of one value or object under the key "root".
    /// \return absent when the value itself cannot be archived; what cannot be inside it is missing there, and the first
    /// such cause is in `error`
    /// \operation{archivedDataWithRootObject:}
    [[nodiscard]] static QByteArray archivedDataWithRootObject(const QVariant &value, QString *error = nullptr);
    template <CodingClass T>
    [[nodiscard]] static QByteArray archivedDataWithRootObject(const std::shared_ptr<T> &object,
                                                               QString *error = nullptr)
    {
        return archivedDataWithRootObject(QVariant::fromValue(CodingPointer(object)), error);
    }

    /// \name Fields
    /// Of the object whose encodeWithCoder() runs, otherwise of the archive itself. Any text is a key; keys that begin
    /// with "$" do not clash with the archive's own. A key that is used again in the same object replaces the value,
    /// which is a line in the log.
    /// @{

    /// Any value of the table above.
    /// \cost linear in what has not been archived yet
    /// \operation{encodeObject:forKey:}
    void encodeObject(const QVariant &value, const QString &forKey);
    template <CodingClass T>
    void encodeObject(const std::shared_ptr<T> &object, const QString &forKey)
    {
        encodeObject(QVariant::fromValue(CodingPointer(object)), forKey);
    }

    /// A list, vector or other container of `std::shared_ptr` to objects, as a list.
    template <class Objects>
    void encodeObjects(const Objects &objects, const QString &forKey)
    {
        QVariantList list;
        for (const auto &object : objects)
            list.append(QVariant::fromValue(CodingPointer(object)));
        encodeObject(list, forKey);
    }

    /// encodeObject() under the key "root".
    /// \operation{encodeRootObject:}
    void encodeRootObject(const QVariant &value) { encodeObject(value, QLatin1String(NSKeyedArchiveRootObjectKey)); }
    template <CodingClass T>
    void encodeRootObject(const std::shared_ptr<T> &object)
    {
        encodeObject(object, QLatin1String(NSKeyedArchiveRootObjectKey));
    }

    /// \operation{encodeBool:forKey:}
    void encodeBool(bool value, const QString &forKey);
    /// \operation{encodeInt32:forKey:}
    void encodeInt32(qint32 value, const QString &forKey) { encodeInteger(value, forKey); }
    /// \operation{encodeInt64:forKey:}
    void encodeInt64(qint64 value, const QString &forKey) { encodeInteger(value, forKey); }
    /// \operation{encodeInteger:forKey:}
    void encodeInteger(qint64 value, const QString &forKey);
    /// \operation{encodeFloat:forKey:}
    void encodeFloat(float value, const QString &forKey) { encodeDouble(double(value), forKey); }
    /// Infinities and NaN too.
    /// \operation{encodeDouble:forKey:}
    void encodeDouble(double value, const QString &forKey);
    /// Bytes in the object's own record, written again wherever they occur. Absent bytes become empty ones.
    /// \operation{encodeBytes:forKey:}
    void encodeBytes(const QByteArray &bytes, const QString &forKey);
    /// @}

    /// Ends the archive: whatever is encoded after that is not in it, and a line in the log.
    /// \operation{finishEncoding}
    void finishEncoding();

    /// Ends the archive. \return it, in UTF-8
    /// \operation{encodedData}
    [[nodiscard]] QByteArray encodedData();

    /// 100, an XML property list.
    /// \operation{outputFormat}
    [[nodiscard]] static constexpr int outputFormat() noexcept { return 100; }

    /// Why the first value that could not be archived was not; absent when all could.
    [[nodiscard]] QString error() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace dravelin
