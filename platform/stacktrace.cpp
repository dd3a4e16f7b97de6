// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/stacktrace.h"

#include "platform/plainname.h"

#include <backtrace.h>
#include <cxxabi.h>
#include <dlfcn.h>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace dravelin {

namespace {

/// What is known of an address. The texts belong to libbacktrace and stay.
struct Frame
{
    const char *function = nullptr;
    const char *file = nullptr;
    int line = 0;
};

// What cannot be read is left out of the report.
void ignoreError(void *, const char *, int) {}

// Threads may use it at once, and it takes memory from the kernel, not from the heap.
backtrace_state *traceState = nullptr;

/// Called with the innermost of the functions that were inlined at the address first, which is the one to show.
int takeSource(void *data, uintptr_t, const char *file, int line, const char *function)
{
    *static_cast<Frame *>(data) = {function, file, line};
    return 1;
}

void takeSymbol(void *data, uintptr_t, const char *symbol, uintptr_t, uintptr_t)
{
    static_cast<Frame *>(data)->function = symbol;
}

Frame resolve(quintptr address) noexcept
{
    Frame frame;
    if (!traceState)
        return frame;
    backtrace_pcinfo(traceState, address, takeSource, ignoreError, &frame);
    if (!frame.function)
        backtrace_syminfo(traceState, address, takeSymbol, ignoreError, &frame);
    return frame;
}

int takeAddress(void *data, uintptr_t address)
{
    auto *stack = static_cast<CapturedStack *>(data);
    if (address + 1 == 0)
        return 1; // beyond the program's entry
    stack->addresses[stack->count++] = address;
    return stack->count == stack->addresses.size();
}

void appendSource(LineBuffer &line, const Frame &frame) noexcept
{
    if (frame.file && frame.line > 0)
        line.append(" at ").append(frame.file).append(":").appendNumber(quint64(frame.line));
}

/// In a library that was loaded after the debug information was read.
QString describeUnknown(quintptr address)
{
    Dl_info info{};
    const auto hex = QString::number(address, 16);
    if (!dladdr(reinterpret_cast<void *>(address), &info) || !info.dli_fname)
        return u"0x"_s + hex;
    const QString library = u" in "_s + QString::fromLocal8Bit(info.dli_fname);
    return (info.dli_sname ? demangled(info.dli_sname) : u"0x"_s + hex) + library;
}

QString describeFrame(quintptr address)
{
    const Frame frame = resolve(address);
    if (!frame.function)
        return describeUnknown(address);
    LineBuffer source;
    appendSource(source, frame);
    return demangled(frame.function) + QString::fromLocal8Bit(source.view());
}

} // namespace

void prepareStackTraces()
{
    if (traceState)
        return;
    traceState = backtrace_create_state(nullptr, true, ignoreError, nullptr);
    const CapturedStack stack = captureStack();
    for (const quintptr address : stack.frames())
        resolve(address);
}

Q_NEVER_INLINE CapturedStack captureStack() noexcept
{
    CapturedStack stack;
    if (traceState)
        backtrace_simple(traceState, 1, takeAddress, ignoreError, &stack);
    return stack;
}

void appendFrame(LineBuffer &line, quintptr address) noexcept
{
    const Frame frame = resolve(address);
    if (frame.function)
        appendPlainName(line, frame.function);
    else
        line.append("0x").appendNumber(address, 16);
    appendSource(line, frame);
}

QStringList describeStack(std::span<const quintptr> addresses)
{
    QStringList lines;
    for (const quintptr address : addresses)
        lines.append(describeFrame(address));
    return lines;
}

QString demangled(const char *name)
{
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> readable(abi::__cxa_demangle(name, nullptr, nullptr, &status),
                                                               &std::free);
    return QString::fromLocal8Bit(readable ? readable.get() : name);
}

} // namespace dravelin
