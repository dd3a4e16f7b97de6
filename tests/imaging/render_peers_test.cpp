// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <imaging/filters.h>
#include <support/printers.h>

#include <QtCore/QBuffer>

#include <gtest/gtest.h>

#include <librsvg/rsvg.h>
#include <pixman.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace dravelin;
using namespace dravelin::testing;
using namespace Qt::StringLiterals;

namespace {

constexpr int width = 613, height = 5;

int greatestDifference(const QImage &a, const QImage &b)
{
    int worst = a.size() == b.size() && a.format() == b.format() ? 0 : 256;
    for (int y = 0; y < a.height(); ++y)
        for (qsizetype i = 0; i < a.width() * 4; ++i)
            worst = std::max(worst, std::abs(a.constScanLine(y)[i] - b.constScanLine(y)[i]));
    return worst;
}

class FloatPicture
{
public:
    explicit FloatPicture(const QImage &image) : m_values(std::size_t(image.width() * image.height()) * 4)
    {
        auto value = m_values.begin();
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = reinterpret_cast<const QRgb *>(image.constScanLine(y))[x];
                for (const int v :
                     {qRed(pixel), qGreen(pixel), qBlue(pixel), image.hasAlphaChannel() ? qAlpha(pixel) : 255})
                    *value++ = float(v) / 255;
            }
        m_image = pixman_image_create_bits(PIXMAN_rgba_float, image.width(), image.height(),
                                           reinterpret_cast<uint32_t *>(m_values.data()), image.width() * 16);
    }
    ~FloatPicture() { pixman_image_unref(m_image); }
    Q_DISABLE_COPY_MOVE(FloatPicture)

    [[nodiscard]] pixman_image_t *image() const { return m_image; }

    [[nodiscard]] QImage toImage() const
    {
        QImage result(width, height, QImage::Format_ARGB32_Premultiplied);
        for (std::size_t i = 0; i < m_values.size(); i += 4) {
            const auto level = [this, i](std::size_t k) { return int(std::lround(m_values[i + k] * 255)); };
            const int at = int(i / 4);
            reinterpret_cast<QRgb *>(result.scanLine(at / width))[at % width] =
                qRgba(level(0), level(1), level(2), level(3));
        }
        return result;
    }

private:
    std::vector<float> m_values;
    pixman_image_t *m_image;
};

using RenderBesidePixman = RenderOn;

INSTANTIATE_TEST_SUITE_P(Processors, RenderBesidePixman, ::testing::ValuesIn(allTargets()), targetName);

TEST_P(RenderBesidePixman, Blends)
{
    const struct
    {
        QString filter;
        pixman_op_t operation;
    } rows[] = {
        {u"CIMultiplyBlendMode"_s, PIXMAN_OP_MULTIPLY},         {u"CIHueBlendMode"_s, PIXMAN_OP_HSL_HUE},
        {u"CISaturationBlendMode"_s, PIXMAN_OP_HSL_SATURATION}, {u"CIColorBlendMode"_s, PIXMAN_OP_HSL_COLOR},
        {u"CILuminosityBlendMode"_s, PIXMAN_OP_HSL_LUMINOSITY},
    };
    for (const auto &row : rows) {
        for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
            const QImage source = randomPicture(width, height, format, 5);
            const QImage backdrop = randomPicture(width, height, format, 6);
            const FloatPicture above(source);
            const FloatPicture below(backdrop);
            pixman_image_composite32(row.operation, above.image(), nullptr, below.image(), 0, 0, 0, 0, 0, 0, width,
                                     height);
            const QImage result = filtered(source, row.filter, {}, {{u"inputBackgroundImage"_s, backdrop}}).toImage();
            EXPECT_LE(greatestDifference(result.convertToFormat(QImage::Format_ARGB32_Premultiplied), below.toImage()),
                      1)
                << qPrintable(row.filter) << format;
        }
    }
}

/// The picture with an feColorMatrix applied in encoded sRGB.
QImage withColorMatrix(const QImage &image, const QString &attributes)
{
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "PNG");
    const QString svg = u"<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
                        "width='%1' height='%2'><filter id='f' x='0' y='0' width='1' height='1' "
                        "color-interpolation-filters='sRGB'><feColorMatrix %3/></filter><image filter='url(#f)' "
                        "width='%1' height='%2' xlink:href='data:image/png;base64,%4'/></svg>"_s.arg(image.width())
                            .arg(image.height())
                            .arg(attributes, QString::fromLatin1(png.toBase64()));
    const QByteArray data = svg.toUtf8();
    RsvgHandle *handle =
        rsvg_handle_new_from_data(reinterpret_cast<const guint8 *>(data.data()), gsize(data.size()), nullptr);
    QImage result(image.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    cairo_surface_t *surface = cairo_image_surface_create_for_data(result.bits(), CAIRO_FORMAT_ARGB32, result.width(),
                                                                   result.height(), int(result.bytesPerLine()));
    cairo_t *cairo = cairo_create(surface);
    const RsvgRectangle viewport{0, 0, double(image.width()), double(image.height())};
    EXPECT_TRUE(rsvg_handle_render_document(handle, cairo, &viewport, nullptr));
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
    g_object_unref(handle);
    return result;
}

TEST(RenderBesideRsvg, ColorMatrices)
{
    const struct
    {
        QString filter;
        QVariantMap values;
        QString attributes;
    } rows[] = {
        {u"CIHueAdjust"_s, {{u"inputAngle"_s, M_PI / 3}}, u"type='hueRotate' values='60'"_s},
        {u"CIHueAdjust"_s, {{u"inputAngle"_s, -2.0}}, u"type='hueRotate' values='-114.591559'"_s},
        {u"CIColorControls"_s, {{u"inputSaturation"_s, 0.35}}, u"type='saturate' values='0.35'"_s},
        {u"CISepiaTone"_s,
         {},
         u"type='matrix' values='.393 .769 .189 0 0 .349 .686 .168 0 0 .272 .534 .131 0 0 0 0 0 1 0'"_s},
    };
    for (const auto &row : rows) {
        for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
            const QImage source = randomPicture(width, height, QImage::Format_RGB32).convertToFormat(format);
            const QImage result = filtered(source, row.filter, row.values).toImage();
            EXPECT_LE(greatestDifference(result.convertToFormat(QImage::Format_ARGB32_Premultiplied),
                                         withColorMatrix(source, row.attributes)),
                      1)
                << qPrintable(row.filter) << format;
        }
    }
}

} // namespace
