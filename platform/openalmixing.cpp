// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/openalmixing.h"

#define AL_ALEXT_PROTOTYPES
#include <AL/alext.h>

namespace dravelin::detail {

OpenAlMixing::OpenAlMixing(ALCdevice *device) : m_device(device), m_thread(QThread::create([this] { follow(); }))
{
    m_thread->setObjectName(QStringLiteral("sound mixing"));
    m_thread->start();
}

OpenAlMixing::~OpenAlMixing()
{
    change(Gone);
    m_thread->wait();
}

void OpenAlMixing::set(bool on) noexcept { change(on ? On : Off); }

void OpenAlMixing::change(State state) noexcept
{
    if (m_wanted.exchange(state) != state)
        m_wanted.notify_one();
}

void OpenAlMixing::follow() noexcept
{
    for (State is = On; is != Gone;) {
        m_wanted.wait(is);
        const State wanted = m_wanted;
        if (wanted == On && is == Off)
            alcDeviceResumeSOFT(m_device);
        else if (wanted == Off && is == On)
            alcDevicePauseSOFT(m_device);
        is = wanted;
    }
}

} // namespace dravelin::detail
