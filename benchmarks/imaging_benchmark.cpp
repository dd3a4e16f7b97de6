// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "imaging_pictures.h"

#include <dravelin/imaging.h>

#include <benchmark/benchmark.h>

#include <cairo.h>

#include <opencv2/core.hpp>
#include <opencv2/imgproc.hpp>

#include <cmath>

using namespace dravelin;

namespace {

constexpr int Width = 6000, Height = 4000;

/// As a photograph's: smooth areas, edges and noise.
QImage makePhoto(int phase)
{
    QImage image(Width, Height, QImage::Format_RGB32);
    quint32 noise = 1;
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < Width; ++x) {
            noise = noise * 1664525 + 1013904223;
            const double wave = std::sin((x + phase) * 0.004) * std::cos(y * 0.003);
            const int base = int(110 + 80 * wave + ((x / 700 + y / 500) % 2 ? 25 : -25) + double(noise >> 28));
            const auto level = [base](int add) { return std::clamp(base + add, 0, 255); };
            reinterpret_cast<QRgb *>(image.scanLine(y))[x] = qRgb(level(20), level(0), level(-30 + x / 200));
        }
    }
    return image;
}

const QImage &photo()
{
    static const QImage image = makePhoto(0);
    return image;
}

const QImage &background()
{
    static const QImage image = makePhoto(900);
    return image;
}

FilterImage after(const std::shared_ptr<ImageFilter> &filter, const FilterImage &image)
{
    filter->setValue(image, kCIInputImageKey);
    return filter->outputImage();
}

QList<std::shared_ptr<ImageFilter>> chain(int number)
{
    if (number == 1)
        return {sepiaFilter(0.8F)};
    QList<std::shared_ptr<ImageFilter>> filters = {
        exposureFilter(0.3F), saturationBrightnessContrastFilter(1.2F, 0.05F, 1.1F), hueFilter(15)};
    if (number == 3)
        filters += {vibranceFilter(0.5F), vignetteFilter(0.6F, 1.2F), colorMultiplyBlendFilter(background()),
                    sepiaFilter(0.8F)};
    return filters;
}

template <typename Work>
void onThreads(benchmark::State &state, const Work &work)
{
    work(); // fresh memory is touched here, where the result is not fresh each time
    for (auto _ : state)
        work();
    state.SetBytesProcessed(state.iterations() * photo().sizeInBytes());
}

int threads(const benchmark::State &state) { return int(state.range(0)); }

void oursInto(benchmark::State &state, int number)
{
    FilterImage image = photo();
    for (const auto &filter : chain(number))
        image = after(filter, image);
    QImage target(photo().size(), QImage::Format_RGB32);
    target.fill(Qt::black);
    onThreads(state, [&] { image.renderInto(target, {.threads = threads(state)}); });
}

void oursFresh(benchmark::State &state, int number)
{
    FilterProcessor processor(1);
    for (const auto &filter : chain(number))
        processor.addFilter(filter, 0, processor.filterCount());
    onThreads(state, [&] {
        const FilterImage image = processor.applyFilters(FilterImage(photo()));
        benchmark::DoNotOptimize(image.toImage({.threads = threads(state)}));
    });
}

cv::Mat matOf(const QImage &image)
{
    const cv::Mat whole(Height, Width, CV_8UC4, const_cast<uchar *>(image.constBits()),
                        std::size_t(image.bytesPerLine()));
    cv::Mat result;
    cv::cvtColor(whole, result, cv::COLOR_BGRA2BGR); // three channels are what its vector code is for
    return result;
}

cv::Mat matrixOf(const cv::Matx33d &rgb, double added)
{
    cv::Mat result(3, 4, CV_32F);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            result.at<float>(row, column) = float(rgb(2 - row, 2 - column));
        result.at<float>(row, 3) = float(added);
    }
    return result;
}

const cv::Matx33d Grey(0.213, 0.715, 0.072, 0.213, 0.715, 0.072, 0.213, 0.715, 0.072);
const cv::Matx33d Sine(-0.213, -0.715, 0.928, 0.143, 0.140, -0.283, -0.787, 0.715, 0.072);
const cv::Matx33d SepiaTone(0.393, 0.769, 0.189, 0.349, 0.686, 0.168, 0.272, 0.534, 0.131);

cv::Matx33d sepiaMatrix() { return cv::Matx33d::eye() * 0.2 + SepiaTone * 0.8; }
cv::Matx33d controlsMatrix() { return (Grey * -0.2 + cv::Matx33d::eye() * 1.2) * 1.1; }
double controlsAdded() { return ((0.05 - 0.5) * 1.1 + 0.5) * 255; }

