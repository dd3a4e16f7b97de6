// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "designerwidget.h"

#include <QtGui/QIcon>

using namespace Qt::StringLiterals;

DesignerWidget::DesignerWidget(const WidgetDescription &description, QObject *parent)
    : QObject(parent), m_description(description)
{}

QString DesignerWidget::group() const { return u"Dravelin"_s; }

QIcon DesignerWidget::icon() const { return {}; }

/// The object's name is the class's without the namespace, in lower camel case.
QString DesignerWidget::domXml() const
{
    QString objectName = name().section(u"::"_s, -1);
    objectName[0] = objectName[0].toLower();
    return uR"(<ui language="c++" displayname="%1"><widget class="%2" name="%3"><property name="geometry"><rect>
<x>0</x><y>0</y><width>%4</width><height>%5</height></rect></property></widget></ui>)"_s
        .arg(m_description.displayName.toHtmlEscaped(), name(), objectName)
        .arg(m_description.size.width())
        .arg(m_description.size.height());
}
