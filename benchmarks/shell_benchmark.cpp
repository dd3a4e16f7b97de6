// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/systemservices.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <vector>

// What running a command costs beyond starting and ending the shell, and what its output costs beyond reading it. The
// commands write text, so that all of it is decoded: ASCII, and lines of German text in UTF-8. "read" keeps nothing: it
// is the speed of the pipe. "convert" collects the bytes and makes text of them at the end, as is usual.

namespace {

constexpr qint64 Gigabyte = qint64(1) << 30;
const char *const Ascii =
    "yes 'a line of a build that has much to say, as builds do, and says it' | head -c 1073741824";
const char *const German = "yes 'Grüße, schöne Größe, süße Äpfel über öden Flüssen, ärgerlich üb' | head -c 1073741812";

pid_t spawn(const char *command, const posix_spawn_file_actions_t *actions)
{
    std::array<char *, 4> arguments{const_cast<char *>("/bin/sh"), const_cast<char *>("-c"),
                                    const_cast<char *>(command), nullptr};
    pid_t id = 0;
    posix_spawn(&id, "/bin/sh", actions, nullptr, arguments.data(), environ);
    return id;
}

void run(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(dravelin::runShellCommand(QStringLiteral("true")));
}

void spawnAndWait(benchmark::State &state)
{
    for (auto _ : state)
        waitpid(spawn("true", nullptr), nullptr, 0);
}

void collect(benchmark::State &state, const char *command)
{
    qsizetype length = 0;
    for (auto _ : state)
        length = dravelin::runShellCommand(QString::fromUtf8(command)).size();
    if (length < Gigabyte / 2)
        state.SkipWithError("the output is not complete");
    state.SetBytesProcessed(qint64(state.iterations()) * Gigabyte);
}

/// Reads the output into one buffer over and over.
/// \param kept gets a copy; null to keep nothing
qint64 drain(const char *command, QByteArray *kept = nullptr)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return -1;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    const pid_t id = spawn(command, &actions);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    std::vector<char> buffer(262'144);
    qint64 length = 0;
    for (ssize_t count = 1; count > 0; length += count) {
        count = read(ends[0], buffer.data(), buffer.size());
        if (kept && count > 0)
            kept->append(buffer.data(), count);
    }
    close(ends[0]);
    waitpid(id, nullptr, 0);
    return length;
}

void read(benchmark::State &state, const char *command)
{
    for (auto _ : state) {
        if (drain(command) < Gigabyte / 2)
            state.SkipWithError("the output is not complete");
    }
    state.SetBytesProcessed(qint64(state.iterations()) * Gigabyte);
}

void convert(benchmark::State &state, const char *command)
{
    for (auto _ : state) {
        QByteArray bytes;
        drain(command, &bytes);
        if (!bytes.isValidUtf8() || QString::fromUtf8(bytes).size() < Gigabyte / 2)
            state.SkipWithError("the output is not complete");
    }
    state.SetBytesProcessed(qint64(state.iterations()) * Gigabyte);
}

void inMilliseconds(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Unit(benchmark::kMillisecond)->UseRealTime();
}

} // namespace

BENCHMARK(run)->Name("true/ours")->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(spawnAndWait)->Name("true/posix_spawn")->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK_CAPTURE(collect, ascii, Ascii)->Name("output/ours/1GB")->Apply(inMilliseconds);
BENCHMARK_CAPTURE(read, ascii, Ascii)->Name("output/read/1GB")->Apply(inMilliseconds);
BENCHMARK_CAPTURE(convert, ascii, Ascii)->Name("output/convert/1GB")->Apply(inMilliseconds);
BENCHMARK_CAPTURE(collect, german, German)->Name("outputGerman/ours/1GB")->Apply(inMilliseconds);
BENCHMARK_CAPTURE(read, german, German)->Name("outputGerman/read/1GB")->Apply(inMilliseconds);
BENCHMARK_CAPTURE(convert, german, German)->Name("outputGerman/convert/1GB")->Apply(inMilliseconds);
