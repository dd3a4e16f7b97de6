// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "designerplugin.h"

#include "deferredarrangement.h"
#include "designerwidget.h"

#include <dravelin/interface/stackview.h>

using namespace Qt::StringLiterals;
using namespace dravelin;

DesignerPlugin::DesignerPlugin(QObject *parent) : QObject(parent)
{
    auto *arrangement = new DeferredArrangement(this);
    m_widgets << new DesignerWidget({u"dravelin::VerticalStackView"_s,
                                     u"dravelin/interface/stackview.h"_s,
                                     tr("Vertical Stack View"),
                                     tr("Lays out its children in a column. In the form that is edited they stay where "
                                        "they are put; the preview and "
                                        "the application arrange them."),
                                     {160, 200},
                                     [arrangement](QWidget *owner) -> QWidget * {
                                         auto *view = new VerticalStackView(owner);
                                         arrangement->add(view);
                                         return view;
                                     }},
                                    this);
    m_widgets << new DesignerWidget({u"dravelin::FlippedView"_s,
                                     u"dravelin/interface/stackview.h"_s,
                                     tr("Flipped View"),
                                     tr("A plain container."),
                                     {160, 120},
                                     [](QWidget *owner) -> QWidget * { return new FlippedView(owner); }},
                                    this);
}
