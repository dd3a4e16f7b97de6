// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// A list of small objects as an archive, against the same values through QDataStream: what readable archives cost.

#include <dravelin/platform/keyedarchiver.h>
#include <dravelin/platform/keyedunarchiver.h>

#include <QtCore/QDataStream>
#include <QtCore/QIODevice>

#include <benchmark/benchmark.h>

using namespace dravelin;

namespace {

class Shape : public Coding
{
public:
    void encodeWithCoder(KeyedArchiver &coder) const override
    {
        coder.encodeObject(name, QStringLiteral("name"));
        coder.encodeInteger(kind, QStringLiteral("kind"));
        coder.encodeDouble(width, QStringLiteral("width"));
        coder.encodeDouble(height, QStringLiteral("height"));
    }
    bool initWithCoder(KeyedUnarchiver &coder) override
    {
        name = coder.decodeObjectForKey<QString>(QStringLiteral("name"));
        kind = coder.decodeIntegerForKey(QStringLiteral("kind"));
        width = coder.decodeDoubleForKey(QStringLiteral("width"));
        height = coder.decodeDoubleForKey(QStringLiteral("height"));
        return true;
    }

    QString name;
    qint64 kind = 0;
    double width = 0, height = 0;
};

using Shapes = QList<std::shared_ptr<Shape>>;

Shapes someShapes(qint64 count)
{
    registerCodingClass<Shape>(QStringLiteral("Shape"));
    Shapes shapes;
    for (qint64 i = 0; i < count; ++i) {
        shapes.append(std::make_shared<Shape>());
        shapes.last()->name = QStringLiteral("shape %1").arg(i);
        shapes.last()->kind = i % 7;
        shapes.last()->width = double(i) / 3;
        shapes.last()->height = double(i) * 1.5;
    }
    return shapes;
}

QByteArray archived(const Shapes &shapes)
{
    KeyedArchiver archiver;
    archiver.encodeObjects(shapes, QStringLiteral("shapes"));
    return archiver.encodedData();
}

QByteArray streamed(const Shapes &shapes)
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream << quint64(shapes.size());
    for (const auto &shape : shapes)
        stream << shape->name << shape->kind << shape->width << shape->height;
    return data;
}

Shapes unarchived(const QByteArray &data)
{
    return KeyedUnarchiver(data).decodeObjectsForKey<Shape>(QStringLiteral("shapes"));
}

Shapes unstreamed(const QByteArray &data)
{
    QDataStream stream(data);
    quint64 count = 0;
    stream >> count;
    Shapes shapes;
    for (quint64 i = 0; i < count; ++i) {
        shapes.append(std::make_shared<Shape>());
        stream >> shapes.last()->name >> shapes.last()->kind >> shapes.last()->width >> shapes.last()->height;
    }
    return shapes;
}

void write(benchmark::State &state, QByteArray (*function)(const Shapes &))
{
    const Shapes shapes = someShapes(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(function(shapes));
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.counters["bytes"] = double(function(shapes).size());
}

void read(benchmark::State &state, QByteArray (*writer)(const Shapes &), Shapes (*function)(const QByteArray &))
{
    const QByteArray data = writer(someShapes(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(function(data));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

#define SIZES ->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond)
BENCHMARK_CAPTURE(write, ours, archived)->Name("archive/ours") SIZES;
BENCHMARK_CAPTURE(write, stream, streamed)->Name("archive/QDataStream") SIZES;
BENCHMARK_CAPTURE(read, ours, archived, unarchived)->Name("unarchive/ours") SIZES;
BENCHMARK_CAPTURE(read, stream, streamed, unstreamed)->Name("unarchive/QDataStream") SIZES;

} // namespace
