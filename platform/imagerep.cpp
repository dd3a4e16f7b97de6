// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/imagerep.h>

#include <dravelin/platform/log.h>

#include <platform/canvas.h>

#include <QtCore/QBuffer>
#include <QtGui/QImageReader>
#include <QtGui/QPainter>

#include <algorithm>
#include <utility>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

bool hasAlphaLast(QImage::Format format)
{
    switch (format) {
    case QImage::Format_RGBX8888:
    case QImage::Format_RGBA8888:
    case QImage::Format_RGBA8888_Premultiplied:
    case QImage::Format_RGBX64:
    case QImage::Format_RGBA64:
    case QImage::Format_RGBA64_Premultiplied:
        return true;
    default:
        return false;
    }
}

QImage withPixelsOf32Bits(const QImage &image)
{
    switch (image.format()) {
    case QImage::Format_RGB32:
    case QImage::Format_ARGB32:
    case QImage::Format_ARGB32_Premultiplied:
        return image;
    default:
        return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    }
}

uint sample(quint64 value) { return uint(std::min<quint64>(value, 255)); }

} // namespace

ImageRep::~ImageRep() = default;

DrawingImageRep::DrawingImageRep(const QSizeF &size, Drawing drawing, double devicePixelRatio)
    : m_size(size), m_drawing(std::move(drawing)), m_ratio(devicePixelRatio)
{}

QImage DrawingImageRep::toImage() const
{
    QImage image = detail::makeCanvas(m_size, m_ratio);
    if (!image.isNull() && m_drawing) {
        QPainter painter(&image);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        m_drawing(painter, QRectF(QPointF(), m_size));
    }
    return image;
}

BitmapImageRep::BitmapImageRep(const QImage &image)
    : m_image(withPixelsOf32Bits(image)),
      m_format(NSAlphaNonpremultipliedBitmapFormat
               | (hasAlphaLast(image.format()) ? BitmapFormat() : NSAlphaFirstBitmapFormat))
{}

std::shared_ptr<BitmapImageRep> BitmapImageRep::imageRepWithData(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    QImageReader reader(&buffer);
    const QImage image = reader.read();
    if (image.isNull()) {
        logWarning(u"no image in %1 bytes: %2"_s.arg(data.size()).arg(reader.errorString()));
        return nullptr;
    }
    auto bitmap = std::make_shared<BitmapImageRep>(image);
    bitmap->m_format = NSAlphaNonpremultipliedBitmapFormat;
    return bitmap;
}

void BitmapImageRep::getPixel(PixelSamples &samples, qint64 x, qint64 y) const
{
    QRgb pixel = qRgb(0, 0, 0);
    if (x >= 0 && x < pixelsWide() && y >= 0 && y < pixelsHigh())
        pixel = m_image.pixel(int(x), int(y));
    if (m_image.format() == QImage::Format_ARGB32_Premultiplied)
        pixel = qUnpremultiply(pixel);
    samples = {quint64(qRed(pixel)), quint64(qGreen(pixel)), quint64(qBlue(pixel)), quint64(qAlpha(pixel))};
    if (m_format & NSAlphaFirstBitmapFormat)
        std::rotate(samples.begin(), samples.end() - 1, samples.end());
}

void BitmapImageRep::setPixel(const PixelSamples &samples, qint64 x, qint64 y)
{
    if (x < 0 || x >= pixelsWide() || y < 0 || y >= pixelsHigh())
        return;
    PixelSamples last = samples;
    if (m_format & NSAlphaFirstBitmapFormat)
        std::rotate(last.begin(), last.begin() + 1, last.end());
    auto *line = reinterpret_cast<QRgb *>(straightPixels().scanLine(int(y)));
    if (line) // else there was no memory to detach shared pixels
        line[x] = sample(last[3]) << 24 | sample(last[0]) << 16 | sample(last[1]) << 8 | sample(last[2]);
}

QImage &BitmapImageRep::straightPixels()
{
    if (!m_image.isNull() && m_image.format() != QImage::Format_ARGB32)
        m_image.convertTo(QImage::Format_ARGB32);
    return m_image;
}

} // namespace dravelin
