// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtGui/QPainter>

#include <memory>

namespace dravelin {

class BitmapImageRep;

/// The right to draw on an Image, from Image::lockFocus() on until it is destroyed or given back. An image is drawn on by
/// one focus at a time; a second one draws nothing.
class DRAVELIN_EXPORT ImageFocus
{
public:
    /// Draws on the bitmap, which may be nothing.
    /// \param size of the image, in points
    ImageFocus(std::shared_ptr<BitmapImageRep> bitmap, const QSizeF &size);
    ImageFocus(ImageFocus &&other) noexcept = default;
    ImageFocus &operator=(ImageFocus &&other) = delete;
    ~ImageFocus();

    /// In points, from (0, 0) at the image's top left corner, anti-aliased. Valid until the focus is given back.
    [[nodiscard]] QPainter &painter() noexcept { return *m_painter; }

    /// Gives the focus back before its end. Once is enough, more do no harm.
    /// \operation{unlockFocus}
    void unlockFocus();

private:
    std::shared_ptr<BitmapImageRep> m_bitmap;
    std::unique_ptr<QPainter> m_painter;
};

} // namespace dravelin
