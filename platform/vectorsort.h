// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>
#include <cstdint>

namespace dravelin::detail {

/// Sorts in place, smallest first, with the vectors of the processor at hand. Worth it from about a hundred keys on.
/// Integers only: sorting floats by vectors loses NaNs, infinities and the signs of zeros.
/// \cost n log n comparisons at the most, O(1) memory
void vectorSort(std::int32_t *keys, std::size_t count);
void vectorSort(std::uint32_t *keys, std::size_t count);
void vectorSort(std::int64_t *keys, std::size_t count);
void vectorSort(std::uint64_t *keys, std::size_t count);

} // namespace dravelin::detail
