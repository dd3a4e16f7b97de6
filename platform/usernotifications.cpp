// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/usernotifications.h>

#include "platform/notificationserver.h"

#include <QtCore/QCoreApplication>

#include <utility>

namespace dravelin {

namespace {

std::shared_ptr<UserNotificationCenter> &replacement()
{
    static std::shared_ptr<UserNotificationCenter> center;
    return center;
}

std::shared_ptr<detail::NotificationServer> &server()
{
    static std::shared_ptr<detail::NotificationServer> center;
    return center;
}

void endServer()
{
    if (const auto ended = std::exchange(server(), nullptr))
        ended->sendRest();
}

std::shared_ptr<UserNotificationCenter> defaultCenter()
{
    if (!server()) {
        server() = std::make_shared<detail::NotificationServer>();
        qAddPostRoutine(&endServer); // while Qt still works
    }
    return server();
}

} // namespace

UserNotificationCenter::~UserNotificationCenter() = default;

std::shared_ptr<UserNotificationCenter> UserNotificationCenter::current()
{
    return replacement() ? replacement() : defaultCenter();
}

std::shared_ptr<UserNotificationCenter>
UserNotificationCenter::setCurrent(std::shared_ptr<UserNotificationCenter> center)
{
    return std::exchange(replacement(), std::move(center));
}

} // namespace dravelin
