// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging/pixellist.h>

#include <dravelin/platform/exception.h>

#include <platform/largebytes.h>

#include <QtCore/QString>

#include <limits>
#include <utility>

namespace dravelin {

using namespace Qt::StringLiterals;

static_assert(sizeof(AlphaEntry) == 24);

PixelList::PixelList(PixelList &&other) noexcept
    : m_pixelCount(std::exchange(other.m_pixelCount, 0)), m_alphaEntries(std::move(other.m_alphaEntries))
{}

PixelList &PixelList::operator=(PixelList &&other) noexcept
{
    PixelList moved(std::move(other));
    std::swap(m_pixelCount, moved.m_pixelCount);
    m_alphaEntries.swap(moved.m_alphaEntries);
    return *this;
}

void PixelList::addPixelX(qint64 x, qint64 y, quint64 alpha) { addPixels(1).front() = {x, y, alpha}; }

std::span<AlphaEntry> PixelList::addPixels(qint64 count)
{
    if (count < 1)
        return {};
    constexpr qint64 most = std::numeric_limits<std::ptrdiff_t>::max() / qint64(sizeof(AlphaEntry));
    void *grown = nullptr;
    if (count <= most - m_pixelCount)
        grown = std::realloc(m_alphaEntries.get(), std::size_t(m_pixelCount + count) * sizeof(AlphaEntry));
    if (!grown)
        throw Exception(QLatin1String(NSMallocException),
                        u"no memory for a list of %1 pixels and %2 more"_s.arg(m_pixelCount).arg(count));
    (void)m_alphaEntries.release();
    m_alphaEntries.reset(static_cast<AlphaEntry *>(grown));
    m_pixelCount += count;
    if (count > 1)
        detail::adviseHugePages(grown, std::size_t(m_pixelCount) * sizeof(AlphaEntry));
    return {m_alphaEntries.get() + m_pixelCount - count, std::size_t(count)};
}

} // namespace dravelin
