// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <platform/vectorsort.h>

#include <QtCore/QtGlobal>

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

namespace dravelin::detail {

/// Replaces the elements by as many of each value as there are; the counts are found by the value without its sign.
template <typename Integer, typename Counts>
void countingSort(Integer *elements, std::size_t count, Counts &&counts)
{
    using Unsigned = std::make_unsigned_t<Integer>;
    for (std::size_t i = 0; i < count; ++i)
        ++counts[Unsigned(elements[i])];
    for (int value = std::numeric_limits<Integer>::min(); value <= std::numeric_limits<Integer>::max(); ++value)
        elements = std::fill_n(elements, counts[Unsigned(value)], Integer(value));
}

/// Where the values with each value of one byte begin in the order of that byte.
using ByteStarts = std::array<std::size_t, 256>;

inline void startsFromCounts(ByteStarts &counts)
{
    std::size_t start = 0;
    for (std::size_t &count : counts)
        start += std::exchange(count, start);
}

/// Sorts 16-bit integers by their low bytes to the spare buffer, and by their high bytes back.
template <typename Integer>
void byteSort(Integer *elements, std::size_t count, Integer *spare)
{
    // With the sign inverted the bytes are ordered as unsigned ones.
    const auto low = [](Integer value) { return quint8(value); };
    const auto high = [](Integer value) { return quint8((value >> 8) ^ (std::is_signed_v<Integer> ? 0x80 : 0)); };
    ByteStarts lows{}, highs{};
    for (std::size_t i = 0; i < count; ++i) {
        ++lows[low(elements[i])];
        ++highs[high(elements[i])];
    }
    startsFromCounts(lows);
    startsFromCounts(highs);
    for (std::size_t i = 0; i < count; ++i)
        spare[lows[low(elements[i])]++] = elements[i];
    for (std::size_t i = 0; i < count; ++i)
        elements[highs[high(spare[i])]++] = spare[i];
}

/// From this size on counting 65536 values is faster than moving the elements twice.
constexpr std::size_t manyShortIntegers = 500'000;

template <typename Integer>
void sortShortIntegers(Integer *elements, std::size_t count)
{
    if (count >= manyShortIntegers) {
        if (const auto counts = std::unique_ptr<std::size_t[]>(new (std::nothrow) std::size_t[1 << 16]()))
            return countingSort(elements, count, counts.get());
    } else if (const auto spare = std::unique_ptr<Integer[]>(new (std::nothrow) Integer[count])) {
        return byteSort(elements, count, spare.get());
    }
    std::sort(elements, elements + count);
}

template <typename Integer>
void vectorSortIntegers(Integer *elements, std::size_t count)
{
    // The same widths by other names.
    using Fixed = std::conditional_t<sizeof(Integer) == 4, std::int32_t, std::int64_t>;
    using Key = std::conditional_t<std::is_signed_v<Integer>, Fixed, std::make_unsigned_t<Fixed>>;
    vectorSort(reinterpret_cast<Key *>(elements), count);
}

/// Whether the elements were in order, one way or the other; now they are in the order that is asked for.
template <typename Integer>
bool arrangeSorted(Integer *elements, std::size_t count, bool ascending)
{
    const bool rises = std::is_sorted(elements, elements + count);
    if (!rises && !std::is_sorted(elements, elements + count, std::greater<Integer>()))
        return false;
    if (rises != ascending)
        std::reverse(elements, elements + count);
    return true;
}

/// Below this size nothing is faster than the standard library, above it every method below is.
constexpr std::size_t fewIntegers = 100;

template <typename Integer>
void sortAscending(Integer *elements, std::size_t count)
{
    if (count < fewIntegers)
        std::sort(elements, elements + count);
    else if constexpr (sizeof(Integer) == 1)
        countingSort(elements, count, std::array<std::size_t, 256>{});
    else if constexpr (sizeof(Integer) == 2)
        sortShortIntegers(elements, count);
    else
        vectorSortIntegers(elements, count);
}

template <typename Integer>
void sortIntegers(Integer *elements, std::size_t count, bool ascending)
{
    if (arrangeSorted(elements, count, ascending))
        return;
    sortAscending(elements, count);
    if (!ascending)
        std::reverse(elements, elements + count);
}

} // namespace dravelin::detail
