// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/object.h>

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <memory>

namespace dravelin {

class KVOProxy;
class PreferenceManager;

/// Binds one property of an object to one entry of the standard user-defaults store: made, it restores the property
/// from the entry, or writes the entry when there is none; from then on it saves every announced change of the property
/// before the setter returns. The base class only binds; use the typed classes below, mostly by way of PreferenceData.
///
/// Entries are texts. What does not convert shows in the value: text that is no number restores 0 or false, a colour
/// without an RGB form is stored as four zeros, bytes that are not UTF-8 remove the entry.
class DRAVELIN_EXPORT PreferenceItem : public Object
{
    Q_OBJECT
    Q_MOC_INCLUDE("dravelin/preferences/manager.h")
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QString nameWithSuffix READ nameWithSuffix CONSTANT)
    Q_PROPERTY(dravelin::PreferenceManager *manager READ manager WRITE setManager NOTIFY managerChanged)

public:
    /// \param target the object, held weakly
    /// \param keyPath the name of the property: a simple one, not a path
    /// \operation{initWithTarget:keyPath:}
    PreferenceItem(QObject *target, const QString &keyPath);
    ~PreferenceItem() override;

    /// The property's name.
    /// \operation{name}
    [[nodiscard]] QString name() const { return m_name; }
    /// The key of the store's entry: the name. (A manager's suffix would be added if the item had its manager while it
    /// is being made, which no item has.)
    /// \operation{nameWithSuffix}
    [[nodiscard]] QString nameWithSuffix() const { return m_nameWithSuffix; }

    /// The observation of the property; its `object()` is the target.
    /// \operation{proxy}
    [[nodiscard]] KVOProxy *proxy() const { return m_proxy.get(); }
    /// \operation{setProxy:}
    void setProxy(std::shared_ptr<KVOProxy> proxy);

    /// Null unless setManager() was called; PreferenceManager::addPreference() does not.
    /// \operation{manager}
    [[nodiscard]] PreferenceManager *manager() const;
    /// \operation{setManager:}
    void setManager(PreferenceManager *manager);

    /// Whether the store has a value under name(), not nameWithSuffix().
    /// \operation{preferenceExists}
    [[nodiscard]] bool preferenceExists() const;

    /// The stored value under nameWithSuffix(); invalid when there is none.
    /// \operation{load}
    [[nodiscard]] QVariant load() const;

    /// Stores the value under nameWithSuffix() and writes the store to disk; an absent value removes the entry.
    /// \operation{save:}
    void save(const QVariant &value);

    /// The property's present value.
    /// \operation{getNSNumber}
    [[nodiscard]] QVariant getNSNumber() const;

    /// Sets the property.
    /// \operation{setNSNumber:}
    void setNSNumber(const QVariant &value);

    /// Called after every change of the property. Does nothing here; the typed classes save the new value.
    /// \operation{valueChangedAction}
    Q_INVOKABLE virtual void valueChangedAction();

    /// The entry's key, " - " and the stored value, or nothing after the dash when there is none.
    /// \operation{dumpPreference}
    [[nodiscard]] QString dumpPreference() const;

Q_SIGNALS:
    void managerChanged();

private:
    QString m_name;
    QString m_nameWithSuffix;
    std::shared_ptr<KVOProxy> m_proxy;
    QPointer<QObject> m_manager;
};

/// What the seven typed items share: one way from the property's value to the stored form, and one back.
class DRAVELIN_EXPORT TypedPreferenceItem : public PreferenceItem
{
    Q_OBJECT

public:
    void valueChangedAction() override;

    /// Sets the property from the store when the entry is another than the property's value would be stored as.
    void restoreIfStoredElsewhere();

    /// The stored form of a value of the property; invalid or null when it has none.
    [[nodiscard]] virtual QVariant storedForm(const QVariant &value) const = 0;
    /// The property's value from its stored form.
    [[nodiscard]] virtual QVariant valueFromStoredForm(const QVariant &stored) const = 0;

protected:
    using PreferenceItem::PreferenceItem;
    /// Restores the property from the store, or seeds the store. The last thing a constructor does.
    void restoreOrSeed();
};

/// \name Items by type of property
/// @{

#define DRAVELIN_PREFERENCE_ITEM(Class)                                                                                \
public:                                                                                                                \
    Class(QObject *target, const QString &keyPath);                                                                    \
    [[nodiscard]] QVariant storedForm(const QVariant &value) const override;                                           \
    [[nodiscard]] QVariant valueFromStoredForm(const QVariant &stored) const override

/// A truth value, stored as "YES" or "NO".
class DRAVELIN_EXPORT PreferenceBOOLItem : public TypedPreferenceItem
{
    Q_OBJECT
    DRAVELIN_PREFERENCE_ITEM(PreferenceBOOLItem);
};

/// A text, or any other object the store takes, stored as it is.
class DRAVELIN_EXPORT PreferenceStringItem : public TypedPreferenceItem
{
    Q_OBJECT
    DRAVELIN_PREFERENCE_ITEM(PreferenceStringItem);
};

/// An integer, stored as the signed decimal of its low 32 bits.
class DRAVELIN_EXPORT PreferenceIntegerItem : public TypedPreferenceItem
{
    Q_OBJECT
    DRAVELIN_PREFERENCE_ITEM(PreferenceIntegerItem);
};

/// A single-precision number, stored with 8 decimals.
class DRAVELIN_EXPORT PreferenceFloatItem : public TypedPreferenceItem
{
    Q_OBJECT
    DRAVELIN_PREFERENCE_ITEM(PreferenceFloatItem);
};

/// A double-precision number, stored with 15 decimals.
class DRAVELIN_EXPORT PreferenceDoubleItem : public TypedPreferenceItem
{
    Q_OBJECT
    DRAVELIN_PREFERENCE_ITEM(PreferenceDoubleItem);
};

/// A colour, stored as red, green, blue and alpha with 3 decimals, from calibrated RGB; restored in sRGB.
class DRAVELIN_EXPORT PreferenceColorItem : public TypedPreferenceItem
{
    Q_OBJECT
    DRAVELIN_PREFERENCE_ITEM(PreferenceColorItem);
};

/// Bytes, stored as the text that they are in UTF-8.
class DRAVELIN_EXPORT PreferenceDataItem : public TypedPreferenceItem
{
    Q_OBJECT
    DRAVELIN_PREFERENCE_ITEM(PreferenceDataItem);
};

#undef DRAVELIN_PREFERENCE_ITEM
/// @}

} // namespace dravelin
