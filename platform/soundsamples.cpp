// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/soundsamples.h>

#include <algorithm>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/soundsamples.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h comes first.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace dravelin::detail::HWY_NAMESPACE {

constexpr float FullScale = 32768;
constexpr float Most = 32767;

/// As many as fill whole vectors. \return how many
HWY_ATTR std::size_t convertVectors(const float *in, std::size_t count, qint16 *out)
{
    namespace hn = hwy::HWY_NAMESPACE;
    const hn::ScalableTag<float> d;
    const hn::Rebind<qint16, decltype(d)> half;
    std::size_t i = 0;
    for (; i + hn::Lanes(d) <= count; i += hn::Lanes(d)) {
        const auto given = hn::LoadU(d, in + i);
        const auto number = hn::IfThenElseZero(hn::Eq(given, given), given);
        const auto scaled = hn::Mul(number, hn::Set(d, FullScale));
        const auto bounded = hn::Min(hn::Max(scaled, hn::Set(d, -FullScale)), hn::Set(d, Most));
        hn::StoreU(hn::DemoteTo(half, hn::NearestInt(bounded)), half, out + i);
    }
    return i;
}

} // namespace dravelin::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace dravelin::detail {

HWY_EXPORT(convertVectors);

void convertSamples(std::span<const float> in, std::span<qint16> out)
{
    constexpr float FullScale = 32768;
    for (std::size_t i = HWY_DYNAMIC_DISPATCH(convertVectors)(in.data(), in.size(), out.data()); i < in.size(); ++i)
        out[i] = std::isnan(in[i]) ? qint16(0)
                                   : qint16(std::lrint(std::clamp(in[i] * FullScale, -FullScale, FullScale - 1)));
}

} // namespace dravelin::detail
#endif
