// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/notifications.h>

#include <dravelin/platform/log.h>

#include <QtCore/QCoreApplication>

#include <utility>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

bool canBeShown(const NotificationContent &content)
{
    if (!qApp)
        logWarning(u"Notification \"%1\" is not shown: there is no application object"_s.arg(content.title));
    return qApp != nullptr;
}

} // namespace

/// What a notification is made from; nobody else can make one.
class UserNotification::Request
{
public:
    std::shared_ptr<UserNotificationCenter> center;
};

std::shared_ptr<UserNotification> UserNotification::deliver(const NotificationContent &content)
{
    const auto notification = std::make_shared<UserNotification>(Request{UserNotificationCenter::current()});
    notification->open(content);
    return notification;
}

UserNotification::UserNotification(const Request &request) : m_center(request.center)
{
    const auto ours = [this](auto &&call) {
        return [this, call](quint64 number, auto... arguments) {
            if (number == m_number)
                (this->*call)(arguments...);
        };
    };
    connect(m_center.get(), &UserNotificationCenter::delivered, this, ours(&UserNotification::delivered));
    connect(m_center.get(), &UserNotificationCenter::activated, this, ours(&UserNotification::activated));
    connect(m_center.get(), &UserNotificationCenter::closed, this, ours(&UserNotification::finish));
    if (qApp)
        connect(qApp, &QObject::destroyed, this, &UserNotification::release); // nothing will close it any more
}

UserNotification::~UserNotification() = default;

void UserNotification::open(const NotificationContent &content)
{
    if (!canBeShown(content))
        return;
    const bool wasOpen = isOpen();
    m_self = std::static_pointer_cast<UserNotification>(shared_from_this());
    m_number = m_center->deliver(content, m_number);
    if (!wasOpen)
        Q_EMIT openChanged();
}

void UserNotification::replace(const NotificationContent &content) { open(content); }

void UserNotification::withdraw()
{
    if (isOpen())
        m_center->withdraw(m_number);
}

void UserNotification::finish(CloseReason reason)
{
    const auto self = std::exchange(m_self, nullptr);
    Q_EMIT closed(reason);
    if (!isOpen()) // it may have been replaced at once
        Q_EMIT openChanged();
}

void UserNotification::release() { const auto self = std::exchange(m_self, nullptr); }

void SystemServices::showNotification(const QString &title, const QString &message)
{
    const NotificationContent content{.title = title, .informativeText = message};
    if (canBeShown(content))
        QMetaObject::invokeMethod(qApp, [=] { (void)UserNotificationCenter::current()->deliver(content); });
}

} // namespace dravelin
