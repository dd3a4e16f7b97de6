// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics.h>
#include <dravelin/platform/log.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPlainTextEdit>

#include <benchmark/benchmark.h>

#include <memory>

using namespace Qt::StringLiterals;

// What printing costs while the window is hidden, and what it does to the event loop while it is open. The log, which
// every line goes to as well, throws its lines away here.

namespace {

class Silence : public dravelin::LogSink
{
public:
    void write(QtMsgType, const QString &) override {}
};

class Quiet
{
public:
    Quiet() : m_previous(dravelin::LogSink::setCurrent(std::make_shared<Silence>())) {}
    ~Quiet()
    {
        dravelin::killConsole();
        dravelin::LogSink::setCurrent(m_previous);
    }
    Q_DISABLE_COPY_MOVE(Quiet)

private:
    std::shared_ptr<dravelin::LogSink> m_previous;
};

QString line(int number) { return u"line %1 of a program that is being debugged"_s.arg(number); }

double residentKibibytes() { return dravelin::reportMemory().chopped(2).toDouble(); }

void print(benchmark::State &state)
{
    const Quiet quiet;
    const QString text = line(123456);
    double bytes = 0;
    for (auto _ : state) {
        dravelin::initializeConsole();
        const double before = residentKibibytes();
        for (int i = 0; i < state.range(0); ++i)
            dravelin::console(text);
        bytes = (residentKibibytes() - before) * 1024 / double(state.range(0));
        dravelin::killConsole();
    }
    state.counters["bytesPerLine"] = bytes;
    state.counters["perLine"] = benchmark::Counter(double(state.range(0)), benchmark::Counter::kIsIterationInvariantRate
                                                                               | benchmark::Counter::kInvert);
}

/// The text view, given the same lines directly as programs usually do it.
void appendToView(benchmark::State &state)
{
    const QString text = line(123456);
    for (auto _ : state) {
        QPlainTextEdit view;
        for (int i = 0; i < state.range(0); ++i)
            view.appendPlainText(text);
    }
}

/// Runs the event loop until `done`, and measures the longest time between two of its passes.
template <class Done>
double longestStall(Done done)
{
    QElapsedTimer sincePass;
    qint64 longest = 0;
    QTimer heartbeat;
    QObject::connect(&heartbeat, &QTimer::timeout, &heartbeat, [&] {
        longest = qMax(longest, sincePass.nsecsElapsed());
        sincePass.start();
    });
    heartbeat.start(0);
    sincePass.start();
    while (!done())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return double(qMax(longest, sincePass.nsecsElapsed())) / 1e6;
}

bool viewHas(int lines) { return dravelin::currentConsole()->textDisplay()->blockCount() > lines; }

/// All lines printed in one go, and then brought into the open window.
void burst(benchmark::State &state)
{
    const Quiet quiet;
    const int lines = int(state.range(0));
    double longest = 0;
    double printing = 0;
    for (auto _ : state) {
        dravelin::showConsole();
        QCoreApplication::processEvents();
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < lines; ++i)
            dravelin::console(line(i));
        printing = qMax(printing, double(timer.nsecsElapsed()) / 1e6);
        longest = qMax(longest, longestStall([&] { return viewHas(lines); }));
        dravelin::killConsole();
    }
    state.counters["longestStall_ms"] = longest;
    state.counters["printing_ms"] = printing;
}

/// Lines printed all the time, a thousand in each pass of the event loop.
void stream(benchmark::State &state)
{
    const Quiet quiet;
    const int lines = int(state.range(0));
    double longest = 0;
    for (auto _ : state) {
        dravelin::showConsole();
        QCoreApplication::processEvents();
        int printed = 0;
        QTimer printer;
        QObject::connect(&printer, &QTimer::timeout, &printer, [&] {
            for (int i = 0; i < 1000 && printed < lines; ++i)
                dravelin::console(line(printed++));
        });
        printer.start(0);
        longest = qMax(longest, longestStall([&] { return viewHas(lines); }));
        dravelin::killConsole();
    }
    state.counters["longestStall_ms"] = longest;
}

void streamIntoView(benchmark::State &state)
{
    const int lines = int(state.range(0));
    double longest = 0;
    for (auto _ : state) {
        QPlainTextEdit view;
        view.setLineWrapMode(QPlainTextEdit::NoWrap);
        view.resize(720, 420);
        view.show();
        QCoreApplication::processEvents();
        int printed = 0;
        QTimer printer;
        QObject::connect(&printer, &QTimer::timeout, &printer, [&] {
            for (int i = 0; i < 1000 && printed < lines; ++i)
                view.appendPlainText(line(printed++));
        });
        printer.start(0);
        longest = qMax(longest, longestStall([&] { return printed == lines; }));
    }
    state.counters["longestStall_ms"] = longest;
}

void captureStackText(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(dravelin::debugStackTrace());
}

} // namespace

BENCHMARK(print)->Name("print/ours")->Arg(1'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
BENCHMARK(appendToView)->Name("print/QPlainTextEdit")->Arg(1'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(burst)
    ->Name("burstWithWindow/ours")
    ->Arg(100'000)
    ->Arg(1'000'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(stream)->Name("streamWithWindow/ours")->Arg(100'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(streamIntoView)
    ->Name("streamWithWindow/QPlainTextEdit")
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(captureStackText)->Name("stackTrace/ours")->Arg(1)->Unit(benchmark::kMicrosecond);
