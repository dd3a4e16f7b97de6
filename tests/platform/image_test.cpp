// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/image.h>

#include <support/logrecorder.h>

#include <gmock/gmock.h>

using namespace dravelin;
using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace {

QImage onePixel(QImage::Format format, const QColor &color)
{
    QImage image(1, 1, format);
    image.fill(color);
    return image;
}

} // namespace

TEST(BitmapImageRep, SamplesAreStraightInTheOrderOfTheFormat)
{
    const struct
    {
        const char *name;
        QImage::Format format;
        quint64 bits;
        PixelSamples samples;
    } rows[] = {
        {"ARGB32", QImage::Format_ARGB32, 3, {51, 255, 0, 100}},
        {"premultiplied", QImage::Format_ARGB32_Premultiplied, 3, {51, 255, 0, 100}},
        {"RGBA8888", QImage::Format_RGBA8888, 2, {255, 0, 100, 51}},
        {"RGBA64", QImage::Format_RGBA64, 2, {255, 0, 100, 51}},
        {"RGB32", QImage::Format_RGB32, 3, {255, 255, 0, 100}},
        {"RGB888", QImage::Format_RGB888, 3, {255, 255, 0, 100}},
    };
    for (const auto &row : rows) {
        const QImage image = onePixel(row.format, QColor(255, 0, 100, 51));
        BitmapImageRep bitmap(image);
        EXPECT_EQ(bitmap.bitmapFormat(), row.bits) << row.name;
        PixelSamples samples{};
        bitmap.getPixel(samples, 0, 0);
        EXPECT_EQ(samples, row.samples) << row.name;
        for (const auto &[x, y] : {std::pair<qint64, qint64>(-1, 0), {1, 0}, {0, 1}, {0, -1}, {1LL << 32, 0}}) {
            bitmap.setPixel({1, 2, 3, 4}, x, y);
            bitmap.getPixel(samples, x, y);
            EXPECT_EQ(samples[row.bits & NSAlphaFirstBitmapFormat ? 0 : 3], 255U) << row.name;
        }
        EXPECT_EQ(bitmap.toImage().pixel(0, 0), image.pixel(0, 0)) << row.name;
        bitmap.setPixel({0, 1000, 2, 3}, 0, 0);
        bitmap.getPixel(samples, 0, 0);
        EXPECT_THAT(samples, ElementsAre(0, 255, 2, 3)) << row.name;
        EXPECT_NE(bitmap.toImage().pixel(0, 0), image.pixel(0, 0)) << row.name;
    }
}

TEST(Image, IsAHandleOfSharedPixels)
{
    QImage pixels(6, 4, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::red);
    pixels.setDevicePixelRatio(2);
    Image image(pixels), same = image;
    EXPECT_EQ(image.size(), QSizeF(3, 2));
    EXPECT_EQ(image.toImage().constBits(), pixels.constBits());
    EXPECT_EQ(image, same);
    EXPECT_NE(image, Image(pixels));
    same.lockFocus().painter().fillRect(QRectF(2, 1, 1, 1), Qt::blue);
    EXPECT_EQ(image.toImage().pixelColor(4, 2), QColor(Qt::blue));
    EXPECT_EQ(image.toImage().pixelColor(3, 2), QColor(Qt::red));
    EXPECT_EQ(image.toImage().devicePixelRatio(), 2);
    EXPECT_EQ(pixels.pixelColor(4, 2), QColor(Qt::red));
}

TEST(Image, SizeIsIndependentOfItsRepresentations)
{
    QImage pixels(8, 8, QImage::Format_ARGB32_Premultiplied);
    pixels.fill(Qt::red);
    Image image(QSizeF(2, 2));
    image.addRepresentation(std::make_shared<BitmapImageRep>(pixels));
    image.lockFocus().painter().fillRect(QRectF(1, 1, 1, 1), Qt::blue);
    EXPECT_EQ(image.size(), QSizeF(2, 2));
    EXPECT_EQ(image.toImage().devicePixelRatio(), 4);
    EXPECT_EQ(image.toImage().pixelColor(3, 4), QColor(Qt::red));
    EXPECT_EQ(image.toImage().pixelColor(7, 4), QColor(Qt::blue));
}

TEST(Image, NoneDoesNothing)
{
    const LogRecorder log;
    for (Image image :
         {Image(), Image(QImage()), Image(QSizeF(0, 3)), Image(QSizeF(qQNaN(), 3)), Image(QSizeF(1e9, 1e9))}) {
        image.noCache();
        image.addRepresentation(nullptr);
        ImageFocus focus = image.lockFocus();
        image.drawInRect(focus.painter(), QRectF(0, 0, 1, 1));
        focus.unlockFocus();
        focus.unlockFocus();
        EXPECT_TRUE(image.toImage().isNull());
        EXPECT_TRUE(image.representations().isEmpty());
    }
    EXPECT_EQ(log.lines().size(), 2) << log.lines().join(u'\n').toStdString();
}

