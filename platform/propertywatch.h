// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QMetaProperty>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QProperty>
#include <QtCore/QString>
#include <QtCore/QVariant>

#include <functional>
#include <memory>

namespace dravelin::detail {

/// Calls back at every announced change of one property of one object. The callback may destroy the watch.
class PropertyWatch
{
public:
    PropertyWatch(QObject *object, const QString &key, std::function<void()> changed);
    ~PropertyWatch();
    Q_DISABLE_COPY_MOVE(PropertyWatch)

    [[nodiscard]] QObject *object() const { return m_object; }
    /// The property's present value; invalid when the object is gone or has no such property.
    [[nodiscard]] QVariant read() const;

private:
    void watchDeclared(const std::function<void()> &changed);
    void watchDynamic(const std::function<void()> &changed);

    QPointer<QObject> m_object;
    QByteArray m_key;
    QMetaProperty m_property;
    std::unique_ptr<QObject> m_hook;
    std::unique_ptr<QPropertyNotifier> m_notifier;
};

} // namespace dravelin::detail
