// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/encoding.h>

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <benchmark/benchmark.h>

#include <random>

using namespace dravelin;

// Beside the same values as a compact JSON object, compressed by Qt, in Base64.

namespace {

struct Values
{
    QStringList keys; ///< by turns of a text, an integer and a truth value
    QStringList texts;
    QList<int> integers;
};

Values someValues(qsizetype count)
{
    const QStringList words{QStringLiteral("Sketch"),     QStringLiteral("plan of the"), QStringLiteral("garden"),
                            QStringLiteral("north side"), QStringLiteral("draft"),       QStringLiteral("for review")};
    const QStringList names{QStringLiteral("title"), QStringLiteral("width"), QStringLiteral("visible")};
    std::mt19937 random(1);
    Values values;
    for (qsizetype i = 0; i < count; ++i) {
        values.keys += QStringLiteral("page/%1/%2").arg(i / 3).arg(names[i % 3]);
        values.texts += words[int(random() % 6)] + u' ' + words[int(random() % 6)] + u' ' + QString::number(i);
        values.integers += int(random() % 100'000);
    }
    return values;
}

DataEncoder filled(const Values &values)
{
    DataEncoder encoder;
    for (qsizetype i = 0; i < values.keys.size(); ++i) {
        if (i % 3 == 0)
            encoder.addString(values.keys[i], values.texts[i]);
        else if (i % 3 == 1)
            encoder.addInteger(values.keys[i], values.integers[i]);
        else
            encoder.addBool(values.keys[i], values.integers[i] % 2);
    }
    return encoder;
}

/// By way of a map, for setting one key after the other in a QJsonObject takes quadratic time.
QJsonObject filledObject(const Values &values)
{
    QVariantMap map;
    for (qsizetype i = 0; i < values.keys.size(); ++i) {
        if (i % 3 == 0)
            map[values.keys[i]] = values.texts[i];
        else if (i % 3 == 1)
            map[values.keys[i]] = values.integers[i];
        else
            map[values.keys[i]] = bool(values.integers[i] % 2);
    }
    return QJsonObject::fromVariantMap(map);
}

QByteArray json(const QJsonObject &object)
{
    return qCompress(QJsonDocument(object).toJson(QJsonDocument::Compact)).toBase64();
}

QJsonObject fromJson(const QByteArray &text)
{
    return QJsonDocument::fromJson(qUncompress(QByteArray::fromBase64(text))).object();
}

qint64 sum(const DataEncoder &encoder, const Values &values)
{
    qint64 sum = 0;
    for (qsizetype i = 0; i < values.keys.size(); ++i) {
        if (i % 3 == 0)
            sum += encoder.getString(values.keys[i]).size();
        else if (i % 3 == 1)
            sum += encoder.getInteger(values.keys[i]);
        else
            sum += encoder.getBool(values.keys[i]);
    }
    return sum;
}

qint64 sum(const QJsonObject &object, const Values &values)
{
    qint64 sum = 0;
    for (qsizetype i = 0; i < values.keys.size(); ++i) {
        if (i % 3 == 0)
            sum += object[values.keys[i]].toString().size();
        else if (i % 3 == 1)
            sum += object[values.keys[i]].toInt();
        else
            sum += object[values.keys[i]].toBool();
    }
    return sum;
}

void run(benchmark::State &state, auto function)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(function());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void fill(benchmark::State &state)
{
    run(state, [values = someValues(state.range(0))] { return filled(values).count(); });
}
void fillJson(benchmark::State &state)
{
    run(state, [values = someValues(state.range(0))] { return filledObject(values).size(); });
}
void encode(benchmark::State &state)
{
    const DataEncoder encoder = filled(someValues(state.range(0)));
    run(state, [&] { return encoder.encodeData(); });
    state.SetLabel(std::to_string(encoder.encodeData().size()) + " bytes");
}
void encodeJson(benchmark::State &state)
{
    const QJsonObject object = filledObject(someValues(state.range(0)));
    run(state, [&] { return json(object); });
    state.SetLabel(std::to_string(json(object).size()) + " bytes");
}
void decode(benchmark::State &state)
{
    run(state,
        [blob = filled(someValues(state.range(0))).encodeData()] { return DataEncoder::initWithData(blob).count(); });
}
void decodeJson(benchmark::State &state)
{
    run(state, [text = json(filledObject(someValues(state.range(0))))] { return fromJson(text).size(); });
}
void read(benchmark::State &state)
{
    const Values values = someValues(state.range(0));
    run(state, [&, encoder = filled(values)] { return sum(encoder, values); });
}
void readJson(benchmark::State &state)
{
    const Values values = someValues(state.range(0));
    run(state, [&, object = filledObject(values)] { return sum(object, values); });
}
void save(benchmark::State &state)
{
    run(state, [values = someValues(state.range(0))] { return filled(values).encodeData(); });
}
void saveJson(benchmark::State &state)
{
    run(state, [values = someValues(state.range(0))] { return json(filledObject(values)); });
}
void load(benchmark::State &state)
{
    const Values values = someValues(state.range(0));
    run(state, [&, blob = filled(values).encodeData()] { return sum(DataEncoder::initWithData(blob), values); });
}
void loadJson(benchmark::State &state)
{
    const Values values = someValues(state.range(0));
    run(state, [&, text = json(filledObject(values))] { return sum(fromJson(text), values); });
}

#define SIZES ->Arg(100)->Arg(100'000)
BENCHMARK(encode)->Name("dataEncoderEncode/ours") SIZES;
BENCHMARK(encodeJson)->Name("dataEncoderEncode/Qt") SIZES;
BENCHMARK(decode)->Name("dataEncoderDecode/ours") SIZES;
BENCHMARK(decodeJson)->Name("dataEncoderDecode/Qt") SIZES;
BENCHMARK(fill)->Name("dataEncoderFill/ours") SIZES;
BENCHMARK(fillJson)->Name("dataEncoderFill/Qt") SIZES;
BENCHMARK(read)->Name("dataEncoderRead/ours") SIZES;
BENCHMARK(readJson)->Name("dataEncoderRead/Qt") SIZES;
BENCHMARK(save)->Name("dataEncoderSave/ours") SIZES; // filling and encoding
BENCHMARK(saveJson)->Name("dataEncoderSave/Qt") SIZES;
BENCHMARK(load)->Name("dataEncoderLoad/ours") SIZES; // decoding and reading
BENCHMARK(loadJson)->Name("dataEncoderLoad/Qt") SIZES;

} // namespace
