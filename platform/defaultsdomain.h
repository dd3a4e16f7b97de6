// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "durablefile.h"

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QVariant>

#include <optional>

namespace dravelin {

/// The entries of one property-list file, with changes that are pending until write() has merged them into the file.
class DefaultsDomain
{
public:
    /// Empty until refresh().
    explicit DefaultsDomain(const QString &filePath);

    [[nodiscard]] QString filePath() const { return m_file.path(); }

    /// Invalid when there is no such entry.
    [[nodiscard]] QVariant value(const QString &key) const { return m_entries.value(key).value; }
    [[nodiscard]] bool contains(const QString &key) const { return m_entries.contains(key); }
    /// Adds the entries to `all`, in place of those there.
    void mergeInto(QVariantMap *all) const;

    /// \param value as propertylist::canonical() gives it, or invalid to remove the entry
    /// \return false when the entry was so already
    bool set(const QString &key, const QVariant &value);
    [[nodiscard]] bool hasPending() const noexcept { return !m_pending.isEmpty(); }

    /// Takes in what others wrote, without losing pending changes. Failures are logged.
    /// \param changed gets the keys whose entries changed by that
    bool refresh(QStringList *changed);

    /// Merges the pending changes into the file. Failures are logged and leave them pending. A file that is no property
    /// list is set aside first; what it held when it last was one is written again.
    bool write(QStringList *changed);

    /// The last failure's cause, as logged.
    [[nodiscard]] QString failure() const { return m_failure; }

private:
    struct Entry
    {
        QVariant value;
        QByteArray lines; // of the file, kept so that a change serialises nothing but itself
    };
    using Entries = QMap<QString, Entry>;

    [[nodiscard]] static Entry makeEntry(const QString &key, const QVariant &value);
    [[nodiscard]] static std::optional<QVariantMap> parsed(const QByteArray &content, QString *error);
    [[nodiscard]] bool writeLocked(QStringList *changed);
    [[nodiscard]] bool setAside();
    bool failed(const QString &reason);
    void replaceEntries(const QVariantMap &values, QStringList *changed);
    [[nodiscard]] QByteArray content() const;

    DurableFile m_file;
    Entries m_entries;
    QSet<QString> m_pending;
    bool m_damaged = false;
    QString m_failure;
};

} // namespace dravelin
