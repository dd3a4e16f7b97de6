// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
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
std::vector<quint64> elementsOf(const auto &range)
{
    std::vector<quint64> elements(range.size());
    for (std::size_t i = 0; i < range.size(); ++i)
        std::memcpy(&elements[i], &range[i], sizeof range[i]);
    std::ranges::sort(elements);
    return elements;
}

template <typename Element>
std::vector<Element> anyNumbers(std::size_t size)
{
    std::mt19937_64 random(1);
    std::vector<Element> numbers(size);
    for (Element &number : numbers) {
        const quint64 bits = random();
        std::memcpy(&number, &bits, sizeof number);
        if (std::isnan(double(number)) || bits % 16 == 0) // infinities and zeros of both signs in place of NaN
            number = Element((bits & 32 ? 1 : -1) * (bits & 64 ? std::numeric_limits<Element>::infinity() : 0));
    }
    return numbers;
}

template <typename Array>
void expectSorts(const std::vector<typename Array::value_type> &values, const char *pattern)
{
    for (const bool ascending : {true, false}) {
        Array array = filled<Array>(values);
        array.sort(ascending);
        EXPECT_EQ(elementsOf(array), elementsOf(values)) << values.size() << ' ' << pattern << ' ' << ascending;
        EXPECT_TRUE(ascending ? std::ranges::is_sorted(array) : std::ranges::is_sorted(array, std::greater()))
            << values.size() << ' ' << pattern << ' ' << ascending;
    }
}

void expectException(const char *name, const std::function<void()> &operation)
{
    try {
        operation();
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
    array.appendData(1); // NOLINT(bugprone-use-after-move): such an array can be used
    EXPECT_EQ(array.capacity(), 11U);
}

TYPED_TEST(NativeArrays, KeepTheirCapacityNearTheCount)
{
    const struct
    {
        std::vector<quint64> sizes;
        quint64 capacity;
    } rows[] = {{{0}, 0},          {{5}, 15},         {{1, 11}, 11},  {{1, 11, 12}, 22}, {{30, 9}, 19},
                {{30, 25}, 40},    {{30, 20}, 40},    {{30, 19}, 29}, {{30, 40}, 40},    {{30, 0}, 10},
                {{30, 0, 10}, 10}, {{30, 0, 11}, 21}, {{10, 1}, 20},  {{11, 1}, 21},     {{12, 1}, 11}};
    for (const auto &row : rows) {
        TypeParam array(row.sizes[0]);
        EXPECT_TRUE(std::ranges::all_of(array, [](auto element) { return element == 0; }));
        for (const quint64 size : row.sizes)
            array.setArraySize(size);
        EXPECT_EQ(array.capacity(), row.capacity) << testing::PrintToString(row.sizes);
        EXPECT_EQ(array.count(), row.sizes.back());
        EXPECT_EQ(array.getArrayReference() == nullptr, row.capacity == 0);
    }
}

TYPED_TEST(NativeArrays, ChangeTheirElements)
{
    TypeParam array;
    for (int i = 0; i < 50; ++i)
        array.appendData(i == 2 || i > 5);
    array.setArraySize(6);
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

TYPED_TEST(NativeArrays, AreUntouchedByWhatTheyRefuse)
{
    auto array = filled<TypeParam>({1, 0, 1});
    for (const quint64 count : {~0ULL, ~0ULL - 10, ~0ULL - 9, 1ULL << 63})
        expectException(NSMallocException, [&] { array.setArraySize(count); });
    EXPECT_THAT(array, ElementsAre(1, 0, 1));
    array.setArraySize(0);
    expectException(NSRangeException, [&] { array.insertData(1, 1); });
    EXPECT_EQ(array.count(), 0U);
}

TYPED_TEST(NativeArrays, SortToOneOrderOrTheOther)
{
    using Element = typename TypeParam::value_type;
    for (const std::size_t size : {0, 1, 2, 99, 100, 2'001}) {
        auto values = anyNumbers<Element>(size);
        expectSorts<TypeParam>(values, "random");
        std::ranges::sort(values);
        expectSorts<TypeParam>(values, "sorted");
        std::rotate(values.begin(), values.begin() + qsizetype(size / 2), values.end());
        expectSorts<TypeParam>(values, "rotated");
        std::ranges::generate(values, [i = 0]() mutable { return Element(++i * 7 % 5 - 2); });
        expectSorts<TypeParam>(values, "few values");
    }
}

TEST(NativeShorts, SortByCountingWhenThereAreMany)
{
    expectSorts<NativeInt16Array>(anyNumbers<qint16>(500'000), "random");
}

TEST(NativeFloats, SortWithoutLosingElementsToNaN)
{
    const auto check = [](auto array) {
        using Element = typename decltype(array)::value_type;
        std::ranges::copy(anyNumbers<Element>(array.size()), array.begin());
        for (const std::size_t place : {0, 700, 701, 1999})
            array[place] = std::numeric_limits<Element>::quiet_NaN() * (place % 2 ? 1 : -1);
        const auto before = elementsOf(array);
        for (const bool ascending : {true, false}) {
            array.sort(ascending);
            EXPECT_EQ(elementsOf(array), before);
        }
    };
    check(NativeFloatArray(2000));
    check(NativeDoubleArray(2000));
}

TEST(NativeBools, AreBytesOfWhichAnyButZeroIsTrue)
{
    auto array = filled<NativeBoolArray>({2, 255, 0});
    EXPECT_TRUE(array.dataAtIndex(0) && array.dataAtIndex(1));
    array.sort(false);
    EXPECT_THAT(array, ElementsAre(255, 2, 0));
    array.setData(array.dataAtIndex(0), 2);
    EXPECT_THAT(array, ElementsAre(255, 2, 1));
}

TEST(NativeInsertion, MovesAsManyBytesAsThereAreElementsBehind)
{
    const auto expectInserts = []<typename Array>(Array array, quint64 index, const auto &...expected) {
        array.insertData(9, index);
        EXPECT_THAT(array, ElementsAre(expected...)) << index;
    };
    using Bytes = NativeUInt8Array;
    using Ints = NativeInt32Array;
    expectInserts(Bytes(), 0, 9);
    expectInserts(filled<Bytes>({1, 2, 3}), 0, 9, 1, 2, 3);
    expectInserts(filled<Bytes>({1, 2, 3}), 2, 1, 2, 9, 3);
    expectInserts(filled<Bytes>({1, 2, 3}), 3, 1, 2, 3, 9);
    expectInserts(filled<Bytes>({1, 2, 3}), ~0ULL, 1, 2, 3, 9);
    expectInserts(Ints(), 0, 9);
    expectInserts(filled<Ints>({1, 2, 3}), 1, 1, 9, 2, 0);
    expectInserts(filled<Ints>({1, 0x10002, 0x50030004, 5}), 1, 1, 9, 0x50010002, 5, 0);
    expectInserts(filled<NativeInt16Array>({1, 2, 3, 4}), 0, 9, 1, 2, 4, 0);
    expectInserts(filled<NativeBoolArray>({0, 2}), 0, 1, 0, 2);
}
