// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <ranges>
#include <span>
#include <vector>

using namespace dravelin;
using testing::ElementsAre;

namespace {

template <typename Array>
struct NativeArrays : testing::Test
{};

using Eleven = testing::Types<NativeInt8Array, NativeUInt8Array, NativeBoolArray, NativeInt16Array, NativeUInt16Array,
                              NativeInt32Array, NativeUInt32Array, NativeInt64Array, NativeUInt64Array,
                              NativeFloatArray, NativeDoubleArray>;
TYPED_TEST_SUITE(NativeArrays, Eleven);

template <typename Array>
Array filled(const std::vector<typename Array::value_type> &values)
{
    Array array(values.size());
    std::ranges::copy(values, array.begin());
    return array;
}

// The bytes of each element, in an order of their own: equal lists have the same elements, zeros and NaNs told apart.
template <typename Range>
std::vector<quint64> elementsOf(const Range &range)
{
    std::vector<quint64> elements(range.size());
    for (std::size_t i = 0; i < range.size(); ++i)
        std::memcpy(&elements[i], &range[i], sizeof range[i]);
    std::ranges::sort(elements);
    return elements;
}

template <typename Element>
Element anyNumber(std::mt19937_64 &random)
{
    using Limits = std::numeric_limits<Element>;
    const Element special[] = {Limits::lowest(), Limits::max(), Limits::infinity(),   Element(-Limits::infinity()),
                               Limits::min(),    Element(),     Limits::denorm_min(), Element(-Element())};
    if constexpr (std::is_integral_v<Element>)
        return Element(random());
    else if (const quint64 choice = random() % 32; choice < 8)
        return special[choice];
    return Element(std::ldexp(qint64(random()), int(random() % 60) - 60));
}

template <typename Array>
void expectSorts(const std::vector<typename Array::value_type> &values, const char *pattern)
{
    for (const bool ascending : {true, false}) {
        Array array = filled<Array>(values);
        array.sort(ascending);
        std::vector<typename Array::value_type> expected = values;
        if (ascending)
            std::ranges::sort(expected);
        else
            std::ranges::sort(expected, std::greater());
        EXPECT_TRUE(std::ranges::equal(array, expected)) << values.size() << ' ' << pattern << ' ' << ascending;
        EXPECT_EQ(elementsOf(array), elementsOf(values)) << values.size() << ' ' << pattern << ' ' << ascending;
    }
}

template <typename Function>
void expectException(const char *name, Function function)
{
    try {
        function();
        ADD_FAILURE() << "no " << name;
    } catch (const Exception &exception) {
        EXPECT_EQ(exception.name(), QLatin1String(name)) << exception.what();
    }
}

} // namespace

TYPED_TEST(NativeArrays, AreContiguousRangesThatOnlyMove)
{
    static_assert(std::ranges::contiguous_range<TypeParam> && std::ranges::contiguous_range<const TypeParam>);
    static_assert(!std::is_copy_constructible_v<TypeParam> && !std::is_copy_assignable_v<TypeParam>);
    static_assert(std::is_nothrow_move_constructible_v<TypeParam> && std::is_nothrow_move_assignable_v<TypeParam>);
    TypeParam array(3), other;
    const auto *buffer = array.getArrayReference();
    std::ranges::fill(std::span<typename TypeParam::value_type>(array), 1);
    other = std::move(array);
    EXPECT_THAT(std::span<const typename TypeParam::value_type>(other), ElementsAre(1, 1, 1));
    EXPECT_EQ(other.getArrayReference(), buffer);
    array.appendData(1); // what was moved from can be used
    EXPECT_EQ(array.capacity(), 11U);
}

TYPED_TEST(NativeArrays, KeepTheirCapacityNearTheCount)
{
    const struct
    {
        std::vector<quint64> sizes;
        quint64 capacity;
    } rows[] = {{{0}, 0},       {{5}, 15},      {{1, 11}, 11},  {{1, 11, 12}, 22}, {{30, 9}, 19},     {{30, 25}, 40},
                {{30, 20}, 40}, {{30, 19}, 29}, {{30, 40}, 40}, {{30, 0}, 10},     {{30, 0, 10}, 10}, {{30, 0, 11}, 21},
                {{9, 1}, 19},   {{10, 1}, 20},  {{11, 1}, 21},  {{12, 1}, 11}};
    for (const auto &row : rows) {
        TypeParam array;
        for (const quint64 size : row.sizes)
            array.setArraySize(size);
        EXPECT_EQ(array.capacity(), row.capacity) << testing::PrintToString(row.sizes);
        EXPECT_EQ(array.count(), row.sizes.back());
        EXPECT_EQ(array.getArrayReference() == nullptr, row.capacity == 0);
        for (std::size_t i = 0; row.sizes.size() == 1 && i < array.size(); ++i)
            EXPECT_EQ(array.dataAtIndex(i), 0);
    }
}

TYPED_TEST(NativeArrays, ChangeTheirElements)
{
    TypeParam array;
    for (int i = 0; i < 50; ++i)
        array.appendData(i == 2 || i > 5);
    array.setArraySize(6); // both ways reallocated
    array.setData(1, 4);
    array.reverseOrder();
    EXPECT_THAT(array, ElementsAre(0, 1, 0, 1, 0, 0));
    array.swapIndex(0, 3);
    array.setArraySize(5);
    array.reverseOrder();
    EXPECT_THAT(array, ElementsAre(0, 0, 0, 1, 1));
    EXPECT_EQ(array.dataAtIndex(3), 1);
    array.setAllData(1);
    EXPECT_THAT(array, ElementsAre(1, 1, 1, 1, 1));
}

