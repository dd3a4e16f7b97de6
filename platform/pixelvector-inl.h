// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// Included within the namespace of each kind of processor: no include guard.

namespace hn = hwy::HWY_NAMESPACE;

using D = hn::CappedTag<float, 16>;
using Vector = hn::Vec<D>;

HWY_ATTR HWY_INLINE int step() { return int(hn::Lanes(D())); }

struct Color
{
    Vector red, green, blue;
};

HWY_ATTR HWY_INLINE Color load(const PixelRow &row, int i)
{
    return {hn::Load(D(), row.red + i), hn::Load(D(), row.green + i), hn::Load(D(), row.blue + i)};
}

HWY_ATTR HWY_INLINE void store(const Color &color, PixelRow &row, int i)
{
    hn::Store(color.red, D(), row.red + i);
    hn::Store(color.green, D(), row.green + i);
    hn::Store(color.blue, D(), row.blue + i);
}

HWY_ATTR HWY_INLINE Vector clamped(Vector v) { return hn::Min(hn::Max(v, hn::Zero(D())), hn::Set(D(), 1)); }

HWY_ATTR HWY_INLINE Color clamped(const Color &c) { return {clamped(c.red), clamped(c.green), clamped(c.blue)}; }

HWY_ATTR HWY_INLINE Color scaled(const Color &c, Vector by)
{
    return {hn::Mul(c.red, by), hn::Mul(c.green, by), hn::Mul(c.blue, by)};
}

HWY_ATTR HWY_INLINE Vector weighted(const Color &c, float red, float green, float blue)
{
    return hn::MulAdd(c.red, hn::Set(D(), red),
                      hn::MulAdd(c.green, hn::Set(D(), green), hn::Mul(c.blue, hn::Set(D(), blue))));
}

/// By the weights of ColorMatrix.
HWY_ATTR HWY_INLINE Vector brightness(const Color &c) { return weighted(c, 0.213f, 0.715f, 0.072f); }

HWY_ATTR HWY_INLINE Vector least(const Color &c) { return hn::Min(hn::Min(c.red, c.green), c.blue); }
HWY_ATTR HWY_INLINE Vector greatest(const Color &c) { return hn::Max(hn::Max(c.red, c.green), c.blue); }

/// The difference of the greatest and the least channel, as in the W3C's blend modes.
HWY_ATTR HWY_INLINE Vector saturation(const Color &c) { return hn::Sub(greatest(c), least(c)); }

/// Each channel's distance from `middle` times `scale`.
HWY_ATTR HWY_INLINE Color about(Vector middle, const Color &c, Vector scale)
{
    return {hn::MulAdd(hn::Sub(c.red, middle), scale, middle), hn::MulAdd(hn::Sub(c.green, middle), scale, middle),
            hn::MulAdd(hn::Sub(c.blue, middle), scale, middle)};
}
