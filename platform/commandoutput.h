// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArrayView>
#include <QtCore/QString>

namespace dravelin::detail {

/// Reads a pipe to its end.
/// \return the text, empty when there is none; absent when it is not valid UTF-8. Everything is read in any case, so
/// that the writer is not held up.
[[nodiscard]] QString readText(int pipe);

/// Text of whole characters in UTF-8, byte order marks included; what is not valid becomes U+FFFD.
[[nodiscard]] QString toText(QByteArrayView bytes);

} // namespace dravelin::detail
