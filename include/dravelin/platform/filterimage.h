// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QMetaType>
#include <QtCore/QSize>
#include <QtGui/QImage>

#include <functional>
#include <memory>

namespace dravelin {

namespace detail {
struct Recipe;
}

/// How a picture is rendered.
struct RenderOptions
{
    /// The most threads to work on it, the caller's included; 0 leaves it to the size of the picture and the processor.
    int threads = 0;
    /// Called now and then, by one of the threads at a time, with the part that is done, from 0 to 1. When it returns
    /// false, rendering ends without a result.
    std::function<bool(double done)> progress = {};
};

/// A picture, or what a chain of filters makes of one: the recipe, not the pixels, so that making one costs next to
/// nothing. It never changes; copies share it. From any thread.
///
///     const dravelin::FilterImage result = filter->outputImage();
///     label->setPixmap(QPixmap::fromImage(result.toImage()));
class DRAVELIN_EXPORT FilterImage
{
public:
    /// No picture.
    FilterImage();
    /// The pixels as they are; they are shared, not copied. A null image gives no picture.
    FilterImage(const QImage &image); // NOLINT(google-explicit-constructor): a picture is a recipe already
    /// \internal
    explicit FilterImage(std::shared_ptr<const detail::Recipe> recipe);

    [[nodiscard]] bool isNull() const { return !m_recipe; }
    /// In pixels: that of the picture that the chain began with.
    [[nodiscard]] QSize size() const;

    /// The pixels, in sRGB: ARGB32 premultiplied, or RGB32 when every pixel is opaque for certain; with the device pixel
    /// ratio of the picture that the chain began with.
    /// \return a null image when there is no picture, when there is no memory for it, and when it was cancelled
    [[nodiscard]] QImage toImage(const RenderOptions &options = {}) const;
    /// The same into an image that is there: of this size, and of format RGB32, ARGB32 or ARGB32 premultiplied.
    /// \return whether it was rendered; if not, the image may be written in part
    bool renderInto(QImage &image, const RenderOptions &options = {}) const;

    /// \internal
    [[nodiscard]] const std::shared_ptr<const detail::Recipe> &recipe() const { return m_recipe; }

private:
    std::shared_ptr<const detail::Recipe> m_recipe;
};

} // namespace dravelin

Q_DECLARE_METATYPE(dravelin::FilterImage)
