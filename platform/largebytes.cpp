// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/largebytes.h>

#include <sys/mman.h>

namespace dravelin {

namespace {

constexpr quintptr HugePage = quintptr(2) << 20;

/// Only whole pages inside the bytes, so that no other memory is affected. A refusal does no harm.
void adviseHugePages(QByteArray &bytes)
{
    if (quintptr(bytes.size()) < 2 * HugePage)
        return;
    char *const data = bytes.data();
    const quintptr unaligned = -reinterpret_cast<quintptr>(data) & (HugePage - 1);
    const quintptr length = (quintptr(bytes.size()) - unaligned) & ~(HugePage - 1);
    madvise(data + unaligned, length, MADV_HUGEPAGE);
}

} // namespace

QByteArray detail::uninitializedBytes(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    adviseHugePages(bytes);
    return bytes;
}

void detail::growBytes(QByteArray &bytes, qsizetype size)
{
    bytes.reserve(size); // resize() alone would round up to a power of two
    bytes.resize(size);
    adviseHugePages(bytes);
}

} // namespace dravelin
