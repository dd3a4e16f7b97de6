// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/pixelkernels.h>

#include <algorithm>
#include <cmath>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "platform/pixelcolor_kernels.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h comes first.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace dravelin::detail::HWY_NAMESPACE {

namespace {

#include <platform/pixelvector-inl.h>

/// The sRGB curve (IEC 61966-2-1) of 0 to 1, its upper part as a polynomial (Remez): in what comes out of exposure the
/// two together are off by 0.06 of an 8-bit step at most.
HWY_ATTR HWY_INLINE Vector toLinear(Vector x)
{
    Vector y = hn::Set(D(), -0.0963691399f);
    for (const float c : {0.347021759f, -0.56475544f, 0.782581389f, 0.495924801f, 0.0346853957f, 0.0008668144f})
        y = hn::MulAdd(y, x, hn::Set(D(), c));
    return hn::IfThenElse(hn::Le(x, hn::Set(D(), 0.04045f)), hn::Mul(x, hn::Set(D(), 1 / 12.92f)), y);
}

/// With a step of Newton's, for on some processors the estimate has eight bits only.
HWY_ATTR HWY_INLINE Vector squareRoot(Vector x)
{
    const Vector inverse = hn::ApproximateReciprocalSqrt(x);
    const Vector half = hn::Mul(hn::Mul(x, inverse), hn::Set(D(), 0.5f));
    return hn::Mul(hn::Mul(x, inverse), hn::NegMulAdd(half, inverse, hn::Set(D(), 1.5f)));
}

HWY_ATTR HWY_INLINE Vector toEncoded(Vector x)
{
    const Vector root = squareRoot(hn::Max(x, hn::Set(D(), 0.001f)));
    Vector y = hn::Set(D(), -0.947671592f);
    for (const float c : {3.41868711f, -5.00316858f, 3.89844131f, -1.89947641f, 1.57527089f, -0.0422319509f})
        y = hn::MulAdd(y, root, hn::Set(D(), c));
    return hn::IfThenElse(hn::Le(x, hn::Set(D(), 0.0031308f)), hn::Mul(x, hn::Set(D(), 12.92f)), y);
}

HWY_ATTR HWY_INLINE void exposeChannel(float *values, int count, float gain)
{
    const Vector factor = hn::Set(D(), gain);
    for (int i = 0; i < count; i += step())
        hn::Store(toEncoded(clamped(hn::Mul(toLinear(clamped(hn::Load(D(), values + i))), factor))), D(), values + i);
}

} // namespace

HWY_ATTR void matrixOnRow(PixelRow &row, const float *m)
{
    Vector c[12];
    for (int i = 0; i < 12; ++i)
        c[i] = hn::Set(D(), m[i]);
    for (int i = 0; i < row.count; i += step()) {
        const Color in = load(row, i);
        Vector out[3];
        for (int k = 0; k < 3; ++k)
            out[k] = hn::MulAdd(in.red, c[k * 4],
                                hn::MulAdd(in.green, c[k * 4 + 1], hn::MulAdd(in.blue, c[k * 4 + 2], c[k * 4 + 3])));
        store({out[0], out[1], out[2]}, row, i);
    }
}

HWY_ATTR void exposureOnRow(PixelRow &row, float gain)
{
    for (float *channel : {row.red, row.green, row.blue})
        exposeChannel(channel, row.count, gain);
}

HWY_ATTR void vibranceOnRow(PixelRow &row, float amount)
{
    const Vector one = hn::Set(D(), 1), factor = hn::Set(D(), amount);
    for (int i = 0; i < row.count; i += step()) {
        const Color color = clamped(load(row, i));
        const Vector grey = brightness(color);
        const Vector scale = hn::MulAdd(factor, hn::Sub(one, saturation(color)), one);
        store(about(grey, color, scale), row, i);
    }
}

