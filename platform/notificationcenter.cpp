// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/notificationcenter.h>

#include <QtCore/QHash>

#include <algorithm>
#include <vector>

namespace dravelin {

namespace {

struct Registration
{
    Registration(const Action<Notification *> &call, QObject *from, quint64 order)
        : action(call), sender(from), anySender(!from), number(order)
    {}

    [[nodiscard]] bool isDead() const { return removed || !action.target() || (!anySender && !sender); }
    [[nodiscard]] bool wants(const QObject *object) const { return !isDead() && (anySender || sender == object); }

    Action<Notification *> action;
    QPointer<QObject> sender;
    bool anySender;
    quint64 number; ///< the order of registration over all names
    bool removed = false;
};

using Registrations = std::vector<std::shared_ptr<Registration>>;

/// The registrations for one name. The dead are swept out when the list has doubled since the last time.
struct NameList
{
    void add(std::shared_ptr<Registration> registration)
    {
        if (entries.size() >= sweepAt) {
            std::erase_if(entries, [](const auto &entry) { return entry->isDead(); });
            sweepAt = std::max<size_t>(8, 2 * entries.size());
        }
        entries.push_back(std::move(registration));
    }

    void remove(const QObject *observer, const QObject *object)
    {
        for (const auto &entry : entries) {
            if (entry->action.target() == observer && (!object || entry->sender == object))
                entry->removed = true;
        }
        std::erase_if(entries, [](const auto &entry) { return entry->isDead(); });
    }

    void collect(const QObject *object, Registrations &into) const
    {
        std::copy_if(entries.begin(), entries.end(), std::back_inserter(into),
                     [object](const auto &entry) { return entry->wants(object); });
    }

    Registrations entries;
    size_t sweepAt = 8;
};

} // namespace

Notification::Notification(const QString &name, QObject *object, const QVariantMap &userInfo)
    : m_name(name), m_object(object), m_userInfo(userInfo)
{}

Notification::~Notification() = default;

class NotificationCenter::Private
{
public:
    [[nodiscard]] Registrations matching(const Notification &notification) const
    {
        Registrations found;
        if (const auto it = byName.constFind(notification.name()); it != byName.cend())
            it->collect(notification.object(), found);
        const auto named = std::ptrdiff_t(found.size());
        everyName.collect(notification.object(), found);
        std::inplace_merge(found.begin(), found.begin() + named, found.end(),
                           [](const auto &a, const auto &b) { return a->number < b->number; });
        return found;
    }

    QHash<QString, NameList> byName;
    NameList everyName;
    quint64 count = 0;
};

NotificationCenter::NotificationCenter(QObject *parent) : Object(parent), d(std::make_unique<Private>()) {}

NotificationCenter::~NotificationCenter() = default;

std::shared_ptr<NotificationCenter> NotificationCenter::defaultCenter()
{
    static const auto center = std::make_shared<NotificationCenter>();
    return center;
}

void NotificationCenter::addObserver(const Action<Notification *> &action, const QString &name, QObject *object)
{
    if (!action.target())
        return;
    NameList &list = name.isNull() ? d->everyName : d->byName[name];
    list.add(std::make_shared<Registration>(action, object, d->count++));
}

void NotificationCenter::removeObserver(const QObject *observer) { removeObserver(observer, QString()); }

void NotificationCenter::removeObserver(const QObject *observer, const QString &name, const QObject *object)
{
    if (!observer)
        return;
    if (name.isNull())
        d->everyName.remove(observer, object);
    for (auto it = name.isNull() ? d->byName.begin() : d->byName.find(name); it != d->byName.end();) {
        it->remove(observer, object);
        it = it->entries.empty() ? d->byName.erase(it) : std::next(it);
        if (!name.isNull())
            break;
    }
}

void NotificationCenter::postNotificationName(const QString &name, QObject *object, const QVariantMap &userInfo)
{
    Notification notification(name, object, userInfo);
    postNotification(&notification);
}

void NotificationCenter::postNotification(Notification *notification)
{
    // An observer may add and remove others, go away itself, or destroy the centre.
    const Registrations receivers = d->matching(*notification);
    for (const auto &receiver : receivers) {
        if (!receiver->isDead())
            receiver->action(notification);
    }
}

} // namespace dravelin
