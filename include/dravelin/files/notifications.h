// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/usernotifications.h>

#include <memory>

namespace dravelin {

/// A notification that was handed to the desktop, and what the user does with it.
///
///     auto done = dravelin::UserNotification::deliver({.title = "Export",
///                                                      .informativeText = "Finished",
///                                                      .actions = {{"open", "Open folder"}}});
///     connect(done.get(), &dravelin::UserNotification::activated, this, &Window::openFolder);
///
/// The signals come in later passes of the event loop. While it is open, the notification keeps itself alive, so that
/// it need not be kept for its signals.
///
/// From the main thread.
class DRAVELIN_EXPORT UserNotification : public Object
{
    Q_OBJECT
    Q_PROPERTY(bool open READ isOpen NOTIFY openChanged)

public:
    using CloseReason = UserNotificationCenter::CloseReason;

    /// Hands a notification to UserNotificationCenter::current().
    /// \return the notification, which is open until it is closed; without an application object it is not opened, with
    /// a line in the log
    static std::shared_ptr<UserNotification> deliver(const NotificationContent &content);

    /// \internal
    class Request;
    explicit UserNotification(const Request &request);
    ~UserNotification() override;

    /// Whether it may be on the screen or in the desktop's list: true until closed(), however long that takes.
    [[nodiscard]] bool isOpen() const noexcept { return m_self != nullptr; }

    /// Says something else in its place, such as how far a job is; when it was closed, shows it anew.
    void replace(const NotificationContent &content);

    /// Takes it from the screen and from the desktop's list.
    Q_INVOKABLE void withdraw();

Q_SIGNALS:
    /// The desktop has taken it, or its replacement.
    void delivered();
    /// The user chose the action with this key. Most desktops close the notification with it.
    void activated(const QString &actionKey);
    /// It is gone; NotShown when it never was there.
    void closed(dravelin::UserNotificationCenter::CloseReason reason);
    void openChanged();

private:
    void open(const NotificationContent &content);
    void finish(CloseReason reason);
    void release();

    std::shared_ptr<UserNotificationCenter> m_center;
    std::shared_ptr<UserNotification> m_self; ///< while it is open
    quint64 m_number = 0;
};

inline namespace SystemServices {

/// Shows a notification, without a sound and without actions, and forgets it. Nothing happens, but for a line in the
/// log, where the desktop shows none. Returns at once.
///
///     dravelin::showNotification("Export", "Finished");
///
/// From any thread, while there is an application object.
/// \param title,message as they stand; absent ones are empty
/// \operation{showNotification}
DRAVELIN_EXPORT void showNotification(const QString &title, const QString &message);

} // namespace SystemServices

} // namespace dravelin
