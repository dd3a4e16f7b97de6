// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging.h>

#include <dravelin/platform/exception.h>

#include <support/logrecorder.h>

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <random>

using namespace dravelin;

namespace {

/// Pixels whose alpha is often one of those that matter.
QImage randomImage(int width, int height, QImage::Format format, unsigned seed)
{
    std::mt19937 random(seed);
    QImage image(width, height, QImage::Format_ARGB32);
    for (int i = 0; i < width * height; ++i) {
        constexpr uint alphas[] = {0, 254, 255, 255};
        const uint alpha = random() % 2 ? alphas[random() % 4] : random() % 256;
        image.setPixel(i % width, i / width, (random() & 0xffffff) | alpha << 24);
    }
    return image.convertToFormat(format);
}

QImage tiny(const QColor &color, QSize size = {1, 1})
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

/// As it is defined, pixel by pixel.
std::vector<AlphaEntry> naiveList(const QImage &image, double width)
{
    std::vector<AlphaEntry> entries;
    const BitmapImageRep bitmap(image);
    for (qint64 x = 0; double(x) < width; ++x) {
        for (qint64 y = 0; double(y) < width; ++y) {
            PixelSamples samples{};
            bitmap.getPixel(samples, x, y);
            const quint64 alpha = samples[std::size_t(ImageOverlay::alphaIndex(bitmap))];
            if (alpha < 255)
                entries.push_back({x, y, alpha});
        }
    }
    return entries;
}

} // namespace

TEST(PixelList, GrowsByEntries)
{
    PixelList list;
    EXPECT_EQ(list.alphaEntries(), nullptr);
    list.addPixelX(-1, 1LL << 40, 300);
    list.addPixels(2)[1] = {7, 8, 9};
    EXPECT_TRUE(list.addPixels(0).empty());
    EXPECT_THROW(list.addPixels(std::numeric_limits<qint64>::max()), Exception);
    PixelList moved(std::move(list));
    EXPECT_EQ(moved.pixelCount(), 3);
    EXPECT_EQ(moved.alphaEntries()[0], (AlphaEntry{-1, 1LL << 40, 300}));
    EXPECT_EQ(moved.alphaEntries()[2], (AlphaEntry{7, 8, 9}));
    EXPECT_EQ(list.pixelCount(), 0); // NOLINT(bugprone-use-after-move): as documented
}

TEST(ImageOverlay, ListsWhatIsNotOpaque)
{
    const struct
    {
        const char *name;
        QSize size;
        QImage::Format format;
        double ratio;
    } rows[] = {
        {"square", {67, 67}, QImage::Format_ARGB32, 1},
        {"wide", {300, 2}, QImage::Format_ARGB32, 1},
        {"high", {2, 300}, QImage::Format_ARGB32_Premultiplied, 1},
        {"two pixels per point", {66, 66}, QImage::Format_ARGB32_Premultiplied, 2},
        {"width of 6.5 points", {13, 40}, QImage::Format_RGBA8888, 2},
        {"alpha of one bit", {40, 40}, QImage::Format_Mono, 1},
        {"opaque", {40, 40}, QImage::Format_RGB32, 1},
    };
    for (const auto &row : rows) {
        QImage image = randomImage(row.size.width(), row.size.height(), row.format, 1);
        image.setDevicePixelRatio(row.ratio);
        const ImageOverlay overlay(image);
        EXPECT_THAT(overlay.pixelList(),
                    testing::ElementsAreArray(naiveList(image, image.deviceIndependentSize().width())))
            << row.name;
        EXPECT_EQ(overlay.pixelEntryCount(), overlay.pixelList().pixelCount()) << row.name;
    }
}

