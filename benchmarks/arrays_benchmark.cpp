// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

using namespace dravelin;

namespace {

template <typename Element>
std::vector<Element> someNumbers(const std::string &pattern, qint64 size)
{
    std::mt19937_64 random(1);
    std::vector<Element> numbers(static_cast<std::size_t>(size));
    for (Element &number : numbers)
        number = pattern == "few"              ? Element(random() % 16)
                 : std::is_integral_v<Element> ? Element(random())
                                               : Element(std::ldexp(double(qint64(random())), -40));
    if (pattern == "sorted")
        std::sort(numbers.begin(), numbers.end());
    if (pattern == "reversed")
        std::sort(numbers.begin(), numbers.end(), std::greater());
    return numbers;
}

template <typename Element>
int compare(const void *left, const void *right)
{
    const Element first = *static_cast<const Element *>(left), second = *static_cast<const Element *>(right);
    return first < second ? -1 : first > second ? 1 : 0;
}

/// Sorts the same numbers again and again; filling the array anew is not counted.
template <typename Array>
void sortRepeatedly(benchmark::State &state, const std::string &pattern, void (*sort)(Array &))
{
    const auto numbers = someNumbers<typename Array::value_type>(pattern, state.range(0));
    Array array(numbers.size());
    for (auto _ : state) {
        state.PauseTiming();
        std::copy(numbers.begin(), numbers.end(), array.begin());
        state.ResumeTiming();
        sort(array);
        benchmark::ClobberMemory();
    }
}

template <typename Array>
void registerSorts(const std::string &type)
{
    using Element = typename Array::value_type;
    for (const std::string pattern : {"random", "sorted", "reversed", "few"}) {
        const auto add = [&](const std::string &name, void (*sort)(Array &)) {
            const std::string subject = "sort" + type + '/' + pattern + '/' + name;
            benchmark::RegisterBenchmark(subject.c_str(), sortRepeatedly<Array>, pattern, sort)
                ->Arg(1'000)
                ->Arg(1'000'000)
                ->Unit(benchmark::kMicrosecond);
        };
        add("ours", [](Array &array) { array.sort(true); });
        add("std::sort", [](Array &array) { std::sort(array.begin(), array.end()); });
        add("qsort", [](Array &array) { std::qsort(array.data(), array.size(), sizeof(Element), compare<Element>); });
    }
}

[[maybe_unused]] const bool registered = [] {
    registerSorts<NativeInt8Array>("Int8");
    registerSorts<NativeUInt8Array>("UInt8");
    registerSorts<NativeBoolArray>("Bool");
    registerSorts<NativeInt16Array>("Int16");
    registerSorts<NativeUInt16Array>("UInt16");
    registerSorts<NativeInt32Array>("Int32");
    registerSorts<NativeUInt32Array>("UInt32");
    registerSorts<NativeInt64Array>("Int64");
    registerSorts<NativeUInt64Array>("UInt64");
    registerSorts<NativeFloatArray>("Float");
    registerSorts<NativeDoubleArray>("Double");
    return true;
}();

void appendOurs(benchmark::State &state)
{
    for (auto _ : state) {
        NativeInt64Array array;
        for (qint64 i = 0; i < state.range(0); ++i)
            array.appendData(i);
        benchmark::DoNotOptimize(array.data());
    }
}

template <bool SameGrowth>
void appendVector(benchmark::State &state)
{
    for (auto _ : state) {
        std::vector<qint64> vector;
        for (qint64 i = 0; i < state.range(0); ++i) {
            if (SameGrowth && vector.size() == vector.capacity())
                vector.reserve(vector.size() + 11);
            vector.push_back(i);
        }
        benchmark::DoNotOptimize(vector.data());
    }
}

void sumOurs(benchmark::State &state)
{
    const NativeInt64Array array(quint64(state.range(0)));
    for (auto _ : state) {
        qint64 sum = 0;
        for (quint64 i = 0; i < array.count(); ++i)
            sum += array.dataAtIndex(i);
        benchmark::DoNotOptimize(sum);
    }
}

void sumPointer(benchmark::State &state)
{
    const NativeInt64Array array(quint64(state.range(0)));
    const qint64 *const elements = array.data();
    for (auto _ : state) {
        qint64 sum = 0;
        for (qint64 i = 0; i < state.range(0); ++i)
            sum += elements[i];
        benchmark::DoNotOptimize(sum);
    }
}

BENCHMARK(appendOurs)->Name("append/ours")->Arg(100'000)->Arg(10'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(appendVector<true>)->Name("append/std::vector by eleven")->Arg(100'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(appendVector<false>)
    ->Name("append/std::vector")
    ->Arg(100'000)
    ->Arg(10'000'000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(sumOurs)->Name("sum/ours")->Arg(1'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
BENCHMARK(sumPointer)->Name("sum/pointer")->Arg(1'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);

} // namespace
