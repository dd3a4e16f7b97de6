// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/usernotifications.h>

#include <QtCore/QDeadlineTimer>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusMessage>

#include <functional>
#include <map>

namespace dravelin::detail {

class NotificationAnswer;

/// The desktop's notification service on the D-Bus session bus.
class NotificationServer : public UserNotificationCenter
{
    Q_OBJECT

public:
    NotificationServer();
    ~NotificationServer() override;

    quint64 deliver(const NotificationContent &content, quint64 number) override;
    void withdraw(quint64 number) override;

    /// Sends what waits for an answer of the service; for the end of the application.
    void sendRest();

private Q_SLOTS:
    void takeAction(uint id, const QString &key);
    void takeClosing(uint id, uint reason);
    void loseServer();

private:
    using Answered = std::function<void(const QDBusMessage &answer)>;

    struct Delivery
    {
        NotificationContent content;
        quint32 id = 0;         ///< the service's number, once it is open
        bool isWaiting = false; ///< for an answer
        bool isChanged = false; ///< the service has not been told of the content
        bool isWithdrawn = false;
    };
    using Deliveries = std::map<quint64, Delivery>;

    [[nodiscard]] bool reachBus();
    void tryBus();
    void takeTrial(const QDBusError &error);
    void leaveBus();
    void connectToBus();
    void call(const QDBusMessage &message, quint64 number, const Answered &answered);
    void ask(quint64 number);
    void askService();
    void send(quint64 number, const QDBusMessage &capabilities);
    void takeId(quint64 number, quint32 id);
    void closeInService(quint32 id);
    void fail(quint64 number, const QString &cause);
    void report(const Delivery &delivery, const QString &cause);
    void finish(quint64 number, CloseReason reason);
    [[nodiscard]] Deliveries::iterator find(quint32 id);

    Deliveries m_deliveries;
    QList<quint64> m_queue; ///< what the service is asked about once the bus has answered
    QDBusConnection m_bus;
    QDBusError m_error; ///< why there is no connection
    QString m_address;
    NotificationAnswer *m_trial = nullptr; ///< while the bus is asked for an answer
    QDeadlineTimer m_nextTry;
    quint64 m_lastNumber = 0;
    bool m_isReported = false;
};

/// Receives the answer to one call. The answers and signals of a service arrive in their order this way.
class NotificationAnswer : public QObject
{
    Q_OBJECT

public:
    NotificationAnswer(std::function<void(const QDBusMessage &)> answered,
                       std::function<void(const QDBusError &)> failed, QObject *parent);

public Q_SLOTS:
    void take(const QDBusMessage &answer);
    void fail(const QDBusError &error, const QDBusMessage &call);

private:
    std::function<void(const QDBusMessage &)> m_answered;
    std::function<void(const QDBusError &)> m_failed;
};

} // namespace dravelin::detail
