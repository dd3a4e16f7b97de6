// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArrayView>
#include <QtCore/QString>
#include <QtCore/QStringView>

namespace dravelin::detail {

/// The plain loops that define what encodeBase64WithData() and decodeBase64ToData() do; faster ones are compared with
/// them.
/// @{
[[nodiscard]] DRAVELIN_EXPORT QString encodeBase64Reference(QByteArrayView data);
[[nodiscard]] DRAVELIN_EXPORT QByteArray decodeBase64Reference(QStringView text);
/// @}

} // namespace dravelin::detail
