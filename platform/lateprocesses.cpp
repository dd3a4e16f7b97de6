// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/lateprocesses.h"

#include <mutex>
#include <vector>

using namespace std::chrono_literals;

namespace dravelin {

namespace {

/// A shell closes its output as it ends, and is gone a moment later.
constexpr auto Moment = 100ms;

class LateProcesses
{
public:
    void add(ChildProcess process)
    {
        const std::scoped_lock lock(m_mutex);
        m_processes.push_back(std::move(process));
    }

    void reapEnded()
    {
        const std::scoped_lock lock(m_mutex);
        std::erase_if(m_processes, [](const ChildProcess &process) {
            if (!process.waitFor(0ms))
                return false;
            process.reap();
            return true;
        });
    }

private:
    std::mutex m_mutex;
    std::vector<ChildProcess> m_processes;
};

} // namespace

void detail::reapSoon(ChildProcess process)
{
    static LateProcesses late;
    late.reapEnded();
    if (process.waitFor(Moment))
        process.reap();
    else
        late.add(std::move(process));
}

} // namespace dravelin
