// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <string_view>

namespace dravelin {

/// Where crash reports go: standard error, and the system's journal or else syslog, line by line. Everything but
/// prepare() may be used in a signal handler: no lock, no heap, no waiting for a reader longer than a moment.
///
///     ReportLog::prepare();           // while all is well
///     ReportLog log;                  // in the handler
///     log.writeLine("Signal SIGSEGV:");
class ReportLog
{
public:
    /// Connects to the first of the two sockets that answers, unless connected.
    static void prepare(const char *journal = "/run/systemd/journal/socket", const char *syslog = "/dev/log");

    /// \param line without line end; long ones are written in pieces
    void writeLine(std::string_view line) noexcept;

private:
    void writeToStandardError(std::string_view text) noexcept;

    bool m_standardErrorTakesMore = true;
};

} // namespace dravelin
