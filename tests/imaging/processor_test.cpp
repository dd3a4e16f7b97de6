// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/filterrecipe.h"

#include <dravelin/encoding/dataencoder.h>
#include <dravelin/imaging.h>
#include <dravelin/platform/exception.h>
#include <dravelin/platform/log.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gmock/gmock.h>

#include <QtCore/QFutureWatcher>
#include <QtCore/QSemaphore>
#include <QtCore/QThreadPool>
#include <QtTest/QTest>

#include <cmath>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

std::shared_ptr<ImageFilter> named(const QString &name) { return createCIFilter(u"CIColorInvert"_s, name); }

/// "level:index name" of every entry.
QString contents(const FilterProcessor &processor)
{
    QStringList result, names;
    for (qint64 level = 0; level < processor.levelCount(); ++level) {
        for (const auto &item : processor.filterItems(level))
            result.append(u"%1:%2 %3"_s.arg(level).arg(item->index).arg(item->filter->name()));
    }
    EXPECT_EQ(processor.getAllFilters().size(), result.size());
    EXPECT_EQ(processor.filterCount(), result.size());
    return result.join(u", "_s);
}

QImage gradient(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x * 255 / width, y * 255 / height, 100));
    }
    return image;
}

} // namespace

TEST(FilterProcessor, KeepsTheChainInOrder)
{
    FilterProcessor chain(2);
    const struct
    {
        std::function<void()> change;
        const char *expected;
    } steps[] = {
        {[&] { chain.addFilter(named(u"five"_s), 0, 5); }, "0:5 five"},
        {[&] { chain.addFilter(named(u"last"_s), 1, 0); }, "0:5 five, 1:0 last"},
        {[&] { chain.addFilter(named(u"one"_s), 0, -1); }, "0:-1 one, 0:5 five, 1:0 last"},
        {[&] { chain.addFilter(named(u"three"_s), 0, 3); }, "0:-1 one, 0:3 three, 0:5 five, 1:0 last"},
        {[&] { chain.addFilter(named(u"One"_s), 0, 3); }, "0:-1 one, 0:3 three, 0:3 One, 0:5 five, 1:0 last"},
        {[&] { chain.addFilter(named(u"one"_s), 1, 9); }, "0:3 three, 0:3 One, 0:5 five, 1:0 last, 1:9 one"},
        {[&] { chain.addFilter(chain.findFilter(u"one"_s), 1, -9); },
         "0:3 three, 0:3 One, 0:5 five, 1:-9 one, 1:0 last"},
        {[&] { chain.addFilter(nullptr, 1, 3); }, "0:3 three, 0:3 One, 0:5 five, 1:-9 one, 1:0 last"},
        {[&] { chain.addFilter(nullptr, 0, 3); }, "0:3 One, 0:5 five, 1:-9 one, 1:0 last"},
        {[&] { chain.deleteFilterLevel(1, 0); }, "0:3 One, 0:5 five, 1:-9 one"},
        {[&] { chain.deleteFilterWithName(u"last"_s); }, "0:3 One, 0:5 five, 1:-9 one"},
        {[&] { chain.deleteFilterWithName(u"five"_s); }, "0:3 One, 1:-9 one"},
        {[&] { EXPECT_THROW(chain.addFilter(named(u"One"_s), 2, 0), Exception); }, "1:-9 one"},
        {[&] { EXPECT_THROW(chain.deleteFilterLevel(-1, 0), Exception); }, "1:-9 one"},
        {[&] { chain.deleteAllFilters(); }, ""},
    };
    for (const auto &[change, expected] : steps) {
        change();
        ASSERT_EQ(contents(chain), QLatin1String(expected));
    }
    EXPECT_EQ(chain.findFilter(u"one"_s), nullptr);
    EXPECT_THROW(FilterProcessor{std::numeric_limits<qint64>::max()}, Exception);
    try {
        FilterProcessor(-3).addFilter(nullptr, 0, 0);
        ADD_FAILURE();
    } catch (const Exception &e) {
        EXPECT_STREQ(e.what(), "NSRangeException: level 0 is not one of the 0 levels");
    }
}

