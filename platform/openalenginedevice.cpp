// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/openalengine.h"

#include <dravelin/platform/log.h>

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
    if (!m_device)
        logWarning(QStringLiteral("Sound output: there is no sound device; sounds play in silence"));
}

void OpenAlEngine::followDevice()
{
    logWarning(
        QStringLiteral("Sound output: the device \"%1\" went away; sounds play on in silence").arg(m_device->name()));
    moveTo(nullptr);
}

void OpenAlEngine::lookForDevice()
{
    auto device = OpenAlDevice::openSystem();
    m_lastAttempt = readClock();
    if (!device)
        return;
    logInfo(QStringLiteral("Sound output: sounds are heard on \"%1\"").arg(device->name()));
    moveTo(std::move(device));
}

/// Every play goes on from where it is, as far as it is not paused.
/// \param device null for silence
void OpenAlEngine::moveTo(std::unique_ptr<OpenAlDevice> device)
{
    const qint64 now = readClock();
    {
        const OpenAlDevice::Scope scope(m_device.get());
        for (const Play &play : m_plays)
            play->detach(now);
    }
    m_device = std::move(device);
    const OpenAlDevice::Scope scope(m_device.get());
    if (m_device)
        m_device->stockUp();
    for (const Play &play : m_plays) {
        if (!play->attach(m_device.get(), now))
            play->fail();
    }
}

void OpenAlEngine::restWhenIdle()
{
    if (m_device && !isPlaying() && readClock() >= m_idleSince + restAfter)
        m_device->rest();
}

/// Follows a device that went away, and has one looked for when there is none.
void OpenAlEngine::prepareToPlay()
{
    if (m_device && !m_device->isConnected())
        followDevice();
    if (!m_device && readClock() - m_lastAttempt >= betweenAttempts)
        m_wantsDevice = true;
}

} // namespace dravelin::detail
