// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/export.h>

#include <QtCore/QLoggingCategory>
#include <QtCore/QString>

#include <memory>

namespace dravelin {

/// The category "dravelin" under which everything of the library is logged. Switch it with
/// `QT_LOGGING_RULES="dravelin.info=false"` or `QLoggingCategory::setFilterRules`.
[[nodiscard]] DRAVELIN_EXPORT const QLoggingCategory &logCategory();

/// Where the library's log lines go. The default sink hands each to Qt's message handler under logCategory(). May be
/// called from any thread.
class DRAVELIN_EXPORT LogSink
{
public:
    virtual ~LogSink();

    /// \param type QtInfoMsg or QtWarningMsg
    /// \param line one line; line ends of the message have been written as the two characters `\r` or `\n`
    virtual void write(QtMsgType type, const QString &line) = 0;

    /// Replaces the process's sink; an empty pointer brings the default back.
    /// \return the sink that was replaced, empty for the default one
    static std::shared_ptr<LogSink> setCurrent(std::shared_ptr<LogSink> sink);
};

/// Logs one line: something worth knowing.
DRAVELIN_EXPORT void logInfo(const QString &message);

/// Logs one line: something that did not work, with the name of the thing and the cause.
DRAVELIN_EXPORT void logWarning(const QString &message);

} // namespace dravelin