TEST(FilterProcessor, DisplayNamesAreIdentities)
{
    FilterProcessor chain(1);
    chain.addFilter(saturationFilter(0.5f), 0, 0);
    chain.addFilter(brightnessFilter(0.5f), 0, 0);
    chain.addFilter(saturationFilter(0.25f), 0, 0);
    EXPECT_EQ(contents(chain), u"0:0 Brightness, 0:0 Saturation"_s);
    EXPECT_EQ(chain.findFilter(u"Saturation"_s)->value(kCIInputSaturationKey), QVariant(0.25f));

    FilterLevel level = chain.filterItems(0);
    level[0]->index = 7;
    FilterProcessor::sortFilterList(level);
    EXPECT_EQ(level[1]->filter->name(), u"Brightness"_s);
    EXPECT_FALSE(FilterProcessor::findAndDeleteFilter(u"saturation"_s, level));
    EXPECT_TRUE(FilterProcessor::findAndDeleteFilter(u"Saturation"_s, level));
    EXPECT_EQ(level.size(), 1);
    EXPECT_EQ(chain.filterCount(), 2);
}

TEST(FilterProcessor, AppliesTheFiltersOneAfterTheOther)
{
    QImage image = gradient(40, 30);
    image.setDevicePixelRatio(2);
    FilterProcessor chain(2);
    EXPECT_EQ(chain.applyFilters(image), image);
    const auto background = gradient(50, 50);
    chain.addFilter(colorMultiplyBlendFilter(background), 1, 0);
    chain.addFilter(colorInvertFilter(), 0, 0);

    const QImage result = chain.applyFilters(image);
    EXPECT_EQ(result.size(), image.size());
    EXPECT_EQ(result.devicePixelRatio(), 2);
    const QRgb in = image.pixel(10, 10), back = background.pixel(10, 10), out = result.pixel(10, 10);
    EXPECT_NEAR(qRed(out), (255 - qRed(in)) * qRed(back) / 255.0, 1);
    EXPECT_NEAR(qBlue(out), (255 - qBlue(in)) * qBlue(back) / 255.0, 1);
    EXPECT_EQ(chain.findFilter(u"Color Invert"_s)->value(kCIInputImageKey).value<FilterImage>().toImage().pixel(3, 3),
              image.pixel(3, 3));
    EXPECT_TRUE(chain.applyFilters(QImage()).isNull());
    EXPECT_TRUE(FilterProcessor(0).applyFilters(QImage()).isNull());
}

TEST(FilterProcessor, AppliesOnTheThreadPool)
{
    const QImage image = gradient(1500, 1000);
    FilterProcessor chain(1);
    EXPECT_EQ(chain.applyFiltersAsync(image).result(), image);
    chain.addFilter(sepiaFilter(1), 0, 0);
    chain.addFilter(vignetteFilter(1, 1), 0, 1);
    QFutureWatcher<QImage> watcher;
    QList<int> progress;
    QObject::connect(&watcher, &QFutureWatcherBase::progressValueChanged, [&](int value) { progress.append(value); });
    watcher.setFuture(chain.applyFiltersAsync(image));
    chain.deleteAllFilters();
    ASSERT_TRUE(QTest::qWaitFor([&] { return watcher.isFinished() && progress.value(progress.size() - 1) == 1000; }));
    EXPECT_TRUE(std::ranges::is_sorted(progress));
    chain.addFilter(sepiaFilter(1), 0, 0);
    chain.addFilter(vignetteFilter(1, 1), 0, 1);
    EXPECT_EQ(watcher.result(), chain.applyFilters(image));
    EXPECT_TRUE(chain.applyFiltersAsync(QImage()).result().isNull());
    registerFilter(u"TestThrowing"_s,
                   {.kernel = [](const PixelBlock &, const QVariantMap &) { throw Exception(u"Kernel"_s); }});
    chain.addFilter(ImageFilter::filterWithName(u"TestThrowing"_s), 0, 0);
    EXPECT_THROW(chain.applyFiltersAsync(image).result(), Exception);
}

