// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/dravelin.h>

#include <QtCore/QTextStream>

#include <numeric>
#include <span>

static QTextStream out(stdout);

static double mean(std::span<const double> values)
{
    return std::reduce(values.begin(), values.end()) / double(values.size());
}

static void print(const auto &array)
{
    for (const auto element : array)
        out << element << ' ';
    out << "in " << array.capacity() << '\n';
}

void samples()
{
    //! [samples]
    dravelin::NativeDoubleArray samples(3); // three zeros
    samples.setData(2.5, 0);
    samples.setData(-1, 1);
    samples.appendData(4.5);

    samples.sort(true);
    print(samples);
    out << "median " << samples.dataAtIndex(samples.count() / 2) << ", mean " << mean(samples) << '\n';

    for (double &sample : samples) // the elements themselves
        sample *= 2;
    samples.reverseOrder();
    print(samples);
    //! [samples]
}

void sizes()
{
    //! [sizes]
    dravelin::NativeInt32Array numbers;
    for (int i = 0; i < 12; ++i)
        numbers.appendData(i);
    print(numbers);
    numbers.setArraySize(2); // twenty would be spare
    print(numbers);
    numbers.setArraySize(1); // now twenty-one
    print(numbers);
    //! [sizes]
}

void insertion()
{
    //! [insertion]
    const auto insert = [](auto array) {
        std::iota(array.begin(), array.end(), 1);
        array.insertData(9, 1);
        print(array);
    };
    insert(dravelin::NativeInt8Array(3));
    insert(dravelin::NativeInt32Array(3));
    //! [insertion]
}

int main()
{
    samples();
    sizes();
    insertion();
}
