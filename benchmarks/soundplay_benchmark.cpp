// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/soundoutput.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include <AL/al.h>
#include <AL/alc.h>
#include <benchmark/benchmark.h>

#include <chrono>
#include <vector>

using namespace dravelin;

// From the play request to the start of the sound, on the calling thread, with that many sounds of 1 s loaded, on a device
// that drops them. The peer starts a buffer that was filled before, at no cost for samples; but for each sound it keeps a
// copy of them.

namespace {

constexpr int rate = 44100;

void useNullDevice() { qputenv("ALSOFT_DRIVERS", "null"); }

std::vector<qint16> second() { return std::vector<qint16>(size_t(rate) * 2, 1000); }

void runLoop(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

/// Calls `run` in turn for each number below the size, and lets time pass between as in an application.
template <class Run>
void measure(benchmark::State &state, int pause, const Run &run)
{
    int index = 0;
    for (auto _ : state) {
        runLoop(pause);
        const auto start = std::chrono::steady_clock::now();
        const auto stop = run(index);
        const auto end = std::chrono::steady_clock::now();
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
        stop();
        index = (index + 7) % int(state.range(0));
    }
}

void ours(benchmark::State &state, int pause)
{
    useNullDevice();
    const auto output = SoundOutput::createSystemOutput();
    output->prepare();
    std::vector<std::shared_ptr<const SoundData>> sounds;
    for (int i = 0; i < state.range(0); ++i)
        sounds.push_back(SoundData::fromSamples(second(), 2, rate));
    std::unique_ptr<SoundVoice> voice;
    measure(state, pause, [&](int i) {
        voice = output->start(sounds[size_t(i)], 0.5F, [](bool) {});
        return [&] { voice = nullptr; };
    });
}

void start(benchmark::State &state) { ours(state, 1); }
void startFromRest(benchmark::State &state) { ours(state, 1200); }

void alSourcePlay_(benchmark::State &state)
{
    useNullDevice();
    ALCdevice *device = alcOpenDevice(nullptr);
    ALCcontext *context = alcCreateContext(device, nullptr);
    alcMakeContextCurrent(context);
    std::vector<ALuint> buffers(size_t(state.range(0)));
    alGenBuffers(ALsizei(buffers.size()), buffers.data());
    for (const ALuint buffer : buffers)
        alBufferData(buffer, AL_FORMAT_STEREO16, second().data(), rate * 4, rate);
    ALuint source = 0;
    alGenSources(1, &source);
    measure(state, 1, [&](int i) {
        alSourcei(source, AL_BUFFER, ALint(buffers[size_t(i)]));
        alSourcePlay(source);
        return [source] { alSourceStop(source); };
    });
    alDeleteSources(1, &source);
    alDeleteBuffers(ALsizei(buffers.size()), buffers.data());
    alcMakeContextCurrent(nullptr);
    alcDestroyContext(context);
    alcCloseDevice(device);
}

} // namespace

BENCHMARK(start)->Name("start/ours")->Arg(1000)->UseManualTime()->Iterations(1000);
BENCHMARK(alSourcePlay_)->Name("start/alSourcePlay")->Arg(1000)->UseManualTime()->Iterations(1000);
BENCHMARK(startFromRest)->Name("startFromRest/ours")->Arg(1000)->UseManualTime()->Iterations(5);
