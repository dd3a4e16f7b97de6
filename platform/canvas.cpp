// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/canvas.h>

#include <dravelin/platform/log.h>

#include <cmath>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

QImage clearPixels(double width, double height)
{
    constexpr double most = 1 << 24;
    if (!(width <= most && height <= most))
        return {};
    QImage image(int(std::ceil(width)), int(std::ceil(height)), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

QImage detail::makeCanvas(const QSizeF &size, double devicePixelRatio)
{
    const double ratio = devicePixelRatio > 0 && std::isfinite(devicePixelRatio) ? devicePixelRatio : 1;
    if (size.width() <= 0 || size.height() <= 0)
        return {};
    QImage image = clearPixels(size.width() * ratio, size.height() * ratio);
    if (image.isNull())
        logWarning(u"no memory for an image of %1 x %2 points"_s.arg(size.width()).arg(size.height()));
    else
        image.setDevicePixelRatio(ratio);
    return image;
}

} // namespace dravelin
