// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <imaging/pixel_kernels.h>

#include <algorithm>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "imaging/pixel_kernels.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h comes first.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace dravelin::detail::HWY_NAMESPACE {

namespace hn = hwy::HWY_NAMESPACE;

namespace {

using Pixels = hn::ScalableTag<quint32>;
using Vector = hn::Vec<Pixels>;

constexpr std::size_t mostAtOnce = 1024;

template <int Shift>
HWY_ATTR HWY_INLINE Vector multiplied(Vector pixels, float factor)
{
    const hn::RebindToSigned<Pixels> integers;
    const hn::RebindToFloat<Pixels> floats;
    const auto sample = hn::And(hn::ShiftRight<Shift>(pixels), hn::Set(Pixels(), 255));
    const auto product = hn::Mul(hn::ConvertTo(floats, hn::BitCast(integers, sample)), hn::Set(floats, factor));
    return hn::ShiftLeft<Shift>(hn::BitCast(Pixels(), hn::NearestInt(product)));
}

HWY_ATTR HWY_INLINE Vector multiplied(Vector pixels, const ChannelFactors &factors)
{
    const Vector alpha = hn::And(pixels, hn::Set(Pixels(), 0xff000000));
    const Vector colour = hn::Or(multiplied<8>(pixels, factors.green), multiplied<0>(pixels, factors.blue));
    return hn::Or(hn::Or(alpha, multiplied<16>(pixels, factors.red)), colour);
}

} // namespace

HWY_ATTR void multiply(QRgb *to, const QRgb *from, std::size_t count, const ChannelFactors &factors)
{
    const Pixels tag;
    const std::size_t lanes = hn::Lanes(tag);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes)
        hn::StoreU(multiplied(hn::LoadU(tag, from + i), factors), tag, to + i);
    if (i == count)
        return;
    QRgb rest[HWY_MAX_BYTES / sizeof(QRgb)] = {};
    std::copy(from + i, from + count, rest);
    hn::StoreU(multiplied(hn::LoadU(tag, rest), factors), tag, rest);
    std::copy(rest, rest + (count - i), to + i);
}

HWY_ATTR bool opaque(const QRgb *pixels, std::size_t count)
{
    const Pixels tag;
    const std::size_t lanes = hn::Lanes(tag);
    std::size_t i = 0;
    QRgb all = ~QRgb();
    while (i + lanes <= count && all >> 24 == 255) {
        Vector common = hn::Set(tag, ~QRgb());
        for (const std::size_t end = std::min(count, i + mostAtOnce); i + lanes <= end; i += lanes)
            common = hn::And(common, hn::LoadU(tag, pixels + i));
        // The least one has the alpha bits of all only if they are all set.
        all = hn::GetLane(hn::MinOfLanes(tag, common));
    }
    for (; i < count; ++i)
        all &= pixels[i];
    return all >> 24 == 255;
}

HWY_ATTR void countThem(const QRgb *pixels, std::size_t count, quint32 *counts)
{
    const Pixels tag;
    const Vector first = hn::Set(tag, 0xff000000), one = hn::Set(tag, 1);
    const std::size_t lanes = hn::Lanes(tag);
    std::size_t i = 0;
    for (; i + lanes <= count; i += lanes) {
        const auto isOne = hn::Lt(hn::LoadU(tag, pixels + i), first);
        hn::StoreU(hn::Add(hn::LoadU(tag, counts + i), hn::IfThenElseZero(isOne, one)), tag, counts + i);
    }
    for (; i < count; ++i)
        counts[i] += pixels[i] >> 24 < 255;
}

} // namespace dravelin::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace dravelin::detail {

HWY_EXPORT(multiply);
HWY_EXPORT(opaque);
HWY_EXPORT(countThem);

void multiplyPixels(QRgb *to, const QRgb *from, std::size_t count, const ChannelFactors &factors)
{
    HWY_DYNAMIC_DISPATCH(multiply)(to, from, count, factors);
}

bool areOpaque(const QRgb *pixels, std::size_t count) { return HWY_DYNAMIC_DISPATCH(opaque)(pixels, count); }

void countTranslucent(const QRgb *pixels, std::size_t count, quint32 *counts)
{
    HWY_DYNAMIC_DISPATCH(countThem)(pixels, count, counts);
}

} // namespace dravelin::detail
#endif
