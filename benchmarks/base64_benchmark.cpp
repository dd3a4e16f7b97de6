// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include "../encoding/base64_reference.h"

#include <benchmark/benchmark.h>
#include <glib.h>
#include <hwy/targets.h>
#include <openssl/evp.h>

#include <cstring>
#include <random>
#include <vector>

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
    const QByteArray text = encodeBase64ToBytes(someBytes(size));
    if (lineLength == 0)
        return text;
    QByteArray lines;
    lines.reserve(text.size() + text.size() / lineLength + 1);
    for (qsizetype i = 0; i < text.size(); i += lineLength)
        lines.append(QByteArrayView(text).sliced(i, std::min(lineLength, text.size() - i))).append('\n');
    return lines;
}

const uchar *unsignedBytes(const QByteArray &bytes) { return reinterpret_cast<const uchar *>(bytes.constData()); }

/// Rates are those of the binary bytes, on either way.
template <typename Function>
void run(benchmark::State &state, Function function)
{
    for (auto _ : state) {
        benchmark::DoNotOptimize(function());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

/// Into memory that is there already: the codecs themselves.
template <typename Function>
void runInto(benchmark::State &state, const QByteArray &input, Function function)
{
    std::vector<char> output(std::size_t(2 * state.range(0) + 64));
    run(state, [&] { return function(output, input); });
}

void copy(benchmark::State &state)
{
    runInto(state, someBytes(state.range(0)), [](std::vector<char> &output, const QByteArray &bytes) {
        return std::memcpy(output.data(), bytes.constData(), std::size_t(bytes.size()));
    });
}

void encodeOurs(benchmark::State &state, int64_t targets)
{
    hwy::SetSupportedTargetsForTest(targets);
    runInto(state, someBytes(state.range(0)),
            [](std::vector<char> &output, const QByteArray &bytes) { return encodeBase64Into(output, bytes); });
    hwy::SetSupportedTargetsForTest(0);
}

void encodeOpenSsl(benchmark::State &state)
{
    runInto(state, someBytes(state.range(0)), [](std::vector<char> &output, const QByteArray &bytes) {
        return EVP_EncodeBlock(reinterpret_cast<uchar *>(output.data()), unsignedBytes(bytes), int(bytes.size()));
    });
}

void encodeQt(benchmark::State &state)
{
    run(state, [bytes = someBytes(state.range(0))] { return bytes.toBase64(); });
}

void encodeGlib(benchmark::State &state)
{
    run(state, [bytes = someBytes(state.range(0))] {
        gchar *text = g_base64_encode(unsignedBytes(bytes), gsize(bytes.size()));
        g_free(text);
        return text;
    });
}

void decodeOurs(benchmark::State &state, qsizetype lineLength, int64_t targets)
{
    hwy::SetSupportedTargetsForTest(targets);
    runInto(state, someText(state.range(0), lineLength),
            [](std::vector<char> &output, const QByteArray &text) { return decodeBase64Into(output, text); });
    hwy::SetSupportedTargetsForTest(0);
}

void decodeOpenSsl(benchmark::State &state, qsizetype lineLength)
{
    const std::unique_ptr<EVP_ENCODE_CTX, decltype(&EVP_ENCODE_CTX_free)> context(EVP_ENCODE_CTX_new(),
                                                                                  EVP_ENCODE_CTX_free);
    runInto(state, someText(state.range(0), lineLength), [&](std::vector<char> &output, const QByteArray &text) {
        int size = 0;
        EVP_DecodeInit(context.get());
        EVP_DecodeUpdate(context.get(), reinterpret_cast<uchar *>(output.data()), &size, unsignedBytes(text),
                         int(text.size()));
        return size;
    });
}

void decodeQt(benchmark::State &state, qsizetype lineLength)
{
    run(state, [text = someText(state.range(0), lineLength)] { return QByteArray::fromBase64(text); });
}

void decodeGlib(benchmark::State &state, qsizetype lineLength)
{
    run(state, [text = someText(state.range(0), lineLength)] {
        gsize size = 0;
        guchar *bytes = g_base64_decode(text.constData(), &size);
        g_free(bytes);
        return bytes;
    });
}

// With the exported types: fresh bytes or text each time.
void encodeToBytes(benchmark::State &state)
{
    run(state, [bytes = someBytes(state.range(0))] { return encodeBase64ToBytes(bytes); });
}
void encodeToText(benchmark::State &state)
{
    run(state, [bytes = someBytes(state.range(0))] { return encodeBase64WithData(bytes); });
}
void encodeQtText(benchmark::State &state)
{
    run(state, [bytes = someBytes(state.range(0))] { return QString::fromLatin1(bytes.toBase64()); });
}
void encodeReference(benchmark::State &state)
{
    run(state, [bytes = someBytes(state.range(0))] { return detail::encodeBase64Reference(bytes); });
}
void decodeFromBytes(benchmark::State &state, qsizetype lineLength)
{
    run(state, [text = someText(state.range(0), lineLength)] { return decodeBase64FromBytes(text); });
}
void decodeFromText(benchmark::State &state, qsizetype lineLength)
{
    run(state, [text = QString::fromLatin1(someText(state.range(0), lineLength))] { return decodeBase64ToData(text); });
}
void decodeQtText(benchmark::State &state, qsizetype lineLength)
{
    run(state, [text = QString::fromLatin1(someText(state.range(0), lineLength))] {
        return QByteArray::fromBase64(text.toLatin1());
    });
}
void decodeReference(benchmark::State &state, qsizetype lineLength)
{
    run(state, [text = QString::fromLatin1(someText(state.range(0), lineLength))] {
        return detail::decodeBase64Reference(text);
    });
}
void allocateAndCopy(benchmark::State &state)
{
    run(state, [bytes = someBytes(state.range(0))] { return QByteArray(bytes.constData(), bytes.size()); });
}

constexpr int64_t any = 0, avx2 = HWY_AVX2;

#define SIZES ->Arg(64)->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 26)

BENCHMARK_CAPTURE(encodeOurs, best, any)->Name("base64Encode/ours") SIZES;
BENCHMARK(copy)->Name("base64Encode/memcpy") SIZES;
BENCHMARK(encodeOpenSsl)->Name("base64Encode/OpenSSL") SIZES;
BENCHMARK(encodeGlib)->Name("base64Encode/glib") SIZES;
BENCHMARK(encodeQt)->Name("base64Encode/Qt") SIZES;
BENCHMARK_CAPTURE(encodeOurs, avx2, avx2)->Name("base64EncodeAvx2/ours") SIZES;
BENCHMARK(copy)->Name("base64EncodeAvx2/memcpy") SIZES;

BENCHMARK_CAPTURE(decodeOurs, best, 0, any)->Name("base64Decode/ours") SIZES;
BENCHMARK(copy)->Name("base64Decode/memcpy") SIZES;
BENCHMARK_CAPTURE(decodeOpenSsl, plain, 0)->Name("base64Decode/OpenSSL") SIZES;
BENCHMARK_CAPTURE(decodeGlib, plain, 0)->Name("base64Decode/glib") SIZES;
BENCHMARK_CAPTURE(decodeQt, plain, 0)->Name("base64Decode/Qt") SIZES;
BENCHMARK_CAPTURE(decodeOurs, avx2, 0, avx2)->Name("base64DecodeAvx2/ours") SIZES;
BENCHMARK(copy)->Name("base64DecodeAvx2/memcpy") SIZES;

BENCHMARK_CAPTURE(decodeOurs, lines, 76, any)->Name("base64DecodeLines/ours") SIZES;
BENCHMARK(copy)->Name("base64DecodeLines/memcpy") SIZES;
BENCHMARK_CAPTURE(decodeOpenSsl, lines, 76)->Name("base64DecodeLines/OpenSSL") SIZES;
BENCHMARK_CAPTURE(decodeGlib, lines, 76)->Name("base64DecodeLines/glib") SIZES;
BENCHMARK_CAPTURE(decodeQt, lines, 76)->Name("base64DecodeLines/Qt") SIZES;
BENCHMARK_CAPTURE(decodeOurs, linesAvx2, 76, avx2)->Name("base64DecodeLinesAvx2/ours") SIZES;
BENCHMARK(copy)->Name("base64DecodeLinesAvx2/memcpy") SIZES;
BENCHMARK_CAPTURE(decodeOurs, words, 4, any)->Name("base64DecodeWords/ours") SIZES;
BENCHMARK_CAPTURE(decodeGlib, words, 4)->Name("base64DecodeWords/glib") SIZES;

BENCHMARK(encodeToBytes)->Name("base64EncodeToBytes/ours") SIZES;
BENCHMARK(allocateAndCopy)->Name("base64EncodeToBytes/memcpy") SIZES;
BENCHMARK(encodeQt)->Name("base64EncodeToBytes/Qt") SIZES;
BENCHMARK(encodeToText)->Name("base64EncodeToText/ours") SIZES;
BENCHMARK(encodeQtText)->Name("base64EncodeToText/Qt") SIZES;
BENCHMARK(encodeReference)->Name("base64EncodeToText/reference") SIZES;

BENCHMARK_CAPTURE(decodeFromBytes, plain, 0)->Name("base64DecodeFromBytes/ours") SIZES;
BENCHMARK(allocateAndCopy)->Name("base64DecodeFromBytes/memcpy") SIZES;
BENCHMARK_CAPTURE(decodeQt, bytes, 0)->Name("base64DecodeFromBytes/Qt") SIZES;
BENCHMARK_CAPTURE(decodeFromText, plain, 0)->Name("base64DecodeFromText/ours") SIZES;
BENCHMARK_CAPTURE(decodeQtText, plain, 0)->Name("base64DecodeFromText/Qt") SIZES;
BENCHMARK_CAPTURE(decodeReference, plain, 0)->Name("base64DecodeFromText/reference") SIZES;
BENCHMARK_CAPTURE(decodeFromText, lines, 76)->Name("base64DecodeLinesFromText/ours") SIZES;
BENCHMARK_CAPTURE(decodeQtText, lines, 76)->Name("base64DecodeLinesFromText/Qt") SIZES;

} // namespace
