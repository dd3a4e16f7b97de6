// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/imaging/filterprocessor.h>

#include <dravelin/platform/exception.h>

#include <algorithm>

namespace dravelin {

using namespace Qt::StringLiterals;

namespace {

bool isNamed(const std::shared_ptr<FilterItem> &item, const QString &name)
{
    return item->filter && item->filter->name() == name;
}

/// Removes the first entry that a predicate accepts.
bool removeFirst(FilterLevel &level, const auto &accepts)
{
    const auto place = std::ranges::find_if(level, accepts);
    if (place == level.end())
        return false;
    level.erase(place);
    return true;
}

std::vector<FilterLevel> emptyLevels(qint64 count)
{
    try {
        return std::vector<FilterLevel>(size_t(std::max<qint64>(count, 0)));
    } catch (const std::exception &) {
        throw Exception(QLatin1String(NSMallocException), u"there is no memory for %1 levels"_s.arg(count));
    }
}

} // namespace

FilterProcessor::FilterProcessor(qint64 levels) : m_filterLevels(emptyLevels(levels)) {}
FilterProcessor::FilterProcessor(FilterProcessor &&other) noexcept = default;
FilterProcessor &FilterProcessor::operator=(FilterProcessor &&other) noexcept = default;
FilterProcessor::~FilterProcessor() = default;

FilterLevel &FilterProcessor::levelAt(qint64 level)
{
    if (level < 0 || level >= levelCount())
        throw Exception(QLatin1String(NSRangeException),
                        u"level %1 is not one of the %2 levels"_s.arg(level).arg(levelCount()));
    return m_filterLevels[size_t(level)];
}

void FilterProcessor::addFilter(const std::shared_ptr<ImageFilter> &filter, qint64 level, qint64 index)
{
    if (!filter)
        return deleteFilterLevel(level, index);
    // The argument may be the very entry that goes.
    const auto item = std::make_shared<FilterItem>(FilterItem{.index = index, .filter = filter});
    deleteFilterWithName(filter->name());
    FilterLevel &items = levelAt(level);
    items.append(item);
    sortFilterList(items);
    updateFilterCount();
}

void FilterProcessor::deleteAllFilters()
{
    std::ranges::for_each(m_filterLevels, [](FilterLevel &level) { level.clear(); });
    m_filterCount = 0;
}

void FilterProcessor::deleteFilterWithName(const QString &name)
{
    std::ranges::find_if(m_filterLevels, [&](FilterLevel &level) { return findAndDeleteFilter(name, level); });
    updateFilterCount();
}

void FilterProcessor::deleteFilterLevel(qint64 level, qint64 index)
{
    if (removeFirst(levelAt(level), [=](const auto &item) { return item->index == index; }))
        updateFilterCount();
}

QList<std::shared_ptr<ImageFilter>> FilterProcessor::getAllFilters() const
{
    QList<std::shared_ptr<ImageFilter>> filters;
    for (const FilterLevel &level : m_filterLevels) {
        for (const auto &item : level)
            filters.append(item->filter);
    }
    return filters;
}

std::shared_ptr<ImageFilter> FilterProcessor::findFilter(const QString &name) const
{
    for (const FilterLevel &level : m_filterLevels) {
        const auto place = std::ranges::find_if(level, [&](const auto &item) { return isNamed(item, name); });
        if (place != level.end())
            return (*place)->filter;
    }
    return nullptr;
}

void FilterProcessor::updateFilterCount()
{
    m_filterCount = 0;
    for (const FilterLevel &level : m_filterLevels)
        m_filterCount += level.size();
}

FilterLevel FilterProcessor::filterItems(qint64 level) const
{
    return const_cast<FilterProcessor *>(this)->levelAt(level); // for the check
}

bool FilterProcessor::findAndDeleteFilter(const QString &name, FilterLevel &filterList)
{
    return removeFirst(filterList, [&](const auto &item) { return isNamed(item, name); });
}

void FilterProcessor::sortFilterList(FilterLevel &filterList)
{
    std::ranges::stable_sort(filterList, {}, &FilterItem::index);
}

} // namespace dravelin
