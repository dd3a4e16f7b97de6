// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// The blend modes of the W3C's Compositing and Blending, level 1.

#include <platform/pixelkernels.h>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/pixelblend_kernels.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h comes first.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace dravelin::detail::HWY_NAMESPACE {

namespace {

#include <platform/pixelvector-inl.h>

HWY_ATTR HWY_INLINE Vector tiny() { return hn::Set(D(), 1e-20f); }

HWY_ATTR HWY_INLINE Vector alphaOf(const PixelRow &row, int i) { return hn::Load(D(), row.alpha + i); }

HWY_ATTR HWY_INLINE Vector lum(const Color &c) { return weighted(c, 0.3f, 0.59f, 0.11f); }

/// `color` with the luminosity of `like`, which is its mean, pressed into 0 to 1 about it.
HWY_ATTR HWY_INLINE Color withLuminosity(const Color &color, Vector wanted)
{
    const Vector one = hn::Set(D(), 1), change = hn::Sub(wanted, lum(color));
    const Vector low = hn::Add(least(color), change), high = hn::Add(greatest(color), change);
    const Vector below = hn::Div(wanted, hn::Max(hn::Sub(wanted, low), tiny()));
    const Vector above = hn::Div(hn::Sub(one, wanted), hn::Max(hn::Sub(high, wanted), tiny()));
    Vector scale = hn::IfThenElse(hn::Lt(low, hn::Zero(D())), below, one);
    scale = hn::IfThenElse(hn::Gt(high, one), hn::Min(scale, above), scale);
    const Color moved = {hn::Add(color.red, change), hn::Add(color.green, change), hn::Add(color.blue, change)};
    return about(wanted, moved, scale);
}

HWY_ATTR HWY_INLINE Color withSaturation(const Color &color, Vector wanted)
{
    const Vector low = least(color), scale = hn::Div(wanted, hn::Max(hn::Sub(greatest(color), low), tiny()));
    const Vector factor = hn::IfThenElseZero(hn::Gt(saturation(color), hn::Zero(D())), scale);
    return {hn::Mul(hn::Sub(color.red, low), factor), hn::Mul(hn::Sub(color.green, low), factor),
            hn::Mul(hn::Sub(color.blue, low), factor)};
}

struct Multiply
{
    HWY_ATTR HWY_INLINE Color operator()(const Color &backdrop, const Color &source) const
    {
        return {hn::Mul(backdrop.red, source.red), hn::Mul(backdrop.green, source.green),
                hn::Mul(backdrop.blue, source.blue)};
    }
};

struct Hue
{
    HWY_ATTR HWY_INLINE Color operator()(const Color &backdrop, const Color &source) const
    {
        return withLuminosity(withSaturation(source, saturation(backdrop)), lum(backdrop));
    }
};

struct Saturation
{
    HWY_ATTR HWY_INLINE Color operator()(const Color &backdrop, const Color &source) const
    {
        return withLuminosity(withSaturation(backdrop, saturation(source)), lum(backdrop));
    }
};

struct ColorOf
{
    HWY_ATTR HWY_INLINE Color operator()(const Color &backdrop, const Color &source) const
    {
        return withLuminosity(source, lum(backdrop));
    }
};

struct Luminosity
{
    HWY_ATTR HWY_INLINE Color operator()(const Color &backdrop, const Color &source) const
    {
        return withLuminosity(backdrop, lum(source));
    }
};

HWY_ATTR HWY_INLINE Color added(const Color &a, Vector x, const Color &b, Vector y)
{
    return {hn::MulAdd(a.red, x, hn::Mul(b.red, y)), hn::MulAdd(a.green, x, hn::Mul(b.green, y)),
            hn::MulAdd(a.blue, x, hn::Mul(b.blue, y))};
}

/// Premultiplied colours into the row, with their alpha.
HWY_ATTR HWY_INLINE void storeUnmultiplied(const Color &color, Vector alpha, PixelRow &row, int i)
{
    store(scaled(color, hn::Div(hn::Set(D(), 1), hn::Max(alpha, tiny()))), row, i);
    hn::Store(alpha, D(), row.alpha + i);
}

template <typename Mode>
HWY_ATTR HWY_INLINE void blendTranslucent(PixelRow &row, const PixelRow &under, int i, const Mode &mode)
{
    const Color source = clamped(load(row, i)), backdrop = clamped(load(under, i));
    const Vector one = hn::Set(D(), 1), above = alphaOf(row, i), below = alphaOf(under, i);
    const Vector both = hn::Mul(above, below), sourceOnly = hn::Mul(above, hn::Sub(one, below));
    const Vector backdropOnly = hn::Mul(below, hn::Sub(one, above));
    const Color sum = added(source, sourceOnly, backdrop, backdropOnly);
    storeUnmultiplied(added(mode(backdrop, source), both, sum, one), hn::Add(above, backdropOnly), row, i);
}

template <typename Mode>
HWY_ATTR HWY_INLINE void blendRows(PixelRow &row, const PixelRow &under, const Mode &mode)
{
    const Vector one = hn::Set(D(), 1);
    for (int i = 0; i < row.count; i += step()) {
        const Vector alpha = hn::Min(alphaOf(row, i), alphaOf(under, i));
        if (hn::AllTrue(D(), hn::Eq(alpha, one)))
            store(mode(clamped(load(under, i)), clamped(load(row, i))), row, i);
        else
            blendTranslucent(row, under, i, mode);
    }
}

/// A cross-fade of premultiplied colours.
HWY_ATTR HWY_INLINE void mixVector(PixelRow &row, const PixelRow &other, int i, Vector amount)
{
    const Vector rest = hn::Sub(hn::Set(D(), 1), amount);
    const Vector x = hn::Mul(alphaOf(row, i), amount), y = hn::Mul(alphaOf(other, i), rest);
    storeUnmultiplied(added(load(row, i), x, load(other, i), y), hn::Add(x, y), row, i);
}

} // namespace

