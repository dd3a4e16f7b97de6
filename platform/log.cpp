// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/log.h>

#include <mutex>
#include <utility>

namespace dravelin {

Q_LOGGING_CATEGORY(category, "dravelin")

namespace {

std::mutex sinkMutex;

std::shared_ptr<LogSink> &currentSink()
{
    static std::shared_ptr<LogSink> sink;
    return sink;
}

QString oneLine(QString message)
{
    return message.replace(u'\r', QLatin1String("\\r")).replace(u'\n', QLatin1String("\\n"));
}

void write(QtMsgType type, const QString &message)
{
    const QString line = oneLine(message);
    std::shared_ptr<LogSink> sink;
    {
        const std::lock_guard lock(sinkMutex);
        sink = currentSink();
    }
    if (sink)
        sink->write(type, line);
    else if (type == QtInfoMsg)
        qCInfo(category).noquote() << line;
    else
        qCWarning(category).noquote() << line;
}

} // namespace

const QLoggingCategory &logCategory() { return category(); }

LogSink::~LogSink() = default;

std::shared_ptr<LogSink> LogSink::setCurrent(std::shared_ptr<LogSink> sink)
{
    const std::lock_guard lock(sinkMutex);
    return std::exchange(currentSink(), std::move(sink));
}

void logInfo(const QString &message) { write(QtInfoMsg, message); }
void logWarning(const QString &message) { write(QtWarningMsg, message); }

} // namespace dravelin
