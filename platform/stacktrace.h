// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/linebuffer.h"

#include <QtCore/QStringList>

#include <array>
#include <span>

namespace dravelin {

/// Reads the debug information of the program and its libraries, so that a signal handler need not. Once done, again
/// is free.
void prepareStackTraces();

/// Addresses within the calling instructions of a stack, innermost first.
struct CapturedStack
{
    std::array<quintptr, 128> addresses;
    std::size_t count = 0;

    [[nodiscard]] std::span<const quintptr> frames() const noexcept { return {addresses.data(), count}; }
};

/// The calling thread's stack, from the caller on. For signal handlers too, after prepareStackTraces().
[[nodiscard]] CapturedStack captureStack() noexcept;

/// Appends "function at file:line", or what of it is known. For signal handlers, after prepareStackTraces(): function
/// names that only the allocating demangler could read stay as the linker has them.
void appendFrame(LineBuffer &line, quintptr address) noexcept;

/// The same with readable names throughout, and with the names in libraries loaded since. Not for signal handlers.
[[nodiscard]] QStringList describeStack(std::span<const quintptr> addresses);

/// What the compiler calls a type or function, as the source has it.
[[nodiscard]] QString demangled(const char *name);

} // namespace dravelin