HWY_ATTR void blendOnRow(PixelRow &row, const PixelRow &backdrop, BlendMode mode)
{
    if (mode == BlendMode::Multiply)
        blendRows(row, backdrop, Multiply());
    else if (mode == BlendMode::Hue)
        blendRows(row, backdrop, Hue());
    else if (mode == BlendMode::Saturation)
        blendRows(row, backdrop, Saturation());
    else if (mode == BlendMode::Color)
        blendRows(row, backdrop, ColorOf());
    else
        blendRows(row, backdrop, Luminosity());
}

HWY_ATTR void mixOnRow(PixelRow &row, const PixelRow &other, float amount)
{
    const Vector part = hn::Set(D(), amount);
    for (int i = 0; i < row.count; i += step())
        mixVector(row, other, i, part);
}

HWY_ATTR void maskOnRow(PixelRow &row, const PixelRow &other, const PixelRow &mask)
{
    for (int i = 0; i < row.count; i += step())
        mixVector(row, other, i, hn::Mul(brightness(clamped(load(mask, i))), alphaOf(mask, i)));
}

} // namespace dravelin::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace dravelin::detail {

HWY_EXPORT(blendOnRow);
HWY_EXPORT(mixOnRow);
HWY_EXPORT(maskOnRow);

void applyBlend(PixelRow &row, const PixelRow &backdrop, BlendMode mode)
{
    HWY_DYNAMIC_DISPATCH(blendOnRow)(row, backdrop, mode);
}

void applyMix(PixelRow &row, const PixelRow &other, float amount)
{
    HWY_DYNAMIC_DISPATCH(mixOnRow)(row, other, amount);
}

void applyMask(PixelRow &row, const PixelRow &other, const PixelRow &mask)
{
    HWY_DYNAMIC_DISPATCH(maskOnRow)(row, other, mask);
}

} // namespace dravelin::detail
#endif
