// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "deferredarrangement.h"

#include <ranges>
#include <utility>

void DeferredArrangement::add(dravelin::VerticalStackView *view)
{
    if (m_views.empty())
        QMetaObject::invokeMethod(this, &DeferredArrangement::arrange, Qt::QueuedConnection);
    m_views.emplace_back(view);
}

void DeferredArrangement::arrange()
{
    for (const auto &view : std::exchange(m_views, {}) | std::views::reverse) {
        if (view)
            view->arrangeViews();
    }
}
