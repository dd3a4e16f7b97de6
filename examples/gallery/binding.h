// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/control/proxies.h>

#include <QtCore/QObject>

/// Keeps a property of an object and the value that a widget edits equal, in both directions, while both live.
/// Belongs to the widget.
class Binding : public QObject
{
    Q_OBJECT

public:
    /// \param widgetProperty the widget's property, its USER property unless given
    Binding(QObject *object, const QString &key, QObject *widget, const QString &widgetProperty = {});

private:
    dravelin::KVOProxy m_toWidget;
    dravelin::KVOProxy m_toObject;
};
