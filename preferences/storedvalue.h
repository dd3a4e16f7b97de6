// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QVariant>

namespace dravelin::detail {

/// \name What a stored or observed value comes to as a number
/// Text is parsed from its start; anything that is neither text nor number is 0.
/// @{
[[nodiscard]] bool boolValue(const QVariant &value);
[[nodiscard]] int intValue(const QVariant &value);
[[nodiscard]] qint64 integerValue(const QVariant &value);
[[nodiscard]] float floatValue(const QVariant &value);
[[nodiscard]] double doubleValue(const QVariant &value);
/// @}

} // namespace dravelin::detail
