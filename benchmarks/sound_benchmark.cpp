// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/sounddata.h>
#include <dravelin/sound/sounddepot.h>

#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <sndfile.h>

#include <cmath>
#include <numbers>

using namespace dravelin;

namespace {

constexpr int Rate = 44100;

/// A bell of two channels: what effects are like.
void writeBell(const QByteArray &path, int format, double seconds)
{
    SF_INFO info{0, Rate, 2, format, 0, 0};
    SNDFILE *file = sf_open(path.constData(), SFM_WRITE, &info);
    for (int frame = 0; frame < int(seconds * Rate); ++frame) {
        const double time = double(frame) / Rate;
        const double swing = 2 * std::numbers::pi * time;
        const double level = 0.4 * std::exp(-3 * time);
        const double both[] = {level * (std::sin(440 * swing) + 0.5 * std::sin(1213 * swing)),
                               level * (std::sin(441 * swing) + 0.5 * std::sin(2741 * swing))};
        sf_writef_double(file, both, 1);
    }
    sf_close(file);
}

class Files
{
public:
    QByteArray bell(const char *name, int format, double seconds = 1)
    {
        const QByteArray path = m_folder.filePath(QString::fromLatin1(name)).toUtf8();
        writeBell(path, format, seconds);
        return path;
    }

private:
    QTemporaryDir m_folder;
};

/// The file is decoded anew each time, since nobody holds the sound of the time before.
void loadOurs(benchmark::State &state, int format)
{
    Files files;
    const QString path = QString::fromUtf8(files.bell("bell", format));
    for (auto _ : state)
        benchmark::DoNotOptimize(SoundData::load(path));
    state.SetLabel(std::to_string(SoundData::load(path)->frames()) + " frames");
}

void loadLibsndfile(benchmark::State &state, int format)
{
    Files files;
    const QByteArray path = files.bell("bell", format);
    for (auto _ : state) {
        SF_INFO info{};
        SNDFILE *file = sf_open(path.constData(), SFM_READ, &info);
        const std::unique_ptr<short[]> samples(new short[size_t(info.frames * info.channels)]);
        benchmark::DoNotOptimize(sf_readf_short(file, samples.get(), info.frames));
        sf_close(file);
    }
}

/// Memory in use per sound beyond its samples, with a thousand of them in a depot; by the C library's own count.
void memory(benchmark::State &state)
{
    constexpr int Sounds = 1000;
    Files files;
    std::vector<QByteArray> paths;
    for (int i = 0; i < Sounds; ++i)
        paths.push_back(files.bell(std::to_string(i).c_str(), SF_FORMAT_WAV | SF_FORMAT_PCM_16, 0.1));
    for (auto _ : state) {
        SoundDepot depot;
        qint64 samples = 0;
        const struct mallinfo2 before = mallinfo2();
        for (int i = 0; i < Sounds; ++i) {
            depot.addSound(std::make_shared<Sound>(QString::fromUtf8(paths[size_t(i)]), i, 1));
            samples += qint64(depot.getSound(i)->data()->samples().size_bytes());
        }
        const struct mallinfo2 after = mallinfo2();
        const auto used = qint64(after.uordblks + after.hblkhd) - qint64(before.uordblks + before.hblkhd);
        state.counters["bytes_beyond_samples"] = double(used - samples) / Sounds;
    }
}

} // namespace

BENCHMARK_CAPTURE(loadOurs, wav, SF_FORMAT_WAV | SF_FORMAT_PCM_16)->Name("load/ours/wav1s");
BENCHMARK_CAPTURE(loadLibsndfile, wav, SF_FORMAT_WAV | SF_FORMAT_PCM_16)->Name("load/libsndfile/wav1s");
BENCHMARK_CAPTURE(loadOurs, flac, SF_FORMAT_FLAC | SF_FORMAT_PCM_16)->Name("load/ours/flac1s");
BENCHMARK_CAPTURE(loadLibsndfile, flac, SF_FORMAT_FLAC | SF_FORMAT_PCM_16)->Name("load/libsndfile/flac1s");
BENCHMARK_CAPTURE(loadOurs, ogg, SF_FORMAT_OGG | SF_FORMAT_VORBIS)->Name("load/ours/ogg1s");
BENCHMARK_CAPTURE(loadLibsndfile, ogg, SF_FORMAT_OGG | SF_FORMAT_VORBIS)->Name("load/libsndfile/ogg1s");
BENCHMARK(memory)->Name("memory/ours/1000sounds")->Iterations(1);
