// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/nativearray.h>

#include <dravelin/platform/exception.h>

#include <QtCore/QString>

#include <cstddef>
#include <limits>

namespace dravelin {

using namespace Qt::StringLiterals;

void *detail::reallocateNativeArray(void *buffer, quint64 count, std::size_t width)
{
    // What is larger cannot be had, and its size in bytes might wrap around to one that can.
    constexpr quint64 most = std::numeric_limits<std::ptrdiff_t>::max();
    void *result = nullptr;
    if (count <= most / width)
        result = buffer ? std::realloc(buffer, count * width) : std::calloc(count, width);
    if (!result)
        throw Exception(QLatin1String(NSMallocException),
                        u"no memory for an array of %1 elements of %2 bytes"_s.arg(count).arg(width));
    return result;
}

void detail::throwInsertionIntoEmptyArray(quint64 index)
{
    throw Exception(QLatin1String(NSRangeException), u"index %1 is outside an empty array"_s.arg(index));
}

} // namespace dravelin
