// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/proxies.h>
#include <dravelin/platform/keyvalue.h>
#include <dravelin/platform/userdefaults.h>
#include <dravelin/preferences/items.h>
#include <dravelin/preferences/manager.h>

#include <QtCore/QDebug>

#include <utility>

namespace dravelin {

namespace {

QString described(const QVariant &value)
{
    if (!value.isValid() || value.canConvert<QString>())
        return value.toString();
    QString text;
    QDebug(&text).nospace() << value;
    return text;
}

} // namespace

PreferenceItem::PreferenceItem(QObject *target, const QString &keyPath) : m_name(keyPath), m_nameWithSuffix(keyPath)
{
    if (const PreferenceManager *owner = manager(); owner && !owner->suffix().isNull())
        m_nameWithSuffix = keyPath + u'.' + owner->suffix();
    m_proxy = std::make_shared<KVOProxy>(target, keyPath, this, &PreferenceItem::valueChangedAction);
}

PreferenceItem::~PreferenceItem() = default;

void PreferenceItem::setProxy(std::shared_ptr<KVOProxy> proxy) { m_proxy = std::move(proxy); }

PreferenceManager *PreferenceItem::manager() const { return static_cast<PreferenceManager *>(m_manager.data()); }

void PreferenceItem::setManager(PreferenceManager *manager)
{
    if (m_manager == manager)
        return;
    m_manager = manager;
    Q_EMIT managerChanged();
}

bool PreferenceItem::preferenceExists() const
{
    return UserDefaults::standardUserDefaults()->objectForKey(m_name).isValid();
}

QVariant PreferenceItem::load() const { return UserDefaults::standardUserDefaults()->objectForKey(m_nameWithSuffix); }

void PreferenceItem::save(const QVariant &value)
{
    UserDefaults *store = UserDefaults::standardUserDefaults();
    store->setObject(value, m_nameWithSuffix);
    store->synchronize();
}

QVariant PreferenceItem::getNSNumber() const { return valueForKey(m_proxy ? m_proxy->object() : nullptr, m_name); }

void PreferenceItem::setNSNumber(const QVariant &value)
{
    setValue(m_proxy ? m_proxy->object() : nullptr, value, m_name);
}

void PreferenceItem::valueChangedAction() {}

QString PreferenceItem::dumpPreference() const { return m_nameWithSuffix + QLatin1String(" - ") + described(load()); }

} // namespace dravelin
