// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qglobal.h>

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace dravelin {

/// Owns an open file; -1 when there is none.
class FileDescriptor
{
public:
    explicit FileDescriptor(int fd = -1) noexcept : m_fd(fd) {}
    FileDescriptor(FileDescriptor &&other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    ~FileDescriptor()
    {
        if (m_fd >= 0)
            ::close(m_fd);
    }
    Q_DISABLE_COPY(FileDescriptor)

    [[nodiscard]] bool isOpen() const noexcept { return m_fd >= 0; }
    [[nodiscard]] int get() const noexcept { return m_fd; }

private:
    int m_fd;
};

/// Repeats a system call that a signal interrupted.
template <typename Call>
[[nodiscard]] auto retried(Call call)
{
    auto result = call();
    while (result == -1 && errno == EINTR)
        result = call();
    return result;
}

} // namespace dravelin
