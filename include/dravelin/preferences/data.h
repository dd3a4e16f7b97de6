// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/object.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QPointer>
#include <QtCore/QString>

namespace dravelin {

class PreferenceItem;
class PreferenceManager;

/// The application's settings as properties of one object. Derive from it, give every setting a property with NOTIFY,
/// set the defaults in resetDefaultValues() and register the properties in installPreferenceItems(). A
/// PreferenceManager then restores them and saves every change at once.
///
///     class Settings : public dravelin::PreferenceData {
///         Q_OBJECT
///         Q_PROPERTY(bool showGrid MEMBER showGrid NOTIFY showGridChanged)
///         Q_PROPERTY(double zoom MEMBER zoom NOTIFY zoomChanged)
///     public:
///         void resetDefaultValues() override { setProperty("showGrid", true); setProperty("zoom", 1.0); }
///         void installPreferenceItems() override
///         {
///             addBooleanWithName("showGrid");           // by name
///             addPreference(&Settings::zoomChanged);    // by NOTIFY signal, checked by the compiler
///         }
///         bool showGrid = false;
///         double zoom = 0;
///     Q_SIGNALS:
///         void showGridChanged(); void zoomChanged();
///     };
///
///     auto settings = std::make_shared<Settings>();
///     dravelin::PreferenceManager manager(settings);    // restored, or the store seeded with the defaults
///     settings->setProperty("zoom", 2.0);               // on disk when this returns
///
/// The properties are ordinary ones: widgets and QML bind to them as to any others. Record, items and manager are used
/// from the thread that uses the store, the main one as a rule.
class DRAVELIN_EXPORT PreferenceData : public Object
{
    Q_OBJECT
    Q_MOC_INCLUDE("dravelin/preferences/manager.h")
    Q_PROPERTY(dravelin::PreferenceManager *manager READ manager WRITE installManager NOTIFY managerChanged)

public:
    explicit PreferenceData(QObject *parent = nullptr);
    ~PreferenceData() override;

    /// The manager that keeps the record's items; null before one was made and after it is gone.
    /// \operation{manager}
    [[nodiscard]] PreferenceManager *manager() const;

    /// Called by the manager when it is made. The manager is held weakly.
    /// \operation{installManager:}
    virtual void installManager(PreferenceManager *manager);

    /// Sets every property to its default value. Called before the items are first installed, and on
    /// PreferenceManager::resetPreferencesToDefaults(). Does nothing here.
    /// \operation{resetDefaultValues}
    virtual void resetDefaultValues();

    /// Registers the items with the operations below. Called when the manager is made and after every successful
    /// import. Does nothing here.
    /// \operation{installPreferenceItems}
    virtual void installPreferenceItems();

    /// Whether an import may set the item. True here.
    /// \operation{shouldImportPreference:}
    [[nodiscard]] virtual bool shouldImportPreference(const PreferenceItem &item);

    /// \name Registering a property
    /// Each makes an item of its type for the property `name`, which at once restores the property from the store or
    /// else puts its value there, and hands the item to the manager, in place of an earlier one of that name. Without a
    /// manager the value is restored or stored all the same, but later changes are not saved.
    /// \throws Exception NSUndefinedKeyException for an unknown name
    /// @{
    /// \operation{addBooleanWithName:}
    void addBooleanWithName(const QString &name);
    /// \operation{addNSStringWithName:}
    void addNSStringWithName(const QString &name);
    /// Of the integer, the low 32 bits are kept.
    /// \operation{addNSIntegerWithName:}
    void addNSIntegerWithName(const QString &name);
    /// \operation{addFloatWithName:}
    void addFloatWithName(const QString &name);
    /// \operation{addDoubleWithName:}
    void addDoubleWithName(const QString &name);
    /// For a property of type dravelin::Color or QColor.
    /// \operation{addNSColorWithName:}
    void addNSColorWithName(const QString &name);
    /// \operation{addNSDataWithName:}
    void addNSDataWithName(const QString &name);

    /// Registers the property that announces its changes by `notify`, as the item that fits the property's type: bool,
    /// text, integers (enumerations too), float, double, Color or QColor, bytes.
    /// \throws Exception NSInvalidArgumentException when no property, or more than one, has that signal, or when its type
    /// is another one
    template <class Class, class... Parameters>
    void addPreference(void (Class::*notify)(Parameters...))
    {
        addPreferenceWithNotifier(QMetaMethod::fromSignal(notify));
    }
    /// @}

Q_SIGNALS:
    void managerChanged();

private:
    void addPreferenceWithNotifier(const QMetaMethod &notify);

    QPointer<QObject> m_manager;
};

} // namespace dravelin
