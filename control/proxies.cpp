// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/control/proxies.h>

#include <dravelin/platform/log.h>

#include <QtCore/QScopeGuard>

#include <utility>

namespace dravelin {

KVOProxy::KVOProxy(QObject *object, const QString &path, const Action<KVOProxy *> &action)
    : m_object(object),
      m_keyPath(path),
      m_action(action),
      m_observation(object, path, [this](const KeyValueChange &change) {
          observeValueForKeyPath(m_keyPath, m_object, change, nullptr);
      })
{}

KVOProxy::~KVOProxy()
{
    if (m_destroyed)
        *m_destroyed = true;
}

QVariant KVOProxy::getOldValue() const { return m_change ? m_change->oldValue : QVariant(); }

QVariant KVOProxy::getNewValue() const { return m_change ? m_change->newValue : QVariant(); }

void KVOProxy::observeValueForKeyPath(const QString &, QObject *, const KeyValueChange &change, void *)
{
    // A change that the action makes itself is delivered within; afterwards the outer one is readable again.
    bool destroyed = false;
    const auto outerChange = std::exchange(m_change, &change);
    const auto outerFlag = std::exchange(m_destroyed, &destroyed);
    const auto restore = qScopeGuard([&] {
        if (!destroyed) {
            m_change = outerChange;
            m_destroyed = outerFlag;
        } else if (outerFlag) {
            *outerFlag = true;
        }
    });
    m_action(this);
}

ObserverProxy::ObserverProxy(QObject *target, std::shared_ptr<NotificationCenter> notificationCenter)
    : m_target(target), m_center(std::move(notificationCenter))
{}

ObserverProxy::~ObserverProxy() { removeAllObservers(); }

void ObserverProxy::addObserverForKey(const QString &name, QObject *fromObject)
{
    add(name, Action<Notification *>(m_target.data(), name + QLatin1String("Action:")), fromObject);
}

void ObserverProxy::reportWrongClass(const QMetaObject *wanted) const
{
    if (m_target) {
        logWarning(QStringLiteral("ObserverProxy: a function of %1 cannot be called on its target, a %2")
                       .arg(QLatin1String(wanted->className()), QLatin1String(m_target->metaObject()->className())));
    }
}

void ObserverProxy::add(const QString &name, const Action<Notification *> &action, QObject *fromObject)
{
    if (name.isNull()) {
        logWarning(QStringLiteral("ObserverProxy: no name given to register for"));
        return;
    }
    m_center->addObserver(action, name, fromObject);
    m_keyPaths.insert(name, QStringLiteral(""));
}

void ObserverProxy::removeObserverWithKey(const QString &name)
{
    if (!name.isNull())
        m_center->removeObserver(m_target, name);
}

void ObserverProxy::removeAllObservers()
{
    const QStringList names = m_keyPaths.keys();
    for (const QString &name : names)
        removeObserverWithKey(name);
    m_keyPaths.clear();
}

void ObserverProxy::postNotification(const QString &name) { m_center->postNotificationName(name, this); }

void ObserverProxy::sendNotification(const QString &name, const std::shared_ptr<NotificationCenter> &notificationCenter)
{
    notificationCenter->postNotificationName(name);
}

void ObserverProxy::sendNotification(const QString &name, QObject *object,
                                     const std::shared_ptr<NotificationCenter> &notificationCenter)
{
    notificationCenter->postNotificationName(name, object);
}

} // namespace dravelin
