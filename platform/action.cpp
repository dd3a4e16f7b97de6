// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/action.h>

namespace dravelin::detail {

ActionTarget::ActionTarget(QObject *target, const Selector &operation)
    : m_target(target), m_root(qobject_cast<Object *>(target)), m_operation(operation)
{}

} // namespace dravelin::detail
