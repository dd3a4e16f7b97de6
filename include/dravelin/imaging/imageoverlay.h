// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/imaging/pixellist.h>

#include <dravelin/platform/export.h>
#include <dravelin/platform/image.h>

namespace dravelin {

/// A tinted or darkened version of an image that keeps the image's own transparency, over a background if there is one:
/// an icon in the application's colour, or marked as disabled.
///
///     dravelin::ImageOverlay overlay(QImage("icon.png"));
///     overlay.colorImageWithHue(0.6f, 0.8f);
///     button->setIcon(QIcon(overlay.getOverlayImage().toPixmap()));
///
/// Nothing is drawn before a result is asked for, and then only what a change has made stale. The pixels of the image
/// that are not opaque are listed once; see createPixelList() for which are looked at. It can be moved, not copied, and
/// is used by one thread at a time.
class DRAVELIN_EXPORT ImageOverlay
{
public:
    /// The image itself, not a copy, is reduced to one bitmap representation, and never caches from now on; a QImage or
    /// QPixmap that is handed over stays as it is. No image gives results that show nothing.
    /// \operation{initWithImage:backgroundImage:}
    explicit ImageOverlay(const Image &image, const Image &backgroundImage = {});
    ImageOverlay(ImageOverlay &&) noexcept = default;
    ImageOverlay &operator=(ImageOverlay &&) noexcept = default;
    ~ImageOverlay();

    /// \name Results
    /// @{

    /// The overlay, or with a background both, the overlay on top, each scaled to the image's size. Copy what is to be
    /// kept by toImage() or toPixmap(): with a background it is the same image object every time, drawn over again.
    /// \return no image as long as no tint was chosen and there is no background; the background alone as long as only
    /// that is so
    /// \cost nothing when nothing changed
    /// \operation{getOverlayImage}
    [[nodiscard]] Image getOverlayImage();

    /// A new image with the result scaled to a size, after the list of pixels was made anew. It has the pixels per
    /// point of the source image.
    /// \param size in points; an empty one gives an image without representation
    /// \operation{getOverlayImageWithSize:}
    [[nodiscard]] Image getOverlayImageWithSize(const QSizeF &size);
    /// @}

    /// \name Tint
    /// Nothing is drawn until the next result is asked for.
    /// @{

    /// The arguments are those of createMultiplyColorOverlay().
    /// \operation{colorImageWithHue:saturation:}
    void colorImageWithHue(float hue, float saturation);
    /// The argument is that of createGrayScaleOverlay().
    /// \operation{colorImageWithGrayscale:}
    void colorImageWithGrayscale(float grayscale);
    /// Whether the tint is a colour, rather than grey. True at first, as are 1 the three numbers.
    [[nodiscard]] bool useColor() const noexcept { return m_useColor; }
    [[nodiscard]] float hue() const noexcept { return m_hue; }
    [[nodiscard]] float saturation() const noexcept { return m_saturation; }
    [[nodiscard]] float grayscale() const noexcept { return m_grayscale; }
    /// @}

    /// \name Steps
    /// What the results are made by; only unusual programs call them.
    /// @{

    /// Builds the overlay anew: the tint, the listed alpha samples, no cache. A tint keeps alpha, so that there is nothing
    /// to copy from the list as long as the source image has not been changed since it was listed.
    /// \operation{overlayImage}
    void overlayImage();
    /// Draws background and overlay on the composite image, which is not cleared first: where both are translucent, what
    /// was there before shines through.
    /// \operation{compositeWithBackground}
    void compositeWithBackground();
    /// Leaves the image with exactly one bitmap representation: the first one if it is a bitmap, else what the first one
    /// draws. An image without representations stays so.
    /// \operation{convertRepresentationToBitmap:}
    static void convertRepresentationToBitmap(Image image);
    /// Writes the alpha samples of the list into the overlay; pixels that are not listed keep the overlay's own.
    /// \operation{copyAlphaChannel}
    void copyAlphaChannel();
    /// Lists the pixels of the source image whose alpha is below 255, column by column from the left, each from the top.
    /// Looked at are the columns and the rows below the image's width in points: of an image that is higher than wide,
    /// or has more than one pixel per point, the rest is not listed. What lies outside the bitmap is opaque.
    /// \throws Exception NSMallocException
    /// \cost at most two passes over the pixels in the order of memory
    /// \operation{createPixelList}
    void createPixelList();
    /// The place of the alpha sample in a pixel's samples: 0 if the format is alpha first, else 3.
    /// \operation{alphaIndex:}
    [[nodiscard]] static qint64 alphaIndex(const BitmapImageRep &bitmap);
    /// @}

    /// \name State
    /// @{
    [[nodiscard]] Image originalImage() const { return m_originalImage; }
    [[nodiscard]] Image backgroundImage() const { return m_backgroundImage; }
    [[nodiscard]] const PixelList &pixelList() const noexcept { return m_pixelList; }
    [[nodiscard]] qint64 pixelEntryCount() const noexcept { return m_pixelEntryCount; }
    [[nodiscard]] bool needsOverlay() const noexcept { return m_needsOverlay; }
    [[nodiscard]] bool needsCompositing() const noexcept { return m_needsCompositing; }
    /// @}

private:
    void invalidate();
    [[nodiscard]] double pixelsPerPoint() const;

    Image m_originalImage;
    Image m_backgroundImage;
    bool m_useColor = true;
    float m_hue = 1;
    float m_saturation = 1;
    float m_grayscale = 1;
    PixelList m_pixelList;
    qint64 m_pixelEntryCount = 0;
    qint64 m_listedKey = 0; ///< of the pixels that the list was made of
    Image m_overlayImage;
    Image m_compositeOverlayImage;
    bool m_needsCompositing = false;
    bool m_needsOverlay = false;
};

} // namespace dravelin
