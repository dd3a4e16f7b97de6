// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// The chain of seven filters with libvips, which streams it through its threads.

#include "imaging_pictures.h"

#include <benchmark/benchmark.h>

#include <vips/vips8>

#include <cmath>
#include <vector>

using vips::VImage;

namespace {

/// Red, green and blue in memory of libvips, so that no conversion counts.
VImage imageOf(const QImage &image)
{
    const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
    std::vector<uchar> bytes;
    bytes.reserve(std::size_t(rgb.width()) * 3 * std::size_t(rgb.height()));
    for (int y = 0; y < rgb.height(); ++y)
        bytes.insert(bytes.end(), rgb.constScanLine(y), rgb.constScanLine(y) + 3 * rgb.width());
    return VImage(
        vips_image_new_from_memory_copy(bytes.data(), bytes.size(), rgb.width(), rgb.height(), 3, VIPS_FORMAT_UCHAR));
}

VImage matrixOf(const std::vector<double> &values)
{
    VImage matrix = VImage::new_matrix(3, int(values.size()) / 3);
    for (std::size_t i = 0; i < values.size(); ++i)
        *VIPS_MATRIX(matrix.get_image(), int(i) % 3, int(i) / 3) = values[i];
    return matrix;
}

VImage exposureTable()
{
    uchar table[256];
    for (int i = 0; i < 256; ++i)
        table[i] = uchar(std::min(255.0, 255 * std::pow(std::pow(i / 255.0, 2.2) * std::exp2(0.3), 1 / 2.2) + 0.5));
    return VImage(vips_image_new_from_memory_copy(table, sizeof table, 256, 1, 1, VIPS_FORMAT_UCHAR));
}

VImage vignetteFactors(int width, int height)
{
    const VImage place = VImage::xyz(width, height);
    const VImage x = place[0] - width / 2.0, y = place[1] - height / 2.0;
    const VImage distance = (x * x + y * y) * (4 / 1.44 / (double(width) * width + double(height) * height));
    const VImage t = (distance > 1).ifthenelse(VImage::black(width, height) + 1, distance);
    return (1 - 0.6 * t * t * (3 - 2 * t)).cast(VIPS_FORMAT_FLOAT).copy_memory();
}

VImage vibrance(const VImage &image)
{
    const std::vector<VImage> bands{image[0], image[1], image[2]};
    const VImage high = VImage::bandrank(bands, VImage::option()->set("index", 2));
    const VImage low = VImage::bandrank(bands, VImage::option()->set("index", 0));
    const VImage grey = image.recomb(matrixOf({0.213, 0.715, 0.072}));
    return grey + (image - grey) * (1.5 - (high - low) * (0.5 / 255));
}

void seven(benchmark::State &state)
{
    if (VIPS_INIT("benchmark") != 0)
        return state.SkipWithError("libvips does not start");
    vips_cache_set_max(0);
    vips_concurrency_set(int(state.range(0)));
    const VImage photo = imageOf(benchmarkPhoto()), background = imageOf(benchmarkBackground());
    const VImage table = exposureTable(), factors = vignetteFactors(photo.width(), photo.height());
    // Saturation 1.2, contrast 1.1 and a hue of 15 degrees in one, and sepia of 0.8.
    const VImage colors = matrixOf({1.1650, -0.3694, 0.3044, 0.0116, 1.1977, -0.1093, -0.3062, 0.1191, 1.2870});
    const VImage sepia = matrixOf({0.5144, 0.6152, 0.1512, 0.2792, 0.7488, 0.1344, 0.2176, 0.4272, 0.3048});
    for (auto _ : state) {
        const VImage colored = photo.maplut(table).recomb(colors) + 1.275;
        const VImage result = (vibrance(colored) * factors * background * (1 / 255.0)).recomb(sepia);
        std::size_t size = 0;
        void *pixels = result.cast(VIPS_FORMAT_UCHAR).write_to_memory(&size);
        benchmark::DoNotOptimize(pixels);
        g_free(pixels);
    }
    state.SetBytesProcessed(state.iterations() * benchmarkPhoto().sizeInBytes());
}

BENCHMARK(seven)->Name("filters/seven/libvips")->UseRealTime()->Unit(benchmark::kMillisecond)->Arg(1)->Arg(2);

} // namespace
