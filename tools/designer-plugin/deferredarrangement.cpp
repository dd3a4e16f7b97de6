// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "deferredarrangement.h"

#include <utility>

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
        if (*view)
            (*view)->arrangeViews();
    }
}
