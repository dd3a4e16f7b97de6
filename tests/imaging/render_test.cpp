// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <imaging/filters.h>
#include <support/logrecorder.h>
#include <support/printers.h>

#include <dravelin/platform/color.h>

#include <QtGui/QColorSpace>

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <stdexcept>

using namespace dravelin;
using namespace dravelin::testing;
using namespace Qt::StringLiterals;

namespace {

/// Not premultiplied.
struct Pixel
{
    double r, g, b, a;
};

using Step = std::function<Pixel(Pixel pixel, int x, int y)>;

constexpr int width = 613, height = 5;

Pixel unpremultiplied(double r, double g, double b, double a)
{
    return a > 0 ? Pixel{r / a, g / a, b / a, a} : Pixel{0, 0, 0, 0};
}

Pixel pixelOf(const QImage &image, int x, int y)
{
    if (!image.rect().contains(x, y))
        return {0, 0, 0, 0};
    const QRgb v = reinterpret_cast<const QRgb *>(image.constScanLine(y))[x];
    const double r = qRed(v) / 255.0, g = qGreen(v) / 255.0, b = qBlue(v) / 255.0, a = qAlpha(v) / 255.0;
    if (image.format() == QImage::Format_ARGB32_Premultiplied)
        return unpremultiplied(r, g, b, a);
    return {r, g, b, image.hasAlphaChannel() ? a : 1};
}

double clamp(double v) { return std::clamp(v, 0.0, 1.0); }

double farthest(QRgb got, const Pixel &p)
{
    const double a = clamp(p.a) * 255;
    return std::max({std::abs(qAlpha(got) - a), std::abs(qRed(got) - clamp(p.r) * a),
                     std::abs(qGreen(got) - clamp(p.g) * a), std::abs(qBlue(got) - clamp(p.b) * a)});
}

/// The greatest difference in any channel of the premultiplied result, in 8-bit steps.
double difference(const QImage &result, const QImage &source, const Step &step)
{
    double worst = result.size() == source.size() ? 0 : 1e9;
    for (int y = 0; y < result.height(); ++y) {
        for (int x = 0; x < result.width(); ++x) {
            const QRgb got = reinterpret_cast<const QRgb *>(result.constScanLine(y))[x];
            worst = std::max(worst, farthest(got, step(pixelOf(source, x, y), x, y)));
        }
    }
    return worst;
}

Pixel each(const Pixel &p, const std::function<double(double)> &f) { return {f(p.r), f(p.g), f(p.b), p.a}; }

double luma(const Pixel &p) { return 0.213 * p.r + 0.715 * p.g + 0.072 * p.b; }

Pixel lerp(const Pixel &from, const Pixel &to, double t)
{
    return {std::lerp(from.r, to.r, t), std::lerp(from.g, to.g, t), std::lerp(from.b, to.b, t), from.a};
}

Pixel saturate(const Pixel &p, double amount)
{
    const double grey = luma(p);
    return lerp({grey, grey, grey, p.a}, p, amount);
}

Step sepia(double amount)
{
    return [=](const Pixel &p, int, int) {
        const Pixel full{0.393 * p.r + 0.769 * p.g + 0.189 * p.b, 0.349 * p.r + 0.686 * p.g + 0.168 * p.b,
                         0.272 * p.r + 0.534 * p.g + 0.131 * p.b, p.a};
        return lerp(p, full, amount);
    };
}

Step controls(double saturation, double brightness, double contrast)
{
    return [=](const Pixel &p, int, int) {
        return each(saturate(p, saturation), [=](double v) { return (v + brightness - 0.5) * contrast + 0.5; });
    };
}

Pixel exposed(const Pixel &p, double stops)
{
    return each(p, [=](double v) {
        v = clamp(v);
        const double linear = (v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4)) * std::exp2(stops);
        return linear <= 0.0031308 ? linear * 12.92 : 1.055 * std::pow(clamp(linear), 1 / 2.4) - 0.055;
    });
}

