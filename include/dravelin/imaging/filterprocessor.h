// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/image.h>
#include <dravelin/platform/imagefilter.h>

#include <QtCore/QByteArray>
#include <QtCore/QFuture>
#include <QtCore/QList>
#include <QtCore/QSize>
#include <QtGui/QImage>
#include <QtGui/QPixmap>

#include <memory>
#include <optional>
#include <vector>

namespace dravelin {

/// An entry of a level of a FilterProcessor.
struct FilterItem
{
    qint64 index = 0;        ///< by which the entries of a level are sorted, and found by deleteFilterLevel()
    bool hasDefault = false; ///< whether defaultValue means anything; the processor uses neither
    double defaultValue = 0; ///< what a caller may note as the default of a parameter
    std::shared_ptr<ImageFilter> filter;
};

/// A level's entries, which are never null.
using FilterLevel = QList<std::shared_ptr<FilterItem>>;

/// A chain of filters in a fixed number of levels. Level 0 comes first; within a level the filters are sorted by index,
/// those of equal index in the order in which they were added. No two filters have the same name: adding one removes
/// whichever has its name already.
///
///     dravelin::FilterProcessor chain(2);
///     chain.addFilter(dravelin::exposureFilter(0.3f), 0, 1);
///     chain.addFilter(dravelin::vignetteFilter(0.6f, 1.2f), 1, 0);
///     const QImage result = chain.applyFilters(photo);
///
/// A processor is used by one thread at a time. What is unknown, a name or an index, is ignored; a level outside the
/// processor is an Exception.
class DRAVELIN_EXPORT FilterProcessor
{
public:
    /// \param levels below 1 there are none, and nothing can be added
    /// \throws Exception NSMallocException when there is no memory for them
    /// \operation{initWithLevels:}
    explicit FilterProcessor(qint64 levels);
    FilterProcessor(FilterProcessor &&other) noexcept;
    FilterProcessor &operator=(FilterProcessor &&other) noexcept;
    ~FilterProcessor();

    /// \name The chain
    /// @{

    /// Adds a filter, or moves it: one of the same name is removed first, wherever it is. The index need not be free.
    /// Without a filter the same as deleteFilterLevel().
    /// \throws Exception NSRangeException for a level outside; a filter of the same name has been removed by then
    /// \operation{addFilter:level:index:}
    void addFilter(const std::shared_ptr<ImageFilter> &filter, qint64 level, qint64 index);

    /// \operation{deleteAllFilters}
    void deleteAllFilters();

    /// Removes the first filter of that name in the chain.
    /// \operation{deleteFilterWithName:}
    void deleteFilterWithName(const QString &name);

    /// Removes the first entry of that index in the level.
    /// \throws Exception NSRangeException for a level outside
    /// \operation{deleteFilterLevel:index:}
    void deleteFilterLevel(qint64 level, qint64 index);

    /// All filters as they follow each other.
    /// \operation{getAllFilters}
    [[nodiscard]] QList<std::shared_ptr<ImageFilter>> getAllFilters() const;

    /// The first filter of that name in the chain; case counts.
    /// \return null when there is none
    /// \operation{findFilter:}
    [[nodiscard]] std::shared_ptr<ImageFilter> findFilter(const QString &name) const;

    /// As it was counted last: by each operation that adds or removes.
    /// \operation{filterCount}
    [[nodiscard]] qint64 filterCount() const { return m_filterCount; }
    /// Counts the filters of all levels.
    /// \operation{updateFilterCount}
    void updateFilterCount();

    [[nodiscard]] qint64 levelCount() const { return qint64(m_filterLevels.size()); }

    /// The entries of a level; they are the processor's own.
    /// \throws Exception NSRangeException for a level outside
    [[nodiscard]] FilterLevel filterItems(qint64 level) const;
    /// @}

    /// \name One level
    /// @{

    /// Removes the first entry whose filter has that name.
    /// \return whether there was one
    /// \operation{findAndDeleteFilter:filterList:}
    static bool findAndDeleteFilter(const QString &name, FilterLevel &filterList);

    /// Sorts by ascending index; entries of equal index keep their order.
    /// \operation{sortFilterList:}
    static void sortFilterList(FilterLevel &filterList);
    /// @}

    /// \name Pictures
    /// @{

    /// What the chain makes of a picture: in sRGB, of the picture's size and device pixel ratio. Without filters the
    /// picture itself. The filters keep their input images until the next time.
    /// \return a null image when the picture is null or there is no memory for the result
    /// \operation{applyFilters:}
    [[nodiscard]] QImage applyFilters(const QImage &image);

    /// The same of an image object: a new one of its size in points with one bitmap, which never keeps a cache. Without
    /// filters a copy of the image, of which it shares the pixels.
    /// \return no image when the image is none or shows nothing, or there is no memory for the result
    [[nodiscard]] Image applyFilters(const Image &image);
    [[nodiscard]] QImage applyFilters(const QPixmap &pixmap) { return applyFilters(pixmap.toImage()); }

    /// The same as a recipe, which makes no pixels and has nothing to do with the processor any more: render it into an
    /// image that is there, or on another thread.
    [[nodiscard]] FilterImage applyFilters(const FilterImage &image);

    /// The same on a thread of QThreadPool::globalInstance(), with the filters as they are now. Progress runs from 0 to
    /// 1000; a QFutureWatcher reports it on your thread. Cancelling the future ends the work early, without a result. What
    /// a kernel of the application throws comes out of the future.
    [[nodiscard]] QFuture<QImage> applyFiltersAsync(const QImage &image);

    /// A small picture of what the chain makes of a large one, no larger than the bounds (in pixels) and of its shape;
    /// further pictures in the chain shrink along, and so do lengths in pixels. The filters keep all their inputs.
    /// \cost that of scaling the pictures down; for many thumbnails of one picture scale it first
    [[nodiscard]] QImage thumbnail(const QImage &image, const QSize &bounds) const;
    /// @}

    /// \name As text
    /// @{

    /// The chain as a piece of ASCII, see DataEncoder: levels, filters with their display names and indexes, and their
    /// numbers and colours. Pictures are not in it.
    [[nodiscard]] QByteArray encodeChain() const;

    /// A chain that encodeChain() has made text of, with new filters. Inputs that are not in the text have their
    /// defaults, and those that the filter does not know are passed over.
    /// \return nothing, with a line in the log, when it is no such text, has more than 1000 levels, or names a filter
    /// that is not registered here
    [[nodiscard]] static std::optional<FilterProcessor> decodeChain(const QByteArray &text);
    /// @}

private:
    [[nodiscard]] FilterLevel &levelAt(qint64 level);

    std::vector<FilterLevel> m_filterLevels;
    qint64 m_filterCount = 0;
};

} // namespace dravelin
