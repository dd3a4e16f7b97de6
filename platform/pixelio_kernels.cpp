// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/pixelkernels.h>

#include <algorithm>
#include <cstring>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/pixelio_kernels.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h comes first.
#include <hwy/cache_control.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace dravelin::detail::HWY_NAMESPACE {

namespace {

#include <platform/pixelvector-inl.h>

using Words = hn::RebindToUnsigned<D>;
using Integers = hn::RebindToSigned<D>;
using WordVector = hn::Vec<Words>;

template <int Shift>
HWY_ATTR HWY_INLINE Vector channel(WordVector pixels)
{
    const WordVector byte = hn::And(hn::ShiftRight<Shift>(pixels), hn::Set(Words(), 0xff));
    return hn::ConvertTo(D(), hn::BitCast(Integers(), byte));
}

/// Of whole vectors.
template <PixelFormat Format>
HWY_ATTR HWY_INLINE void loadVector(WordVector pixels, PixelRow &row, int i)
{
    constexpr bool opaque = Format == PixelFormat::Opaque;
    const Vector fraction = hn::Set(D(), 1 / 255.0f);
    const Vector alpha = opaque ? hn::Set(D(), 255) : channel<24>(pixels);
    // Where alpha is 0, so are the colours.
    const Vector factor =
        Format == PixelFormat::Premultiplied ? hn::Div(hn::Set(D(), 1), hn::Max(alpha, hn::Set(D(), 1))) : fraction;
    const Color color = scaled({channel<16>(pixels), channel<8>(pixels), channel<0>(pixels)}, factor);
    store(Format == PixelFormat::Premultiplied ? clamped(color) : color, row, i);
    hn::Store(opaque ? hn::Set(D(), 1) : hn::Mul(alpha, fraction), D(), row.alpha + i);
}

template <int Shift>
HWY_ATTR HWY_INLINE WordVector byte(Vector value)
{
    // Halves go up: the conversion would round them to even, and a mode of the processor could change that.
    const auto level = hn::ConvertTo(Integers(), hn::Add(value, hn::Set(D(), 0.5f)));
    return hn::ShiftLeft<Shift>(hn::BitCast(Words(), level));
}

template <PixelFormat Format>
HWY_ATTR HWY_INLINE WordVector packVector(const PixelRow &row, int i)
{
    const Vector levels = hn::Set(D(), 255), alpha = clamped(hn::Load(D(), row.alpha + i));
    const Vector factor = Format == PixelFormat::Premultiplied ? hn::Mul(alpha, levels) : levels;
    const Color color = scaled(clamped(load(row, i)), factor);
    const WordVector top =
        Format == PixelFormat::Opaque ? hn::Set(Words(), 0xff000000U) : byte<24>(hn::Mul(alpha, levels));
    return hn::Or(hn::Or(top, byte<16>(color.red)), hn::Or(byte<8>(color.green), byte<0>(color.blue)));
}

template <PixelFormat Format>
HWY_ATTR HWY_INLINE void loadRow(const QRgb *from, PixelRow &row)
{
    int i = 0;
    for (; i + step() <= row.count; i += step()) {
        hwy::Prefetch(from + i + PixelRow::capacity); // the next block's, while the filters are at work on this one
        loadVector<Format>(hn::LoadU(Words(), from + i), row, i);
    }
    if (i < row.count) {
        HWY_ALIGN QRgb rest[16] = {};
        std::memcpy(rest, from + i, std::size_t(row.count - i) * sizeof(QRgb));
        loadVector<Format>(hn::Load(Words(), rest), row, i);
    }
}

template <PixelFormat Format>
HWY_ATTR HWY_INLINE void storeRow(const PixelRow &row, QRgb *to)
{
    int i = 0;
    for (; i + step() <= row.count; i += step())
        hn::StoreU(packVector<Format>(row, i), Words(), to + i);
    if (i < row.count) {
        HWY_ALIGN QRgb rest[16];
        hn::Store(packVector<Format>(row, i), Words(), rest);
        std::memcpy(to + i, rest, std::size_t(row.count - i) * sizeof(QRgb));
    }
}

} // namespace

HWY_ATTR void loadOpaque(const QRgb *from, PixelRow &row) { loadRow<PixelFormat::Opaque>(from, row); }
HWY_ATTR void loadStraight(const QRgb *from, PixelRow &row) { loadRow<PixelFormat::Straight>(from, row); }
HWY_ATTR void loadPremultiplied(const QRgb *from, PixelRow &row) { loadRow<PixelFormat::Premultiplied>(from, row); }

HWY_ATTR void storeOpaque(const PixelRow &row, QRgb *to) { storeRow<PixelFormat::Opaque>(row, to); }
HWY_ATTR void storeStraight(const PixelRow &row, QRgb *to) { storeRow<PixelFormat::Straight>(row, to); }
HWY_ATTR void storePremultiplied(const PixelRow &row, QRgb *to) { storeRow<PixelFormat::Premultiplied>(row, to); }

} // namespace dravelin::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace dravelin::detail {

HWY_EXPORT(loadOpaque);
HWY_EXPORT(loadStraight);
HWY_EXPORT(loadPremultiplied);
HWY_EXPORT(storeOpaque);
HWY_EXPORT(storeStraight);
HWY_EXPORT(storePremultiplied);

void loadPixels(const QRgb *from, PixelFormat format, PixelRow &row)
{
    if (format == PixelFormat::Opaque)
        HWY_DYNAMIC_DISPATCH(loadOpaque)(from, row);
    else if (format == PixelFormat::Straight)
        HWY_DYNAMIC_DISPATCH(loadStraight)(from, row);
    else
        HWY_DYNAMIC_DISPATCH(loadPremultiplied)(from, row);
}

void storePixels(const PixelRow &row, PixelFormat format, QRgb *to)
{
    if (format == PixelFormat::Opaque)
        HWY_DYNAMIC_DISPATCH(storeOpaque)(row, to);
    else if (format == PixelFormat::Straight)
        HWY_DYNAMIC_DISPATCH(storeStraight)(row, to);
    else
        HWY_DYNAMIC_DISPATCH(storePremultiplied)(row, to);
}

} // namespace dravelin::detail
#endif
