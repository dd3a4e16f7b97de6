// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/readout.h"

#include <QtCore/QStringList>
#include <QtGui/QAccessible>
#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

namespace dravelin::detail {

namespace {

/// By itself, and not because what it is in is not shown yet.
bool isHidden(const QWidget &view)
{
    return view.testAttribute(Qt::WA_WState_Hidden) && view.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

void collect(QWidget &view, QStringList &texts)
{
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&view);
    const auto before = texts.size();
    for (const auto kind : {QAccessible::Name, QAccessible::Value}) {
        const QString text = accessible ? accessible->text(kind) : QString();
        // A text field is called what the label beside it says.
        if (!text.isEmpty() && !texts.contains(text))
            texts.append(text);
    }
    if (texts.size() > before && accessible->role() != QAccessible::Grouping)
        return;
    const auto children = view.findChildren<QWidget *>(Qt::FindDirectChildrenOnly);
    for (QWidget *child : children) {
        if (!isHidden(*child) && !child->isWindow())
            collect(*child, texts);
    }
}

} // namespace

QString readOut(QWidget &view)
{
    QStringList texts;
    collect(view, texts);
    return texts.join(u", "_s);
}

} // namespace dravelin::detail
