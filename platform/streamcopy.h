// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>

namespace dravelin::detail {

/// Copies past the caches, for results so large that they would only be driven out of them again: the memory written to
/// need not be read first. Finish with finishStreamCopies() before another thread reads the copy.
void streamCopy(void *to, const void *from, std::size_t size);
void finishStreamCopies();

/// Results of at least so many bytes are worth it.
inline constexpr std::size_t streamedSize = std::size_t(32) << 20;

} // namespace dravelin::detail
