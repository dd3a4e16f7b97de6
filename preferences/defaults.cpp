// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/log.h>
#include <dravelin/platform/userdefaults.h>
#include <dravelin/preferences/defaults.h>
#include <dravelin/values/conversions.h>

#include "preferences/storedvalue.h"

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

UserDefaults *store() { return UserDefaults::standardUserDefaults(); }

constexpr int FloatDecimals = 7;

} // namespace

bool hasUserDefault(const QString &key) { return store()->objectForKey(key).isValid(); }

QVariant getUserDefault(const QString &key) { return getUserDefaultWithDefault(key, u""_s); }

QVariant getUserDefaultWithDefault(const QString &key, const QVariant &defaultValue)
{
    const QVariant stored = store()->objectForKey(key);
    return stored.isValid() ? stored : defaultValue;
}

void setUserDefault(const QString &key, const QVariant &value) { store()->setObject(value, key); }

bool savePreferences() { return store()->synchronize(); }

void removeAllPreferences()
{
    const QStringList keys = store()->dictionaryRepresentation().keys();
    for (const QString &key : keys)
        store()->removeObjectForKey(key);
}

bool getBOOLdefault(const QString &key, bool defaultValue)
{
    return detail::boolValue(getUserDefaultWithDefault(key, boolToStr(defaultValue)));
}

void setBOOLDefault(const QString &key, bool value) { setUserDefault(key, boolToStr(value)); }

qint64 getIntegerDefault(const QString &key, qint64 defaultValue)
{
    return detail::intValue(getUserDefaultWithDefault(key, intToStr(defaultValue)));
}

void setIntegerDefault(const QString &key, qint64 value) { setUserDefault(key, intToStr(value)); }

float getFloatDefault(const QString &key, float defaultValue)
{
    return detail::floatValue(getUserDefaultWithDefault(key, floatToStr(defaultValue, FloatDecimals)));
}

void setFloatDefault(const QString &key, float value) { setUserDefault(key, floatToStr(value, FloatDecimals)); }

QVariant getStringDefault(const QString &key, const QString &defaultValue)
{
    return getUserDefaultWithDefault(key, defaultValue);
}

void setStringDefault(const QString &key, const QString &value) { setUserDefault(key, value); }

QByteArray getDataDefault(const QString &key, const QByteArray &defaultValue)
{
    const QVariant stored = getUserDefaultWithDefault(key, dataToStr(defaultValue));
    if (!stored.isValid() || stored.metaType() == QMetaType::fromType<QString>())
        return strToData(stored.toString());
    logWarning(u"The stored value of \"%1\" is not text: it has no bytes"_s.arg(key));
    return {};
}

void setDataDefault(const QString &key, const QByteArray &value) { setUserDefault(key, dataToStr(value)); }

} // namespace dravelin
