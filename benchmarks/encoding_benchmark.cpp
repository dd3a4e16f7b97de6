// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include "../encoding/base64_reference.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <random>

using namespace dravelin;

namespace {

QByteArray someBytes(qsizetype size)
{
    std::mt19937_64 random(1);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char &byte : bytes)
        byte = char(random());
    return bytes;
}

/// Base64 of the bytes, with a line feed after every `lineLength` characters unless that is 0.
QByteArray someText(qsizetype size, qsizetype lineLength)
{
    const QByteArray text = someBytes(size).toBase64();
    if (lineLength == 0)
        return text;
    QByteArray lines;
    for (qsizetype i = 0; i < text.size(); i += lineLength)
        lines += text.mid(i, lineLength) + '\n';
    return lines;
}

template <typename Input, typename Function>
void run(benchmark::State &state, const Input &input, Function function)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(function(input));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void encodeOurs(benchmark::State &state) { run(state, someBytes(state.range(0)), encodeBase64WithData); }
void encodeReference(benchmark::State &state)
{
    run(state, someBytes(state.range(0)), [](const QByteArray &bytes) { return detail::encodeBase64Reference(bytes); });
}
void encodeQt(benchmark::State &state)
{
    run(state, someBytes(state.range(0)), [](const QByteArray &bytes) { return bytes.toBase64(); });
}

void decode(benchmark::State &state, auto function, qsizetype lineLength)
{
    run(state, QString::fromLatin1(someText(state.range(0), lineLength)), function);
}
void decodeQt(benchmark::State &state, qsizetype lineLength)
{
    run(state, someText(state.range(0), lineLength),
        [](const QByteArray &text) { return QByteArray::fromBase64(text); });
}
QByteArray byReference(const QString &text) { return detail::decodeBase64Reference(text); }

void copy(benchmark::State &state)
{
    QByteArray target(state.range(0), Qt::Uninitialized);
    run(state, someBytes(state.range(0)), [&](const QByteArray &bytes) {
        std::memcpy(target.data(), bytes.constData(), std::size_t(bytes.size()));
        benchmark::ClobberMemory();
        return target.constData();
    });
}

#define SIZES ->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 26)
BENCHMARK(encodeOurs)->Name("base64Encode/ours") SIZES;
BENCHMARK(encodeReference)->Name("base64Encode/reference") SIZES;
BENCHMARK(encodeQt)->Name("base64Encode/Qt") SIZES;
BENCHMARK(copy)->Name("base64Encode/memcpy") SIZES;
BENCHMARK_CAPTURE(decode, plain, decodeBase64ToData, 0)->Name("base64Decode/ours") SIZES;
BENCHMARK_CAPTURE(decode, reference, byReference, 0)->Name("base64Decode/reference") SIZES;
BENCHMARK_CAPTURE(decodeQt, plain, 0)->Name("base64Decode/Qt") SIZES;
BENCHMARK(copy)->Name("base64Decode/memcpy") SIZES;
BENCHMARK_CAPTURE(decode, lines, decodeBase64ToData, 76)->Name("base64DecodeLines/ours") SIZES;
BENCHMARK_CAPTURE(decode, linesReference, byReference, 76)->Name("base64DecodeLines/reference") SIZES;
BENCHMARK_CAPTURE(decodeQt, lines, 76)->Name("base64DecodeLines/Qt") SIZES;

} // namespace
