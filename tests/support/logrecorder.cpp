// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <support/logrecorder.h>

#include <mutex>
#include <utility>

class LogRecorder::Sink : public dravelin::LogSink
{
public:
    void write(QtMsgType, const QString &line) override
    {
        const std::lock_guard lock(mutex);
        lines.append(line);
    }

    std::mutex mutex;
    QStringList lines;
};

LogRecorder::LogRecorder() : m_sink(std::make_shared<Sink>()), m_previous(dravelin::LogSink::setCurrent(m_sink)) {}

LogRecorder::~LogRecorder() { dravelin::LogSink::setCurrent(m_previous); }

QStringList LogRecorder::lines() const
{
    const std::lock_guard lock(m_sink->mutex);
    return m_sink->lines;
}

QStringList LogRecorder::take()
{
    const std::lock_guard lock(m_sink->mutex);
    return std::exchange(m_sink->lines, {});
}
