// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <imaging/listedalpha.h>

#include <type_traits>

namespace dravelin {

namespace {

/// What Qt would be asked for at every pixel.
template <typename Byte>
struct Pixels
{
    using Pixel = std::conditional_t<std::is_const_v<Byte>, const QRgb, QRgb>;

    [[nodiscard]] bool have(const AlphaEntry &entry) const
    {
        return quint64(entry.x) < width && quint64(entry.y) < height;
    }
    [[nodiscard]] Pixel &operator[](const AlphaEntry &entry) const
    {
        return reinterpret_cast<Pixel *>(bits + entry.y * bytesPerLine)[entry.x];
    }

    Byte *bits;
    qint64 bytesPerLine;
    quint64 width, height; ///< what is negative lies outside them too
};

} // namespace

bool detail::haveListedAlpha(const QImage &image, const PixelList &list)
{
    if (!image.hasAlphaChannel())
        return list.pixelCount() == 0;
    const Pixels<const uchar> pixels{image.constBits(), image.bytesPerLine(), quint64(image.width()),
                                     quint64(image.height())};
    // The list goes down the columns: without a hint every pixel is waited for.
    constexpr std::ptrdiff_t ahead = 64;
    for (const AlphaEntry *entry = list.begin(); entry != list.end(); ++entry) {
        if (list.end() - entry > ahead && pixels.have(entry[ahead]))
            __builtin_prefetch(&pixels[entry[ahead]], 0, 2);
        if (pixels.have(*entry) && pixels[*entry] >> 24 != entry->alpha)
            return false;
    }
    return true;
}

void detail::writeListedAlpha(QImage &image, const PixelList &list)
{
    const Pixels<uchar> pixels{image.bits(), image.bytesPerLine(), quint64(image.width()), quint64(image.height())};
    for (const AlphaEntry &entry : list) {
        if (pixels.have(entry))
            pixels[entry] = (pixels[entry] & 0x00ffffff) | QRgb(entry.alpha) << 24;
    }
}

} // namespace dravelin
