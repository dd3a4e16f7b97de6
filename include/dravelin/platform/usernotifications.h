// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/object.h>

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtGui/QIcon>

#include <memory>

namespace dravelin {

/// Something that a notification offers to do.
struct NotificationAction
{
    QString key{};   ///< what activated() reports; "default" is done by clicking on the notification itself
    QString label{}; ///< what the user reads
};

enum class NotificationUrgency { Low, Normal, Critical };

/// What a notification says and offers. Texts stand as they are: markup in them is shown, not followed. Titles are cut
/// after 500 and texts after 5000 characters, with "…" at the end; control characters other than tabs and line ends, and
/// what is no valid Unicode, become U+FFFD.
struct NotificationContent
{
    QString title{};           ///< absent is empty
    QString informativeText{}; ///< absent is empty
    QString soundName{};       ///< of the desktop's sound theme, or the path of a sound file; absent: silent
    QList<NotificationAction> actions{};
    QIcon icon{}; ///< null: the application's window icon
    NotificationUrgency urgency = NotificationUrgency::Normal;
    double timeout = -1; ///< seconds until it goes; 0: it stays until the user closes it; negative: the desktop decides
};

/// Shows notifications to the user. The default one hands them to the desktop's notification service over the D-Bus
/// session bus, with the application's name, its desktop file and its icon. Tests put one of their own in its place.
///
/// Applications use UserNotification or showNotification().
///
/// From the main thread.
class DRAVELIN_EXPORT UserNotificationCenter : public Object
{
    Q_OBJECT

public:
    enum class CloseReason {
        Expired = 1,
        Dismissed = 2, ///< by the user
        Withdrawn = 3, ///< by the application
        Unknown = 4,
        NotShown = 5, ///< nothing could show it
        Gone = 6,     ///< with the service that showed it
    };
    Q_ENUM(CloseReason)

    using Object::Object;
    ~UserNotificationCenter() override;

    /// Shows a notification, or changes one that is open. Returns at once; what becomes of it is told by the signals, at
    /// the earliest in the next pass of the event loop.
    ///
    /// The default center connects to the bus at the first one, and waits for a slow bus beside the event loop. What the
    /// service has not been given when the application ends, it is given then, which takes 3 s at most, and 1 s when the
    /// bus does not answer. Where there is no bus or no service, nothing is shown, with one line in the log until one is
    /// shown again; the bus is looked for every 3 s at most.
    /// \param number that of an earlier notification, which is replaced, and shown anew when it is closed; 0: a new one
    /// \return the number of the notification, greater than 0
    /// \cost a message to the bus; without a session some milliseconds for looking for its bus
    virtual quint64 deliver(const NotificationContent &content, quint64 number = 0) = 0;

    /// Closes a notification; one that is not open is left alone.
    virtual void withdraw(quint64 number) = 0;

    /// The center in use.
    [[nodiscard]] static std::shared_ptr<UserNotificationCenter> current();

    /// Replaces the process's center; an empty pointer brings the default back.
    /// \return the center that was replaced, empty for the default one
    static std::shared_ptr<UserNotificationCenter> setCurrent(std::shared_ptr<UserNotificationCenter> center);

Q_SIGNALS:
    /// The service has taken a notification, or its replacement.
    void delivered(quint64 number);
    /// The user chose an action. Most services close the notification with it.
    void activated(quint64 number, const QString &actionKey);
    void closed(quint64 number, dravelin::UserNotificationCenter::CloseReason reason);
};

} // namespace dravelin
