// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding/nativearray.h>

#include <encoding/floatkeys.h>
#include <encoding/integersort.h>

#include <cstdlib>
#include <type_traits>

namespace dravelin::detail {

namespace {

/// The order of the arrays, as `qsort` wants it.
template <typename Element>
int compareAscending(const void *left, const void *right)
{
    const Element first = *static_cast<const Element *>(left);
    const Element second = *static_cast<const Element *>(right);
    return first < second ? -1 : first > second ? 1 : 0;
}

template <typename Element>
int compareDecending(const void *left, const void *right)
{
    return -compareAscending<Element>(left, right);
}

template <typename Float>
void sortFloats(Float *elements, std::size_t count, bool ascending)
{
    const bool hasNaN = exchangeFloatsAndKeys(elements, count);
    if (!hasNaN)
        sortIntegers(reinterpret_cast<FloatKey<Float> *>(elements), count, ascending);
    exchangeFloatsAndKeys(elements, count);
    if (hasNaN)
        std::qsort(elements, count, sizeof(Float), ascending ? compareAscending<Float> : compareDecending<Float>);
}

} // namespace

template <NativeElement Element>
void sortNativeArray(Element *elements, std::size_t count, bool ascending)
{
    if constexpr (std::is_floating_point_v<Element>)
        sortFloats(elements, count, ascending);
    else
        sortIntegers(elements, count, ascending);
}

template DRAVELIN_EXPORT void sortNativeArray(qint8 *, std::size_t, bool);
template DRAVELIN_EXPORT void sortNativeArray(quint8 *, std::size_t, bool);
template DRAVELIN_EXPORT void sortNativeArray(qint16 *, std::size_t, bool);
template DRAVELIN_EXPORT void sortNativeArray(quint16 *, std::size_t, bool);
template DRAVELIN_EXPORT void sortNativeArray(qint32 *, std::size_t, bool);
template DRAVELIN_EXPORT void sortNativeArray(quint32 *, std::size_t, bool);
template DRAVELIN_EXPORT void sortNativeArray(qint64 *, std::size_t, bool);
template DRAVELIN_EXPORT void sortNativeArray(quint64 *, std::size_t, bool);
template DRAVELIN_EXPORT void sortNativeArray(float *, std::size_t, bool);
template DRAVELIN_EXPORT void sortNativeArray(double *, std::size_t, bool);

} // namespace dravelin::detail
