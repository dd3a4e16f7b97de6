// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/log.h>
#include <dravelin/platform/userdefaults.h>

#include "argumentdomain.h"
#include "defaultsdomain.h"
#include "filewatch.h"
#include "propertylist_p.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <optional>
#include <utility>

namespace dravelin {

namespace {

using namespace Qt::StringLiterals;

constexpr int WriteMilliseconds = 1000;
constexpr int RetryMilliseconds = 30'000;

bool isAbsent(const QVariant &value)
{
    return !value.isValid() || (value.typeId() == QMetaType::QString && value.toString().isNull())
           || (value.typeId() == QMetaType::QByteArray && value.toByteArray().isNull());
}

/// The value as the file gives it back; invalid, and logged, when it cannot be stored.
QVariant storable(const QVariant &value, const QString &key)
{
    QString error;
    const QVariant result = propertylist::canonical(value, propertylist::MaximumLevels - 1, &error);
    if (!result.isValid())
        logWarning(u"\"%1\" keeps its value in the user defaults, which cannot hold %2"_s.arg(key, error));
    return result;
}

} // namespace

class UserDefaults::Private
{
public:
    Private(UserDefaults *store, const QString &filePath, const QString &globalFilePath,
            const QStringList &argumentList);

    void change(const QString &key, const QVariant &value);
    /// The first domain that has it decides.
    [[nodiscard]] QVariant value(const QString &key) const;
    [[nodiscard]] bool isHidden(const QString &key) const { return arguments.contains(key); }
    [[nodiscard]] bool isRegistrationHidden(const QString &key) const;
    bool synchronize();
    bool exchange(QStringList *changed);
    void writeLater(int milliseconds);
    void writeAtEndOfApplication();
    [[nodiscard]] QStringList files() const;

    UserDefaults *const q;
    const QVariantMap arguments;
    DefaultsDomain application;
    std::optional<DefaultsDomain> global;
    QVariantMap registration;
    int batches = 0;
    QTimer timer;
    QPointer<QCoreApplication> awaitedEnd;
    std::unique_ptr<FileWatch> watch;
};

UserDefaults::Private::Private(UserDefaults *store, const QString &filePath, const QString &globalFilePath,
                               const QStringList &argumentList)
    : q(store), arguments(argumentDomain(argumentList)), application(filePath)
{
    if (!globalFilePath.isEmpty())
        global.emplace(globalFilePath);
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, q, [this] { q->synchronize(); });
    QStringList changed;
    exchange(&changed);
}

QVariant UserDefaults::Private::value(const QString &key) const
{
    if (const auto found = arguments.constFind(key); found != arguments.cend())
        return *found;
    QVariant value = application.value(key);
    if (!value.isValid() && global)
        value = global->value(key);
    return value.isValid() ? value : registration.value(key);
}

bool UserDefaults::Private::isRegistrationHidden(const QString &key) const
{
    return isHidden(key) || application.contains(key) || (global && global->contains(key));
}

void UserDefaults::Private::change(const QString &key, const QVariant &value)
{
    if (!application.set(key, value))
        return;
    writeLater(WriteMilliseconds);
    if (!isHidden(key))
        Q_EMIT q->defaultsChanged({key});
}

/// Without an event loop, synchronize() and the store's end remain.
void UserDefaults::Private::writeLater(int milliseconds)
{
    writeAtEndOfApplication();
    if (!timer.isActive() && QAbstractEventDispatcher::instance(q->thread()))
        timer.start(milliseconds);
}

/// The application may have been made after the store.
void UserDefaults::Private::writeAtEndOfApplication()
{
    QCoreApplication *current = QCoreApplication::instance();
    if (!current || awaitedEnd == current)
        return;
    awaitedEnd = current;
    QObject::connect(current, &QCoreApplication::aboutToQuit, q, [this] { synchronize(); });
    // Programs that never run the event loop end without quitting.
    QObject::connect(current, &QObject::destroyed, q, [this] {
        watch.reset();
        synchronize();
    });
}

/// Writes and takes in. \param changed gets the keys whose visible values others changed
bool UserDefaults::Private::exchange(QStringList *changed)
{
    QStringList ours, shared;
    const bool done = application.hasPending() ? application.write(&ours) : application.refresh(&ours);
    if (global)
        global->refresh(&shared);
    for (const QString &key : std::as_const(ours)) {
        if (!isHidden(key))
            changed->append(key);
    }
    for (const QString &key : std::as_const(shared)) {
        if (!isHidden(key) && !application.contains(key) && !changed->contains(key))
            changed->append(key);
    }
    return done;
}

bool UserDefaults::Private::synchronize()
{
    timer.stop();
    QStringList changed;
    const bool done = exchange(&changed);
    const bool failed = application.hasPending();
    if (failed)
        writeLater(RetryMilliseconds);
    const QPointer<UserDefaults> store(q); // a slot may destroy it, so nothing of it is used after a signal
    if (failed)
        Q_EMIT store->writeFailed(application.failure());
    if (store && !changed.isEmpty())
        Q_EMIT store->defaultsChanged(changed);
    return done;
}

QStringList UserDefaults::Private::files() const
{
    QStringList paths{application.filePath()};
    if (global)
        paths.append(global->filePath());
    return paths;
}

UserDefaults::UserDefaults(const QString &filePath, const QString &globalFilePath, const QStringList &arguments)
    : d(std::make_unique<Private>(this, filePath, globalFilePath, arguments))
{}

UserDefaults::~UserDefaults()
{
    QStringList unannounced;
    if (d->application.hasPending())
        d->application.write(&unannounced);
}

QString UserDefaults::filePath() const { return d->application.filePath(); }

QVariant UserDefaults::objectForKey(const QString &key) const { return d->value(key); }

void UserDefaults::setObject(const QVariant &value, const QString &forKey)
{
    if (isAbsent(value))
        return removeObjectForKey(forKey);
    const QVariant stored = storable(value, forKey);
    if (stored.isValid())
        d->change(forKey, stored);
}

void UserDefaults::removeObjectForKey(const QString &key) { d->change(key, {}); }

bool UserDefaults::synchronize() { return d->batches > 0 || d->synchronize(); }

QVariantMap UserDefaults::dictionaryRepresentation() const
{
    QVariantMap all = d->registration;
    if (d->global)
        d->global->mergeInto(&all);
    d->application.mergeInto(&all);
    all.insert(d->arguments);
    return all;
}

void UserDefaults::registerDefaults(const QVariantMap &values)
{
    QStringList changed;
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry) {
        const QVariant value = storable(*entry, entry.key());
        if (!value.isValid())
            continue;
        if (d->registration.value(entry.key()) != value && !d->isRegistrationHidden(entry.key()))
            changed.append(entry.key());
        d->registration.insert(entry.key(), value);
    }
    if (!changed.isEmpty())
        Q_EMIT defaultsChanged(changed);
}

bool UserDefaults::isWatching() const { return d->watch != nullptr; }

void UserDefaults::setWatching(bool watching)
{
    if (watching == isWatching())
        return;
    d->writeAtEndOfApplication();
    d->watch = watching ? std::make_unique<FileWatch>(d->files(), [this] { synchronize(); }) : nullptr;
    Q_EMIT watchingChanged();
}

UserDefaults::Batch::Batch(UserDefaults *store) : m_store(store)
{
    if (m_store)
        ++m_store->d->batches;
}

UserDefaults::Batch::~Batch()
{
    if (m_store && --m_store->d->batches == 0)
        m_store->synchronize();
}

} // namespace dravelin
