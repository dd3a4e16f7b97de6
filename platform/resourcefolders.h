// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QStringList>

namespace dravelin::detail {

/// Where the application's resources are looked for, in this order.
[[nodiscard]] QStringList resourceFolders();

} // namespace dravelin::detail
