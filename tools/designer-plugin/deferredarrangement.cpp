// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "deferredarrangement.h"

#include <utility>

namespace {

/// In a form that Qt Designer edits a view would shrink to nothing while it is empty, and take children from under the
/// pointer. The class is known by its name, so that applications need not load Qt Designer's libraries.
bool isEdited(const QWidget *view)
{
    const QWidget *ancestor = view;
    while (ancestor && !ancestor->inherits("QDesignerFormWindowInterface"))
        ancestor = ancestor->parentWidget();
    return ancestor;
}

} // namespace

void DeferredArrangement::add(dravelin::VerticalStackView *view)
{
    if (m_views.empty())
        QMetaObject::invokeMethod(this, &DeferredArrangement::arrange, Qt::QueuedConnection);
    m_views.emplace_back(view);
}

void DeferredArrangement::arrange()
{
    const auto views = std::exchange(m_views, {});
    for (auto view = views.crbegin(); view != views.crend(); ++view) {
        if (*view && !isEdited(*view))
            (*view)->arrangeViews();
    }
}
