// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/pixelkernels.h>

#include <algorithm>
#include <array>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/bytematrix_kernels.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h comes first.
#include <hwy/cache_control.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace dravelin::detail::HWY_NAMESPACE {

#if HWY_TARGET == HWY_SCALAR

int matrixOnBytes(const qint32 *, int, const QRgb *, QRgb *, int, bool) { return 0; }

#else

namespace {

namespace hn = hwy::HWY_NAMESPACE;

using Words = hn::ScalableTag<quint32>;
using Sums = hn::ScalableTag<qint32>;
using Halves = hn::Repartition<qint16, Sums>;

struct Factors
{
    hn::Vec<Halves> pairs[6];
    hn::Vec<Sums> half;
    int shift;
};

HWY_ATTR HWY_INLINE Factors makeFactors(const qint32 *pairs, int shift)
{
    Factors factors;
    for (int k = 0; k < 6; ++k)
        factors.pairs[k] = hn::BitCast(Halves(), hn::Set(Sums(), pairs[k]));
    factors.half = hn::Set(Sums(), 1 << (shift - 1));
    factors.shift = shift;
    return factors;
}

/// A channel of each pixel, 0 to 255, from the pairs of its blue and red, and of its green and alpha.
template <int Channel>
HWY_ATTR HWY_INLINE hn::Vec<Words> channel(hn::Vec<Halves> blueRed, hn::Vec<Halves> greenAlpha, const Factors &factors)
{
    hn::Vec<Sums> odd = hn::Zero(Sums());
    hn::Vec<Sums> sum = hn::ReorderWidenMulAccumulate(Sums(), blueRed, factors.pairs[Channel * 2], factors.half, odd);
    sum = hn::ReorderWidenMulAccumulate(Sums(), greenAlpha, factors.pairs[Channel * 2 + 1], sum, odd);
    sum = hn::ShiftRightSame(hn::RearrangeToOddPlusEven(sum, odd), factors.shift);
    return hn::BitCast(Words(), hn::Min(hn::Max(sum, hn::Zero(Sums())), hn::Set(Sums(), 255)));
}

HWY_ATTR HWY_INLINE hn::Vec<Words> changed(hn::Vec<Words> pixels, const Factors &factors)
{
    const auto evenBytes = hn::Set(Words(), 0x00ff00ffU), opaque = hn::Set(Words(), 0x00ff0000U);
    const auto blueRed = hn::BitCast(Halves(), hn::And(pixels, evenBytes));
    const auto greenAlpha = hn::BitCast(Halves(), hn::Or(hn::And(hn::ShiftRight<8>(pixels), evenBytes), opaque));
    const auto red = hn::ShiftLeft<16>(channel<0>(blueRed, greenAlpha, factors));
    const auto green = hn::ShiftLeft<8>(channel<1>(blueRed, greenAlpha, factors));
    const auto rest = hn::Or(channel<2>(blueRed, greenAlpha, factors), hn::Set(Words(), 0xff000000U));
    return hn::Or(hn::Or(red, green), rest);
}

} // namespace

/// \pre the two do not overlap, for the first and the last vector overlap their neighbours: those are aligned
/// \return how many pixels it did: all, or none of few
HWY_ATTR int matrixOnBytes(const qint32 *pairs, int shift, const QRgb *from, QRgb *to, int count, bool streams)
{
    const int step = int(hn::Lanes(Words()));
    if (count < step)
        return 0;
    const Factors factors = makeFactors(pairs, shift);
    hn::StoreU(changed(hn::LoadU(Words(), from), factors), Words(), to);
    int i = step - int(reinterpret_cast<quintptr>(to) / sizeof(QRgb) % std::size_t(step));
    for (; streams && i + step <= count; i += step)
        hn::Stream(changed(hn::LoadU(Words(), from + i), factors), Words(), to + i);
    for (; i + step <= count; i += step)
        hn::Store(changed(hn::LoadU(Words(), from + i), factors), Words(), to + i);
    hn::StoreU(changed(hn::LoadU(Words(), from + count - step), factors), Words(), to + count - step);
    return count;
}

#endif

} // namespace dravelin::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace dravelin::detail {

HWY_EXPORT(matrixOnBytes);

namespace {

constexpr int finest = 14, coarsest = 11; ///< at 11 bits the rounding of factors comes to a quarter of a level

qint32 pairOf(float low, float high, int shift)
{
    const auto fixed = [shift](float value) { return quint32(quint16(qint16(std::lround(std::ldexp(value, shift))))); };
    return qint32(fixed(low) | fixed(high) << 16);
}

int channelOf(const qint32 *pairs, int shift, QRgb pixel)
{
    const auto low = [](qint32 pair) { return int(qint16(pair & 0xffff)); };
    const auto high = [](qint32 pair) { return int(qint16(pair >> 16)); };
    const int sum = low(pairs[0]) * qBlue(pixel) + high(pairs[0]) * qRed(pixel) + low(pairs[1]) * qGreen(pixel)
                    + high(pairs[1]) * 255;
    return std::clamp((sum + (1 << (shift - 1))) >> shift, 0, 255);
}

} // namespace

ByteMatrix::ByteMatrix(const float (&matrix)[12])
{
    const float largest = std::abs(*std::ranges::max_element(matrix, {}, [](float value) { return std::abs(value); }));
    int shift = finest;
    while (shift >= coarsest && std::ldexp(largest, shift) > 32767)
        --shift;
    if (shift < coarsest)
        return;
    m_shift = shift;
    for (std::size_t row = 0; row < 3; ++row) {
        m_pairs[row * 2] = pairOf(matrix[row * 4 + 2], matrix[row * 4], shift);
        m_pairs[row * 2 + 1] = pairOf(matrix[row * 4 + 1], matrix[row * 4 + 3], shift);
    }
}

void ByteMatrix::apply(const QRgb *from, QRgb *to, int count, bool streams) const
{
    for (int i = HWY_DYNAMIC_DISPATCH(matrixOnBytes)(m_pairs, m_shift, from, to, count, streams); i < count; ++i)
        to[i] = qRgb(channelOf(m_pairs, m_shift, from[i]), channelOf(m_pairs + 2, m_shift, from[i]),
                     channelOf(m_pairs + 4, m_shift, from[i]));
}

} // namespace dravelin::detail
#endif
