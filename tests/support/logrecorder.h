// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/log.h>

#include <QtCore/QStringList>

#include <memory>

/// Collects the library's log lines while it lives, in place of printing them.
class LogRecorder
{
public:
    LogRecorder();
    ~LogRecorder();

    [[nodiscard]] QStringList lines() const;
    /// The lines so far, which are forgotten.
    [[nodiscard]] QStringList take();

private:
    class Sink;
    std::shared_ptr<Sink> m_sink;
    std::shared_ptr<dravelin::LogSink> m_previous;
};
