// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// The list of pixels that are not opaque, of 24 megapixels, and icons that are tinted anew. The peers are what one would
// write with Qt alone.

#include <dravelin/imaging.h>

#include <QtGui/QPainter>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

using namespace dravelin;

namespace {

QImage photograph(const std::string &alpha)
{
    QImage image(6000, 4000, QImage::Format_ARGB32_Premultiplied);
    image.fill(alpha == "opaque" ? Qt::white : Qt::transparent);
    if (alpha == "disc") {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(Qt::white);
        painter.drawEllipse(image.rect());
    }
    return image;
}

QImage icon(int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient gradient(0, 0, size, size);
    gradient.setColorAt(0, Qt::white);
    gradient.setColorAt(1, QColor(90, 90, 90, 120));
    painter.setBrush(gradient);
    painter.drawEllipse(QRectF(image.rect()).adjusted(2, 2, -2, -2));
    return image;
}

void listByOverlay(benchmark::State &state, const std::string &alpha)
{
    ImageOverlay overlay(photograph(alpha));
    for (auto _ : state)
        overlay.createPixelList();
    state.counters["entries"] = double(overlay.pixelEntryCount());
}

/// The plain double loop, into a buffer that grows as vectors do.
void listByLoop(benchmark::State &state, const std::string &alpha)
{
    const QImage image = photograph(alpha);
    for (auto _ : state) {
        std::vector<AlphaEntry> entries;
        for (int x = 0; x < image.width(); ++x) {
            for (int y = 0; y < image.height(); ++y) {
                const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
                if (const quint64 value = qAlpha(line[x]); value < 255)
                    entries.push_back({x, y, value});
            }
        }
        benchmark::DoNotOptimize(entries.data());
    }
}

void tintByOverlay(benchmark::State &state, const QImage &background)
{
    ImageOverlay overlay(icon(int(state.range(0))), background);
    float hue = 0;
    for (auto _ : state) {
        overlay.colorImageWithHue(hue += 0.01F, 0.8F);
        benchmark::DoNotOptimize(overlay.getOverlayImage().toImage());
    }
}

void tintByPainter(benchmark::State &state)
{
    const QImage image = icon(int(state.range(0)));
    float hue = 0;
    for (auto _ : state) {
        QImage tinted = image;
        QPainter painter(&tinted);
        painter.setCompositionMode(QPainter::CompositionMode_Multiply);
        hue = hue > 0.98F ? 0 : hue + 0.01F;
        painter.fillRect(tinted.rect(), QColor::fromHsvF(hue, 1, 1, 0.8F));
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        painter.drawImage(0, 0, image);
        painter.end();
        benchmark::DoNotOptimize(tinted);
    }
}

[[maybe_unused]] const bool registered = [] {
    for (const std::string alpha : {"opaque", "disc", "clear"}) {
        const auto add = [&](const std::string &name, auto function) {
            const std::string subject = "overlay/list/" + alpha + '/' + name + "/24MP";
            benchmark::RegisterBenchmark(subject.c_str(), function, alpha)->Unit(benchmark::kMillisecond);
        };
        add("ours", listByOverlay);
        add("loop", listByLoop);
    }
    const auto sizes = [](auto *benchmark) { benchmark->Arg(32)->Arg(256)->Arg(1024)->Unit(benchmark::kMicrosecond); };
    sizes(benchmark::RegisterBenchmark("overlay/tint/ours", tintByOverlay, QImage()));
    sizes(benchmark::RegisterBenchmark("overlay/tint/QPainter", tintByPainter));
    sizes(benchmark::RegisterBenchmark("overlay/tintOnBackground/ours", tintByOverlay, icon(64)));
    return true;
}();

} // namespace
