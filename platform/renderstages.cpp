// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/renderstages.h>

#include <algorithm>
#include <cmath>

namespace dravelin::detail {

namespace {

/// The pixels of a second picture at the place of a row; one block per thread and use, for they are large.
template <int Use>
const PixelRow &rowOf(const QImage &image, const PixelRow &place)
{
    thread_local PixelRow row;
    row.count = place.count;
    row.x = place.x;
    row.y = place.y;
    loadRow(image, row);
    return row;
}

void clear(PixelRow &row, int from)
{
    for (float *channel : {row.red, row.green, row.blue, row.alpha})
        std::fill(channel + from, channel + row.count, 0.0F);
}

} // namespace

void loadRow(const QImage &image, PixelRow &row)
{
    const int wanted = row.count;
    const int there = row.y < image.height() ? std::clamp(image.width() - row.x, 0, wanted) : 0;
    if (there > 0) {
        row.count = there;
        loadPixels(reinterpret_cast<const QRgb *>(image.constScanLine(row.y)) + row.x, pixelFormat(image), row);
        row.count = wanted;
    }
    clear(row, there);
}

MatrixStage::MatrixStage(const ColorMatrix &matrix)
{
    std::ranges::transform(matrix.v, m_matrix,
                           [](double value) { return std::isnan(value) ? 0.0F : float(std::clamp(value, -1e6, 1e6)); });
}

ExposureStage::ExposureStage(double stops) : m_gain(float(std::exp2(std::clamp(stops, -100.0, 100.0)))) {}

HighlightShadowStage::HighlightShadowStage(double highlight, double shadow, std::unique_ptr<const LuminancePlane> light)
    : m_highlight(float(highlight)), m_shadow(float(shadow)), m_light(std::move(light))
{}

void HighlightShadowStage::apply(PixelRow &row) const
{
    alignas(64) float light[PixelRow::capacity] = {};
    if (m_light)
        m_light->read(row, light);
    applyHighlightShadow(row, m_highlight, m_shadow, m_light ? light : nullptr);
}

void BlendStage::apply(PixelRow &row) const { applyBlend(row, rowOf<0>(m_backdrop, row), m_mode); }

void MixStage::apply(PixelRow &row) const { applyMix(row, rowOf<0>(m_target, row), 1 - m_amount); }

void MaskStage::apply(PixelRow &row) const { applyMask(row, rowOf<0>(m_background, row), rowOf<1>(m_mask, row)); }

void KernelStage::apply(PixelRow &row) const
{
    (*m_kernel)({row.red, row.green, row.blue, row.alpha, row.count, row.x, row.y, row.size}, m_values);
}

} // namespace dravelin::detail