cv::Matx33d hueMatrix()
{
    const double angle = 15 * CV_PI / 180;
    return Grey + (cv::Matx33d::eye() - Grey) * std::cos(angle) + Sine * std::sin(angle);
}

cv::Mat exposureTable()
{
    cv::Mat table(1, 256, CV_8U);
    for (int i = 0; i < 256; ++i)
        table.at<uchar>(i) =
            cv::saturate_cast<uchar>(255 * std::pow(std::pow(i / 255.0, 2.2) * std::exp2(0.3), 1 / 2.2));
    return table;
}

void openCvSepia(benchmark::State &state)
{
    cv::setNumThreads(threads(state));
    const cv::Mat source = matOf(photo()), matrix = matrixOf(sepiaMatrix(), 0);
    cv::Mat result;
    onThreads(state, [&] { cv::transform(source, result, matrix); });
}

void openCvColors(benchmark::State &state)
{
    cv::setNumThreads(threads(state));
    const cv::Mat source = matOf(photo()), table = exposureTable();
    const cv::Mat controls = matrixOf(controlsMatrix(), controlsAdded()), hue = matrixOf(hueMatrix(), 0);
    cv::Mat exposed, controlled, result;
    onThreads(state, [&] {
        cv::LUT(source, table, exposed);
        cv::transform(exposed, controlled, controls);
        cv::transform(controlled, result, hue);
    });
}

/// Vibrance of eight-bit pixels.
void openCvVibrance(cv::Mat &image)
{
    cv::Mat channels[3], high, low, scale, grey;
    cv::split(image, channels);
    cv::max(channels[0], channels[1], high);
    cv::max(high, channels[2], high);
    cv::min(channels[0], channels[1], low);
    cv::min(low, channels[2], low);
    cv::subtract(high, low, scale);
    scale.convertTo(scale, CV_16S, -0.5, 382.5); // 255 * (1 + 0.5 * (1 - saturation))
    cv::cvtColor(image, grey, cv::COLOR_BGR2GRAY);
    for (cv::Mat &channel : channels) {
        cv::Mat distance;
        cv::subtract(channel, grey, distance, cv::noArray(), CV_16S);
        cv::multiply(distance, scale, distance, 1 / 255.0);
        cv::add(distance, grey, channel, cv::noArray(), CV_8U);
    }
    cv::merge(channels, 3, image);
}

cv::Mat vignetteFactors()
{
    cv::Mat factors(Height, Width, CV_8UC3);
    for (int y = 0; y < Height; ++y) {
        for (int x = 0; x < Width; ++x) {
            const double dx = x - Width / 2.0, dy = y - Height / 2.0;
            const double t = std::min(1.0, (dx * dx + dy * dy) / (Width * Width + Height * Height) * 4 / 1.44);
            factors.at<cv::Vec3b>(y, x) = cv::Vec3b::all(uchar(255 * (1 - 0.6 * t * t * (3 - 2 * t))));
        }
    }
    return factors;
}

/// The way that is fastest with it: strips that stay in the caches, matrices that are one, vignette as a picture.
void openCvAll(benchmark::State &state)
{
    cv::setNumThreads(threads(state));
    constexpr int Strip = 16;
    const cv::Mat source = matOf(photo()), under = matOf(background()), factors = vignetteFactors();
    const cv::Mat table = exposureTable(), sepia = matrixOf(sepiaMatrix(), 0);
    const cv::Mat colors = matrixOf(hueMatrix() * controlsMatrix(), controlsAdded());
    cv::Mat result(Height, Width, CV_8UC3);
    const auto strips = [&](const cv::Range &range) {
        cv::Mat work, colored;
        for (int strip = range.start; strip < range.end; ++strip) {
            const cv::Range rows(strip * Strip, (strip + 1) * Strip);
            cv::LUT(source.rowRange(rows), table, work);
            cv::transform(work, colored, colors);
            openCvVibrance(colored);
            cv::multiply(colored, factors.rowRange(rows), colored, 1 / 255.0);
            cv::multiply(colored, under.rowRange(rows), colored, 1 / 255.0);
            cv::Mat to = result.rowRange(rows);
            cv::transform(colored, to, sepia);
        }
    };
    onThreads(state, [&] { cv::parallel_for_(cv::Range(0, Height / Strip), strips, threads(state)); });
}

