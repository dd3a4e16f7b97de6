// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/object.h>
#include <dravelin/preferences/data.h>
#include <dravelin/preferences/items.h>

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace dravelin {

/// Owns the application's PreferenceData and its items, and moves all preferences in and out as one text for a file.
/// See PreferenceData for an example.
///
///     file.write(manager.exportPreferences().toLatin1());
///
///     QString message;
///     if (!manager.importPreferences(QString::fromUtf8(file.readAll()), &message))
///         QMessageBox::warning(window, {}, message);
class DRAVELIN_EXPORT PreferenceManager : public Object
{
    Q_OBJECT

public:
    /// Makes itself known to the record, lets it reset to its defaults and then install its items. Whatever this puts
    /// into the store is on disk in one write when the constructor returns.
    /// \param target the record; kept
    /// \param suffix kept without the white space around it, absent when nothing is left of it; it takes no part in the
    /// items' keys
    /// \operation{initWithTarget:suffix:}
    explicit PreferenceManager(std::shared_ptr<PreferenceData> target, const QString &suffix = {});
    ~PreferenceManager() override;

    /// Keeps the item under its property's name, in place of an earlier one. Does not set the item's manager.
    /// \operation{addPreference:}
    void addPreference(const std::shared_ptr<PreferenceItem> &item);

    /// The items by property name.
    /// \operation{preferenceItems}
    [[nodiscard]] QMap<QString, std::shared_ptr<PreferenceItem>> preferenceItems() const { return m_items; }
    /// \operation{target}
    [[nodiscard]] PreferenceData *target() const { return m_target.get(); }
    /// \operation{suffix}
    [[nodiscard]] QString suffix() const { return m_suffix; }

    /// Lets the record reset to its defaults. Each property that this changes is saved as ever; entries are not
    /// removed.
    /// \operation{resetPreferencesToDefaults}
    void resetPreferencesToDefaults();

    /// All stored values as one text, to be written to a file: ASCII without line ends. It can be imported by the same
    /// version of the application (`QCoreApplication::applicationVersion()`).
    ///
    /// The text is the Base64 of lines joined by carriage returns: first the Base64 of the version, then per item the
    /// Base64 of its name, a comma, and the Base64 of its stored text, or "(null)" for an empty one. A stored value
    /// that is not text is exported as empty, with a line in the log.
    /// \operation{exportPreferences}
    [[nodiscard]] QString exportPreferences() const;

    /// Takes over the values of an exported text: stores those of known items that
    /// PreferenceData::shouldImportPreference() accepts, all in one write, then lets the record install its items anew,
    /// so that its properties take the values. Lines that are malformed, unknown or refused are skipped. Items not in
    /// the text keep their values.
    /// \param message receives the empty text, or a message for the user on failure
    /// \return false, with nothing stored, when the text holds no preferences or those of another version
    /// \operation{importPreferences:error:}
    bool importPreferences(const QString &text, QString *message = nullptr);

    /// Splits one line of an export.
    /// \return false, with absent texts, unless the line has exactly one comma
    /// \operation{parsePreferenceLine:key:value:}
    static bool parsePreferenceLine(const QString &line, QString *key, QString *value);

    /// Every item's key, " - " and stored value, with a carriage return after each.
    /// \operation{dumpPreferences}
    [[nodiscard]] QString dumpPreferences() const;

public Q_SLOTS:
    /// Sets the properties among `keys` whose stored value is no longer the one they have. Connect the store's signal
    /// to it to follow what other processes change:
    ///
    ///     auto *store = dravelin::UserDefaults::standardUserDefaults();
    ///     store->setWatching(true);
    ///     connect(store, &dravelin::UserDefaults::defaultsChanged, &manager, &PreferenceManager::restorePreferences);
    void restorePreferences(const QStringList &keys);

Q_SIGNALS:
    /// An import succeeded; the record's properties have their new values.
    void preferencesImported();

private:
    [[nodiscard]] QString linesToImport(const QString &text, QStringList *lines) const;
    void importLine(const QString &line);

    QMap<QString, std::shared_ptr<PreferenceItem>> m_items;
    std::shared_ptr<PreferenceData> m_target;
    QString m_suffix;
};

} // namespace dravelin
