// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/childprocess.h"

namespace dravelin::detail {

/// Reaps a process that has closed its output and so is about to end. One that goes on all the same is reaped by a later
/// call, once it has ended. From any thread.
void reapSoon(ChildProcess process);

} // namespace dravelin::detail
