// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/vectorsort.h>

#include <hwy/detect_targets.h>

// The library's ready-made sort is slow for 32 bits on processors whose AVX-512 compresses slowly to memory. AVX2 is
// nearly as fast as AVX-512 on all others, so 32 bits are sorted by code compiled here, without AVX-512.
#undef HWY_DISABLED_TARGETS
#define HWY_DISABLED_TARGETS (HWY_AVX3 | HWY_AVX3_DL)
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/vectorsort.cpp"
#include <hwy/foreach_target.h>

#include <hwy/contrib/sort/traits-inl.h>
#include <hwy/contrib/sort/vqsort-inl.h>
#include <hwy/highway.h>

#include <algorithm>

HWY_BEFORE_NAMESPACE();

namespace dravelin::detail::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

template <typename Key>
void sortAscending(Key *keys, std::size_t count)
{
#if !VQSORT_ENABLED
    std::sort(keys, keys + count);
#elif HWY_HAVE_SCALABLE
    // The sort by vectors of unknown length needs a buffer, which this one brings.
    hwy::Sorter()(keys, count, hwy::SortAscending());
#else
    const hn::detail::SharedTraits<hn::detail::TraitsLane<hn::detail::OrderAscending<Key>>> order;
    hn::Sort(hn::SortTag<Key>(), order, keys, count, static_cast<Key *>(nullptr));
#endif
}

void sortInt32(std::int32_t *keys, std::size_t count) { sortAscending(keys, count); }
void sortUInt32(std::uint32_t *keys, std::size_t count) { sortAscending(keys, count); }

} // namespace dravelin::detail::HWY_NAMESPACE

HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace dravelin::detail {

HWY_EXPORT(sortInt32);
HWY_EXPORT(sortUInt32);

void vectorSort(std::int32_t *keys, std::size_t count) { HWY_DYNAMIC_DISPATCH(sortInt32)(keys, count); }
void vectorSort(std::uint32_t *keys, std::size_t count) { HWY_DYNAMIC_DISPATCH(sortUInt32)(keys, count); }

void vectorSort(std::int64_t *keys, std::size_t count) { hwy::Sorter()(keys, count, hwy::SortAscending()); }
void vectorSort(std::uint64_t *keys, std::size_t count) { hwy::Sorter()(keys, count, hwy::SortAscending()); }

} // namespace dravelin::detail

#endif
