// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstddef>

namespace dravelin::detail {

/// Asks the system for huge pages for a large block of fresh memory; a small one is left as it is.
void adviseHugePages(void *memory, std::size_t size);

/// Bytes to be written over. Their memory is untouched; when there is much of it, the system is asked for huge pages,
/// for a page fault per 4 KiB is a good part of the cost of filling fresh memory.
/// \throws std::bad_alloc
[[nodiscard]] QByteArray uninitializedBytes(qsizetype size);

/// The same for text.
[[nodiscard]] QString uninitializedText(qsizetype size);

/// Makes the bytes longer, to exactly that capacity; new ones are as in uninitializedBytes(). Large blocks keep their
/// pages, so nothing is copied. \throws std::bad_alloc, leaving the bytes as they were
void growBytes(QByteArray &bytes, qsizetype size);

/// The same for text.
void growText(QString &text, qsizetype size);

} // namespace dravelin::detail
