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
    m_widgets << new DesignerWidget(
        {u"dravelin::VerticalStackView"_s,
         u"dravelin/interface/stackview.h"_s,
         tr("Vertical stack view"),
         tr("Lays out its children in a column. In Qt Designer they stay where they are put."),
         {160, 200},
         [arrangement](QWidget *owner, bool inDesigner) -> QWidget * {
             auto *view = new VerticalStackView(owner);
             if (!inDesigner) // there it would shrink to nothing while it is empty
                 arrangement->add(view);
             return view;
         }},
        this);
    m_widgets << new DesignerWidget({u"dravelin::FlippedView"_s,
                                     u"dravelin/interface/stackview.h"_s,
                                     tr("Flipped view"),
                                     tr("A plain container."),
                                     {160, 120},
                                     [](QWidget *owner, bool) -> QWidget * { return new FlippedView(owner); }},
                                    this);
}
