// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/keyvalue.h>

#include "platform/propertywatch.h"

#include <QtCore/QPointer>
#include <QtCore/QStringList>

#include <utility>
#include <vector>

namespace dravelin {

using detail::PropertyWatch;

/// One watch per name of the path, as far as there are objects.
class KeyValueObservation::Private : public std::enable_shared_from_this<Private>
{
public:
    Private(QObject *observed, const QString &path, Handler changeHandler)
        : object(observed), keyPath(path), keys(path.split(u'.')), handler(std::move(changeHandler))
    {
        watchFrom(0, observed);
        value = read();
    }

    void watchFrom(qsizetype level, QObject *levelObject)
    {
        watches.resize(size_t(level));
        while (levelObject && level < keys.size()) {
            watches.push_back(
                std::make_unique<PropertyWatch>(levelObject, keys.at(level), [this, level] { changed(level); }));
            levelObject = ++level < keys.size() ? watches.back()->read().value<QObject *>() : nullptr;
        }
    }

    [[nodiscard]] QVariant read() const
    {
        const bool complete = watches.size() == size_t(keys.size()) && watches.back()->object();
        return complete ? watches.back()->read() : QVariant::fromValue(nullptr);
    }

    void changed(qsizetype level)
    {
        const auto self = shared_from_this(); // the handler may end the observation
        if (level + 1 < keys.size())
            watchFrom(level + 1, watches[size_t(level)]->read().value<QObject *>());
        const KeyValueChange change{std::exchange(value, read()), value};
        if (handler)
            handler(change);
    }

    QPointer<QObject> object;
    QString keyPath;
    QStringList keys;
    Handler handler;
    QVariant value;
    std::vector<std::unique_ptr<PropertyWatch>> watches;
};

KeyValueObservation::KeyValueObservation(QObject *object, const QString &keyPath, Handler handler)
    : d(std::make_shared<Private>(object, keyPath, std::move(handler)))
{}

KeyValueObservation::~KeyValueObservation() { d->watches.clear(); }

QObject *KeyValueObservation::object() const { return d->object; }

QString KeyValueObservation::keyPath() const { return d->keyPath; }

} // namespace dravelin