TEST(ImageTints, FollowTheirFormulas)
{
    const QImage image = randomImage(53, 5, QImage::Format_ARGB32, 2); // no multiple of any vector
    const float none = std::numeric_limits<float>::quiet_NaN(), third = 1.0F / 3;
    const struct
    {
        const char *name;
        Image tinted;
        double red, green, blue;
    } rows[] = {
        {"red", createMultiplyColorOverlay(image, 1, 1), 1, 0, 0},
        {"green by half", createMultiplyColorOverlay(image, third, 0.5F), 0.5, 1, 0.5},
        {"violet", createMultiplyColorOverlay(image, 0.75F, 0.8F), 0.6, 0.2, 1},
        {"hue wraps", createMultiplyColorOverlay(image, -0.25F, 0.8F), 0.6, 0.2, 1},
        {"as it is", createMultiplyColorOverlay(image, 0.3F, 0), 1, 1, 1},
        {"no numbers", createMultiplyColorOverlay(image, none, none), 1, 1, 1},
        {"grey", createGrayScaleOverlay(image, 0.3F), 0.7, 0.7, 0.7},
        {"black", createGrayScaleOverlay(image, 40), 0, 0, 0},
        {"negative", createGrayScaleOverlay(image, -1), 1, 1, 1},
    };
    for (const auto &row : rows) {
        const QImage tinted = row.tinted.toImage();
        ASSERT_EQ(tinted.size(), image.size()) << row.name;
        for (int i = 0; i < 53 * 5; ++i) {
            const QRgb before = image.pixel(i % 53, i / 53), after = tinted.pixel(i % 53, i / 53);
            // A half may be rounded either way.
            EXPECT_NEAR(qRed(after), qRed(before) * row.red, 0.50001) << row.name;
            EXPECT_NEAR(qGreen(after), qGreen(before) * row.green, 0.50001) << row.name;
            EXPECT_NEAR(qBlue(after), qBlue(before) * row.blue, 0.50001) << row.name;
            EXPECT_EQ(qAlpha(after), qAlpha(before)) << row.name;
        }
    }
    Image dense(QSizeF(2, 0.5));
    EXPECT_TRUE(createGrayScaleOverlay(dense, 1).isNull());
    dense.addRepresentation(std::make_shared<BitmapImageRep>(tiny(Qt::red, {8, 2})));
    EXPECT_EQ(createGrayScaleOverlay(dense, 1).size(), dense.size());
}

TEST(ImageOverlay, BuildsOnlyWhatIsStale)
{
    ImageOverlay overlay(tiny(QColor(255, 255, 255, 128)));
    EXPECT_TRUE(overlay.getOverlayImage().isNull());
    overlay.colorImageWithHue(0, 1);
    EXPECT_TRUE(overlay.needsOverlay());
    const Image red = overlay.getOverlayImage();
    EXPECT_EQ(red.toImage().pixelColor(0, 0), QColor(255, 0, 0, 128));
    EXPECT_EQ(red.cacheMode(), NSImageCacheNever);
    EXPECT_EQ(overlay.getOverlayImage(), red);
    overlay.colorImageWithGrayscale(1);
    EXPECT_FALSE(overlay.useColor());
    const Image black = overlay.getOverlayImage();
    EXPECT_NE(black, red);
    EXPECT_EQ(black.toImage().pixelColor(0, 0), QColor(0, 0, 0, 128));
    EXPECT_EQ(red.toImage().pixelColor(0, 0), QColor(255, 0, 0, 128));
}

TEST(ImageOverlay, WritesTheListedAlphaOnly)
{
    Image image(tiny(QColor(255, 255, 255, 100), {1, 2}));
    ImageOverlay overlay(image);
    const auto bitmap = image.firstBitmap();
    bitmap->setPixel({200, 255, 255, 255}, 0, 0); // listed with 100
    bitmap->setPixel({200, 255, 255, 255}, 0, 1); // not listed
    overlay.colorImageWithHue(0, 1);
    EXPECT_EQ(overlay.getOverlayImage().toImage().pixelColor(0, 0).alpha(), 100);
    EXPECT_EQ(overlay.getOverlayImage().toImage().pixelColor(0, 1).alpha(), 200);
    EXPECT_EQ(overlay.pixelEntryCount(), 1);
    overlay.getOverlayImage().firstBitmap()->setPixel({7, 1, 2, 3}, 0, 0);
    overlay.copyAlphaChannel();
    EXPECT_EQ(overlay.getOverlayImage().toImage().pixelColor(0, 0), QColor(1, 2, 3, 100));
    bitmap->setPixel({255, 255, 255, 255}, 0, 0);
    EXPECT_EQ(overlay.getOverlayImageWithSize({1, 2}).toImage().pixelColor(0, 0).alpha(), 100);
    EXPECT_EQ(overlay.pixelEntryCount(), 0);
}

