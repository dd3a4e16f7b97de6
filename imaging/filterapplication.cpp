// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging/filterprocessor.h>

#include <QtCore/QPromise>
#include <QtCore/QThreadPool>

#include <algorithm>
#include <memory>

namespace dravelin {

namespace {

using Filters = QList<std::shared_ptr<ImageFilter>>;

/// Hands the picture from filter to filter.
FilterImage run(const Filters &filters, FilterImage image)
{
    for (const auto &filter : filters) {
        filter->setValue(image, kCIInputImageKey);
        image = filter->outputImage();
    }
    return image;
}

QImage scaled(const QImage &image, double factor)
{
    const QSize size = (QSizeF(image.size()) * factor).toSize().expandedTo(QSize(1, 1));
    return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

/// A copy for a picture that is smaller by a factor.
std::shared_ptr<ImageFilter> scaled(const ImageFilter &filter, double factor)
{
    auto copy = filter.copy();
    for (const FilterInput &input : filter.inputs()) {
        const QVariant value = filter.value(input.key);
        if (input.type == kCIAttributeTypeImage && value.isValid())
            copy->setValue(scaled(value.value<FilterImage>().toImage(), factor), input.key);
        else if (input.inPixels && value.isValid())
            copy->setValue(value.toDouble() * factor, input.key);
    }
    return copy;
}

/// \throws what an application's kernel throws
void render(QPromise<QImage> &promise, const FilterImage &image)
{
    const auto progress = [&](double done) {
        promise.setProgressValue(int(done * 1000));
        return !promise.isCanceled();
    };
    QImage result = promise.isCanceled() ? QImage() : image.toImage({.progress = progress});
    if (!promise.isCanceled()) {
        promise.setProgressValue(1000);
        promise.addResult(std::move(result));
    }
}

void renderAndFinish(QPromise<QImage> &promise, const FilterImage &image) noexcept
{
    try {
        render(promise, image);
    } catch (...) {
        promise.setException(std::current_exception());
    }
    promise.finish();
}

} // namespace

FilterImage FilterProcessor::applyFilters(const FilterImage &image) { return run(getAllFilters(), image); }

QImage FilterProcessor::applyFilters(const QImage &image)
{
    return m_filterCount == 0 ? image : applyFilters(FilterImage(image)).toImage();
}

Image FilterProcessor::applyFilters(const Image &image)
{
    const bool isCopy = m_filterCount == 0;
    const QImage shown = applyFilters(image.toImage());
    if (image.isNull() || (shown.isNull() && !isCopy))
        return {};
    Image result(image.size());
    if (!shown.isNull())
        result.addRepresentation(std::make_shared<BitmapImageRep>(shown));
    result.setCacheMode(isCopy ? image.cacheMode() : NSImageCacheNever);
    return result;
}

QFuture<QImage> FilterProcessor::applyFiltersAsync(const QImage &image)
{
    if (m_filterCount == 0)
        return QtFuture::makeReadyFuture(image);
    const auto promise = std::make_shared<QPromise<QImage>>();
    const FilterImage output = applyFilters(FilterImage(image));
    promise->start(); // a future that has not begun does not wait for its result
    promise->setProgressRange(0, 1000);
    QThreadPool::globalInstance()->start([promise, output] { renderAndFinish(*promise, output); });
    return promise->future();
}

QImage FilterProcessor::thumbnail(const QImage &image, const QSize &bounds) const
{
    if (image.isNull() || bounds.isEmpty())
        return {};
    const double factor =
        std::min({1.0, double(bounds.width()) / image.width(), double(bounds.height()) / image.height()});
    Filters filters;
    for (const auto &filter : getAllFilters())
        filters.append(scaled(*filter, factor));
    const QImage small = scaled(image, factor);
    return filters.isEmpty() ? small : run(filters, small).toImage();
}

} // namespace dravelin