Step exposure(double stops)
{
    return [=](const Pixel &p, int, int) { return exposed(p, stops); };
}

Step vibrance(double amount)
{
    return [=](const Pixel &given, int, int) {
        const Pixel p = each(given, clamp);
        const auto [low, high] = std::minmax({p.r, p.g, p.b});
        return saturate(p, 1 + amount * (1 - (high - low)));
    };
}

Step vignette(double intensity, double radius)
{
    return [=](const Pixel &p, int x, int y) {
        const double distance = std::hypot(x + 0.5 - width / 2.0, y + 0.5 - height / 2.0);
        const double full = std::hypot(width, height) / 2 * radius;
        const double t = full > 0 ? std::min(1.0, distance * distance / (full * full)) : 1;
        return each(p, [=](double v) { return v * (1 - intensity * t * t * (3 - 2 * t)); });
    };
}

Pixel adjusted(const Pixel &p, double highlight, double shadow, double light)
{
    const double gain = (1 + shadow * (1 - light) * (1 - light)) * (1 - (1 - highlight) * light * light / 3);
    return each(p, [=](double v) { return v * gain; });
}

Step highlightShadow(double highlight, double shadow)
{
    return [=](const Pixel &p, int, int) { return adjusted(p, highlight, shadow, luma(p)); };
}

Step falseColor(const Pixel &dark, const Pixel &light)
{
    return [=](const Pixel &p, int, int) {
        Pixel result = lerp(dark, light, luma(p));
        result.a = p.a * std::lerp(dark.a, light.a, luma(p));
        return result;
    };
}

Step scaled(double saturation, double r, double g, double b, double added)
{
    return [=](const Pixel &given, int, int) {
        const Pixel p = saturate(given, saturation);
        return Pixel{p.r * r + added, p.g * g + added, p.b * b + added, p.a};
    };
}

Step invert()
{
    return [](const Pixel &p, int, int) { return each(p, [](double v) { return 1 - v; }); };
}

Step tonal()
{
    return [](const Pixel &p, int, int) { return each(p, [&](double) { return (p.r + p.g + p.b) / 3; }); };
}

/// Of premultiplied colours.
Pixel crossFade(const Pixel &p, const Pixel &q, double t)
{
    const double x = p.a * (1 - t), y = q.a * t;
    return unpremultiplied(p.r * x + q.r * y, p.g * x + q.g * y, p.b * x + q.b * y, x + y);
}

QColor halfRed() { return QColor::fromRgbF(1, 0, 0, 0.5F); }

struct Row
{
    QString filter;
    QVariantMap values;
    Step step;
};

