// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

// crash_child WAY: crashes, or does what others crash at, after installing the error handlers.

#include <dravelin/diagnostics.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

volatile sig_atomic_t heapIsForbidden = 0;

} // namespace

#ifndef __SANITIZE_ADDRESS__
extern "C" void *__libc_malloc(std::size_t size);

/// The program's heap, which a handler must not use: a lock of it may be held by the code that was interrupted.
extern "C" void *malloc(std::size_t size)
{
    if (heapIsForbidden)
        _exit(3);
    return __libc_malloc(size);
}
#endif

namespace {

void throwOurs()
{
    throw dravelin::Exception(QString::fromLatin1(dravelin::NSRangeException), QStringLiteral("no page 3"),
                              {{QStringLiteral("page"), 3}, {QStringLiteral("pages"), QVariantList{1, 2}}});
}

void throwBare() { throw dravelin::Exception(QStringLiteral("Bare")); }

void throwStandard() { throw std::runtime_error("disk\non fire"); }

void throwNumber() { throw 42; }

void terminate() { std::terminate(); }

void raiseAll()
{
    for (const int number : {SIGILL, SIGABRT, SIGFPE, SIGBUS, SIGSEGV, SIGSYS, SIGPIPE})
        std::raise(number);
}

void writeToForbiddenPage()
{
    void *page = ::mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    *static_cast<volatile int *>(page) = 1;
}

int overflowStack(int depth)
{
    volatile int frame[256] = {depth};
    return depth < 0 ? 0 : overflowStack(frame[0] + 1) + frame[0];
}

void overflow() { overflowStack(0); }

void writeToClosedPipe()
{
    int ends[2];
    if (::pipe(ends) != 0)
        std::exit(2);
    ::close(ends[0]);
    errno = 0;
    if (::write(ends[1], "x", 1) != -1 || errno != EPIPE)
        std::exit(2);
}

void standardErrorWithoutReader()
{
    int ends[2];
    if (::pipe(ends) != 0 || ::dup2(ends[1], STDERR_FILENO) < 0)
        std::exit(2);
    ::close(ends[0]);
    std::raise(SIGPIPE);
}

void standardErrorThatIsFull()
{
    int ends[2];
    if (::pipe(ends) != 0 || ::dup2(ends[1], STDERR_FILENO) < 0)
        std::exit(2);
    const std::string much(65536, 'x');
    if (::write(ends[1], much.data(), much.size()) != ssize_t(much.size()))
        std::exit(2);
    std::raise(SIGSEGV);
}

void withoutHeap()
{
    heapIsForbidden = 1;
    std::raise(SIGSEGV);
    heapIsForbidden = 0;
}

void insideTheLog()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { std::raise(SIGBUS); });
    dravelin::console(QStringLiteral("line"));
}

volatile sig_atomic_t alarms = 0;

void raiseInAlarm(int)
{
    alarms = alarms + 1;
    std::raise(SIGBUS);
}

/// Signals arrive at any place of the reports of others.
void signalsWithinSignals()
{
    std::signal(SIGALRM, raiseInAlarm);
    const itimerval often{{0, 700}, {0, 700}};
    ::setitimer(ITIMER_REAL, &often, nullptr);
    while (alarms < 50)
        std::raise(SIGSEGV);
    const itimerval never{};
    ::setitimer(ITIMER_REAL, &never, nullptr);
}

/// The console is first used when there is no application, and its window shown in one that ends before the process.
void consoleAroundApplication()
{
    dravelin::console(QStringLiteral("before"));
    dravelin::showConsole();
    int argc = 0;
    {
        QApplication application(argc, nullptr);
        dravelin::showConsole();
        if (!dravelin::currentConsole()->window()->isVisible())
            std::exit(2);
    }
    dravelin::console(QStringLiteral("after"));
    if (dravelin::currentConsole()->text() != QStringLiteral("before\rafter\r"))
        std::exit(2);
}

struct Way
{
    const char *name;
    void (*go)();
};

constexpr Way ways[] = {
    {"ours", throwOurs},
    {"bare", throwBare},
    {"standard", throwStandard},
    {"number", throwNumber},
    {"terminate", terminate},
    {"raise", raiseAll},
    {"fault", writeToForbiddenPage},
    {"overflow", overflow},
    {"pipe", writeToClosedPipe},
    {"no-reader", standardErrorWithoutReader},
    {"full", standardErrorThatIsFull},
    {"no-heap", withoutHeap},
    {"in-log", insideTheLog},
    {"nested", signalsWithinSignals},
    {"console", consoleAroundApplication},
};

} // namespace

int main(int argc, char **argv)
{
    dravelin::installErrorHandlers();
    dravelin::installErrorHandlers();
    for (const Way &way : ways) {
        if (argc == 2 && std::strcmp(way.name, argv[1]) == 0) {
            way.go();
            return 0;
        }
    }
    return 1;
}