void qtSepia(benchmark::State &state)
{
    const auto m = sepiaMatrix();
    QImage result(photo().size(), QImage::Format_RGB32);
    const auto level = [](double value) { return std::min(int(value + 0.5), 255); };
    onThreads(state, [&] {
        for (int y = 0; y < Height; ++y) {
            const auto *from = reinterpret_cast<const QRgb *>(photo().constScanLine(y));
            auto *to = reinterpret_cast<QRgb *>(result.scanLine(y));
            for (int x = 0; x < Width; ++x) {
                const float r = float(qRed(from[x])), g = float(qGreen(from[x])), b = float(qBlue(from[x]));
                const auto row = [&](int i) {
                    return level(float(m(i, 0)) * r + float(m(i, 1)) * g + float(m(i, 2)) * b);
                };
                to[x] = qRgb(row(0), row(1), row(2));
            }
        }
    });
}

void oursBlend(benchmark::State &state, std::shared_ptr<ImageFilter> (*filter)(const FilterImage &))
{
    const FilterImage image = after(filter(background()), photo());
    QImage target(photo().size(), QImage::Format_RGB32);
    target.fill(Qt::black);
    onThreads(state, [&] { image.renderInto(target, {.threads = threads(state)}); });
}

/// Over and over into one picture, which saves it a copy of the background.
void cairoBlend(benchmark::State &state, cairo_operator_t operation)
{
    QImage above = photo(), below = background();
    const auto surface = [](QImage &image) {
        return cairo_image_surface_create_for_data(image.bits(), CAIRO_FORMAT_RGB24, Width, Height,
                                                   int(image.bytesPerLine()));
    };
    cairo_surface_t *source = surface(above), *target = surface(below);
    cairo_t *cairo = cairo_create(target);
    cairo_set_source_surface(cairo, source, 0, 0);
    cairo_set_operator(cairo, operation);
    onThreads(state, [&] { cairo_paint(cairo); });
    cairo_destroy(cairo);
    cairo_surface_destroy(source);
    cairo_surface_destroy(target);
}

#define CASE(function, name, ...)                                                                                      \
    BENCHMARK_CAPTURE(function, c, __VA_ARGS__)->Name(name)->UseRealTime()->Unit(benchmark::kMillisecond)
#define PLAIN(function, name) BENCHMARK(function)->Name(name)->UseRealTime()->Unit(benchmark::kMillisecond)
CASE(oursInto, "filters/sepia/ours", 1)->Arg(1)->Arg(2);
CASE(oursFresh, "filters/sepia/applyFilters", 1)->Arg(1)->Arg(2);
PLAIN(openCvSepia, "filters/sepia/OpenCV")->Arg(1)->Arg(2);
PLAIN(qtSepia, "filters/sepia/QtLoop")->Arg(1);
CASE(oursInto, "filters/exposureColorsHue/ours", 2)->Arg(1)->Arg(2);
CASE(oursFresh, "filters/exposureColorsHue/applyFilters", 2)->Arg(1)->Arg(2);
PLAIN(openCvColors, "filters/exposureColorsHue/OpenCV")->Arg(1)->Arg(2);
CASE(oursInto, "filters/seven/ours", 3)->Arg(1)->Arg(2);
CASE(oursFresh, "filters/seven/applyFilters", 3)->Arg(1)->Arg(2);
PLAIN(openCvAll, "filters/seven/OpenCV")->Arg(1)->Arg(2);
CASE(oursBlend, "filters/blendMultiply/ours", colorMultiplyBlendFilter)->Arg(1);
CASE(cairoBlend, "filters/blendMultiply/cairo", CAIRO_OPERATOR_MULTIPLY)->Arg(1);
CASE(oursBlend, "filters/blendHue/ours", hueBlendFilter)->Arg(1);
CASE(cairoBlend, "filters/blendHue/cairo", CAIRO_OPERATOR_HSL_HUE)->Arg(1);
CASE(oursBlend, "filters/blendSaturation/ours", saturationBlendFilter)->Arg(1);
CASE(cairoBlend, "filters/blendSaturation/cairo", CAIRO_OPERATOR_HSL_SATURATION)->Arg(1);
CASE(oursBlend, "filters/blendColor/ours", colorBlendFilter)->Arg(1);
CASE(cairoBlend, "filters/blendColor/cairo", CAIRO_OPERATOR_HSL_COLOR)->Arg(1);
CASE(oursBlend, "filters/blendLuminosity/ours", luminosityBlendFilter)->Arg(1);
CASE(cairoBlend, "filters/blendLuminosity/cairo", CAIRO_OPERATOR_HSL_LUMINOSITY)->Arg(1);

} // namespace

const QImage &benchmarkPhoto() { return photo(); }
const QImage &benchmarkBackground() { return background(); }
