// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>
#include <QtCore/QByteArrayView>

#include <limits>

namespace dravelin::detail {

/// zlib counts what one call may read and write in 32 bits; larger buffers are handed over in pieces.
inline constexpr quint32 LargestZlibPiece = std::numeric_limits<quint32>::max();

/// What zlibCompressed() does with bytes that are not empty. \param largestPiece for tests
[[nodiscard]] DRAVELIN_EXPORT QByteArray deflated(QByteArrayView bytes, quint32 largestPiece = LargestZlibPiece);

/// What zlibDecompressed() does with bytes that are not empty. \param largestPiece for tests
[[nodiscard]] DRAVELIN_EXPORT QByteArray inflated(QByteArrayView stream, qsizetype maximumSize,
                                                  quint32 largestPiece = LargestZlibPiece);

} // namespace dravelin::detail