/// \param distance of the first pixel from the middle, and the square of the row's distance; in pixels
HWY_ATTR void vignetteOnRow(PixelRow &row, float distance, float squared, float scale, float intensity)
{
    const Vector across = hn::Set(D(), squared), factor = hn::Set(D(), scale), amount = hn::Set(D(), -intensity);
    const Vector one = hn::Set(D(), 1), lanes = hn::Iota(D(), distance);
    for (int i = 0; i < row.count; i += step()) {
        const Vector x = hn::Add(lanes, hn::Set(D(), float(i)));
        const Vector t = hn::Min(hn::Mul(hn::MulAdd(x, x, across), factor), one);
        const Vector smooth = hn::Mul(hn::Mul(t, t), hn::NegMulAdd(hn::Set(D(), 2), t, hn::Set(D(), 3)));
        store(scaled(load(row, i), hn::MulAdd(amount, smooth, one)), row, i);
    }
}

HWY_ATTR void highlightShadowOnRow(PixelRow &row, float highlight, float shadow, const float *light)
{
    const Vector one = hn::Set(D(), 1), lift = hn::Set(D(), shadow), lower = hn::Set(D(), (highlight - 1) / 3);
    for (int i = 0; i < row.count; i += step()) {
        const Color color = load(row, i);
        const Vector grey = light ? hn::Load(D(), light + i) : brightness(clamped(color));
        const Vector dark = hn::Sub(one, grey);
        const Vector gain =
            hn::Mul(hn::MulAdd(lift, hn::Mul(dark, dark), one), hn::MulAdd(lower, hn::Mul(grey, grey), one));
        store(scaled(color, gain), row, i);
    }
}

HWY_ATTR void falseAlphaOnRow(PixelRow &row, float dark, float light)
{
    const Vector from = hn::Set(D(), dark), difference = hn::Set(D(), light - dark);
    for (int i = 0; i < row.count; i += step()) {
        const Vector factor = clamped(hn::MulAdd(difference, brightness(load(row, i)), from));
        hn::Store(hn::Mul(hn::Load(D(), row.alpha + i), factor), D(), row.alpha + i);
    }
}

HWY_ATTR void luminanceOfRow(const PixelRow &row, float *to)
{
    for (int i = 0; i < row.count; i += step())
        hn::Store(brightness(clamped(load(row, i))), D(), to + i);
}

} // namespace dravelin::detail::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace dravelin::detail {

HWY_EXPORT(matrixOnRow);
HWY_EXPORT(exposureOnRow);
HWY_EXPORT(vibranceOnRow);
HWY_EXPORT(vignetteOnRow);
HWY_EXPORT(highlightShadowOnRow);
HWY_EXPORT(falseAlphaOnRow);
HWY_EXPORT(luminanceOfRow);

void applyMatrix(PixelRow &row, const float (&matrix)[12]) { HWY_DYNAMIC_DISPATCH(matrixOnRow)(row, matrix); }

void applyExposure(PixelRow &row, float gain) { HWY_DYNAMIC_DISPATCH(exposureOnRow)(row, gain); }

void applyVibrance(PixelRow &row, float amount) { HWY_DYNAMIC_DISPATCH(vibranceOnRow)(row, amount); }

void applyVignette(PixelRow &row, float intensity, float radius)
{
    const float width = float(row.size.width()), height = float(row.size.height());
    const float dx = float(row.x) + 0.5f - width / 2, dy = float(row.y) + 0.5f - height / 2;
    constexpr float atLeast = 1e-9F; // radius 0 takes the pixel in the middle too
    const float full = (width * width + height * height) / 4 * radius * radius;
    HWY_DYNAMIC_DISPATCH(vignetteOnRow)(row, dx, dy * dy + atLeast, 1 / std::max(full, atLeast), intensity);
}

void applyHighlightShadow(PixelRow &row, float highlight, float shadow, const float *light)
{
    HWY_DYNAMIC_DISPATCH(highlightShadowOnRow)(row, highlight, shadow, light);
}

void applyFalseAlpha(PixelRow &row, float dark, float light)
{
    HWY_DYNAMIC_DISPATCH(falseAlphaOnRow)(row, dark, light);
}

void luminance(const PixelRow &row, float *to) { HWY_DYNAMIC_DISPATCH(luminanceOfRow)(row, to); }

} // namespace dravelin::detail
#endif
