// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/undosteps.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace dravelin {

bool UndoStep::isAlive() const
{
    return std::any_of(calls.begin(), calls.end(), [](const auto &call) { return call.target() != nullptr; });
}

void UndoStep::removeTarget(const QObject *target, std::vector<Action<UndoManager *>> &dropped)
{
    const auto first = std::stable_partition(calls.begin(), calls.end(),
                                             [target](const auto &call) { return call.target() != target; });
    std::move(first, calls.end(), std::back_inserter(dropped));
    calls.erase(first, calls.end());
}

void UndoSteps::rename(const QString &name)
{
    if (!isEmpty())
        m_steps.back().name = name;
}

void UndoSteps::clear() { const auto dropped = std::exchange(m_steps, {}); }

void UndoSteps::push(UndoStep step, int levels)
{
    if (!step.isAlive())
        return;
    m_steps.push_back(std::move(step));
    trim(levels);
}

std::optional<UndoStep> UndoSteps::pop()
{
    dropDead();
    if (isEmpty())
        return {};
    UndoStep step = std::move(m_steps.back());
    m_steps.pop_back();
    return step;
}

void UndoSteps::trim(int levels)
{
    while (levels > 0 && m_steps.size() > size_t(levels)) {
        const UndoStep dropped = std::move(m_steps.front());
        m_steps.pop_front();
    }
}

void UndoSteps::removeTarget(const QObject *target)
{
    std::vector<Action<UndoManager *>> dropped;
    for (UndoStep &step : m_steps)
        step.removeTarget(target, dropped);
    std::erase_if(m_steps, [](const UndoStep &step) { return step.calls.empty(); });
}

void UndoSteps::dropDead()
{
    while (!isEmpty() && !m_steps.back().isAlive()) {
        const UndoStep dropped = std::move(m_steps.back());
        m_steps.pop_back();
    }
}

} // namespace dravelin
