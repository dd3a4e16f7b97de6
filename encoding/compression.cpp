// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/compression.h>

#include <platform/zlibstream.h>

namespace dravelin {

QByteArray Compression::zlibCompressed(const QByteArray &data)
{
    return data.isEmpty() ? data : detail::deflated(data);
}

QByteArray Compression::zlibDecompressed(const QByteArray &data, qsizetype maximumSize)
{
    return data.isEmpty() ? data : detail::inflated(data, maximumSize);
}

} // namespace dravelin
