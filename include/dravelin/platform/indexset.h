// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>
#include <dravelin/platform/range.h>

#include <QtCore/QList>

#include <cstddef>
#include <initializer_list>
#include <iterator>
#include <optional>

namespace dravelin {

/// A set of row numbers in ascending order, kept as ranges: a million consecutive rows cost as much as one.
///
///     dravelin::IndexSet rows(dravelin::Range{2, 3});     // 2, 3 and 4
///     rows.insert(7);
///     for (quint64 row : rows)
///         qInfo() << row;
class DRAVELIN_EXPORT IndexSet
{
public:
    class const_iterator;
    using value_type = quint64;

    IndexSet() = default;
    /// The rows of the range; none when its length is 0. A range that would pass the largest number ends there.
    explicit IndexSet(Range range) { insert(range); }
    IndexSet(std::initializer_list<quint64> indexes);

    /// \cost constant behind the last index, else logarithmic in the number of ranges and linear in those that follow
    void insert(quint64 index) { insert(Range{index, 1}); }
    void insert(Range range);

    [[nodiscard]] bool isEmpty() const noexcept { return m_ranges.isEmpty(); }
    /// How many indexes there are.
    /// \cost linear in the number of ranges, as is ==
    [[nodiscard]] quint64 count() const noexcept;
    /// The smallest and the largest index; empty when there is none.
    [[nodiscard]] std::optional<quint64> first() const;
    [[nodiscard]] std::optional<quint64> last() const;
    /// \cost logarithmic in the number of ranges
    [[nodiscard]] bool contains(quint64 index) const;

    /// Ascending, neither touching nor overlapping, none of them empty.
    [[nodiscard]] const QList<Range> &ranges() const noexcept { return m_ranges; }
    template <class Function>
    void forEachRange(Function function) const
    {
        for (const Range &range : m_ranges)
            function(range);
    }

    [[nodiscard]] const_iterator begin() const;
    [[nodiscard]] const_iterator end() const;

    friend bool operator==(const IndexSet &, const IndexSet &) = default;

private:
    QList<Range> m_ranges;
};

/// Runs through the single indexes.
class IndexSet::const_iterator
{
public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = quint64;
    using difference_type = std::ptrdiff_t;
    using pointer = const quint64 *;
    using reference = quint64;

    const_iterator() = default;
    quint64 operator*() const { return m_range->location + m_offset; }
    const_iterator &operator++()
    {
        if (++m_offset == m_range->length) {
            ++m_range;
            m_offset = 0;
        }
        return *this;
    }
    const_iterator operator++(int)
    {
        const_iterator before = *this;
        ++*this;
        return before;
    }
    friend bool operator==(const const_iterator &, const const_iterator &) = default;

private:
    friend class IndexSet;
    explicit const_iterator(const Range *range) : m_range(range) {}

    const Range *m_range = nullptr;
    quint64 m_offset = 0;
};

inline IndexSet::const_iterator IndexSet::begin() const { return const_iterator(m_ranges.constData()); }

inline IndexSet::const_iterator IndexSet::end() const { return const_iterator(m_ranges.constData() + m_ranges.size()); }

} // namespace dravelin