QList<Row> rows()
{
    const auto color = [](double r, double g, double b) { return QVariant::fromValue(Color::srgb(r, g, b)); };
    return {
        {u"CISepiaTone"_s, {}, sepia(1)},
        {u"CISepiaTone"_s, {{u"inputIntensity"_s, 0.4F}}, sepia(0.4)},
        {u"CISepiaTone"_s, {{u"inputIntensity"_s, 1e30}}, sepia(1)},
        {u"CISepiaTone"_s, {{u"inputIntensity"_s, qQNaN()}}, sepia(1)},
        {u"CIColorControls"_s, {{u"inputSaturation"_s, 1.8}, {u"inputBrightness"_s, -0.2}}, controls(1.8, -0.2, 1)},
        {u"CIColorControls"_s, {{u"inputBrightness"_s, 0.1}, {u"inputContrast"_s, 3.5}}, controls(1, 0.1, 3.5)},
        {u"CIColorControls"_s, {{u"inputContrast"_s, 60}}, controls(1, 0, 60)},
        {u"CIColorControls"_s, {{u"inputBrightness"_s, 1e300}}, controls(1, 1e4, 1)},
        {u"CIColorControls"_s, {{u"inputSaturation"_s, 0}}, controls(0, 0, 1)},
        {u"CIExposureAdjust"_s, {{u"inputEV"_s, 0.3}}, exposure(0.3)},
        {u"CIExposureAdjust"_s, {{u"inputEV"_s, 5}}, exposure(5)},
        {u"CIExposureAdjust"_s, {{u"inputEV"_s, -3.5}}, exposure(-3.5)},
        {u"CIExposureAdjust"_s, {{u"inputEV"_s, qInf()}}, exposure(100)},
        {u"CIVibrance"_s, {{u"inputAmount"_s, 0.9}}, vibrance(0.9)},
        {u"CIVibrance"_s, {{u"inputAmount"_s, -7}}, vibrance(-1)},
        {u"CIVignette"_s, {{u"inputIntensity"_s, 0.9}, {u"inputRadius"_s, 0.5}}, vignette(0.9, 0.5)},
        {u"CIVignette"_s, {{u"inputIntensity"_s, -1}, {u"inputRadius"_s, 2}}, vignette(-1, 2)},
        {u"CIVignette"_s, {{u"inputIntensity"_s, 0.5}, {u"inputRadius"_s, 0}}, vignette(0.5, 0)},
        {u"CIHighlightShadowAdjust"_s,
         {{u"inputHighlightAmount"_s, 0.3}, {u"inputShadowAmount"_s, -0.7}},
         highlightShadow(0.3, -0.7)},
        {u"CIHighlightShadowAdjust"_s, {{u"inputShadowAmount"_s, 1}}, highlightShadow(1, 1)},
        {u"CIFalseColor"_s, {}, falseColor({0.3, 0, 0, 1}, {1, 0.9, 0.8, 1})},
        {u"CIFalseColor"_s,
         {{u"inputColor0"_s, QVariant::fromValue(Color(halfRed()))}, {u"inputColor1"_s, color(0, 0, 1)}},
         falseColor({1, 0, 0, halfRed().alphaF()}, {0, 0, 1, 1})},
        {u"CIColorInvert"_s, {}, invert()},
        {u"CIPhotoEffectFade"_s, {}, scaled(0.7, 0.8, 0.8, 0.8, 0.12)},
        {u"CIPhotoEffectChrome"_s, {}, controls(1.3, 0, 1.15)},
        {u"CIPhotoEffectInstant"_s, {}, scaled(0.75, 0.95, 0.88, 0.72, 0.08)},
        {u"CIPhotoEffectProcess"_s, {}, scaled(0.85, 0.9, 1, 1.08, 0.02)},
        {u"CIPhotoEffectTransfer"_s, {}, scaled(0.9, 1.06, 0.98, 0.84, 0.03)},
        {u"CIPhotoEffectTonal"_s, {}, tonal()},
        {u"CIPhotoEffectMono"_s, {}, scaled(0, 0.88, 0.88, 0.88, 0.06)},
        {u"CIPhotoEffectNoir"_s, {}, controls(0, 0, 1.5)},
    };
}

constexpr QImage::Format formats[] = {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied};

INSTANTIATE_TEST_SUITE_P(Processors, RenderOn, ::testing::ValuesIn(allTargets()), targetName);

TEST_P(RenderOn, MatchesFormulas)
{
    for (const Row &row : rows()) {
        for (const QImage::Format format : formats) {
            const QImage source = randomPicture(width, height, format);
            const QImage result = filtered(source, row.filter, row.values).toImage();
            EXPECT_LE(difference(result, source, row.step), 1)
                << qPrintable(row.filter) << " " << qPrintable(row.values.keys().join(u' ')) << " format " << format;
        }
    }
}

TEST(Render, MatchesFormulasOnAPhotograph)
{
    const QImage photo(u"/usr/share/backgrounds/seeding_by_Clements_Engelhardt.jpg"_s);
    ASSERT_FALSE(photo.isNull()) << "the photographs that scripts/setup.sh installs for tests are not there";
    const QImage source = photo.scaled(width, height).convertToFormat(QImage::Format_RGB32);
    for (const Row &row : rows()) {
        const QImage result = filtered(source, row.filter, row.values).toImage();
        EXPECT_LE(difference(result, source, row.step), 1) << qPrintable(row.filter);
    }
}

