// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/undomanager.h>

#include <deque>
#include <optional>
#include <vector>

namespace dravelin {

/// What is undone at once.
struct UndoStep
{
    QString name;
    std::vector<Action<UndoManager *>> calls;

    /// Whether any of the targets still lives.
    [[nodiscard]] bool isAlive() const;
    void removeTarget(const QObject *target, std::vector<Action<UndoManager *>> &dropped);
};

/// Steps to undo, or to redo; the next one is the last. A call may own its argument, which may be the last owner of a
/// target of other calls: calls are destroyed only once the list is in order again.
class UndoSteps
{
public:
    [[nodiscard]] bool isEmpty() const noexcept { return m_steps.empty(); }
    [[nodiscard]] QString name() const { return isEmpty() ? QString() : m_steps.back().name; }
    void rename(const QString &name);
    void clear();

    /// \param levels as many stay, the last ones; 0 for all
    void push(UndoStep step, int levels);
    [[nodiscard]] std::optional<UndoStep> pop();
    void trim(int levels);
    void removeTarget(const QObject *target);
    /// Drops steps without living targets until the next one has some: each step is looked at once in its life.
    void dropDead();

private:
    std::deque<UndoStep> m_steps;
};

} // namespace dravelin
