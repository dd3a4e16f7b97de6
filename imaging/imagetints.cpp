// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging/imagetints.h>

#include <dravelin/platform/color.h>
#include <dravelin/platform/log.h>

#include <imaging/pixel_kernels.h>

#include <algorithm>
#include <cmath>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

float fraction(float value) { return std::isnan(value) ? 0 : std::clamp(value, 0.0F, 1.0F); }

/// The pixels of an image in one of the formats of bitmaps.
QImage pixelsOf(const Image &image)
{
    const auto bitmap = image.firstBitmap();
    return bitmap ? bitmap->toImage() : image.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// Samples may be premultiplied: they are products of the alpha then, and of the factor too.
Image multiplied(const Image &image, const detail::ChannelFactors &factors)
{
    const QImage from = pixelsOf(image);
    if (from.isNull())
        return {};
    QImage to(from.size(), from.format());
    if (to.isNull()) {
        logWarning(u"no memory to tint an image of %1 x %2 pixels"_s.arg(from.width()).arg(from.height()));
        return {};
    }
    to.setDevicePixelRatio(from.devicePixelRatio());
    for (int y = 0; y < from.height(); ++y) {
        detail::multiplyPixels(reinterpret_cast<QRgb *>(to.scanLine(y)),
                               reinterpret_cast<const QRgb *>(from.constScanLine(y)), std::size_t(from.width()),
                               factors);
    }
    Image tinted(image.size());
    tinted.addRepresentation(std::make_shared<BitmapImageRep>(to));
    return tinted;
}

} // namespace

Image ImageTints::createMultiplyColorOverlay(const Image &image, float hue, float saturation)
{
    const Color tint = Color::hsv(std::isfinite(hue) ? double(hue) : 0, 1, 1);
    const double alpha = fraction(saturation);
    const auto factor = [alpha](double component) { return float(1 - alpha + alpha * component); };
    return multiplied(image, {factor(tint.red()), factor(tint.green()), factor(tint.blue())});
}

Image ImageTints::createGrayScaleOverlay(const Image &image, float level)
{
    const float factor = 1 - fraction(level);
    return multiplied(image, {factor, factor, factor});
}

} // namespace dravelin
