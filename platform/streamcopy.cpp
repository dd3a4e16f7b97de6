// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/streamcopy.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/streamcopy.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h comes first.
#include <hwy/cache_control.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace dravelin::detail::HWY_NAMESPACE {

HWY_ATTR void copyAligned(uint8_t *to, const uint8_t *from, std::size_t size)
{
    namespace hn = hwy::HWY_NAMESPACE;
    const hn::ScalableTag<uint8_t> d;
    for (std::size_t i = 0; i < size; i += hn::Lanes(d))
        hn::Stream(hn::LoadU(d, from + i), d, to + i);
}

} // namespace dravelin::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace dravelin::detail {

HWY_EXPORT(copyAligned);

void streamCopy(void *to, const void *from, std::size_t size)
{
    constexpr std::size_t alignment = 256; // whole vectors of any length
    auto *target = static_cast<uint8_t *>(to);
    const auto *source = static_cast<const uint8_t *>(from);
    const std::size_t before = std::min(size, -reinterpret_cast<uintptr_t>(target) & (alignment - 1));
    const std::size_t aligned = (size - before) & ~(alignment - 1);
    std::memcpy(target, source, before);
    HWY_DYNAMIC_DISPATCH(copyAligned)(target + before, source + before, aligned);
    std::memcpy(target + before + aligned, source + before + aligned, size - before - aligned);
}

void finishStreamCopies() { hwy::FlushStream(); }

} // namespace dravelin::detail
#endif
