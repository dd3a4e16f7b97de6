// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/sounddata.h>

#include <platform/soundinput.h>

#include <map>
#include <mutex>

namespace dravelin::detail {

/// The sounds of the process that somebody still holds, by the file that they were loaded from. For all threads.
class SoundCache
{
public:
    [[nodiscard]] static SoundCache &instance();

    /// Empty when there is none.
    [[nodiscard]] std::shared_ptr<const SoundData> find(const SoundStamp &stamp) const;
    /// \return what another thread has added meanwhile, else `data`, which may be empty
    std::shared_ptr<const SoundData> add(const SoundStamp &stamp, const std::shared_ptr<const SoundData> &data);

private:
    void dropGone();

    mutable std::mutex m_mutex;
    std::map<SoundStamp, std::weak_ptr<const SoundData>> m_sounds;
    size_t m_sweepAt = 64; ///< entries; twice as many as were left by the last sweep
};

} // namespace dravelin::detail
