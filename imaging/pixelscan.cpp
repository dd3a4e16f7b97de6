// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <imaging/pixelscan.h>

#include <imaging/pixel_kernels.h>

#include <algorithm>
#include <vector>

namespace dravelin {

namespace {

/// Memory is read by rows but the list goes by columns: so many columns are listed side by side.
constexpr int stripe = 32;
/// Rows to fetch ahead of the one that is listed: the next one lies too far off for the processor to expect it.
constexpr int ahead = 8;

const QRgb *row(const QImage &image, int y) { return reinterpret_cast<const QRgb *>(image.constScanLine(y)); }

std::vector<quint32> countByColumn(const QImage &image, int columns, int rows)
{
    const auto width = std::size_t(columns);
    std::vector<quint32> counts(width);
    for (int y = 0; y < rows; ++y) {
        if (!detail::areOpaque(row(image, y), width))
            detail::countTranslucent(row(image, y), width, counts.data());
    }
    return counts;
}

void fetchAhead(const QRgb *pixels)
{
    for (int i = 0; i < stripe; i += 64 / int(sizeof(QRgb)))
        __builtin_prefetch(pixels + i);
}

/// Lists the columns from `first` up to `end`, each from its place on, which is moved on.
void listStripe(const QImage &image, int first, int end, int rows, AlphaEntry **places)
{
    for (int y = 0; y < rows; ++y) {
        const QRgb *pixels = row(image, y);
        fetchAhead(row(image, std::min(y + ahead, rows - 1)) + first);
        for (int x = first; x < end; ++x) {
            if (const quint64 alpha = pixels[x] >> 24; alpha < 255)
                *places[x - first]++ = {x, y, alpha};
        }
    }
}

} // namespace

void detail::listTranslucent(const QImage &image, int columns, int rows, PixelList &list)
{
    if (!image.hasAlphaChannel())
        return;
    const std::vector<quint32> counts = countByColumn(image, columns, rows);
    qint64 total = 0;
    for (const quint32 count : counts)
        total += count;
    AlphaEntry *place = list.addPixels(total).data();
    for (int first = 0; first < columns && total > 0; first += stripe) {
        const int end = std::min(first + stripe, columns);
        AlphaEntry *places[stripe];
        const AlphaEntry *start = place;
        for (int x = first; x < end; place += counts[std::size_t(x++)])
            places[x - first] = place;
        if (place != start)
            listStripe(image, first, end, rows, places);
    }
}

void detail::writeListedAlpha(QImage &image, const PixelList &list)
{
    uchar *bits = image.bits();
    const qint64 bytesPerLine = image.bytesPerLine(), width = image.width(), height = image.height();
    for (const AlphaEntry &entry : list) {
        if (entry.x >= width || entry.y >= height)
            continue;
        QRgb &pixel = reinterpret_cast<QRgb *>(bits + entry.y * bytesPerLine)[entry.x];
        pixel = (pixel & 0x00ffffff) | QRgb(entry.alpha) << 24;
    }
}

} // namespace dravelin
