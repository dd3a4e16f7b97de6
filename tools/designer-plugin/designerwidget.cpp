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

QWidget *DesignerWidget::createWidget(QWidget *parent) { return m_description.create(parent, m_inDesigner); }

/// The object's name is the class's without the namespace, in lower camel case.
QString DesignerWidget::domXml() const
{
    QString objectName = name().section(u"::"_s, -1);
    objectName[0] = objectName[0].toLower();
    return uR"(<ui language="c++"><widget class="%1" name="%2"><property name="geometry"><rect>
<x>0</x><y>0</y><width>%3</width><height>%4</height></rect></property></widget></ui>)"_s.arg(name(), objectName)
        .arg(m_description.size.width())
        .arg(m_description.size.height());
}

void DesignerWidget::initialize(QDesignerFormEditorInterface *) { m_inDesigner = true; }