TEST(Render, CutsWhereSpacesChangeOnly)
{
    const QImage source = randomPicture(width, height, QImage::Format_RGB32);
    const QVariantMap up{{u"inputBrightness"_s, 0.8}}, down{{u"inputBrightness"_s, -0.8}}, stop{{u"inputEV"_s, 1}};
    FilterImage chain = filtered(filtered(source, u"CIColorControls"_s, up), u"CIColorControls"_s, down);
    EXPECT_EQ(chain.toImage(), source);
    chain = filtered(filtered(chain, u"CIExposureAdjust"_s, stop), u"CIExposureAdjust"_s, {{u"inputEV"_s, -1}});
    EXPECT_EQ(chain.toImage(), source);
    chain = filtered(filtered(filtered(source, u"CIColorControls"_s, up), u"CIExposureAdjust"_s, stop),
                     u"CIColorControls"_s, down);
    const Step step = [](const Pixel &p, int x, int y) {
        return controls(1, -0.8, 1)(exposed(controls(1, 0.8, 1)(p, x, y), 1), x, y);
    };
    EXPECT_LE(difference(chain.toImage(), source, step), 1);
}

TEST(Render, IdentitiesAreExact)
{
    const QImage other = randomPicture(9, 9, QImage::Format_ARGB32_Premultiplied, 2);
    const Row identities[] = {
        {u"CISepiaTone"_s, {{u"inputIntensity"_s, 0}}, {}},
        {u"CIColorControls"_s, {{u"inputSaturation"_s, 1}, {u"inputContrast"_s, 1}}, {}},
        {u"CIExposureAdjust"_s, {}, {}},
        {u"CIHueAdjust"_s, {{u"inputAngle"_s, 0}}, {}},
        {u"CIVibrance"_s, {}, {}},
        {u"CIVignette"_s, {{u"inputRadius"_s, 0}}, {}},
        {u"CIHighlightShadowAdjust"_s, {{u"inputRadius"_s, 10}}, {}},
        {u"CIDissolveTransition"_s, {}, {}},
        {u"CIMultiplyBlendMode"_s, {}, {}},
        {u"CIBlendWithMask"_s, {}, {}},
    };
    for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
        const QImage source = randomPicture(width, height, format);
        for (const Row &row : identities) {
            const Pictures pictures =
                row.filter == "CIDissolveTransition"_L1 ? Pictures{{u"inputTargetImage"_s, other}} : Pictures();
            const QImage result = filtered(source, row.filter, row.values, pictures).toImage();
            EXPECT_EQ(result, source) << qPrintable(row.filter) << format;
            EXPECT_EQ(result.format(), format);
        }
        QImage twice = filtered(filtered(source, u"CIColorInvert"_s), u"CIColorInvert"_s).toImage();
        EXPECT_EQ(twice, source);
    }
}

TEST_P(RenderOn, PlacesFurtherPicturesAtTheOrigin)
{
    for (const QImage::Format format : formats) {
        const QImage source = randomPicture(width, height, format);
        const QImage other = randomPicture(550, 3, QImage::Format_ARGB32_Premultiplied, 3);
        const QImage mask = randomPicture(900, 4, QImage::Format_ARGB32_Premultiplied, 4);
        const Pictures pictures{
            {u"inputTargetImage"_s, other}, {u"inputBackgroundImage"_s, other}, {u"inputMaskImage"_s, mask}};
        const Step fade = [&](const Pixel &p, int x, int y) { return crossFade(p, pixelOf(other, x, y), 0.3); };
        const Step masked = [&](const Pixel &p, int x, int y) {
            const Pixel m = pixelOf(mask, x, y);
            return crossFade(pixelOf(other, x, y), p, luma(m) * m.a);
        };
        const QImage faded = filtered(source, u"CIDissolveTransition"_s, {{u"inputTime"_s, 0.3}}, pictures).toImage();
        EXPECT_LE(difference(faded, source, fade), 1) << format;
        EXPECT_LE(difference(filtered(source, u"CIBlendWithMask"_s, {}, pictures).toImage(), source, masked), 1)
            << format;
    }
}

