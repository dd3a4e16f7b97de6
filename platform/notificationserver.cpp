// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/notificationserver.h"

#include <dravelin/platform/log.h>

#include "platform/notificationmessage.h"
#include "platform/notificationtext.h"

#include <QtCore/QFile>
#include <QtCore/QUrl>
#include <QtDBus/QDBusServiceWatcher>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

const QString ConnectionName = u"dravelin-notifications"_s;
const QString TrialName = u"dravelin-notifications-trial"_s;
constexpr int TryInterval = 3000; // ms
constexpr int LastWait = 1000;    // ms, for each of three answers

/// Empty where only libdbus knows.
QString busAddress()
{
    if (const QString given = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"); !given.isEmpty())
        return given;
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s;
    return QFile::exists(usual) ? u"unix:path="_s + QLatin1String(QUrl::toPercentEncoding(usual, "/", "~")) : QString();
}

QDBusMessage busCall(const QString &method)
{
    const QString bus = u"org.freedesktop.DBus"_s;
    return QDBusMessage::createMethodCall(bus, u"/org/freedesktop/DBus"_s, bus, method);
}

bool hasMarkup(const QDBusMessage &capabilities)
{
    return capabilities.arguments().value(0).toStringList().contains(u"body-markup"_s);
}

UserNotificationCenter::CloseReason reasonOf(quint32 reason)
{
    using Reason = UserNotificationCenter::CloseReason;
    return reason >= quint32(Reason::Expired) && reason <= quint32(Reason::Withdrawn) ? Reason(reason)
                                                                                      : Reason::Unknown;
}

} // namespace

NotificationServer::NotificationServer() : m_bus(ConnectionName)
{
    qRegisterMetaType<QDBusError>(); // connections to peers do without, and then cannot report errors
}

NotificationServer::~NotificationServer() { leaveBus(); }

quint64 NotificationServer::deliver(const NotificationContent &content, quint64 number)
{
    if (number == 0)
        number = ++m_lastNumber;
    Delivery &delivery = m_deliveries[number];
    delivery.content = content;
    delivery.isChanged = true;
    delivery.isWithdrawn = false;
    if (!delivery.isWaiting)
        ask(number);
    return number;
}

void NotificationServer::withdraw(quint64 number)
{
    const auto found = m_deliveries.find(number);
    if (found == m_deliveries.end())
        return;
    if (found->second.isWaiting) {
        found->second.isWithdrawn = true;
        return;
    }
    closeInService(found->second.id);
    finish(number, CloseReason::Withdrawn);
}

/// Sees to a connection when there is none: a session may have begun, or have been left, since. Not for each of many
/// notifications, because without a session looking for its bus takes some milliseconds.
/// \return false while the bus is asked for an answer
bool NotificationServer::reachBus()
{
    const QString address = busAddress();
    if (address != m_address || (!m_trial && !m_bus.isConnected() && m_nextTry.hasExpired())) {
        m_address = address;
        m_nextTry.setRemainingTime(TryInterval);
        tryBus();
    }
    return !m_trial;
}

/// Connecting waits for the bus, for ever if that does not answer. So it is asked first whether it does, over another
/// connection, which need not wait.
void NotificationServer::tryBus()
{
    delete std::exchange(m_trial, nullptr); // of another address
    leaveBus();
    if (m_address.isEmpty()) {
        connectToBus();
        return;
    }
    QDBusConnection trial = QDBusConnection::connectToPeer(m_address, TrialName);
    m_error = trial.lastError();
    if (!trial.isConnected())
        return;
    m_trial = new NotificationAnswer([this](auto &) { takeTrial({}); },
                                     [this](const QDBusError &error) { takeTrial(error); }, this);
    trial.callWithCallback(busCall(u"Hello"_s), m_trial, SLOT(take(QDBusMessage)),
                           SLOT(fail(QDBusError, QDBusMessage)));
}

void NotificationServer::takeTrial(const QDBusError &error)
{
    m_trial = nullptr; // goes by itself
    QDBusConnection::disconnectFromPeer(TrialName);
    m_error = error;
    if (!error.isValid())
        connectToBus();
    askService();
}

void NotificationServer::leaveBus()
{
    QDBusConnection::disconnectFromPeer(TrialName);
    QDBusConnection::disconnectFromBus(ConnectionName);
}

void NotificationServer::connectToBus()
{
    m_bus = m_address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, ConnectionName)
                                : QDBusConnection::connectToBus(m_address, ConnectionName);
    m_error = m_bus.lastError();
    if (!m_bus.isConnected())
        return;
    const auto service = QLatin1String(NotificationService);
    const auto path = QLatin1String(NotificationPath);
    m_bus.connect(service, path, service, u"ActionInvoked"_s, this, SLOT(takeAction(uint, QString)));
    m_bus.connect(service, path, service, u"NotificationClosed"_s, this, SLOT(takeClosing(uint, uint)));
    m_bus.connect({}, u"/org/freedesktop/DBus/Local"_s, u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s, this,
                  SLOT(loseServer()));
    delete findChild<QDBusServiceWatcher *>();
    auto *watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this, [this](auto &, const QString &oldOwner) {
        if (!oldOwner.isEmpty())
            loseServer();
    });
}

