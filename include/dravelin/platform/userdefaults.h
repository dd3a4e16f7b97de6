// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/object.h>

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <memory>

namespace dravelin {

/// The application's settings store: typed values by key, kept in one XML property list that survives crashes, full
/// disks and other processes writing at the same time.
///
///     auto *defaults = dravelin::UserDefaults::standardUserDefaults();
///     defaults->setObject(12, "pages");
///     defaults->synchronize();                        // on disk when this returns true
///     int pages = defaults->objectForKey("pages").toInt();
///
/// A key is looked up in these domains, in this order:
///   1. arguments: `-key value` pairs of the command line, as text; read only
///   2. application: the file at filePath(); the only one that is written
///   3. global: `GlobalPreferences.plist` in the same configuration directory, shared by all applications; read only
///   4. registration: what registerDefaults() was given; in memory only
///
/// Values are text, truth values, integers (64 bits), reals, dates (milliseconds), bytes, and lists and maps of these
/// (QString, bool, integer types and enumerators, float and double, QDateTime, QByteArray, QVariantList and
/// QStringList, QVariantMap), at most 255 levels deep. They come back equal to what was stored, and at once in the
/// types in which the file gives them: integers of every width and enumerators as 64-bit integers, reals as double,
/// dates in UTC, lists as QVariantList; see propertyListValue(). Any other value is refused: the log names key and
/// cause, and the entry stays as it was. An invalid or null value inside a list or map is such a cause; absent text and
/// bytes inside one come back empty.
///
/// A change is visible at once in this process and reaches the disk with synchronize(); changes that nobody
/// synchronises are written about a second later by the event loop, when the application quits, and when the store is
/// destroyed. Use from one thread.
///
/// Several processes may use one file at once: each writes the keys that it changed and keeps everybody else's. Beside
/// the file lies `<name>.lock`, which stays. A file that is not a property list (empty, cut off, edited wrongly) is
/// used for nothing and renamed to `<name>.damaged-<UTC time>` before the next write; while it cannot be renamed,
/// nothing is written. Permissions of the file are kept, new files and directories are for the user alone, and where
/// the path is a symbolic link, the file behind it is replaced. A missing file counts as one without entries.
class DRAVELIN_EXPORT UserDefaults : public Object
{
    Q_OBJECT
    Q_PROPERTY(QString filePath READ filePath CONSTANT)
    Q_PROPERTY(bool watching READ isWatching WRITE setWatching NOTIFY watchingChanged)

public:
    /// The application's store: `<organisation>/<application>.plist` in the XDG configuration directory, or
    /// `<application>.plist` without an organisation. Set both names in QCoreApplication before the first call.
    [[nodiscard]] static UserDefaults *standardUserDefaults();

    /// Makes `store` the standard one; empty brings the application's own store back. For tests, see
    /// ScopedUserDefaults.
    /// \return what was set before, empty for the application's own store
    static std::shared_ptr<UserDefaults> setStandardUserDefaults(std::shared_ptr<UserDefaults> store);

    /// A store whose application domain is the file `filePath` (created with its directory at the first write) and
    /// which has neither arguments nor a global domain, unless given.
    /// \param arguments as QCoreApplication::arguments() gives them, the program first. A pair is `-key value`, with
    /// one dash; a value may begin with a dash only when it is a number. Of a key's pairs the last one counts.
    explicit UserDefaults(const QString &filePath, const QString &globalFilePath = {},
                          const QStringList &arguments = {});

    /// Writes what is still pending.
    ~UserDefaults() override;

    [[nodiscard]] QString filePath() const;

    /// \return the value, invalid when no domain has one
    /// \operation{objectForKey:}
    [[nodiscard]] QVariant objectForKey(const QString &key) const;

    /// Sets the entry in the application domain. Nothing is pending when it had an equal value of the same type. An
    /// absent value (invalid, or null text or bytes) removes it.
    /// \operation{setObject:forKey:}
    void setObject(const QVariant &value, const QString &forKey);

    /// Removes the entry from the application domain; values of other domains stay visible.
    /// \operation{removeObjectForKey:}
    void removeObjectForKey(const QString &key);

    /// Writes pending changes so that they survive a power failure, merged with what other processes wrote meanwhile,
    /// and takes in their changes. Within a Batch it does nothing and returns true.
    /// \return false when the file could not be written or read; the old file stays, the pending changes stay pending
    /// (the event loop tries again every half minute), and the log names file and cause
    /// \cost a microsecond when nothing is pending and nobody else wrote; otherwise two flushes of the disk. Waits up
    /// to three seconds for another process that is writing.
    /// \operation{synchronize}
    bool synchronize();

    /// All keys of all domains with the values that objectForKey() gives.
    /// \operation{dictionaryRepresentation}
    [[nodiscard]] QVariantMap dictionaryRepresentation() const;

    /// Adds to the registration domain: values for keys that have none elsewhere. Values that setObject() would refuse
    /// are refused here too.
    /// \operation{registerDefaults:}
    void registerDefaults(const QVariantMap &values);

    /// While true, changes that other processes write are taken in as they happen, by the event loop. Off at first.
    [[nodiscard]] bool isWatching() const;
    void setWatching(bool watching);

    /// While one lives, synchronize() waits: all changes are written together when the last one ends.
    ///
    ///     {
    ///         dravelin::UserDefaults::Batch batch(defaults);
    ///         for (const Item &item : items)
    ///             item.save(defaults);                // each synchronises
    ///     }                                           // one write
    ///
    /// The store may be destroyed before its batches.
    class DRAVELIN_EXPORT Batch
    {
    public:
        explicit Batch(UserDefaults *store);
        ~Batch();
        Q_DISABLE_COPY_MOVE(Batch)

    private:
        QPointer<UserDefaults> m_store;
    };

Q_SIGNALS:
    /// The values that objectForKey() gives for `keys` changed, by a call here or, as far as taken in, by another
    /// process. A slot may destroy the store.
    void defaultsChanged(const QStringList &keys);
    void watchingChanged();

    /// Changes could not be written, by synchronize() or by the event loop; they are still pending. What a program with a
    /// window connects to, since the setter of a preference cannot report it.
    /// \param reason file and cause, as logged
    void writeFailed(const QString &reason);

private:
    class Private;
    std::unique_ptr<Private> d;
};

/// Gives a test a standard store of its own, in a temporary directory that goes with it. May be nested.
///
///     TEST(Settings, Zoom) {
///         dravelin::ScopedUserDefaults isolated;
///         ...
class DRAVELIN_EXPORT ScopedUserDefaults
{
public:
    ScopedUserDefaults();
    ~ScopedUserDefaults();
    Q_DISABLE_COPY_MOVE(ScopedUserDefaults)

    [[nodiscard]] UserDefaults *store() const;

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace dravelin
