// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/largebytes.h>

#include <sys/mman.h>

namespace dravelin {

namespace {

constexpr quintptr HugePage = quintptr(2) << 20;

/// Only whole pages inside the memory, so that no other is affected. A refusal does no harm.
void adviseHugePages(void *memory, quintptr size)
{
    if (size < 2 * HugePage)
        return;
    const quintptr unaligned = -reinterpret_cast<quintptr>(memory) & (HugePage - 1);
    madvise(static_cast<char *>(memory) + unaligned, (size - unaligned) & ~(HugePage - 1), MADV_HUGEPAGE);
}

} // namespace

QByteArray detail::uninitializedBytes(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    adviseHugePages(bytes.data(), quintptr(bytes.size()));
    return bytes;
}

QString detail::uninitializedText(qsizetype size)
{
    QString text(size, Qt::Uninitialized);
    adviseHugePages(text.data(), quintptr(size) * sizeof(QChar));
    return text;
}

void detail::growBytes(QByteArray &bytes, qsizetype size)
{
    bytes.reserve(size); // resize() alone would round up to a power of two
    bytes.resize(size);
    adviseHugePages(bytes.data(), quintptr(bytes.size()));
}

} // namespace dravelin
