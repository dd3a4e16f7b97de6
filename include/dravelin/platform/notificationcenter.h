// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/action.h>
#include <dravelin/platform/object.h>

#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QVariantMap>

#include <memory>
#include <utility>

namespace dravelin {

/// What an observer is handed: the name that was posted, by whom, and with what. Lives for the delivery.
class DRAVELIN_EXPORT Notification : public Object
{
    Q_OBJECT
    Q_PROPERTY(QString name READ name CONSTANT)
    Q_PROPERTY(QObject *object READ object CONSTANT)
    Q_PROPERTY(QVariantMap userInfo READ userInfo CONSTANT)

public:
    explicit Notification(const QString &name, QObject *object = nullptr, const QVariantMap &userInfo = {});
    ~Notification() override;

    [[nodiscard]] QString name() const { return m_name; }
    /// The sender; null when there is none or it is gone.
    [[nodiscard]] QObject *object() const { return m_object; }
    [[nodiscard]] QVariantMap userInfo() const { return m_userInfo; }

private:
    QString m_name;
    QPointer<QObject> m_object;
    QVariantMap m_userInfo;
};

/// Hands notifications from whoever posts them to whoever registered for their name, so that neither needs to know the
/// other.
///
///     auto center = dravelin::NotificationCenter::defaultCenter();
///     center->addObserver(window, "documentSavedAction:", "documentSaved");
///     center->addObserver(window, [] { qInfo("saved"); }, "documentSaved");
///     center->postNotificationName("documentSaved", document);
///
/// Delivery is synchronous and in the order of registration, to those registered when the delivery began and not
/// removed since. Registrations of observers or senders that are gone vanish. Use a centre from one thread.
class DRAVELIN_EXPORT NotificationCenter : public Object
{
    Q_OBJECT

public:
    explicit NotificationCenter(QObject *parent = nullptr);
    ~NotificationCenter() override;

    /// The process's own centre.
    [[nodiscard]] static std::shared_ptr<NotificationCenter> defaultCenter();

    /// Registers one more call, even if there is the same already.
    /// \param action whom to call and how, see Action; nothing happens without a target
    /// \param name the name to be told of; absent text stands for every name, empty text is a name like others
    /// \param object the sender to be told of; null stands for every sender
    void addObserver(const Action<Notification *> &action, const QString &name, QObject *object = nullptr);

    /// The same with the parts of an Action: an observer, and an operation's name, a member function or a callable.
    /// \operation{addObserver:selector:name:object:}
    template <class Observer, class Operation>
    void addObserver(Observer *observer, Operation operation, const QString &name, QObject *object = nullptr)
    {
        addObserver(Action<Notification *>(observer, std::move(operation)), name, object);
    }

    /// Removes every registration of the observer.
    /// \operation{removeObserver:}
    void removeObserver(const QObject *observer);

    /// Removes the observer's registrations for `name` and `object`; absent text stands for every name, null for every
    /// sender.
    /// \operation{removeObserver:name:object:}
    void removeObserver(const QObject *observer, const QString &name, const QObject *object = nullptr);

    /// \operation{postNotificationName:object:}
    void postNotificationName(const QString &name, QObject *object = nullptr, const QVariantMap &userInfo = {});

    /// \operation{postNotification:}
    void postNotification(Notification *notification);

private:
    class Private;
    std::unique_ptr<Private> d;
};

} // namespace dravelin
