// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QString>

namespace dravelin::detail {

/// The text as it can go over the bus and be shown: of at most `limit` UTF-16 units, with U+FFFD for what is not text.
[[nodiscard]] QString notificationText(const QString &text, qsizetype limit);

} // namespace dravelin::detail
