// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/usernotifications.h>

#include <QtDBus/QDBusMessage>

namespace dravelin::detail {

inline constexpr char NotificationService[] = "org.freedesktop.Notifications";
inline constexpr char NotificationPath[] = "/org/freedesktop/Notifications";

/// A call of the notification service.
[[nodiscard]] QDBusMessage notificationCall(const QString &method, const QVariantList &arguments = {});

/// The call that shows a notification.
/// \param replacedId the service's number of the one that it takes the place of, or 0
/// \param hasMarkup whether the service takes the text for markup
[[nodiscard]] QDBusMessage notifyCall(const NotificationContent &content, quint32 replacedId, bool hasMarkup);

} // namespace dravelin::detail
