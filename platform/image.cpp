// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/image.h>

#include <dravelin/platform/log.h>

#include <platform/canvas.h>

#include <QtCore/QBuffer>
#include <QtGui/QImageWriter>

#include <cmath>

namespace dravelin {

using namespace Qt::StringLiterals;

struct Image::Data
{
    QSizeF size;
    QList<std::shared_ptr<ImageRep>> representations = {};
    ImageCacheMode mode = NSImageCacheDefault;
    QImage cache = {};
};

namespace {

/// Gives the pixels another ratio unless they fit the size but for a part of a pixel.
void fitToSize(QImage &image, const QSizeF &size)
{
    const double ratio = image.devicePixelRatio();
    const bool fits =
        std::abs(image.width() - size.width() * ratio) < 1 && std::abs(image.height() - size.height() * ratio) < 1;
    if (!fits && size.width() > 0)
        image.setDevicePixelRatio(image.width() / size.width());
}

} // namespace

Image::Image() noexcept = default;

Image::Image(const QSizeF &size) : m_data(std::make_shared<Data>(Data{size})) {}

Image::Image(const QImage &image)
{
    if (image.isNull())
        return;
    m_data = std::make_shared<Data>(Data{image.deviceIndependentSize()});
    m_data->representations << std::make_shared<BitmapImageRep>(image);
}

Image::Image(const QPixmap &pixmap) : Image(pixmap.toImage()) {}

QSizeF Image::size() const { return m_data ? m_data->size : QSizeF(0, 0); }

QList<std::shared_ptr<ImageRep>> Image::representations() const
{
    return m_data ? m_data->representations : QList<std::shared_ptr<ImageRep>>();
}

std::shared_ptr<BitmapImageRep> Image::firstBitmap() const
{
    return m_data ? std::dynamic_pointer_cast<BitmapImageRep>(m_data->representations.value(0)) : nullptr;
}

void Image::addRepresentation(const std::shared_ptr<ImageRep> &representation)
{
    if (m_data && representation)
        m_data->representations << representation;
}

void Image::removeRepresentation(const std::shared_ptr<ImageRep> &representation)
{
    if (m_data && m_data->representations.removeOne(representation))
        recache();
}

ImageCacheMode Image::cacheMode() const { return m_data ? m_data->mode : NSImageCacheDefault; }

void Image::setCacheMode(ImageCacheMode mode)
{
    if (!m_data)
        return;
    m_data->mode = mode;
    if (mode == NSImageCacheNever)
        recache();
}

void Image::recache()
{
    if (m_data)
        m_data->cache = {};
}

void Image::noCache()
{
    setCacheMode(NSImageCacheNever);
    recache();
}

ImageFocus Image::lockFocus(double devicePixelRatio)
{
    auto bitmap = firstBitmap();
    if (m_data && !bitmap) {
        const QImage shown = toImage();
        const QImage canvas = shown.isNull() ? detail::makeCanvas(size(), devicePixelRatio) : shown;
        if (!canvas.isNull())
            bitmap = std::make_shared<BitmapImageRep>(canvas);
    }
    if (bitmap) {
        m_data->representations = {bitmap};
        recache();
    }
    return {bitmap, size()};
}

QImage Image::toImage() const
{
    if (!m_data || m_data->representations.isEmpty())
        return {};
    const bool isDrawn = !firstBitmap();
    QImage image = m_data->cache;
    if (image.isNull()) {
        image = m_data->representations.constFirst()->toImage();
        if (!image.isNull())
            fitToSize(image, size());
        if (isDrawn && m_data->mode != NSImageCacheNever)
            m_data->cache = image;
    }
    return image;
}

QPixmap Image::toPixmap() const { return QPixmap::fromImage(toImage()); }

QByteArray Image::getImageData(BitmapImageFileType type) const
{
    static constexpr const char *formats[] = {"tiff", "bmp", "gif", "jpeg", "png", "jp2"};
    const auto number = std::size_t(type);
    const QByteArray format = number < std::size(formats) ? formats[number] : "";
    QByteArray data;
    QBuffer buffer(&data);
    QImageWriter writer(&buffer, format);
    if (format.isEmpty() || !writer.write(toImage())) {
        logWarning(u"an image is not encoded as file type %1: %2"_s.arg(int(type)).arg(writer.errorString()));
        return {};
    }
    return data;
}

} // namespace dravelin
