// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/exception.h>
#include <dravelin/platform/export.h>

#include <QtCore/QByteArray>

#include <limits>

namespace dravelin {

/// Bytes as a zlib stream and back. From any thread.
///
///     const QByteArray packed = dravelin::zlibCompressed(bytes);
///     dravelin::zlibDecompressed(packed) == bytes;               // true
///     try {
///         document = dravelin::zlibDecompressed(received, 64 << 20);
///     } catch (const dravelin::Exception &e) {
///         qWarning() << e.what();                                // truncated, damaged, or more than 64 MiB
///     }
inline namespace Compression {

/// A zlib stream (RFC 1950) of the default compression level and nothing else: any zlib reads it. It has no length in
/// front, as qUncompress() wants one.
/// \return empty bytes for empty bytes, without zlib's header; absent bytes for absent ones
/// \throws Exception NSMallocException when memory runs out, NSInternalInconsistencyException when there is none for
/// zlib to begin with
/// \cost that of zlib; while it runs, as much memory again as `data` has
/// \operation{zlibCompressed}
[[nodiscard]] DRAVELIN_EXPORT QByteArray zlibCompressed(const QByteArray &data);

/// The bytes that a zlib stream holds. What follows the stream's end is ignored, further streams too.
/// \param maximumSize the most bytes, from 0, that the result may have. The stream itself says nothing of its size, and
/// one of 1 MiB may hold 1 GiB: set a bound for streams that come from outside.
/// \return empty bytes for empty bytes; absent bytes for absent ones
/// \throws Exception NSMallocException for anything else than a complete stream, with the cause and the place in its
/// reason, and when memory runs out; NSRangeException when the stream holds more than `maximumSize` bytes;
/// NSInternalInconsistencyException when there is no memory for zlib to begin with
/// \cost that of zlib; while it runs, memory of up to half the result more, or 2.5 times the stream
/// \operation{zlibDecompressed}
[[nodiscard]] DRAVELIN_EXPORT QByteArray
zlibDecompressed(const QByteArray &data, qsizetype maximumSize = std::numeric_limits<qsizetype>::max());

} // namespace Compression

} // namespace dravelin
