// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QRectF>
#include <QtCore/QSizeF>
#include <QtGui/QImage>

#include <array>
#include <functional>
#include <memory>

QT_BEGIN_NAMESPACE
class QPainter;
QT_END_NAMESPACE

namespace dravelin {

/// One way to show an Image: pixels, or code that draws. Held by `std::shared_ptr`.
class DRAVELIN_EXPORT ImageRep
{
public:
    ImageRep() = default;
    virtual ~ImageRep();
    Q_DISABLE_COPY_MOVE(ImageRep)

    /// In points.
    [[nodiscard]] virtual QSizeF size() const = 0;
    /// What it shows, with its device pixel ratio. \return a null image when there is nothing to show
    [[nodiscard]] virtual QImage toImage() const = 0;
};

/// An image that code draws whenever it is needed: charts, icons from paths, whatever a QPainter can do.
class DRAVELIN_EXPORT DrawingImageRep : public ImageRep
{
public:
    /// Draws into the rectangle from (0, 0) with the representation's size, on clear ground.
    using Drawing = std::function<void(QPainter &painter, const QRectF &rect)>;

    /// \param size in points
    /// \param devicePixelRatio pixels per point of what toImage() makes
    DrawingImageRep(const QSizeF &size, Drawing drawing, double devicePixelRatio = 1);

    [[nodiscard]] QSizeF size() const override { return m_size; }
    /// Draws anew, into premultiplied ARGB32.
    [[nodiscard]] QImage toImage() const override;

private:
    QSizeF m_size;
    Drawing m_drawing;
    double m_ratio;
};

/// The samples of a pixel, 0 to 255 each: alpha first or last, and red, green, blue.
using PixelSamples = std::array<quint64, 4>;

/// Bits of BitmapImageRep::bitmapFormat().
enum BitmapFormat : quint64 {
    NSAlphaFirstBitmapFormat = 1,
    NSAlphaNonpremultipliedBitmapFormat = 2,
};

/// Pixels with eight bits per sample.
///
/// The samples of a pixel are never premultiplied: what is written to the alpha sample alone changes how much of the
/// pixel's colour shows, and that colour can be had back. A bitmap made of premultiplied pixels shares them until the
/// first write, which converts them, once.
///
///     dravelin::BitmapImageRep bitmap(QImage("icon.png"));
///     dravelin::PixelSamples samples;
///     bitmap.getPixel(samples, 3, 4);
///     samples[bitmap.bitmapFormat() & dravelin::NSAlphaFirstBitmapFormat ? 0 : 3] /= 2;
///     bitmap.setPixel(samples, 3, 4);
class DRAVELIN_EXPORT BitmapImageRep : public ImageRep
{
public:
    /// The pixels of an image. They are shared when its format is RGB32, ARGB32 or premultiplied ARGB32, and converted
    /// to the nearest of these otherwise. Alpha is the last sample if it is so in the image's format, such as RGBA8888,
    /// else the first.
    explicit BitmapImageRep(const QImage &image);

    /// Reads an image file of any format that Qt knows, its alpha samples last. The size is in pixels.
    /// \return nothing, with a line in the log, when the bytes are no such file
    /// \operation{imageRepWithData:}
    [[nodiscard]] static std::shared_ptr<BitmapImageRep> imageRepWithData(const QByteArray &data);

    [[nodiscard]] QSizeF size() const override { return m_image.deviceIndependentSize(); }
    [[nodiscard]] int pixelsWide() const noexcept { return m_image.width(); }
    [[nodiscard]] int pixelsHigh() const noexcept { return m_image.height(); }

    /// A combination of BitmapFormat bits, NSAlphaNonpremultipliedBitmapFormat always among them.
    /// \operation{bitmapFormat}
    [[nodiscard]] quint64 bitmapFormat() const noexcept { return m_format; }

    /// Reads the pixel in column x from the left and row y from the top. Outside the bitmap a pixel is opaque black.
    /// \operation{getPixel:atX:y:}
    void getPixel(PixelSamples &samples, qint64 x, qint64 y) const;

    /// Writes a pixel; samples above 255 count as 255. Outside the bitmap nothing happens.
    /// \cost constant, but for the first write, which may copy the pixels
    /// \operation{setPixel:atX:y:}
    void setPixel(const PixelSamples &samples, qint64 x, qint64 y);

    /// The pixels, shared.
    [[nodiscard]] QImage toImage() const override { return m_image; }

    /// The pixels to be written by row, or painted on. They must keep size and format; readers of samples see the
    /// change.
    [[nodiscard]] QImage &pixels() noexcept { return m_image; }
    /// The same, not premultiplied, so that alpha can be written alone: RGB32 and premultiplied pixels are converted to
    /// ARGB32 first.
    [[nodiscard]] QImage &straightPixels();

private:
    QImage m_image;
    quint64 m_format;
};

} // namespace dravelin
