// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging/imageoverlay.h>

#include <dravelin/imaging/imagetints.h>

#include <imaging/pixelscan.h>

#include <algorithm>
#include <cmath>

namespace dravelin {

namespace {

/// How many of a bitmap's columns or rows lie below a width in points.
int below(double width, int available) { return int(std::clamp(std::ceil(width), 0.0, double(available))); }

/// Another one after each change of the pixels.
qint64 keyOf(const Image &image)
{
    const auto bitmap = image.firstBitmap();
    return bitmap ? bitmap->toImage().cacheKey() : 0;
}

} // namespace

ImageOverlay::ImageOverlay(const Image &image, const Image &backgroundImage)
    : m_originalImage(image), m_backgroundImage(backgroundImage), m_needsCompositing(!backgroundImage.isNull())
{
    convertRepresentationToBitmap(m_originalImage);
    m_originalImage.noCache();
    createPixelList();
    m_compositeOverlayImage = Image(m_originalImage.size());
}

ImageOverlay::~ImageOverlay() = default;

Image ImageOverlay::getOverlayImage()
{
    if (m_needsOverlay) {
        overlayImage();
        m_needsOverlay = false;
    }
    if (m_backgroundImage.isNull())
        return m_overlayImage;
    if (m_needsCompositing) {
        compositeWithBackground();
        m_needsCompositing = false;
    }
    return m_compositeOverlayImage;
}

Image ImageOverlay::getOverlayImageWithSize(const QSizeF &size)
{
    Image sized(size);
    createPixelList();
    const Image result = getOverlayImage();
    sized.noCache();
    // Only drawn, never added as a representation: what is drawn goes over what an image shows already, and translucent
    // pixels would cover twice.
    result.drawInRect(sized.lockFocus(pixelsPerPoint()).painter(), QRectF(QPointF(), size), QRectF(),
                      NSCompositeSourceOver, 1);
    return sized;
}

void ImageOverlay::colorImageWithHue(float hue, float saturation)
{
    m_useColor = true;
    m_hue = hue;
    m_saturation = saturation;
    invalidate();
}

void ImageOverlay::colorImageWithGrayscale(float grayscale)
{
    m_useColor = false;
    m_grayscale = grayscale;
    invalidate();
}

void ImageOverlay::invalidate()
{
    m_needsOverlay = true;
    m_needsCompositing = !m_backgroundImage.isNull();
}

void ImageOverlay::overlayImage()
{
    m_overlayImage = m_useColor ? createMultiplyColorOverlay(m_originalImage, m_hue, m_saturation)
                                : createGrayScaleOverlay(m_originalImage, m_grayscale);
    convertRepresentationToBitmap(m_overlayImage);
    // A tint keeps alpha: what is listed is there already unless the source image was changed since.
    if (keyOf(m_originalImage) != m_listedKey)
        copyAlphaChannel();
    m_overlayImage.noCache();
}

void ImageOverlay::compositeWithBackground()
{
    const QRectF rect(QPointF(), m_originalImage.size());
    ImageFocus focus = m_compositeOverlayImage.lockFocus(pixelsPerPoint());
    m_backgroundImage.drawInRect(focus.painter(), rect);
    m_overlayImage.drawInRect(focus.painter(), rect);
    focus.unlockFocus();
    m_compositeOverlayImage.noCache();
}

void ImageOverlay::convertRepresentationToBitmap(Image image)
{
    const auto representations = image.representations();
    if (representations.isEmpty())
        return;
    const bool isBitmap = image.firstBitmap() != nullptr;
    // What an encoded file would hold.
    const QImage pixels = image.toImage();
    for (const auto &old : representations.sliced(isBitmap ? 1 : 0))
        image.removeRepresentation(old);
    if (!isBitmap)
        image.addRepresentation(std::make_shared<BitmapImageRep>(pixels));
}

void ImageOverlay::copyAlphaChannel()
{
    const auto bitmap = m_overlayImage.firstBitmap();
    if (m_pixelEntryCount <= 0 || !bitmap)
        return;
    detail::writeListedAlpha(bitmap->straightPixels(), m_pixelList);
}

void ImageOverlay::createPixelList()
{
    m_pixelList = PixelList();
    m_pixelEntryCount = 0;
    const auto bitmap = m_originalImage.firstBitmap();
    if (!bitmap)
        return;
    const double width = m_originalImage.size().width();
    detail::listTranslucent(bitmap->toImage(), below(width, bitmap->pixelsWide()), below(width, bitmap->pixelsHigh()),
                            m_pixelList);
    m_pixelEntryCount = m_pixelList.pixelCount();
    m_listedKey = keyOf(m_originalImage);
}

qint64 ImageOverlay::alphaIndex(const BitmapImageRep &bitmap)
{
    return bitmap.bitmapFormat() & NSAlphaFirstBitmapFormat ? 0 : 3;
}

double ImageOverlay::pixelsPerPoint() const
{
    const auto bitmap = m_originalImage.firstBitmap();
    return bitmap && m_originalImage.size().width() > 0 ? bitmap->pixelsWide() / m_originalImage.size().width() : 1;
}

} // namespace dravelin
