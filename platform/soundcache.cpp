// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <platform/soundcache.h>

#include <algorithm>

namespace dravelin::detail {

SoundCache &SoundCache::instance()
{
    static SoundCache cache;
    return cache;
}

std::shared_ptr<const SoundData> SoundCache::find(const SoundStamp &stamp) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_sounds.find(stamp);
    return found == m_sounds.end() ? nullptr : found->second.lock();
}

std::shared_ptr<const SoundData> SoundCache::add(const SoundStamp &stamp, const std::shared_ptr<const SoundData> &data)
{
    if (!data)
        return data;
    const std::lock_guard lock(m_mutex);
    auto &entry = m_sounds[stamp];
    if (auto other = entry.lock())
        return other;
    entry = data;
    dropGone();
    return data;
}

void SoundCache::dropGone()
{
    if (m_sounds.size() < m_sweepAt)
        return;
    std::erase_if(m_sounds, [](const auto &entry) { return entry.second.expired(); });
    m_sweepAt = std::max<size_t>(2 * m_sounds.size(), 64);
}

} // namespace dravelin::detail
