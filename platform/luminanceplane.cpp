// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/luminanceplane.h>

#include <algorithm>
#include <functional>
#include <span>

namespace dravelin::detail {

namespace {

constexpr float full = 65535, half = 0.5;
constexpr int largest = 32767; ///< radius, for sums of 32 bits

quint16 toLevel(float value) { return quint16(std::clamp(value, 0.0F, 1.0F) * full + half); }

/// Divides sums by the number of their terms, rounded: by a multiplication, for divisions of integers are slow.
class Mean
{
public:
    explicit Mean(int terms) : m_factor(((quint64(1) << 32) + quint64(terms) / 2) / quint64(terms)) {}
    quint16 operator()(quint32 sum) const { return quint16((quint64(sum) * m_factor + (quint64(1) << 31)) >> 32); }

private:
    quint64 m_factor;
};

/// The running mean of a line of which `from(i)` is valid within 0 to count.
void meanOfRow(const quint16 *from, quint16 *to, int count, int radius)
{
    const auto at = [&](int i) { return quint32(from[std::clamp(i, 0, count - 1)]); };
    const Mean mean(2 * radius + 1);
    quint32 sum = 0;
    for (int i = -radius; i <= radius; ++i)
        sum += at(i);
    for (int i = 0; i < count; ++i) {
        to[i] = mean(sum);
        sum += at(i + radius + 1) - at(i - radius);
    }
}

void meanOfRows(std::vector<quint16> &plane, int width, int radius)
{
    std::vector<quint16> line(static_cast<std::size_t>(width));
    for (auto row = plane.begin(); row != plane.end(); row += width) {
        meanOfRow(&*row, line.data(), width, radius);
        std::ranges::copy(line, row);
    }
}

/// Row by row, with the sums of all columns at once: memory is passed over in its order.
void meanOfColumns(std::vector<quint16> &plane, int width, int radius)
{
    const int height = int(plane.size() / std::size_t(width));
    const std::vector<quint16> from = plane;
    const auto row = [&](int y) { return from.data() + std::ptrdiff_t(std::clamp(y, 0, height - 1)) * width; };
    std::vector<quint32> sums(static_cast<std::size_t>(width));
    for (int y = -radius; y <= radius; ++y)
        std::ranges::transform(sums, std::span(row(y), sums.size()), sums.begin(), std::plus<quint32>());
    for (int y = 0; y < height; ++y) {
        std::ranges::transform(sums, plane.begin() + std::ptrdiff_t(y) * width, Mean(2 * radius + 1));
        const quint16 *comes = row(y + radius + 1), *goes = row(y - radius);
        for (std::size_t x = 0; x < sums.size(); ++x)
            sums[x] += quint32(comes[x]) - quint32(goes[x]);
    }
}

} // namespace

LuminancePlane::LuminancePlane(const RenderProgram &program, int radius)
    : m_width(program.source.width()),
      m_height(program.source.height()),
      m_light(std::size_t(m_width) * std::size_t(m_height)),
      m_alpha(program.isOpaque ? 0 : m_light.size())
{
    fill(program);
    blur(m_light, radius);
    if (!m_alpha.empty())
        blur(m_alpha, radius);
}

void LuminancePlane::fill(const RenderProgram &program)
{
    const auto row = std::make_unique<PixelRow>();
    alignas(64) float light[PixelRow::capacity] = {};
    forEachBlock(program, 0, m_height, *row, [&] {
        luminance(*row, light);
        const std::size_t at = std::size_t(row->y) * std::size_t(m_width) + std::size_t(row->x);
        for (std::size_t i = 0; i < std::size_t(row->count); ++i)
            m_light[at + i] = toLevel(m_alpha.empty() ? light[i] : light[i] * row->alpha[i]);
        for (std::size_t i = 0; !m_alpha.empty() && i < std::size_t(row->count); ++i)
            m_alpha[at + i] = toLevel(row->alpha[i]);
    });
}

void LuminancePlane::blur(Plane &plane, int radius) const
{
    for (int pass = 0; pass < 2; ++pass) {
        meanOfRows(plane, m_width, std::min({radius, m_width, largest}));
        meanOfColumns(plane, m_width, std::min({radius, m_height, largest}));
    }
}

void LuminancePlane::read(const PixelRow &row, float *light) const
{
    const std::size_t at = std::size_t(row.y) * std::size_t(m_width) + std::size_t(row.x);
    for (std::size_t i = 0; i < std::size_t(row.count); ++i) {
        const float alpha = m_alpha.empty() ? full : std::max<float>(m_alpha[at + i], 1);
        light[i] = std::min(float(m_light[at + i]) / alpha, 1.0F);
    }
}

} // namespace dravelin::detail
