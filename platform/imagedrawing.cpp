// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/image.h>

#include <QtCore/QScopeGuard>
#include <QtGui/QPainter>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace dravelin {

namespace {

std::optional<QPainter::CompositionMode> compositionMode(CompositingOperation operation)
{
    static constexpr std::array modes = {
        QPainter::CompositionMode_Clear,
        QPainter::CompositionMode_Source,
        QPainter::CompositionMode_SourceOver,
        QPainter::CompositionMode_SourceIn,
        QPainter::CompositionMode_SourceOut,
        QPainter::CompositionMode_SourceAtop,
        QPainter::CompositionMode_DestinationOver,
        QPainter::CompositionMode_DestinationIn,
        QPainter::CompositionMode_DestinationOut,
        QPainter::CompositionMode_DestinationAtop,
        QPainter::CompositionMode_Xor,
    };
    if (operation == NSCompositePlusLighter)
        return QPainter::CompositionMode_Plus;
    const auto number = std::size_t(operation);
    return number < modes.size() ? std::optional(modes[number]) : std::nullopt;
}

/// The part of an image with the given size in points, in its pixels.
QRectF inPixels(const QRectF &points, const QSizeF &size, const QImage &image)
{
    const double right = image.width() / size.width(), down = image.height() / size.height();
    return {points.x() * right, points.y() * down, points.width() * right, points.height() * down};
}

} // namespace

ImageFocus::ImageFocus(std::shared_ptr<BitmapImageRep> bitmap, const QSizeF &size)
    : m_bitmap(std::move(bitmap)), m_painter(std::make_unique<QPainter>())
{
    if (!m_bitmap || m_bitmap->pixels().isNull() || !m_painter->begin(&m_bitmap->pixels()))
        return;
    m_painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    const QSizeF own = m_bitmap->size();
    if (own != size && !size.isEmpty())
        m_painter->scale(own.width() / size.width(), own.height() / size.height());
}

ImageFocus::~ImageFocus() = default;

void ImageFocus::unlockFocus()
{
    if (m_painter->isActive())
        m_painter->end();
    m_bitmap.reset();
}

void Image::drawInRect(QPainter &painter, const QRectF &rect) const
{
    drawInRect(painter, rect, QRectF(), NSCompositeSourceOver, 1);
}

void Image::drawInRect(QPainter &painter, const QRectF &rect, const QRectF &fromRect, CompositingOperation operation,
                       double fraction) const
{
    const QImage image = toImage();
    const auto mode = compositionMode(operation);
    if (image.isNull() || !mode || !painter.isActive())
        return;
    painter.save();
    const auto restore = qScopeGuard([&] { painter.restore(); });
    painter.setCompositionMode(*mode);
    painter.setOpacity(std::clamp(fraction, 0.0, 1.0) * painter.opacity());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rect, image, fromRect.isEmpty() ? QRectF(image.rect()) : inPixels(fromRect, size(), image));
}

} // namespace dravelin
