// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/imagefocus.h>
#include <dravelin/platform/imagerep.h>

#include <QtCore/QList>
#include <QtCore/QMetaType>
#include <QtCore/QRectF>
#include <QtGui/QPixmap>

#include <memory>

namespace dravelin {

/// How Image::drawInRect() combines an image with what is there already, numbered as on the platform.
enum CompositingOperation {
    NSCompositeClear = 0,
    NSCompositeCopy = 1,
    NSCompositeSourceOver = 2,
    NSCompositeSourceIn = 3,
    NSCompositeSourceOut = 4,
    NSCompositeSourceAtop = 5,
    NSCompositeDestinationOver = 6,
    NSCompositeDestinationIn = 7,
    NSCompositeDestinationOut = 8,
    NSCompositeDestinationAtop = 9,
    NSCompositeXOR = 10,
    NSCompositePlusLighter = 13,
};

/// What Image::getImageData() writes, numbered as on the platform.
enum BitmapImageFileType {
    NSTIFFFileType = 0,
    NSBMPFileType = 1,
    NSGIFFileType = 2,
    NSJPEGFileType = 3,
    NSPNGFileType = 4,
    NSJPEG2000FileType = 5,
};

/// Whether an Image keeps what a representation without pixels has drawn.
enum ImageCacheMode {
    NSImageCacheDefault = 0, ///< it is drawn once
    NSImageCacheNever = 3,   ///< it is drawn whenever it is shown
};

/// An image object: a size in points, and representations of what it shows, of which the first one counts.
///
///     dravelin::Image icon(QImage("icon.png"));
///     icon.lockFocus().painter().drawText(QPointF(2, 14), "3");
///     button->setIcon(QIcon(icon.toPixmap()));
///
/// An Image is a handle: copies are the same image, and a change through one shows in all. A default-constructed one is
/// no image: it has neither size nor representation and changes to it do nothing. By one thread at a time.
class DRAVELIN_EXPORT Image
{
public:
    /// No image.
    Image() noexcept;
    /// An image without representations. A size that is not positive is none: nothing can be drawn on it.
    /// \param size in points
    explicit Image(const QSizeF &size);
    /// The pixels, shared, as the one representation; the size in points is that in pixels by the device pixel ratio.
    /// No image when null.
    Image(const QImage &image);   // NOLINT(google-explicit-constructor): the same thing
    Image(const QPixmap &pixmap); // NOLINT(google-explicit-constructor)

    [[nodiscard]] bool isNull() const noexcept { return !m_data; }
    /// In points; empty for no image.
    [[nodiscard]] QSizeF size() const;

    /// Whether both are the same object, or both no image.
    friend bool operator==(const Image &a, const Image &b) noexcept { return a.m_data == b.m_data; }

    /// \name Representations
    /// @{

    /// \operation{representations}
    [[nodiscard]] QList<std::shared_ptr<ImageRep>> representations() const;
    /// The first representation if it is a bitmap, else nothing.
    [[nodiscard]] std::shared_ptr<BitmapImageRep> firstBitmap() const;
    /// Adds it behind the others. Nothing is not added.
    /// \operation{addRepresentation:}
    void addRepresentation(const std::shared_ptr<ImageRep> &representation);
    /// Does nothing when the image has no such representation.
    /// \operation{removeRepresentation:}
    void removeRepresentation(const std::shared_ptr<ImageRep> &representation);
    /// @}

    /// \name Cache
    /// Of what a representation without pixels has drawn; pixels need none.
    /// @{
    [[nodiscard]] ImageCacheMode cacheMode() const;
    void setCacheMode(ImageCacheMode mode);
    /// Drops what was kept: the image is drawn anew when it is shown next.
    /// \operation{recache}
    void recache();
    /// Never keeps anything, from now on.
    /// \operation{noCache}
    void noCache();
    /// @}

    /// \name Drawing
    /// @{

    /// Starts drawing on the image: over what it shows, or on clear ground when it has no representation. Afterwards
    /// what was drawn on is the only representation.
    /// \param devicePixelRatio pixels per point of an image that has no representation yet; others keep theirs
    /// \return the painter, which draws until it is destroyed; for no image, for an empty size and when there is no
    /// memory for the pixels, which is a line in the log, it draws nothing
    /// \operation{lockFocus}
    [[nodiscard]] ImageFocus lockFocus(double devicePixelRatio = 1);

    /// Draws the whole image into a rectangle, with source-over.
    /// \param rect in the painter's coordinates; the image is scaled to it, smoothly
    /// \operation{drawInRect:}
    void drawInRect(QPainter &painter, const QRectF &rect) const;

    /// Draws a part of the image into a rectangle.
    /// \param fromRect in points of the image; an empty one is the whole image
    /// \param operation unknown values draw nothing
    /// \param fraction opacity from 0 to 1, clamped
    /// \operation{drawInRect:fromRect:operation:fraction:}
    void drawInRect(QPainter &painter, const QRectF &rect, const QRectF &fromRect, CompositingOperation operation,
                    double fraction) const;
    /// @}

    /// \name Conversions
    /// @{

    /// What the image shows: the first representation's pixels, shared, or what it draws, with the device pixel ratio
    /// that gives the image's size. \return a null image when there is no representation
    /// \cost constant, or that of drawing
    [[nodiscard]] QImage toImage() const;
    /// The same as a pixmap, which needs a QGuiApplication.
    [[nodiscard]] QPixmap toPixmap() const;

    /// What the image shows, encoded as a file. PNG keeps the pixels exactly; the device pixel ratio is lost in all.
    /// \return absent (null) bytes, with a line in the log, when there is nothing to encode, or no encoder for the type:
    /// Qt writes BMP, JPEG and PNG itself and others by plugins
    /// \operation{getImageData:}
    [[nodiscard]] QByteArray getImageData(BitmapImageFileType type) const;
    /// @}

private:
    struct Data;
    std::shared_ptr<Data> m_data;
};

} // namespace dravelin

Q_DECLARE_METATYPE(dravelin::Image)