TEST(Image, DrawsPartsWithOperations)
{
    QImage ground(4, 2, QImage::Format_ARGB32_Premultiplied);
    QImage halves(2, 1, QImage::Format_ARGB32);
    halves.setPixelColor(0, 0, QColor(255, 0, 0, 255));
    halves.setPixelColor(1, 0, Qt::transparent);
    const Image image(halves);
    const QRectF right(1, 0, 1, 1), left(0, 0, 1, 1), all(0, 0, 4, 2);
    const struct
    {
        const char *name;
        QRectF rect, from;
        CompositingOperation operation;
        double fraction;
        QColor first, last;
    } rows[] = {
        {"over", all, left, NSCompositeSourceOver, 1, Qt::red, Qt::red},
        {"clear part over", all, right, NSCompositeSourceOver, 1, Qt::blue, Qt::blue},
        {"clear part copied", all, right, NSCompositeCopy, 1, Qt::transparent, Qt::transparent},
        {"moved", QRectF(2, 0, 2, 2), left, NSCompositeSourceOver, 1, Qt::blue, Qt::red},
        {"faint", all, left, NSCompositeSourceOver, 0.2, QColor(51, 0, 204), QColor(51, 0, 204)},
        {"under", all, left, NSCompositeDestinationOver, 1, Qt::blue, Qt::blue},
        {"fraction beyond 1", all, left, NSCompositeSourceOver, 7, Qt::red, Qt::red},
        {"unknown", all, left, CompositingOperation(12), 1, Qt::blue, Qt::blue},
    };
    for (const auto &row : rows) {
        ground.fill(Qt::blue);
        QPainter painter(&ground);
        image.drawInRect(painter, row.rect, row.from, row.operation, row.fraction);
        EXPECT_EQ(painter.compositionMode(), QPainter::CompositionMode_SourceOver) << row.name;
        painter.end();
        EXPECT_EQ(ground.pixelColor(0, 0), row.first) << row.name;
        EXPECT_EQ(ground.pixelColor(3, 1), row.last) << row.name;
    }
}

TEST(Image, KeepsDrawingsUnlessToldNotTo)
{
    int drawn = 0;
    Image image(QSizeF(2, 1));
    image.addRepresentation(std::make_shared<DrawingImageRep>(
        QSizeF(2, 1),
        [&](QPainter &painter, const QRectF &rect) {
            ++drawn;
            painter.fillRect(rect, Qt::green);
        },
        2));
    EXPECT_EQ(image.toImage().size(), QSize(4, 2));
    EXPECT_EQ(image.toImage().pixelColor(3, 1), QColor(Qt::green));
    EXPECT_EQ(drawn, 1);
    image.recache();
    (void)image.toImage();
    EXPECT_EQ(drawn, 2);
    image.noCache();
    (void)image.toImage();
    (void)image.toImage();
    EXPECT_EQ(drawn, 4);
    const auto representation = image.representations().constFirst();
    image.lockFocus().painter().fillRect(QRectF(1, 0, 1, 1), Qt::blue);
    EXPECT_EQ(image.toImage().pixelColor(1, 1), QColor(Qt::green));
    EXPECT_EQ(image.toImage().pixelColor(2, 0), QColor(Qt::blue));
    EXPECT_EQ(drawn, 5);
    image.removeRepresentation(representation);
    EXPECT_NE(image.firstBitmap(), nullptr);
}

TEST(Image, TravelsAsAFile)
{
    const LogRecorder log;
    const QImage pixels = onePixel(QImage::Format_ARGB32, QColor(1, 2, 3, 4));
    const QByteArray png = Image(pixels).getImageData(NSPNGFileType);
    EXPECT_TRUE(png.startsWith("\x89PNG"));
    const auto bitmap = BitmapImageRep::imageRepWithData(png);
    PixelSamples samples{};
    bitmap->getPixel(samples, 0, 0);
    EXPECT_THAT(samples, ElementsAre(1, 2, 3, 4));
    EXPECT_EQ(log.lines().size(), 0);
    EXPECT_EQ(BitmapImageRep::imageRepWithData(png.left(40)), nullptr);
    EXPECT_TRUE(Image().getImageData(NSPNGFileType).isNull());
    EXPECT_TRUE(Image(pixels).getImageData(BitmapImageFileType(9)).isNull());
    EXPECT_EQ(log.lines().size(), 3);
}
