// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/largebytes.h>

#include <sys/mman.h>

namespace dravelin {

namespace {

constexpr quintptr Page = 4096;
constexpr quintptr WorthIt = quintptr(4) << 20; ///< two huge pages, so that one is whole

} // namespace

// All pages of the block, the outer ones too: of a mapping that is advised in part the C library cannot move the pages
// when it grows, and copies. The advice does no harm to others, nor does a refusal.
void detail::adviseHugePages(void *memory, std::size_t size)
{
    if (size < WorthIt)
        return;
    const quintptr before = reinterpret_cast<quintptr>(memory) & (Page - 1);
    madvise(static_cast<char *>(memory) - before, (before + size + Page - 1) & ~(Page - 1), MADV_HUGEPAGE);
}

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

void detail::growText(QString &text, qsizetype size)
{
    text.reserve(size);
    text.resize(size);
    adviseHugePages(text.data(), quintptr(text.size()) * sizeof(QChar));
}

} // namespace dravelin
