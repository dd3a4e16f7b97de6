// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "encoding/encodingpage.h"

#include "encoding/arraypanel.h"
#include "encoding/formspanel.h"
#include "encoding/xmlpanel.h"

#include <QtWidgets/QTabWidget>
#include <QtWidgets/QVBoxLayout>

EncodingPage::EncodingPage()
    : m_tabs(new QTabWidget), m_forms(new FormsPanel), m_xml(new XmlPanel), m_arrays(new ArrayPanel)
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs);
    m_tabs->addTab(m_forms, tr("&Bytes as Text"));
    m_tabs->addTab(m_xml, tr("&XML"));
    m_tabs->addTab(m_arrays, tr("&Numbers"));
}

QString EncodingPage::title() const { return tr("Encoding"); }
