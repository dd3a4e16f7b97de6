// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cerrno>

/// At its end, this process has as many files open as at the beginning, and no children.
class ProcessWatch
{
public:
    ~ProcessWatch()
    {
        EXPECT_EQ(openFiles(), m_openFiles);
        EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
        EXPECT_EQ(errno, ECHILD);
    }

    static qsizetype openFiles()
    {
        return QDir("/proc/self/fd").entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size();
    }

private:
    qsizetype m_openFiles = openFiles();
};
