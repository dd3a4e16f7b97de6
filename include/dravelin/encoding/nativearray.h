// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QtGlobal>

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace dravelin {

/// \file
/// Large runs of numbers in one plain buffer: NativeInt64Array and its ten relatives, one per element type.

namespace detail {

template <typename Type, typename... Types>
concept OneOf = (std::same_as<Type, Types> || ...);

template <typename Type>
concept NativeElement = OneOf<Type, qint8, quint8, qint16, quint16, qint32, quint32, qint64, quint64, float, double>;

/// The buffer (may be null) with room for `count` elements of `width` bytes; zero-filled only when it was null.
/// \throws Exception NSMallocException, the buffer as it was
[[nodiscard]] DRAVELIN_EXPORT void *reallocateNativeArray(void *buffer, quint64 count, std::size_t width);

/// \throws Exception NSRangeException that names the index
[[noreturn]] DRAVELIN_EXPORT void throwInsertionIntoEmptyArray(quint64 index);

template <NativeElement Element>
DRAVELIN_EXPORT void sortNativeArray(Element *elements, std::size_t count, bool ascending);

} // namespace detail

/// A growable array of plain numbers in one buffer, which may be handed to other code as it is.
///
///     dravelin::NativeDoubleArray samples(1'000'000);
///     std::ranges::copy(source, samples.begin());
///     samples.sort(true);
///     fft(samples.getArrayReference(), samples.count());
///
/// Use it by its eleven names, NativeInt8Array to NativeDoubleArray. It is a contiguous range: algorithms, range `for`
/// and std::span take it. It can be moved, not copied, and is used by one thread at a time.
///
/// Whenever the buffer is reallocated it gets room for ten elements more than it holds; the spare room is bufferCount.
/// It grows when the count passes the capacity, and shrinks when more than twenty elements would be spare. Pointers,
/// iterators and spans are valid until then.
///
/// Indexes are not checked, but by assertions in debug builds of the application.
///
/// \tparam Element what the buffer holds, in native byte order
/// \tparam Value what single elements are passed as; `bool` for NativeBoolArray, elsewhere the element itself
template <detail::NativeElement Element, typename Value = Element>
class NativeArray
{
public:
    using value_type = Element;
    using size_type = std::size_t;
    using iterator = Element *;
    using const_iterator = const Element *;

    /// No elements and no buffer.
    /// \operation{init}
    NativeArray() noexcept = default;

    /// `count` elements, all zero.
    /// \throws Exception NSMallocException when there is not so much memory
    /// \operation{initWithCount:}
    explicit NativeArray(quint64 count) { setArraySize(count); }

    /// Leaves the other array without elements and buffer.
    NativeArray(NativeArray &&other) noexcept { swap(other); }
    NativeArray &operator=(NativeArray &&other) noexcept
    {
        NativeArray(std::move(other)).swap(*this);
        return *this;
    }
    NativeArray(const NativeArray &) = delete;
    NativeArray &operator=(const NativeArray &) = delete;

    /// Frees the buffer.
    /// \operation{dealloc}
    ~NativeArray() { std::free(_array); }

    void swap(NativeArray &other) noexcept
    {
        std::swap(_array, other._array);
        std::swap(_physicalSize, other._physicalSize);
        std::swap(_count, other._count);
    }

    /// \name The whole array
    /// @{

    /// The number of elements.
    /// \operation{count}
    [[nodiscard]] quint64 count() const noexcept { return _count; }

    /// How many elements the buffer has room for.
    [[nodiscard]] quint64 capacity() const noexcept { return _physicalSize; }

    /// The buffer, which stays the array's; null when there has never been an element.
    /// \operation{getArrayReference}
    [[nodiscard]] Element *getArrayReference() noexcept { return _array; }
    [[nodiscard]] const Element *getArrayReference() const noexcept { return _array; }

    /// Makes the count `newCount`, keeping the elements that are in both. New elements are zero when there was no
    /// buffer yet; otherwise they are whatever was left there, or indeterminate. The size 0 shrinks the buffer to ten
    /// elements.
    /// \throws Exception NSMallocException when there is not so much memory; the array is then as before
    /// \cost constant unless the buffer is reallocated
    /// \operation{setArraySize:}
    void setArraySize(quint64 newCount)
    {
        if (newCount == _count)
            return;
        if (newCount == 0 || newCount > _physicalSize || _physicalSize - newCount > 2 * bufferCount)
            reallocate(newCount);
        _count = newCount;
    }

    /// Stores the value into every element.
    /// \operation{setAllData:}
    void setAllData(Value value) { std::fill_n(_array, _count, Element(value)); }

    /// Sorts by value, numerically; floats with `<`, to which both zeros are equal, and NativeBoolArray by its bytes.
    /// Equal elements may change places. While there is a NaN, which compares as equal to everything, the order is
    /// unspecified, but no element is lost.
    ///
    /// Arrays of 8 bits are counted; those of 16 bits sorted by digits in a second buffer of their size; wider ones in
    /// place, by vectors. What is sorted already, either way, is only looked through or reversed.
    /// \cost linear up to 16 bits, n log n for more; with a NaN that of `qsort`
    /// \operation{sort:}
    void sort(bool ascending) { detail::sortNativeArray(_array, _count, ascending); }

    /// Turns the elements round in place.
    /// \operation{reverseOrder}
    void reverseOrder() { std::reverse(begin(), end()); }
    /// @}

    /// \name Elements
    /// @{

    /// \operation{dataAtIndex:}
    [[nodiscard]] Value dataAtIndex(quint64 index) const { return Value((*this)[index]); }

    /// The value comes first, then the index.
    /// \operation{setData:atIndex:}
    void setData(Value value, quint64 atIndex) { (*this)[atIndex] = Element(value); }

    /// Adds an element at the end.
    /// \throws Exception NSMallocException, the array is then as before
    /// \cost constant, but for every eleventh a reallocation
    /// \operation{appendData:}
    void appendData(Value value)
    {
        setArraySize(_count + 1);
        _array[_count - 1] = Element(value);
    }

    /// Adds the value at the index, or at the end for an index that is not in the array.
    ///
    /// Only as many *bytes* behind the index move up as there are elements behind it. Arrays of one byte per element
    /// are shifted whole; in wider ones the tail is not shifted properly: 1, 2, 3 of 32 bits with 9 inserted at index 1
    /// becomes 1, 9, 2, 0 when the spare room is zero.
    /// \throws Exception NSRangeException for an index other than 0 into an empty array; NSMallocException; the array
    /// is then as before
    /// \operation{insertData:atIndex:}
    void insertData(Value value, quint64 atIndex)
    {
        if (_count == 0 && atIndex != 0)
            detail::throwInsertionIntoEmptyArray(atIndex);
        if (_count != 0 && atIndex >= _count)
            return appendData(value);
        const quint64 tail = _count - atIndex;
        setArraySize(_count + 1);
        std::memmove(_array + atIndex + 1, _array + atIndex, tail);
        _array[atIndex] = Element(value);
    }

    /// Exchanges two elements.
    /// \operation{swapIndex:withIndex:}
    void swapIndex(quint64 index, quint64 withIndex) { std::swap((*this)[index], (*this)[withIndex]); }

    [[nodiscard]] Element &operator[](quint64 index)
    {
        Q_ASSERT(index < _count);
        return _array[index];
    }
    [[nodiscard]] const Element &operator[](quint64 index) const
    {
        Q_ASSERT(index < _count);
        return _array[index];
    }
    /// @}

    /// \name As a range
    /// @{
    [[nodiscard]] Element *begin() noexcept { return _array; }
    [[nodiscard]] Element *end() noexcept { return _array + _count; }
    [[nodiscard]] const Element *begin() const noexcept { return _array; }
    [[nodiscard]] const Element *end() const noexcept { return _array + _count; }
    [[nodiscard]] Element *data() noexcept { return _array; }
    [[nodiscard]] const Element *data() const noexcept { return _array; }
    [[nodiscard]] std::size_t size() const noexcept { return _count; }
    [[nodiscard]] bool empty() const noexcept { return _count == 0; }
    /// @}

private:
    void reallocate(quint64 newCount)
    {
        const quint64 room = newCount > ~bufferCount ? ~quint64(0) : bufferCount + newCount;
        _array = static_cast<Element *>(detail::reallocateNativeArray(_array, room, sizeof(Element)));
        _physicalSize = room;
    }

    Element *_array = nullptr;
    quint64 _physicalSize = 0;
    quint64 bufferCount = 10;
    quint64 _count = 0;
};

template <detail::NativeElement Element, typename Value>
void swap(NativeArray<Element, Value> &left, NativeArray<Element, Value> &right) noexcept
{
    left.swap(right);
}

/// \name The eleven arrays
/// @{
using NativeInt8Array = NativeArray<qint8>;
using NativeUInt8Array = NativeArray<quint8>;
/// One byte per element, 0 for false and anything else for true. The operations take and give `bool` and write 0 and 1;
/// the buffer is of bytes, so that whatever other code puts there can be read. Sorted by the bytes, false first.
using NativeBoolArray = NativeArray<quint8, bool>;
using NativeInt16Array = NativeArray<qint16>;
using NativeUInt16Array = NativeArray<quint16>;
using NativeInt32Array = NativeArray<qint32>;
using NativeUInt32Array = NativeArray<quint32>;
using NativeInt64Array = NativeArray<qint64>;
using NativeUInt64Array = NativeArray<quint64>;
using NativeFloatArray = NativeArray<float>;
using NativeDoubleArray = NativeArray<double>;
/// @}

} // namespace dravelin
