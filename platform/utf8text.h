// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArrayView>
#include <QtCore/QChar>

namespace dravelin::detail {

/// Converts UTF-8 to UTF-16, some times as fast as Qt does where there is more than ASCII. Byte order marks are converted
/// like other characters.
/// \param text gets the result; has room for one unit more than there are bytes
/// \return how many units there are, or -1 when the bytes are not valid UTF-8
[[nodiscard]] DRAVELIN_EXPORT qsizetype utf8ToUtf16(QByteArrayView bytes, QChar *text);

} // namespace dravelin::detail
