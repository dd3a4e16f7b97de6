// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/proxies.h>
#include <dravelin/platform/color.h>
#include <dravelin/preferences/items.h>
#include <dravelin/values/conversions.h>

#include "preferences/storedvalue.h"

namespace dravelin {

void TypedPreferenceItem::restoreOrSeed()
{
    if (preferenceExists())
        setNSNumber(valueFromStoredForm(load()));
    else
        save(storedForm(getNSNumber()));
}

void TypedPreferenceItem::restoreIfStoredElsewhere()
{
    const QVariant stored = load();
    if (stored.isValid() && stored != storedForm(getNSNumber()))
        setNSNumber(valueFromStoredForm(stored));
}

void TypedPreferenceItem::valueChangedAction() { save(storedForm(proxy()->getNewValue())); }

#define DRAVELIN_PREFERENCE_ITEM(Class, toStored, fromStored)                                                          \
    Class::Class(QObject *target, const QString &keyPath) : TypedPreferenceItem(target, keyPath) { restoreOrSeed(); }  \
    QVariant Class::storedForm(const QVariant &value) const { return toStored; }                                       \
    QVariant Class::valueFromStoredForm(const QVariant &stored) const { return fromStored; }

DRAVELIN_PREFERENCE_ITEM(PreferenceBOOLItem, boolToStr(detail::boolValue(value)), detail::boolValue(stored))
DRAVELIN_PREFERENCE_ITEM(PreferenceStringItem, value, stored)
DRAVELIN_PREFERENCE_ITEM(PreferenceIntegerItem, intToStr(detail::integerValue(value)), qint64(detail::intValue(stored)))
DRAVELIN_PREFERENCE_ITEM(PreferenceFloatItem, floatToStr(detail::floatValue(value), 8), detail::floatValue(stored))
DRAVELIN_PREFERENCE_ITEM(PreferenceDoubleItem, doubleToStr(detail::doubleValue(value), 15), detail::doubleValue(stored))
DRAVELIN_PREFERENCE_ITEM(PreferenceColorItem, colorToString(value.value<Color>()),
                         QVariant::fromValue(stringToColor(stored.toString())))
DRAVELIN_PREFERENCE_ITEM(PreferenceDataItem, dataToStr(value.toByteArray()), strToData(stored.toString()))

#undef DRAVELIN_PREFERENCE_ITEM

} // namespace dravelin
