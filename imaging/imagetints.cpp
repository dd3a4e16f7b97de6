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

Image multiplied(const Image &image, const detail::ChannelFactors &factors)
{
    QImage pixels = image.toImage();
    if (pixels.isNull())
        return {};
    const bool isOpaque = !pixels.hasAlphaChannel();
    pixels.convertTo(isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32);
    uchar *bits = pixels.bits(); // detached
    if (!bits) {
        logWarning(
            u"no memory to tint an image of %1 x %2 points"_s.arg(image.size().width()).arg(image.size().height()));
        return {};
    }
    for (int y = 0; y < pixels.height(); ++y)
        detail::multiplyPixels(reinterpret_cast<QRgb *>(bits + y * pixels.bytesPerLine()), std::size_t(pixels.width()),
                               factors);
    return pixels;
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
