// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <functional>
#include <memory>

namespace dravelin {

/// The value of the property `key` of `object`, dynamic properties included; invalid for no object.
/// \throws Exception NSUndefinedKeyException when the object has no such property
/// \operation{valueForKey:}
[[nodiscard]] DRAVELIN_EXPORT QVariant valueForKey(const QObject *object, const QString &key);

/// As valueForKey(), along names joined by dots, such as "page.margin", each but the last naming a property that holds
/// an object. Invalid when one of these holds none.
/// \operation{valueForKeyPath:}
[[nodiscard]] DRAVELIN_EXPORT QVariant valueForKeyPath(const QObject *object, const QString &keyPath);

/// Sets the property `forKey` of `object`, converting the value to the property's type. An absent value (invalid, or
/// the null placeholder) sets a property of text, bytes, object or other class type to its empty value. A value that
/// cannot be converted leaves the property as it is and is a line in the log. Does nothing for no object.
/// \throws Exception NSUndefinedKeyException when the object has no such property or it cannot be written;
/// NSInvalidArgumentException for an absent value and a property that is a number or a truth value
/// \operation{setValue:forKey:}
DRAVELIN_EXPORT void setValue(QObject *object, const QVariant &value, const QString &forKey);

/// One change of an observed property.
struct KeyValueChange
{
    QVariant oldValue;
    QVariant newValue;
};

/// Watches one property, or a path of properties, of an object for as long as it lives.
///
///     dravelin::KeyValueObservation zoom(document, "page.zoom", [&](const dravelin::KeyValueChange &change) {
///         rescale(change.oldValue.toReal(), change.newValue.toReal());
///     });
///
/// Changes are seen through the property's NOTIFY signal, whatever arguments it has, or through its binding interface,
/// or, for dynamic properties, through the object's events; each announcement is handed on at once, on the thread that
/// made the change, one that announces an unchanged value as well. The old value is the one last seen. Along a path
/// every object may be exchanged; while one is missing the value is the null placeholder,
/// `QVariant::fromValue(nullptr)`.
///
/// A property that does not exist or does not announce its changes is a line in the log. The observation ends silently
/// with the object. The handler may destroy the observation, the observed object, or both.
class DRAVELIN_EXPORT KeyValueObservation
{
public:
    using Handler = std::function<void(const KeyValueChange &)>;

    KeyValueObservation(QObject *object, const QString &keyPath, Handler handler);
    ~KeyValueObservation();
    Q_DISABLE_COPY_MOVE(KeyValueObservation)

    /// The observed object; null when it is gone.
    [[nodiscard]] QObject *object() const;
    [[nodiscard]] QString keyPath() const;

private:
    class Private;
    std::shared_ptr<Private> d;
};

} // namespace dravelin
