// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/action.h>
#include <dravelin/platform/keyvalue.h>
#include <dravelin/platform/notificationcenter.h>

#include <QtCore/QPointer>
#include <QtCore/QVariantMap>

#include <concepts>
#include <memory>
#include <utility>

namespace dravelin {

/// Watches one property, or path of properties, of an object and calls an operation of a target at every change, with
/// the proxy itself as argument. Keep the proxy as long as the changes matter.
///
///     dravelin::KVOProxy proxy(document, "page.margin", ruler, "marginChanged:");          // by name
///     dravelin::KVOProxy checked(document, "page.margin", ruler, &Ruler::marginChanged);   // checked by the compiler
///
///     void Ruler::marginChanged(dravelin::KVOProxy *proxy)
///     {
///         resize(proxy->getOldValue().toReal(), proxy->getNewValue().toReal());
///     }
///
/// What can be observed is said at KeyValueObservation. Target and object are held weakly: changes go unheard once the
/// target is gone, and there are none once the object is gone. The target is called on the thread that made the change,
/// and may destroy the proxy.
class DRAVELIN_EXPORT KVOProxy : public Object
{
    Q_OBJECT
    Q_PROPERTY(QObject *object READ object CONSTANT)
    Q_PROPERTY(QString keyPath READ keyPath CONSTANT)

public:
    /// \operation{initWithObject:path:target:action:}
    KVOProxy(QObject *object, const QString &path, const Action<KVOProxy *> &action);

    /// The same with the parts of an Action: a target, and an operation's name, a member function or a callable.
    template <class Target, class Operation>
    KVOProxy(QObject *object, const QString &path, Target *target, Operation action)
        : KVOProxy(object, path, Action<KVOProxy *>(target, std::move(action)))
    {}

    /// Ends the observation.
    ~KVOProxy() override;

    /// The observed object; null when it is gone.
    /// \operation{object}
    [[nodiscard]] QObject *object() const { return m_object; }
    /// The path as given.
    /// \operation{keyPath}
    [[nodiscard]] QString keyPath() const { return m_keyPath; }

    /// The value before the change; invalid outside the action.
    /// \operation{getOldValue}
    [[nodiscard]] QVariant getOldValue() const;
    /// The value after the change; invalid outside the action.
    /// \operation{getNewValue}
    [[nodiscard]] QVariant getNewValue() const;

    /// Delivers one change to the target. Called by the observation; the first two arguments and the last are not
    /// looked at.
    /// \operation{observeValueForKeyPath:ofObject:change:context:}
    void observeValueForKeyPath(const QString &keyPath, QObject *ofObject, const KeyValueChange &change, void *context);

private:
    QPointer<QObject> m_object;
    QString m_keyPath;
    Action<KVOProxy *> m_action;
    const KeyValueChange *m_change = nullptr;
    bool *m_destroyed = nullptr;
    KeyValueObservation m_observation; // last: it calls back
};

/// Registers a target for named notifications and takes all registrations back when it goes. Unless told otherwise it
/// calls the operation that bears the notification's name with "Action:" behind it.
///
///     dravelin::ObserverProxy observer(window);
///     observer.addObserverForKey("documentSaved");                    // window->documentSavedAction(Notification *)
///     observer.addObserverForKey("documentClosed", &Window::closed);  // checked by the compiler
///     dravelin::ObserverProxy::sendNotification("documentSaved", document);
class DRAVELIN_EXPORT ObserverProxy : public Object
{
    Q_OBJECT

public:
    /// \param target called at notifications; held weakly
    /// \param notificationCenter the centre to register with; kept alive
    /// \operation{initWithTarget:}
    /// \operation{initWithTarget:notificationCenter:}
    explicit ObserverProxy(
        QObject *target, std::shared_ptr<NotificationCenter> notificationCenter = NotificationCenter::defaultCenter());
    ~ObserverProxy() override;

    /// \operation{target}
    [[nodiscard]] QObject *target() const { return m_target; }
    /// The names that were registered, each with the empty text. A name stays until removeAllObservers(), even when
    /// removeObserverWithKey() took its registrations back.
    /// \operation{keyPaths}
    [[nodiscard]] QVariantMap keyPaths() const { return m_keyPaths; }
    /// \operation{notificationCenter}
    [[nodiscard]] NotificationCenter *notificationCenter() const { return m_center.get(); }

    /// Registers the target's operation `name` + "Action:" for notifications of the name from `fromObject`, or from
    /// anybody. Registering a name twice delivers twice. An absent name is a line in the log.
    /// \operation{addObserverForKey:}
    /// \operation{addObserverForKey:fromObject:}
    void addObserverForKey(const QString &name, QObject *fromObject = nullptr);

    /// Registers a member function of the target, or a callable, in place of the operation found by name. The compiler
    /// checks the argument; of the target it knows only that it is a QObject: nothing is registered when it is not of the
    /// function's class.
    template <class Operation>
    requires(!std::convertible_to<Operation, QObject *>) void addObserverForKey(const QString &name,
                                                                                Operation operation,
                                                                                QObject *fromObject = nullptr)
    {
        add(name, makeAction(std::move(operation)), fromObject);
    }

    /// Takes back every registration of the target for the name, from whichever sender. The name stays in keyPaths().
    /// \operation{removeObserverWithKey:}
    void removeObserverWithKey(const QString &name);

    /// Takes back the registrations for all names of keyPaths() and empties it.
    /// \operation{removeAllObservers}
    void removeAllObservers();

    /// Posts to the proxy's centre with the proxy as sender.
    /// \operation{postNotification:}
    void postNotification(const QString &name);

    /// Posts to a centre, the default one unless given, with no sender.
    /// \operation{sendNotification:}
    /// \operation{sendNotification:notificationCenter:}
    static void sendNotification(const QString &name, const std::shared_ptr<NotificationCenter> &notificationCenter =
                                                          NotificationCenter::defaultCenter());

    /// Posts to a centre, the default one unless given, with a sender.
    /// \operation{sendNotification:object:}
    /// \operation{sendNotification:object:notificationCenter:}
    static void sendNotification(
        const QString &name, QObject *object,
        const std::shared_ptr<NotificationCenter> &notificationCenter = NotificationCenter::defaultCenter());

private:
    template <class Class, class Result, class... Parameters>
    Action<Notification *> makeAction(Result (Class::*function)(Parameters...)) const
    {
        auto *target = qobject_cast<Class *>(m_target.data());
        if (!target)
            reportWrongClass(&Class::staticMetaObject);
        return Action<Notification *>(target, function);
    }
    template <class Callable>
    Action<Notification *> makeAction(Callable callable) const
    {
        return Action<Notification *>(m_target.data(), std::move(callable));
    }
    void reportWrongClass(const QMetaObject *wanted) const;
    void add(const QString &name, const Action<Notification *> &action, QObject *fromObject);

    QPointer<QObject> m_target;
    QVariantMap m_keyPaths;
    std::shared_ptr<NotificationCenter> m_center;
};

} // namespace dravelin
