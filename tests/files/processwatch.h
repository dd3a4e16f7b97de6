// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/QDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

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

/// This process cannot have more than so many further files open.
class FileLimit
{
public:
    explicit FileLimit(std::size_t further)
    {
        std::vector<int> files(further + 1);
        std::generate(files.begin(), files.end(), [] { return dup(0); });
        std::for_each(files.begin(), files.end(), close);
        getrlimit(RLIMIT_NOFILE, &m_old);
        const rlimit limit{rlim_t(files.back()), m_old.rlim_max};
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~FileLimit() { setrlimit(RLIMIT_NOFILE, &m_old); }
    Q_DISABLE_COPY_MOVE(FileLimit)

private:
    rlimit m_old{};
};
