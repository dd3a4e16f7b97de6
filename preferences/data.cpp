// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/color.h>
#include <dravelin/platform/exception.h>
#include <dravelin/preferences/data.h>
#include <dravelin/preferences/items.h>
#include <dravelin/preferences/manager.h>

#include <QtCore/QMetaProperty>
#include <QtGui/QColor>

#include <memory>

namespace dravelin {

namespace {

template <class Item>
void add(PreferenceData *record, const QString &name)
{
    auto item = std::make_shared<Item>(record, name);
    if (PreferenceManager *manager = record->manager())
        manager->addPreference(std::move(item));
}

using Adder = void (*)(PreferenceData *, const QString &);

bool isInteger(QMetaType type)
{
    return (type.id() >= QMetaType::Int && type.id() <= QMetaType::ULongLong)
           || (type.id() >= QMetaType::Long && type.id() <= QMetaType::UChar)
           || type.flags().testFlag(QMetaType::IsEnumeration);
}

/// The item that fits a property of the type; null when none does.
Adder adderFor(QMetaType type)
{
    if (type == QMetaType::fromType<bool>())
        return add<PreferenceBOOLItem>;
    if (type == QMetaType::fromType<QString>())
        return add<PreferenceStringItem>;
    if (type == QMetaType::fromType<float>())
        return add<PreferenceFloatItem>;
    if (type == QMetaType::fromType<double>())
        return add<PreferenceDoubleItem>;
    if (type == QMetaType::fromType<Color>() || type == QMetaType::fromType<QColor>())
        return add<PreferenceColorItem>;
    if (type == QMetaType::fromType<QByteArray>())
        return add<PreferenceDataItem>;
    return isInteger(type) ? add<PreferenceIntegerItem> : nullptr;
}

/// The one property that `signal` announces; invalid when there is none or more.
QMetaProperty propertyAnnouncedBy(const QMetaObject *metaObject, const QMetaMethod &signal)
{
    QMetaProperty found;
    for (int i = 0; i < metaObject->propertyCount(); ++i) {
        const QMetaProperty property = metaObject->property(i);
        if (!property.hasNotifySignal() || property.notifySignal() != signal)
            continue;
        if (found.isValid())
            return {};
        found = property;
    }
    return found;
}

} // namespace

PreferenceData::PreferenceData(QObject *parent) : Object(parent) {}

PreferenceData::~PreferenceData() = default;

PreferenceManager *PreferenceData::manager() const { return static_cast<PreferenceManager *>(m_manager.data()); }

void PreferenceData::installManager(PreferenceManager *manager)
{
    if (m_manager == manager)
        return;
    m_manager = manager;
    Q_EMIT managerChanged();
}

void PreferenceData::resetDefaultValues() {}

void PreferenceData::installPreferenceItems() {}

bool PreferenceData::shouldImportPreference(const PreferenceItem &) { return true; }

void PreferenceData::addBooleanWithName(const QString &name) { add<PreferenceBOOLItem>(this, name); }

void PreferenceData::addNSStringWithName(const QString &name) { add<PreferenceStringItem>(this, name); }

void PreferenceData::addNSIntegerWithName(const QString &name) { add<PreferenceIntegerItem>(this, name); }

void PreferenceData::addFloatWithName(const QString &name) { add<PreferenceFloatItem>(this, name); }

void PreferenceData::addDoubleWithName(const QString &name) { add<PreferenceDoubleItem>(this, name); }

void PreferenceData::addNSColorWithName(const QString &name) { add<PreferenceColorItem>(this, name); }

void PreferenceData::addNSDataWithName(const QString &name) { add<PreferenceDataItem>(this, name); }

void PreferenceData::addPreferenceWithNotifier(const QMetaMethod &notify)
{
    const QMetaProperty property = propertyAnnouncedBy(metaObject(), notify);
    const Adder adder = property.isValid() ? adderFor(property.metaType()) : nullptr;
    if (!adder) {
        throw Exception(
            QLatin1String(NSInvalidArgumentException),
            QStringLiteral("%1: no single property of a type with a preference item is announced by %2")
                .arg(QLatin1String(metaObject()->className()), QString::fromUtf8(notify.methodSignature())));
    }
    adder(this, QString::fromUtf8(property.name()));
}

} // namespace dravelin