/// The clear pixels of the source do not count, its edges go on.
TEST(Render, BlursWhatDecidesOnShadows)
{
    constexpr int radius = 2;
    for (const QImage::Format format : formats) {
        const QImage source = randomPicture(19, 11, format);
        using Plane = std::function<double(int x, int y)>;
        const auto mean = [&](const Plane &plane, int x, int y) {
            double sum = 0;
            for (int dy = -radius; dy <= radius; ++dy)
                for (int dx = -radius; dx <= radius; ++dx)
                    sum += plane(std::clamp(x + dx, 0, source.width() - 1), std::clamp(y + dy, 0, source.height() - 1));
            return sum / ((2 * radius + 1) * (2 * radius + 1));
        };
        const auto blurred = [&](const Plane &plane, int x, int y) {
            return mean([&](int u, int v) { return mean(plane, u, v); }, x, y);
        };
        const Plane alpha = [&](int x, int y) { return pixelOf(source, x, y).a; };
        const Plane light = [&](int x, int y) { return luma(pixelOf(source, x, y)) * alpha(x, y); };
        const Step step = [&](const Pixel &p, int x, int y) {
            return adjusted(p, 0.5, 0.8, blurred(light, x, y) / blurred(alpha, x, y));
        };
        const QVariantMap values{
            {u"inputHighlightAmount"_s, 0.5}, {u"inputShadowAmount"_s, 0.8}, {u"inputRadius"_s, radius}};
        EXPECT_LE(difference(filtered(source, u"CIHighlightShadowAdjust"_s, values).toImage(), source, step), 1)
            << format;
    }
}

TEST(Render, TakesChainsAsFurtherPictures)
{
    const FilterImage source = randomPicture(40, 3, QImage::Format_RGB32);
    FilterImage squared = source;
    for (int i = 0; i < 40; ++i) // 2 to the 40 pictures if each were rendered wherever it is used
        squared = filtered(squared, u"CIMultiplyBlendMode"_s, {}, {{u"inputBackgroundImage"_s, squared}});
    const QImage result = squared.toImage();
    ASSERT_EQ(result.size(), source.size());
    EXPECT_EQ(result.pixel(0, 0) & 0xffffffU, 0U);
}

TEST(Render, RunsKernelsOfApplications)
{
    const QImage source = randomPicture(700, 3, QImage::Format_ARGB32_Premultiplied);
    auto recipe = std::make_shared<detail::Recipe>();
    recipe->filter = u"Half"_s;
    recipe->values = {{u"factor"_s, 0.5}};
    recipe->images.insert(u"inputImage"_s, FilterImage(source).recipe());
    recipe->kernel = std::make_shared<PixelKernel>([](const PixelBlock &block, const QVariantMap &values) {
        for (int i = 0; i < block.count; ++i)
            block.red[i] = block.x + i == 699 ? NAN : block.red[i] * values.value(u"factor"_s).toFloat();
    });
    const Step step = [](const Pixel &p, int x, int) { return Pixel{x == 699 ? 0 : p.r / 2, p.g, p.b, p.a}; };
    EXPECT_LE(difference(FilterImage(recipe).toImage(), source, step), 1);

    recipe->kernel = std::make_shared<PixelKernel>([](auto &&...) { throw std::runtime_error("kernel"); });
    EXPECT_THROW((void)FilterImage(recipe).toImage({.threads = 2}), std::runtime_error);
    const LogRecorder log;
    recipe->kernel = std::make_shared<PixelKernel>([](auto &&...) { throw std::bad_alloc(); });
    EXPECT_TRUE(FilterImage(recipe).toImage().isNull());
    EXPECT_THAT(log.lines(),
                ::testing::ElementsAre(u"A picture of 700 x 3 pixels is not rendered: there is no memory for it"_s));
}

