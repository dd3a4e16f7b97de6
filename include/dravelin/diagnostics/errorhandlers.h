// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/exception.h>

#include <QtCore/QString>

/// \file
/// What makes crashes and the use of memory visible.
///
///     int main(int argc, char **argv)
///     {
///         QApplication application(argc, argv);
///         dravelin::installErrorHandlers();
///         qInfo().noquote() << dravelin::reportMemory();      // "31452.00 k"
///         ...
///
/// Reports go to standard error and to the journal, or else to syslog, line by line. They take no lock and no memory
/// from the heap that a crash inside the allocator or the log could have left unusable; they never wait for a reader
/// of standard error longer than a moment. Stack frames show function, file and line where there is debug information,
/// the function where there is none, and the address where not even that is known. In reports of signals, functions
/// whose linker name takes more than reading (templates, operators) bear that name, which `c++filt` explains.

namespace dravelin {

/// Installs a handler for exceptions that nobody catches, and one for SIGILL, SIGABRT, SIGFPE, SIGBUS, SIGSEGV, SIGSYS
/// and SIGPIPE. What was installed before is neither kept nor called. Stack overflows are reported on the calling
/// thread only, which gets a stack of its own for its signals; call it on the main thread, early. Calling it twice does
/// no harm.
/// \cost some 100 ms once: debug information is read now, when it is safe
/// \operation{installErrorHandlers}
DRAVELIN_EXPORT void installErrorHandlers();

/// Reports an exception: name, reason, user information ("(null)" when there is none), an empty line, and the stack
/// where it was made; then beeps and returns. An exception of a foreign class is reported under its type's name with
/// `what()` as reason and the stack of std::terminate(), which is still that of the throw. The process ends
/// thereafter as C++ has it, by SIGABRT, which is reported in turn.
/// \operation{exceptionHandler}
DRAVELIN_EXPORT void exceptionHandler(const Exception &exception);

/// Reports a signal by name, "UNKNOWN" for one that is not installed, with the stack; then beeps and returns. It
/// neither ends the process, nor resets the signal's disposition, nor raises it again: after a fault, the instruction
/// that faulted runs again, and the report is repeated until the process is ended from outside. May be called from a
/// signal handler.
/// \operation{handleSignal}
DRAVELIN_EXPORT void handleSignal(int number);

/// The calling thread's stack, innermost frame first, without debugStackTrace() itself: one line per frame, each with
/// a carriage return at its end.
/// \operation{debugStackTrace}
[[nodiscard]] DRAVELIN_EXPORT QString debugStackTrace();

/// Resident memory of the process in kibibytes, "31452.00 k"; "Error" when the system does not tell.
/// \operation{reportMemory}
[[nodiscard]] DRAVELIN_EXPORT QString reportMemory();

} // namespace dravelin
