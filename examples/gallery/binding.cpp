// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "binding.h"

#include <dravelin/platform/keyvalue.h>

#include <QtCore/QMetaProperty>

using dravelin::KVOProxy;

namespace {

QString userProperty(const QObject *widget) { return QString::fromUtf8(widget->metaObject()->userProperty().name()); }

/// Sets the property to what the proxy saw, unless it is that already: an editor keeps its cursor.
auto copierTo(QObject *object, const QString &key)
{
    return [object, key](KVOProxy *proxy) {
        if (dravelin::valueForKey(object, key) != proxy->getNewValue())
            dravelin::setValue(object, proxy->getNewValue(), key);
    };
}

} // namespace

Binding::Binding(QObject *object, const QString &key, QObject *widget, const QString &widgetProperty)
    : QObject(widget),
      m_toWidget(object, key, widget,
                 copierTo(widget, widgetProperty.isEmpty() ? userProperty(widget) : widgetProperty)),
      m_toObject(widget, widgetProperty.isEmpty() ? userProperty(widget) : widgetProperty, object,
                 copierTo(object, key))
{
    dravelin::setValue(widget, dravelin::valueForKey(object, key), m_toObject.keyPath());
}