void NotificationServer::call(const QDBusMessage &message, quint64 number, const Answered &answered)
{
    auto *answer = new NotificationAnswer(
        answered, [this, number](const QDBusError &error) { fail(number, error.message()); }, this);
    if (!m_bus.isConnected()
        || !m_bus.callWithCallback(message, answer, SLOT(take(QDBusMessage)), SLOT(fail(QDBusError, QDBusMessage)))) {
        const QDBusError error = m_error.isValid() ? m_error : m_bus.lastError();
        QMetaObject::invokeMethod(
            answer, [=] { answer->fail(error, {}); }, Qt::QueuedConnection);
    }
}

void NotificationServer::ask(quint64 number)
{
    m_deliveries[number].isWaiting = true;
    m_queue << number;
    if (reachBus())
        askService();
}

/// First, how the service takes texts. It is asked each time: it may be another one by now.
void NotificationServer::askService()
{
    for (const quint64 number : std::exchange(m_queue, {}))
        call(notificationCall(u"GetCapabilities"_s), number,
             [this, number](const QDBusMessage &answer) { send(number, answer); });
}

void NotificationServer::send(quint64 number, const QDBusMessage &capabilities)
{
    Delivery &delivery = m_deliveries[number];
    if (delivery.isWithdrawn) {
        closeInService(delivery.id);
        finish(number, CloseReason::Withdrawn);
        return;
    }
    delivery.isChanged = false;
    call(notifyCall(delivery.content, delivery.id, hasMarkup(capabilities)), number,
         [this, number](const QDBusMessage &answer) { takeId(number, answer.arguments().value(0).toUInt()); });
}

void NotificationServer::takeId(quint64 number, quint32 id)
{
    Delivery &delivery = m_deliveries[number];
    delivery.id = id;
    delivery.isWaiting = false;
    m_isReported = false;
    if (delivery.isWithdrawn)
        withdraw(number);
    else if (delivery.isChanged)
        ask(number);
    else
        Q_EMIT delivered(number);
}

void NotificationServer::closeInService(quint32 id)
{
    if (id != 0)
        m_bus.send(notificationCall(u"CloseNotification"_s, {id}));
}

void NotificationServer::fail(quint64 number, const QString &cause)
{
    if (const auto found = m_deliveries.find(number); found != m_deliveries.end())
        report(found->second, cause);
    finish(number, CloseReason::NotShown);
}

void NotificationServer::report(const Delivery &delivery, const QString &cause)
{
    if (!std::exchange(m_isReported, true))
        logWarning(u"Notification \"%1\" is not shown: %2"_s.arg(notificationText(delivery.content.title, 80), cause));
}

void NotificationServer::finish(quint64 number, CloseReason reason)
{
    if (m_deliveries.erase(number) > 0)
        Q_EMIT closed(number, reason);
}

NotificationServer::Deliveries::iterator NotificationServer::find(quint32 id)
{
    return std::find_if(m_deliveries.begin(), m_deliveries.end(), [=](auto &entry) { return entry.second.id == id; });
}

void NotificationServer::takeAction(uint id, const QString &key)
{
    if (const auto found = find(id); id != 0 && found != m_deliveries.end())
        Q_EMIT activated(found->first, key);
}

void NotificationServer::takeClosing(uint id, uint reason)
{
    const auto found = find(id);
    if (id == 0 || found == m_deliveries.end())
        return;
    if (found->second.isWaiting)
        found->second.id = 0; // its replacement is on the way
    else
        finish(found->first, reasonOf(reason));
}

/// Those that wait learn by the answers.
void NotificationServer::loseServer()
{
    QList<quint64> lost;
    for (auto &[number, delivery] : m_deliveries) {
        delivery.id = 0;
        if (!delivery.isWaiting)
            lost << number;
    }
    for (const quint64 number : lost)
        finish(number, CloseReason::Gone);
}

void NotificationServer::sendRest()
{
    const auto waiting =
        std::find_if(m_deliveries.begin(), m_deliveries.end(), [](auto &entry) { return entry.second.isWaiting; });
    if (waiting == m_deliveries.end())
        return;
    if (m_trial && QDBusConnection(TrialName).call(busCall(u"GetId"_s), QDBus::Block, LastWait).errorName().isEmpty())
        connectToBus();
    const QDBusMessage question = notificationCall(u"GetCapabilities"_s);
    const QDBusMessage capabilities = m_bus.call(question, QDBus::Block, LastWait);
    if (capabilities.type() != QDBusMessage::ReplyMessage)
        return report(waiting->second, m_bus.lastError().message());
    for (auto &[number, delivery] : m_deliveries) {
        if (delivery.isChanged && !delivery.isWithdrawn)
            m_bus.send(notifyCall(delivery.content, delivery.id, hasMarkup(capabilities)));
    }
    (void)m_bus.call(question, QDBus::Block, LastWait); // answered once all that is taken
}

NotificationAnswer::NotificationAnswer(std::function<void(const QDBusMessage &)> answered,
                                       std::function<void(const QDBusError &)> failed, QObject *parent)
    : QObject(parent), m_answered(std::move(answered)), m_failed(std::move(failed))
{}

void NotificationAnswer::take(const QDBusMessage &answer)
{
    deleteLater();
    m_answered(answer);
}

void NotificationAnswer::fail(const QDBusError &error, const QDBusMessage &)
{
    deleteLater();
    m_failed(error);
}

} // namespace dravelin::detail
