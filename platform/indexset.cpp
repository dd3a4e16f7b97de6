// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/indexset.h>

#include <algorithm>
#include <limits>
#include <numeric>

namespace dravelin {

namespace {

quint64 endOf(Range range) { return range.location + range.length; }

} // namespace

IndexSet::IndexSet(std::initializer_list<quint64> indexes)
{
    for (const quint64 index : indexes)
        insert(index);
}

void IndexSet::insert(Range range)
{
    range.length = std::min(range.length, std::numeric_limits<quint64>::max() - range.location);
    if (range.length == 0)
        return;
    const auto touches = [](Range earlier, quint64 location) { return endOf(earlier) < location; };
    const auto first = std::lower_bound(m_ranges.begin(), m_ranges.end(), range.location, touches);
    const auto follows = [](quint64 end, Range later) { return end < later.location; };
    const auto last = std::upper_bound(first, m_ranges.end(), endOf(range), follows);
    if (first == last) {
        m_ranges.insert(first, range);
        return;
    }
    const quint64 end = std::max(endOf(range), endOf(*(last - 1)));
    first->location = std::min(first->location, range.location);
    first->length = end - first->location;
    m_ranges.erase(first + 1, last);
}

quint64 IndexSet::count() const noexcept
{
    const auto add = [](quint64 sum, Range range) { return sum + range.length; };
    return std::accumulate(m_ranges.cbegin(), m_ranges.cend(), quint64(0), add);
}

std::optional<quint64> IndexSet::first() const
{
    if (isEmpty())
        return {};
    return m_ranges.first().location;
}

std::optional<quint64> IndexSet::last() const
{
    if (isEmpty())
        return {};
    return endOf(m_ranges.last()) - 1;
}

bool IndexSet::contains(quint64 index) const
{
    const auto endsBefore = [](Range range, quint64 number) { return endOf(range) <= number; };
    const auto range = std::lower_bound(m_ranges.cbegin(), m_ranges.cend(), index, endsBefore);
    return range != m_ranges.cend() && range->location <= index;
}

} // namespace dravelin
