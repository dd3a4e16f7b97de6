// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/propertywatch.h"

#include <dravelin/platform/log.h>

#include <QtCore/QEvent>

#include <utility>

namespace dravelin::detail {

namespace {

/// Receives a signal of any signature without a slot of its own: it answers to the method number after QObject's last
/// one.
class NotifyHook : public QObject // no Q_OBJECT on purpose
{
public:
    NotifyHook(QObject *object, int signal, std::function<void()> changed) : m_changed(std::move(changed))
    {
        QMetaObject::connect(object, signal, this, QObject::staticMetaObject.methodCount(), Qt::DirectConnection);
    }

    int qt_metacall(QMetaObject::Call call, int id, void **arguments) override
    {
        id = QObject::qt_metacall(call, id, arguments);
        if (id == 0 && call == QMetaObject::InvokeMetaMethod) {
            const auto changed = m_changed; // the call may destroy this hook
            changed();
        }
        return id;
    }

private:
    std::function<void()> m_changed;
};

class DynamicPropertyFilter : public QObject // no Q_OBJECT on purpose
{
public:
    DynamicPropertyFilter(QObject *object, QByteArray name, std::function<void()> changed)
        : m_name(std::move(name)), m_changed(std::move(changed))
    {
        object->installEventFilter(this);
    }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::DynamicPropertyChange
            && static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName() == m_name) {
            const auto changed = m_changed; // the call may destroy this filter
            changed();
        }
        return false;
    }

private:
    QByteArray m_name;
    std::function<void()> m_changed;
};

} // namespace

PropertyWatch::PropertyWatch(QObject *object, const QString &key, std::function<void()> changed)
    : m_object(object), m_key(key.toUtf8())
{
    const QMetaObject *metaObject = object->metaObject();
    m_property = metaObject->property(metaObject->indexOfProperty(m_key.constData()));
    if (m_property.isValid())
        watchDeclared(changed);
    else
        watchDynamic(changed);
}

PropertyWatch::~PropertyWatch() = default;

void PropertyWatch::watchDeclared(const std::function<void()> &changed)
{
    if (m_property.hasNotifySignal()) {
        m_hook = std::make_unique<NotifyHook>(m_object, m_property.notifySignalIndex(), changed);
    } else if (m_property.isBindable()) {
        m_notifier = std::make_unique<QPropertyNotifier>(m_property.bindable(m_object).addNotifier(changed));
    } else if (!m_property.isConstant()) {
        logWarning(QStringLiteral("Property \"%1\" of %2 has no NOTIFY signal: its changes cannot be observed")
                       .arg(QString::fromUtf8(m_key), QLatin1String(m_object->metaObject()->className())));
    }
}

void PropertyWatch::watchDynamic(const std::function<void()> &changed)
{
    // It may still be added, so it is watched all the same.
    m_hook = std::make_unique<DynamicPropertyFilter>(m_object, m_key, changed);
    if (!m_object->dynamicPropertyNames().contains(m_key)) {
        logWarning(QStringLiteral("%1 has no property \"%2\" to observe")
                       .arg(QLatin1String(m_object->metaObject()->className()), QString::fromUtf8(m_key)));
    }
}

QVariant PropertyWatch::read() const
{
    if (!m_object)
        return {};
    return m_property.isValid() ? m_property.read(m_object) : m_object->property(m_key.constData());
}

} // namespace dravelin::detail