TEST(ImageOverlay, CompositesOverTheBackground)
{
    QImage icon = tiny(QColor(255, 255, 255, 51), {4, 4});
    icon.setDevicePixelRatio(2);
    ImageOverlay overlay(icon, tiny(QColor(0, 0, 255, 51)));
    EXPECT_TRUE(overlay.needsCompositing());
    const Image composite = overlay.getOverlayImage();
    EXPECT_EQ(composite.size(), QSizeF(2, 2));
    EXPECT_EQ(composite.toImage().size(), QSize(4, 4));
    EXPECT_EQ(composite.toImage().pixelColor(3, 3), QColor(0, 0, 255, 51));
    overlay.colorImageWithHue(0, 1);
    EXPECT_EQ(overlay.getOverlayImage(), composite);
    EXPECT_FALSE(overlay.needsCompositing());
    EXPECT_FALSE(overlay.needsOverlay());
    // 1 - 0.8^3: the background has been drawn twice.
    EXPECT_NEAR(composite.toImage().pixelColor(3, 3).alphaF(), 0.488, 0.01);
    const QImage drawn = composite.toImage();
    EXPECT_EQ(overlay.getOverlayImage().toImage(), drawn);
}

TEST(ImageOverlay, ScalesTheResult)
{
    const LogRecorder log;
    QImage icon = tiny(QColor(255, 255, 255, 51), {4, 4});
    icon.setDevicePixelRatio(2);
    ImageOverlay overlay(icon);
    EXPECT_EQ(overlay.getOverlayImageWithSize({3, 1}).toImage().pixelColor(0, 0).alpha(), 0);
    overlay.colorImageWithHue(0, 1);
    const Image sized = overlay.getOverlayImageWithSize({3, 1});
    EXPECT_EQ(sized.size(), QSizeF(3, 1));
    EXPECT_EQ(sized.toImage().size(), QSize(6, 2));
    EXPECT_EQ(sized.toImage().pixelColor(5, 1), QColor(255, 0, 0, 51));
    for (const QSizeF size : {QSizeF(), QSizeF(0, 5), QSizeF(qQNaN(), 2), QSizeF(qInf(), 2)})
        EXPECT_TRUE(overlay.getOverlayImageWithSize(size).toImage().isNull());
    EXPECT_EQ(log.lines().size(), 2);
}

TEST(ImageOverlay, ReducesItsImageToOneBitmap)
{
    const auto red = std::make_shared<BitmapImageRep>(tiny(Qt::red)),
               blue = std::make_shared<BitmapImageRep>(tiny(Qt::blue));
    const auto drawing = std::make_shared<DrawingImageRep>(
        QSizeF(1, 1), [](QPainter &painter, const QRectF &rect) { painter.fillRect(rect, Qt::green); });
    const struct
    {
        const char *name;
        QList<std::shared_ptr<ImageRep>> representations;
        QColor color;
        bool isFirst;
    } rows[] = {
        {"first is a bitmap", {red, drawing, blue, red}, Qt::red, true},
        {"first is drawn", {drawing, red, blue}, Qt::green, false},
    };
    for (const auto &row : rows) {
        Image image(QSizeF(1, 1));
        for (const auto &representation : row.representations)
            image.addRepresentation(representation);
        ImageOverlay overlay(image);
        EXPECT_EQ(image.representations().size(), 1) << row.name;
        EXPECT_EQ(image.firstBitmap() == row.representations.constFirst(), row.isFirst) << row.name;
        EXPECT_EQ(image.toImage().pixelColor(0, 0), row.color) << row.name;
        EXPECT_EQ(image.cacheMode(), NSImageCacheNever) << row.name;
    }
}

TEST(ImageOverlay, MakesNothingOfNothing)
{
    for (const Image &image : {Image(), Image(QSizeF(2, 2))}) {
        ImageOverlay overlay(image, tiny(Qt::red));
        overlay.colorImageWithGrayscale(1);
        EXPECT_EQ(overlay.pixelEntryCount(), 0);
        EXPECT_EQ(overlay.getOverlayImage().toImage().isNull(), image.isNull());
        ImageOverlay alone(image);
        alone.colorImageWithHue(0, 1);
        EXPECT_TRUE(alone.getOverlayImage().isNull());
    }
}
