// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging.h>

#include <QtCore/QThreadPool>

#include <cstdint>
#include <cstdlib>
#include <cstring>

using namespace dravelin;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

/// Hands out the input piece by piece; zeros when it has come to an end.
class Bytes
{
public:
    Bytes(const std::uint8_t *data, std::size_t size) : m_data(data), m_size(size) {}

    [[nodiscard]] bool atEnd() const { return m_size == 0; }

    template <typename Value>
    Value take()
    {
        Value value = {};
        const std::size_t count = std::min(sizeof(Value), m_size);
        std::memcpy(&value, m_data, count);
        m_data += count;
        m_size -= count;
        return value;
    }

private:
    const std::uint8_t *m_data;
    std::size_t m_size;
};

QImage pictureOf(Bytes &bytes)
{
    const int width = bytes.take<quint16>() % 1100 + 1, height = bytes.take<quint8>() % 5 + 1;
    const auto format = QImage::Format(bytes.take<quint8>() % (QImage::NImageFormats - 1) + 1);
    QImage image(width, height, QImage::Format_ARGB32);
    auto *pixels = reinterpret_cast<QRgb *>(image.bits());
    for (int i = 0, value = bytes.take<qint32>(); i < width * height; ++i)
        pixels[i] = quint32(value) * quint32(i * 2654435761U);
    return image.convertToFormat(format);
}

void setInput(ImageFilter &filter, const FilterInput &input, Bytes &bytes, const QList<FilterImage> &images)
{
    if (input.type == kCIAttributeTypeImage)
        filter.setValue(images.at(bytes.take<quint8>() % images.size()), input.key);
    else if (input.type == kCIAttributeTypeColor)
        filter.setValue(QVariant::fromValue(Color::srgb(bytes.take<float>(), 0.5, 1, bytes.take<float>())), input.key);
    else
        filter.setValue(bytes.take<float>(), input.key);
}

FilterImage next(Bytes &bytes, const QList<FilterImage> &images)
{
    static const QStringList names = ImageFilter::filterNamesInCategories();
    const auto filter = ImageFilter::filterWithName(names.at(bytes.take<quint8>() % names.size()));
    filter->setValue(images.at(bytes.take<quint8>() % images.size()), kCIInputImageKey);
    for (const FilterInput &input : filter->inputs())
        setInput(*filter, input, bytes, images);
    return filter->outputImage();
}

void checkPremultiplied(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = reinterpret_cast<const QRgb *>(image.constScanLine(y))[x];
            require(std::max({qRed(pixel), qGreen(pixel), qBlue(pixel)}) <= qAlpha(pixel));
        }
    }
}

} // namespace

// Whatever the filters, their numbers and the pictures they share: the result has the size of its source, is validly
// premultiplied, and the same into an image of another format, as far as that is opaque.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Bytes bytes(data, size);
    QList<FilterImage> images = {pictureOf(bytes), pictureOf(bytes)};
    while (!bytes.atEnd() && images.size() < 12)
        images += next(bytes, images);
    const FilterImage &last = images.constLast();
    const QImage result = last.toImage();
    require(result.size() == last.size());
    checkPremultiplied(result);
    QImage target(last.size(), QImage::Format_ARGB32);
    require(last.renderInto(target));
    require(result.format() != QImage::Format_RGB32 || target.convertToFormat(QImage::Format_RGB32) == result);
    return 0;
}
