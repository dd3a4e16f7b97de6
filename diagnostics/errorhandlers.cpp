// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/errorhandlers.h>

#include "platform/alert.h"
#include "platform/reportlog.h"
#include "platform/stacktrace.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <cxxabi.h>
#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <exception>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

struct SignalName
{
    int number;
    const char *text;
};

constexpr SignalName signalNames[] = {
    {SIGILL, "SIGILL"},   {SIGABRT, "SIGABRT"}, {SIGFPE, "SIGFPE"},   {SIGBUS, "SIGBUS"},
    {SIGSEGV, "SIGSEGV"}, {SIGSYS, "SIGSYS"},   {SIGPIPE, "SIGPIPE"},
};

constexpr std::size_t alternateStackSize = 256 * 1024;

const char *signalName(int number) noexcept
{
    for (const SignalName &name : signalNames) {
        if (name.number == number)
            return name.text;
    }
    return "UNKNOWN";
}

std::atomic<bool> prepared = false;

void prepareReports()
{
    prepareStackTraces();
    ReportLog::prepare();
    prepareAlert();
    prepared = true;
}

/// A program may call the handlers without having installed them.
void ensurePrepared()
{
    if (!prepared)
        prepareReports();
}

/// Without one, a stack overflow leaves no room for the handler that should report it. It lives as long as the process.
void giveSignalsAStack()
{
    stack_t present{};
    if (::sigaltstack(nullptr, &present) == 0 && !(present.ss_flags & SS_DISABLE)
        && present.ss_size >= alternateStackSize)
        return;
    void *memory =
        ::mmap(nullptr, alternateStackSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_STACK, -1, 0);
    if (memory == MAP_FAILED)
        return;
    const stack_t stack{memory, 0, alternateStackSize};
    ::sigaltstack(&stack, nullptr);
}

void installSignalHandler(int number)
{
    struct sigaction action
    {};
    action.sa_handler = handleSignal;
    action.sa_flags = SA_ONSTACK | SA_RESTART;
    ::sigaction(number, &action, nullptr);
}

QString typeNameOfCurrentException()
{
    const std::type_info *type = abi::__cxa_current_exception_type();
    return type ? demangled(type->name()) : u"unknown"_s;
}

void reportCurrentException()
{
    const std::exception_ptr current = std::current_exception();
    if (!current)
        return exceptionHandler(Exception(u"std::terminate"_s, u"called without an exception"_s));
    try {
        std::rethrow_exception(current);
    } catch (const Exception &e) {
        exceptionHandler(e);
    } catch (const std::exception &e) {
        exceptionHandler(Exception(typeNameOfCurrentException(), QString::fromUtf8(e.what())));
    } catch (...) {
        exceptionHandler(Exception(typeNameOfCurrentException()));
    }
}

[[noreturn]] void terminateHandler()
{
    static std::atomic_flag reporting;
    if (!reporting.test_and_set()) {
        try {
            reportCurrentException();
        } catch (...) {
            // There is nobody left to tell.
        }
    }
    std::abort();
}

QString orNull(const QString &text) { return text.isNull() ? u"(null)"_s : text; }

QString description(const QVariant &value);

QString description(const QVariantMap &map)
{
    QStringList entries;
    for (auto entry = map.begin(); entry != map.end(); ++entry)
        entries << entry.key() + u" = "_s + description(entry.value());
    return u'{' + entries.join(u"; "_s) + u'}';
}

QString description(const QVariantList &list)
{
    QStringList entries;
    for (const QVariant &entry : list)
        entries << description(entry);
    return u'(' + entries.join(u", "_s) + u')';
}

QString description(const QVariant &value)
{
    if (value.typeId() == QMetaType::QVariantMap)
        return description(value.toMap());
    if (value.typeId() == QMetaType::QVariantList)
        return description(value.toList());
    return value.canConvert<QString>() ? orNull(value.toString()) : u"<%1>"_s.arg(QLatin1String(value.typeName()));
}

/// What Exception remembers are addresses that calls return to, which may already belong to the next line.
QStringList stackOf(const Exception &exception)
{
    QList<quintptr> addresses = exception.callStackReturnAddresses();
    for (quintptr &address : addresses)
        --address;
    return describeStack({addresses.constData(), std::size_t(addresses.size())});
}

} // namespace

void installErrorHandlers()
{
    prepareReports();
    std::set_terminate(terminateHandler);
    giveSignalsAStack();
    for (const SignalName &name : signalNames)
        installSignalHandler(name.number);
}

void exceptionHandler(const Exception &exception)
{
    ensurePrepared();
    const QString userInfo = exception.userInfo().isEmpty() ? u"(null)"_s : description(exception.userInfo());
    const QStringList text{u"Exception: "_s + orNull(exception.name()), orNull(exception.reason()), userInfo, u""_s,
                           stackOf(exception).join(u'\r')};
    static const QRegularExpression lineEnd(u"\r\n?|\n"_s);
    ReportLog log;
    for (const QString &line : text.join(u'\r').split(lineEnd))
        log.writeLine(line.toUtf8().toStdString());
    soundAlert();
}

void handleSignal(int number)
{
    const int error = errno; // the interrupted code goes on with it
    ensurePrepared();
    const CapturedStack stack = captureStack();
    ReportLog log;
    log.writeLine(LineBuffer().append("Signal ").append(signalName(number)).append(":").view());
    for (const quintptr address : stack.frames()) {
        LineBuffer line;
        appendFrame(line, address);
        log.writeLine(line.view());
    }
    soundAlert();
    errno = error;
}

QString debugStackTrace()
{
    prepareStackTraces();
    const CapturedStack stack = captureStack();
    QString text;
    for (const QString &line : describeStack(stack.frames().subspan(qMin<std::size_t>(1, stack.count))))
        text += line + u'\r';
    return text;
}

QString reportMemory()
{
    QFile statistics(u"/proc/self/statm"_s);
    if (!statistics.open(QIODevice::ReadOnly))
        return u"Error"_s;
    bool known = false;
    const quint64 pages = statistics.readAll().split(' ').value(1).toULongLong(&known);
    if (!known)
        return u"Error"_s;
    char digits[64];
    const double kibibytes = double(pages * quint64(::sysconf(_SC_PAGESIZE))) * 0.0009765625;
    const auto result = std::to_chars(digits, digits + sizeof digits, kibibytes, std::chars_format::fixed, 2);
    return QString::fromLatin1(digits, result.ptr - digits) + u" k"_s;
}

} // namespace dravelin