TYPED_TEST(NativeArrays, RefuseWhatDoesNotFit)
{
    auto array = filled<TypeParam>({1, 0, 1});
    for (const quint64 count : {~0ULL, ~0ULL - 10, ~0ULL - 9, 1ULL << 63}) {
        expectException(NSMallocException, [&] { array.setArraySize(count); });
        expectException(NSMallocException, [&] { TypeParam another(count); });
    }
    EXPECT_THAT(array, ElementsAre(1, 0, 1));
    EXPECT_EQ(array.capacity(), 13U);
}

TYPED_TEST(NativeArrays, SortAsTheStandardLibraryDoes)
{
    using Element = typename TypeParam::value_type;
    std::mt19937_64 random(1);
    // On both sides of the sizes at which the methods change.
    for (const std::size_t size : {0, 1, 2, 99, 100, 101, 5'001}) {
        std::vector<Element> values(size);
        std::ranges::generate(values, [&] { return anyNumber<Element>(random); });
        expectSorts<TypeParam>(values, "random");
        std::ranges::sort(values);
        expectSorts<TypeParam>(values, "sorted");
        if (size > 1)
            std::swap(values.front(), values.back());
        expectSorts<TypeParam>(values, "nearly sorted");
        std::ranges::generate(values, [&] { return Element(Element(random() % 5) - Element(2)); });
        expectSorts<TypeParam>(values, "few values");
        std::ranges::fill(values, std::numeric_limits<Element>::max());
        expectSorts<TypeParam>(values, "one value");
    }
}

TEST(NativeShorts, SortByCountingWhenThereAreMany)
{
    std::mt19937_64 random(3);
    std::vector<qint16> values(500'000);
    std::ranges::generate(values, [&] { return qint16(random()); });
    expectSorts<NativeInt16Array>(values, "random");
}

TEST(NativeFloats, SortWithoutLosingElementsToNaN)
{
    const auto check = [](auto array) {
        using Element = typename decltype(array)::value_type;
        std::mt19937_64 random(2);
        std::ranges::generate(array, [&] { return anyNumber<Element>(random); });
        for (const std::size_t place : {0, 700, 701, 1999})
            array[place] = std::copysign(std::numeric_limits<Element>::quiet_NaN(), Element(place) - 700);
        const auto before = elementsOf(array);
        array.sort(true);
        EXPECT_EQ(elementsOf(array), before);
        array.sort(false);
        EXPECT_EQ(elementsOf(array), before);
    };
    check(NativeFloatArray(2000));
    check(NativeDoubleArray(2000));
}

TEST(NativeBools, AreBytesOfWhichAnyButZeroIsTrue)
{
    NativeBoolArray array(4);
    array.setData(true, 1);
    const quint8 foreign[] = {255, 2};
    std::ranges::copy(foreign, array.getArrayReference() + 2);
    EXPECT_TRUE(array.dataAtIndex(1) && array.dataAtIndex(2) && array.dataAtIndex(3));
    array.sort(true);
    EXPECT_THAT(array, ElementsAre(0, 1, 2, 255));
    array.setData(array.dataAtIndex(3), 2);
    EXPECT_THAT(array, ElementsAre(0, 1, 1, 255));
}

TEST(NativeInsertion, MovesAsManyBytesAsThereAreElementsBehind)
{
    const auto expectInserts = []<typename Array>(Array array, quint64 index, const auto &...expected) {
        array.insertData(9, index);
        EXPECT_THAT(array, ElementsAre(expected...)) << index;
    };
    using Bytes = NativeUInt8Array;
    using Shorts = NativeInt16Array;
    using Ints = NativeInt32Array;
    expectInserts(Bytes(), 0, 9);
    expectInserts(filled<Bytes>({1, 2, 3}), 0, 9, 1, 2, 3);
    expectInserts(filled<Bytes>({1, 2, 3}), 1, 1, 9, 2, 3);
    expectInserts(filled<Bytes>({1, 2, 3}), 2, 1, 2, 9, 3);
    expectInserts(filled<Bytes>({1, 2, 3}), 3, 1, 2, 3, 9);
    expectInserts(filled<Bytes>({1, 2, 3}), ~0ULL, 1, 2, 3, 9);
    expectInserts(Ints(), 0, 9);
    expectInserts(filled<Ints>({1, 2, 3}), 1, 1, 9, 2, 0);
    expectInserts(filled<Ints>({1, 0x10002, 0x50030004, 5}), 1, 1, 9, 0x50010002, 5, 0);
    expectInserts(filled<Shorts>({1, 2, 3, 4}), 0, 9, 1, 2, 4, 0);
    expectInserts(filled<NativeDoubleArray>({1, 2}), 7, 1, 2, 9);
    expectInserts(filled<NativeBoolArray>({0, 2}), 0, 1, 0, 2);
}

TYPED_TEST(NativeArrays, RefuseToInsertFarIntoNothing)
{
    TypeParam never, emptied(3);
    emptied.setArraySize(0);
    expectException(NSRangeException, [&] { never.insertData(1, 1); });
    expectException(NSRangeException, [&] { emptied.insertData(1, ~0ULL); });
    EXPECT_EQ(never.getArrayReference(), nullptr);
    EXPECT_EQ(emptied.count(), 0U);
}