TEST(Render, TakesAnyFormatAndShape)
{
    const QSize sizes[] = {{1, 1}, {30'000, 2}, {3, 3'000}};
    for (const QSize &size : sizes) {
        const QImage plain = randomPicture(size.width(), size.height(), QImage::Format_RGB32);
        for (const QImage::Format format :
             {QImage::Format_RGB888, QImage::Format_RGBA8888, QImage::Format_RGBA64, QImage::Format_BGR30}) {
            QImage source = plain.convertToFormat(format);
            source.setDevicePixelRatio(2);
            const QImage result = filtered(source, u"CIColorInvert"_s).toImage();
            EXPECT_EQ(result.size(), size);
            EXPECT_EQ(result.devicePixelRatio(), 2);
            EXPECT_EQ(result.pixel(size.width() - 1, size.height() - 1),
                      plain.pixel(size.width() - 1, size.height() - 1) ^ 0xffffffU)
                << format;
        }
    }
    for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_RGB16, QImage::Format_Indexed8}) {
        QImage linear = randomPicture(20, 2, QImage::Format_RGB32).convertToFormat(format);
        linear.setColorSpace(QColorSpace::SRgbLinear);
        const QImage result = FilterImage(linear).toImage();
        EXPECT_EQ(result.colorSpace(), QColorSpace(QColorSpace::SRgb));
        EXPECT_EQ(result, linear.convertToFormat(QImage::Format_RGB32).convertedToColorSpace(QColorSpace::SRgb));
    }
    EXPECT_TRUE(FilterImage(QImage()).isNull());
    EXPECT_TRUE(filtered(QImage(), u"CIColorInvert"_s).toImage().isNull());
    EXPECT_EQ(FilterImage().size(), QSize(0, 0));
}

TEST(Render, IntoAnImage)
{
    const LogRecorder log;
    const QImage source = randomPicture(90, 40, QImage::Format_ARGB32_Premultiplied);
    const FilterImage sepiaTone = filtered(source, u"CISepiaTone"_s);
    QImage target(source.size(), QImage::Format_ARGB32_Premultiplied);
    ASSERT_TRUE(sepiaTone.renderInto(target));
    EXPECT_EQ(target, sepiaTone.toImage());
    EXPECT_TRUE(log.lines().isEmpty());
    QImage wrongSize(9, 9, QImage::Format_RGB32), wrongFormat(source.size(), QImage::Format_RGB16);
    for (QImage *image : {&wrongSize, &wrongFormat})
        EXPECT_FALSE(sepiaTone.renderInto(*image));
    EXPECT_EQ(log.lines().size(), 2);
    EXPECT_EQ(filtered(source, u"CINothing"_s).toImage(), source);
    EXPECT_EQ(log.lines().size(), 3);
}

TEST(Render, ReportsAndCancels)
{
    const QImage source = randomPicture(600, 700, QImage::Format_RGB32);
    const FilterImage image = filtered(source, u"CIVibrance"_s, {{u"inputAmount"_s, 1}});
    double last = 0;
    EXPECT_EQ(image.toImage({.threads = 2,
                             .progress =
                                 [&](double done) {
                                     EXPECT_GT(done, last);
                                     last = done;
                                     return true;
                                 }}),
              image.toImage({.threads = 1}));
    EXPECT_EQ(last, 1);
    int calls = 0;
    EXPECT_TRUE(image.toImage({.threads = 2, .progress = [&](double) { return ++calls < 3; }}).isNull());
    EXPECT_EQ(calls, 3);
    const auto fail = [](double) -> bool { throw std::runtime_error("progress"); };
    EXPECT_THROW((void)image.toImage({.progress = fail}), std::runtime_error);
}

} // namespace
