// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/openalengine.h"

#include <dravelin/platform/log.h>

#include <algorithm>
#include <iterator>
#include <utility>

// Which device the sounds are on.

namespace dravelin::detail {

namespace {

constexpr qint64 betweenAttempts = 2'000'000'000;

} // namespace

void OpenAlEngine::openFirst()
{
    moveTo(OpenAlDevice::openSystem());
    m_lastAttempt = readClock();
    if (m_device)
        return;
    moveTo(OpenAlDevice::openSilent());
    logWarning(m_device ? QStringLiteral("Sound output: there is no sound device; sounds play in silence")
                        : QStringLiteral("Sound output: neither a sound device nor a silent one can be opened"));
}

void OpenAlEngine::followDevice()
{
    logWarning(
        QStringLiteral("Sound output: the device \"%1\" went away; sounds play on in silence").arg(m_device->name()));
    moveTo(OpenAlDevice::openSilent());
    if (m_device)
        return;
    for (const Play &play : m_plays)
        play->fail();
    std::ranges::move(std::exchange(m_plays, {}), std::back_inserter(m_finished));
}

void OpenAlEngine::lookForDevice()
{
    auto device = OpenAlDevice::openSystem();
    m_lastAttempt = readClock();
    if (!device)
        return;
    advance();
    logInfo(QStringLiteral("Sound output: sounds are heard on \"%1\"").arg(device->name()));
    moveTo(std::move(device));
}

/// Every play goes on from where it is, as far as it is not paused.
void OpenAlEngine::moveTo(std::unique_ptr<OpenAlDevice> device)
{
    const qint64 now = readClock();
    if (m_device) {
        const OpenAlDevice::Scope scope(*m_device);
        for (const Play &play : m_plays)
            play->detach(now);
    }
    m_device = std::move(device);
    if (!m_device)
        return;
    m_device->startClock(now);
    const OpenAlDevice::Scope scope(*m_device);
    m_device->stockUp();
    for (const Play &play : m_plays) {
        if (!play->attach(*m_device, now))
            play->fail();
    }
}

void OpenAlEngine::restWhenIdle()
{
    if (m_device && !isPlaying() && readClock() >= m_idleSince + restAfter)
        m_device->rest();
}

/// Brings the device into a state in which it takes sounds to play from now on. A real one still has to be run.
/// \return false when there is none, not even a silent one
bool OpenAlEngine::prepareToPlay()
{
    if (m_device && !m_device->isConnected())
        followDevice();
    if (m_device && m_device->isSilent())
        prepareSilence(readClock());
    return m_device != nullptr;
}

void OpenAlEngine::prepareSilence(qint64 now)
{
    if (isPlaying())
        bringUpToDate();
    else
        m_device->startClock(now);
    m_wantsDevice = m_wantsDevice || now - m_lastAttempt >= betweenAttempts;
}

} // namespace dravelin::detail