// A kernel that waits until the future is cancelled sees to it that the work is under way by then.
TEST(FilterProcessor, CancellingEndsTheWorkWithoutResult)
{
    static QSemaphore begun, cancelled;
    static std::atomic<int> rows = 0;
    registerFilter(u"TestSlow"_s, {.kernel = [](const PixelBlock &, const QVariantMap &) {
                       begun.release();
                       if (cancelled.tryAcquire(1, 60'000))
                           cancelled.release();
                       ++rows;
                   }});
    FilterProcessor chain(1);
    chain.addFilter(ImageFilter::filterWithName(u"TestSlow"_s), 0, 0);
    auto future = chain.applyFiltersAsync(gradient(512, 8000));
    ASSERT_TRUE(begun.tryAcquire(1, 60'000));
    future.cancel();
    cancelled.release();
    ASSERT_TRUE(QThreadPool::globalInstance()->waitForDone(60'000));
    EXPECT_TRUE(future.isCanceled());
    EXPECT_EQ(future.resultCount(), 0);
    EXPECT_LT(rows, 8000);
}

TEST(FilterProcessor, ThumbnailsLookLikeTheWhole)
{
    const QImage image = gradient(600, 400);
    FilterProcessor chain(1);
    EXPECT_EQ(chain.thumbnail(image, {60, 60}).size(), QSize(60, 40));
    EXPECT_EQ(chain.thumbnail(image, {6000, 6000}).size(), image.size());
    EXPECT_EQ(chain.thumbnail(image, {3, 1}).size(), QSize(2, 1));
    EXPECT_TRUE(chain.thumbnail(QImage(), {60, 60}).isNull());
    EXPECT_TRUE(chain.thumbnail(image, {0, 60}).isNull());

    chain.addFilter(colorMultiplyBlendFilter(gradient(600, 400).mirrored(true, true)), 0, 0);
    const QImage small = chain.thumbnail(image, {60, 60});
    const QImage large = chain.applyFilters(image).scaled(60, 40, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    for (int y = 0; y < 40; y += 3) {
        for (int x = 0; x < 60; x += 3)
            ASSERT_NEAR(qRed(small.pixel(x, y)), qRed(large.pixel(x, y)), 4) << x << ' ' << y;
    }

    registerFilter(u"TestLength"_s, {.inputs = {{.key = u"inputLength"_s, .inPixels = true}},
                                     .kernel = [](const PixelBlock &block, const QVariantMap &values) {
                                         std::fill_n(block.red, block.count, values[u"inputLength"_s].toFloat() / 255);
                                     }});
    const auto length = ImageFilter::filterWithName(u"TestLength"_s);
    length->setValue(50, u"inputLength"_s);
    chain.addFilter(length, 0, 2);
    EXPECT_EQ(qRed(chain.thumbnail(image, {60, 60}).pixel(5, 5)), 5);
    EXPECT_EQ(length->value(u"inputLength"_s), QVariant(50));
}

TEST(FilterProcessor, SurvivesAsText)
{
    FilterProcessor chain(3);
    const auto falseColor = falseColorFilter({}, Color::calibratedRgb(0.1, 1.0 / 3, -2, 0.5), QColor(1, 2, 3));
    chain.addFilter(falseColor, 2, std::numeric_limits<qint64>::min());
    chain.addFilter(exposureFilter(0.1f), 0, 1LL << 40);
    chain.addFilter(sepiaFilter(std::nanf("")), 0, 1);
    chain.addFilter(createCIFilter(u"CIVibrance"_s, u"a,b\r%é"_s), 1, 0);
    chain.addFilter(createCIFilter(u"CIVibrance"_s, {}), 1, 0);
    const auto kernel = [](const PixelBlock &, const QVariantMap &) {};
    ASSERT_TRUE(registerFilter(u"TestOdd"_s, {.inputs = {{.key = u"é,\r="_s}}, .kernel = kernel}));
    chain.addFilter(createCIFilter(u"TestOdd"_s, u"Odd"_s), 2, 0);
    chain.findFilter(u"Odd"_s)->setValue(0.25, u"é,\r="_s);
    chain.filterItems(1)[0]->hasDefault = true;
    chain.filterItems(1)[0]->defaultValue = -0.1;
    auto copy = FilterProcessor::decodeChain(chain.encodeChain());
    ASSERT_TRUE(copy);
    EXPECT_EQ(contents(*copy), contents(chain));
    EXPECT_EQ(copy->levelCount(), 3);
    EXPECT_EQ(copy->encodeChain(), chain.encodeChain());
    const auto colors = copy->findFilter(u"False Color"_s);
    EXPECT_EQ(colors->value(u"inputColor0"_s).value<Color>(), falseColor->value(u"inputColor0"_s).value<Color>());
    EXPECT_EQ(colors->value(u"inputColor1"_s).value<Color>(), Color(QColor(1, 2, 3)));
    EXPECT_EQ(copy->findFilter(u"Exposure"_s)->value(kCIInputEVKey).toDouble(), double(0.1f));
    EXPECT_EQ(copy->findFilter(u"Odd"_s)->value(u"é,\r="_s), QVariant(0.25));
    EXPECT_TRUE(std::isnan(copy->findFilter(u"Sepia Tone"_s)->value(kCIInputIntensityKey).toDouble()));
    EXPECT_EQ(copy->filterItems(1)[0]->defaultValue, -0.1);
    EXPECT_EQ(FilterProcessor::decodeChain(FilterProcessor(0).encodeChain())->levelCount(), 0);
}

TEST(FilterProcessor, BrokenTextGivesNoChain)
{
    const QMap<QString, QString> good{{u"levels"_s, u"2"_s},
                                      {u"0.filter"_s, u"CIFalseColor"_s},
                                      {u"0.level"_s, u"1"_s},
                                      {u"0.index"_s, u"-3"_s},
                                      {u"0.input.inputColor0"_s, u"srgb 0 0 0 1"_s}};
    const struct
    {
        const char *key, *value;
        bool isRead = false;
    } rows[] = {{"0.name", "x", true},
                {"0.input.inputOther", "1", true},
                {"levels", ""},
                {"levels", "-1"},
                {"levels", "1001"},
                {"levels", "many"},
                {"0.filter", "CIUnknown"},
                {"0.level", "2"},
                {"0.level", "-1"},
                {"0.index", "1.5"},
                {"0.input.inputColor0", "srgb 0 0 0"},
                {"0.input.inputColor0", "srgb 0 0 0 x"},
                {"0.input.inputColor0", "lab 0 0 0 1"},
                {"1.filter", "CISepiaTone"}};
    for (const auto &row : rows) {
        auto fields = good;
        fields[QLatin1String(row.key)] = QLatin1String(row.value);
        DataEncoder encoder;
        for (auto field = fields.begin(); field != fields.end(); ++field)
            encoder.addString(field.key(), *field);
        const LogRecorder log;
        EXPECT_EQ(FilterProcessor::decodeChain(encoder.encodeData()).has_value(), row.isRead) << row.key << row.value;
        EXPECT_EQ(log.lines().isEmpty(), row.isRead) << row.key << row.value;
    }
    const LogRecorder log;
    EXPECT_FALSE(FilterProcessor::decodeChain("no chain"));
    EXPECT_FALSE(FilterProcessor::decodeChain({}));
}

TEST(FilterProcessor, MakesNewImageObjects)
{
    QImage pixels(4, 2, QImage::Format_RGB32);
    pixels.fill(Qt::blue);
    pixels.setDevicePixelRatio(2);
    const Image image(pixels);
    FilterProcessor chain(1);
    const Image copy = chain.applyFilters(image);
    EXPECT_FALSE(copy == image);
    EXPECT_EQ(copy.toImage(), pixels);

    chain.addFilter(colorInvertFilter(), 0, 0);
    const Image inverted = chain.applyFilters(image);
    EXPECT_EQ(inverted.size(), QSizeF(2, 1)) << "in points";
    EXPECT_EQ(inverted.toImage().pixelColor(3, 1), QColor(Qt::yellow));
    EXPECT_EQ(inverted.cacheMode(), NSImageCacheNever);
    EXPECT_TRUE(chain.applyFilters(Image()).isNull());
    EXPECT_TRUE(chain.applyFilters(Image(QSizeF(2, 2))).isNull()) << "it shows nothing";
}
