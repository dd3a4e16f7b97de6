// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/userdefaults.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>

#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// One key changed and made durable in a file that holds `size` keys. The files lie beside the program: a temporary
// directory may be in memory, where flushing costs nothing.

namespace {

QString directoryTemplate() { return QCoreApplication::applicationDirPath() + u"/store-XXXXXX"_s; }

QString key(int number) { return u"window/%1/geometry"_s.arg(number); }

void changeOneOfOurs(benchmark::State &state)
{
    const QTemporaryDir directory(directoryTemplate());
    dravelin::UserDefaults store(directory.filePath(u"ours.plist"_s));
    for (int i = 0; i < state.range(0); ++i)
        store.setObject(u"20 30 400 300"_s, key(i));
    store.synchronize();
    int round = 0;
    for (auto _ : state) {
        store.setObject(++round, key(3));
        if (!store.synchronize())
            state.SkipWithError("not written");
    }
}

/// QSettings leaves it to chance whether the new file's name survives a power failure; this is what it lacks.
void flushDirectory(const QTemporaryDir &directory)
{
    const int fd = ::open(QFile::encodeName(directory.path()).constData(), O_RDONLY | O_DIRECTORY);
    ::fsync(fd);
    ::close(fd);
}

void changeOneOfQSettings(benchmark::State &state, bool withName)
{
    const QTemporaryDir directory(directoryTemplate());
    QSettings settings(directory.filePath(u"peer.ini"_s), QSettings::IniFormat);
    for (int i = 0; i < state.range(0); ++i)
        settings.setValue(key(i), u"20 30 400 300"_s);
    settings.sync();
    int round = 0;
    for (auto _ : state) {
        settings.setValue(key(3), ++round);
        settings.sync();
        if (withName)
            flushDirectory(directory);
        if (settings.status() != QSettings::NoError)
            state.SkipWithError("not written");
    }
}

void synchronizeNothing(benchmark::State &state)
{
    const QTemporaryDir directory(directoryTemplate());
    dravelin::UserDefaults store(directory.filePath(u"ours.plist"_s));
    store.setObject(1, key(0));
    store.synchronize();
    for (auto _ : state)
        benchmark::DoNotOptimize(store.synchronize());
}

void synchronizeNothingInQSettings(benchmark::State &state)
{
    const QTemporaryDir directory(directoryTemplate());
    QSettings settings(directory.filePath(u"peer.ini"_s), QSettings::IniFormat);
    settings.setValue(key(0), 1);
    settings.sync();
    for (auto _ : state)
        settings.sync();
}

} // namespace

BENCHMARK(changeOneOfOurs)->Name("oneKeyDurable/ours")->Arg(10)->Arg(100)->Arg(1000)->UseRealTime();
BENCHMARK_CAPTURE(changeOneOfQSettings, plain, false)
    ->Name("oneKeyDurable/QSettings")
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->UseRealTime();
BENCHMARK_CAPTURE(changeOneOfQSettings, withName, true)
    ->Name("oneKeyDurable/QSettings+directory")
    ->Arg(10)
    ->Arg(100)
    ->Arg(1000)
    ->UseRealTime();
BENCHMARK(synchronizeNothing)->Name("nothingPending/ours")->Arg(1)->UseRealTime();
BENCHMARK(synchronizeNothingInQSettings)->Name("nothingPending/QSettings")->Arg(1)->UseRealTime();
