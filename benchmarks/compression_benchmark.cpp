// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <QtCore/QDirIterator>
#include <QtCore/QFile>

#include <benchmark/benchmark.h>

#include <zlib.h>

using namespace dravelin;

namespace {

constexpr qsizetype LargestFilePart = 1 << 20; // so that no single file is most of the mix

/// The starts of the files below a folder, up to that many bytes.
QByteArray filesOf(const char *folder, const QStringList &names, qsizetype size)
{
    QByteArray bytes;
    QDirIterator files(QString::fromLatin1(folder), names, QDir::Files | QDir::NoSymLinks,
                       QDirIterator::Subdirectories);
    while (files.hasNext() && bytes.size() < size) {
        QFile file(files.next());
        if (file.open(QIODevice::ReadOnly))
            bytes += file.read(std::min(LargestFilePart, size - bytes.size()));
    }
    return bytes;
}

/// Texts and programs of the system in equal parts.
QByteArray mixOf(qsizetype size)
{
    const QStringList texts{QStringLiteral("*.txt"), QStringLiteral("*.xml"), QStringLiteral("*.h"),
                            QStringLiteral("*.pm"),  QStringLiteral("*.py"),  QStringLiteral("*.html")};
    return filesOf("/usr/share", texts, size / 2) + filesOf("/usr/lib", {QStringLiteral("*.so*")}, size - size / 2);
}

QByteArray streamOf(const QByteArray &bytes)
{
    QByteArray stream(qsizetype(compressBound(uLong(bytes.size()))), Qt::Uninitialized);
    uLongf size = uLongf(stream.size());
    compress2(reinterpret_cast<Bytef *>(stream.data()), &size, reinterpret_cast<const Bytef *>(bytes.constData()),
              uLong(bytes.size()), Z_DEFAULT_COMPRESSION);
    stream.truncate(qsizetype(size));
    return stream;
}

void inflateInto(QByteArray &bytes, const QByteArray &stream)
{
    uLongf size = uLongf(bytes.size());
    uncompress(reinterpret_cast<Bytef *>(bytes.data()), &size, reinterpret_cast<const Bytef *>(stream.constData()),
               uLong(stream.size()));
}

template <typename Function>
void run(benchmark::State &state, const QByteArray &bytes, const QByteArray &input, Function function)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(function(input));
    state.SetBytesProcessed(state.iterations() * bytes.size());
    state.SetLabel(std::to_string(bytes.size()) + " bytes, stream of " + std::to_string(streamOf(bytes).size()));
}

void compress(benchmark::State &state, auto function)
{
    const QByteArray bytes = mixOf(state.range(0));
    run(state, bytes, bytes, function);
}

void decompress(benchmark::State &state, auto function)
{
    const QByteArray bytes = mixOf(state.range(0));
    run(state, bytes, streamOf(bytes), function);
}

void inflateFresh(benchmark::State &state)
{
    const QByteArray bytes = mixOf(state.range(0));
    run(state, bytes, streamOf(bytes), [&](const QByteArray &stream) {
        QByteArray result(bytes.size(), Qt::Uninitialized);
        inflateInto(result, stream);
        return result;
    });
}

void inflateWarm(benchmark::State &state)
{
    const QByteArray bytes = mixOf(state.range(0));
    QByteArray result(bytes.size(), '\0');
    run(state, bytes, streamOf(bytes), [&](const QByteArray &stream) {
        inflateInto(result, stream);
        return result.constData();
    });
}

void qtDecompress(benchmark::State &state)
{
    const QByteArray bytes = mixOf(state.range(0));
    run(state, bytes, qCompress(bytes), [](const QByteArray &stream) { return qUncompress(stream); });
}

QByteArray qtCompressed(const QByteArray &bytes) { return qCompress(bytes); }
QByteArray decompressed(const QByteArray &stream) { return zlibDecompressed(stream); }

#define SIZES ->Arg(1 << 10)->Arg(1 << 16)->Arg(1 << 25)
BENCHMARK_CAPTURE(compress, ours, zlibCompressed)->Name("zlibCompress/ours") SIZES;
BENCHMARK_CAPTURE(compress, zlib, streamOf)->Name("zlibCompress/zlib") SIZES;
BENCHMARK_CAPTURE(compress, qt, qtCompressed)->Name("zlibCompress/Qt") SIZES;
BENCHMARK_CAPTURE(decompress, ours, decompressed)->Name("zlibDecompress/ours") SIZES;
BENCHMARK(inflateFresh)->Name("zlibDecompress/knownSize") SIZES;
BENCHMARK(inflateWarm)->Name("zlibDecompress/warmBuffer") SIZES;
BENCHMARK(qtDecompress)->Name("zlibDecompress/Qt") SIZES;

} // namespace
