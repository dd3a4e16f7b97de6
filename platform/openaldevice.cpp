// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/openaldevice.h"

#include <algorithm>
#include <utility>

namespace dravelin::detail {

namespace {

/// Nobody hears it, so a low rate will do; one that common rates are multiples of keeps the time exact.
constexpr int silentRate = 11025;
constexpr qint64 nanoseconds = 1'000'000'000;
/// A few seconds of sound, kept for the next plays.
constexpr size_t sparesAtRest = 16;

/// Sinc interpolation of order 11, or what the user's configuration has beyond it: the library's default is linear,
/// which is heard when rates differ.
ALint resampler()
{
    constexpr ALint sinc = 3;
    const ALint best = alGetInteger(AL_NUM_RESAMPLERS_SOFT) - 1;
    return std::min(best, std::max(sinc, alGetInteger(AL_DEFAULT_RESAMPLER_SOFT)));
}

} // namespace

std::unique_ptr<OpenAlDevice> OpenAlDevice::openSystem()
{
    constexpr ALCint attributes[] = {ALC_MONO_SOURCES, maxSources, ALC_HRTF_SOFT, ALC_FALSE, 0};
    return open(alcOpenDevice(nullptr), attributes, false);
}

std::unique_ptr<OpenAlDevice> OpenAlDevice::openSilent()
{
    constexpr ALCint attributes[] = {ALC_FORMAT_CHANNELS_SOFT,
                                     ALC_STEREO_SOFT,
                                     ALC_FORMAT_TYPE_SOFT,
                                     ALC_SHORT_SOFT,
                                     ALC_FREQUENCY,
                                     silentRate,
                                     ALC_MONO_SOURCES,
                                     maxSources,
                                     ALC_HRTF_SOFT,
                                     ALC_FALSE,
                                     0};
    return open(alcLoopbackOpenDeviceSOFT(nullptr), attributes, true);
}

std::unique_ptr<OpenAlDevice> OpenAlDevice::open(ALCdevice *device, const ALCint *attributes, bool silent)
{
    if (!device)
        return nullptr;
    std::unique_ptr<OpenAlDevice> result(new OpenAlDevice(device, attributes, silent));
    return result->m_context ? std::move(result) : nullptr;
}

OpenAlDevice::OpenAlDevice(ALCdevice *device, const ALCint *attributes, bool silent)
    : m_device(device), m_context(alcCreateContext(device, attributes)), m_silent(silent)
{}

OpenAlDevice::~OpenAlDevice()
{
    if (m_context) {
        const Scope scope(*this);
        deleteSpare(0);
    }
    if (m_context)
        alcDestroyContext(m_context);
    alcCloseDevice(m_device);
}

QString OpenAlDevice::name() const
{
    return m_silent ? QString() : QString::fromUtf8(alcGetString(m_device, ALC_ALL_DEVICES_SPECIFIER));
}

bool OpenAlDevice::isConnected() const
{
    ALCint connected = ALC_FALSE;
    alcGetIntegerv(m_device, ALC_CONNECTED, 1, &connected);
    return connected != ALC_FALSE;
}

void OpenAlDevice::run()
{
    if (!std::exchange(m_running, true))
        alcDeviceResumeSOFT(m_device);
}

void OpenAlDevice::rest()
{
    if (!std::exchange(m_running, false))
        return;
    alcDevicePauseSOFT(m_device);
    const Scope scope(*this);
    deleteSpare(sparesAtRest);
}

void OpenAlDevice::startClock(qint64 now)
{
    m_clockStart = now;
    m_clockFrames = 0;
}

qint64 OpenAlDevice::advance(qint64 now)
{
    const qint64 elapsed = now - m_clockStart;
    const qint64 due = elapsed / nanoseconds * silentRate + elapsed % nanoseconds * silentRate / nanoseconds;
    const qint64 frames = std::clamp<qint64>(due - m_clockFrames, 0, silentRate / 4);
    m_unheard.resize(size_t(silentRate / 4) * 2);
    alcRenderSamplesSOFT(m_device, m_unheard.data(), ALCsizei(frames));
    m_clockFrames += frames;
    return m_clockFrames == due ? now : m_clockStart + m_clockFrames * nanoseconds / silentRate;
}

ALuint OpenAlDevice::takeSource()
{
    ALuint source = 0;
    if (!m_sources.empty()) {
        source = m_sources.back();
        m_sources.pop_back();
        return source;
    }
    alGetError();
    alGenSources(1, &source);
    if (alGetError() != AL_NO_ERROR)
        return 0;
    setUpSource(source);
    return source;
}

/// Both channels go straight to the two loudspeakers, at exactly the volume that is set.
void OpenAlDevice::setUpSource(ALuint source) const
{
    alSourcei(source, AL_DIRECT_CHANNELS_SOFT, AL_TRUE);
    alSourcei(source, AL_SOURCE_RESAMPLER_SOFT, resampler());
}

void OpenAlDevice::giveSource(ALuint source)
{
    alSourceStop(source);
    alSourcei(source, AL_BUFFER, 0);
    m_sources.push_back(source);
}

ALuint OpenAlDevice::takeBuffer()
{
    ALuint buffer = 0;
    if (m_buffers.empty()) {
        alGenBuffers(1, &buffer);
        return buffer;
    }
    buffer = m_buffers.back();
    m_buffers.pop_back();
    return buffer;
}

void OpenAlDevice::deleteSpare(size_t keptBuffers)
{
    alDeleteSources(ALsizei(m_sources.size()), m_sources.data());
    m_sources.clear();
    const size_t kept = std::min(keptBuffers, m_buffers.size());
    alDeleteBuffers(ALsizei(m_buffers.size() - kept), m_buffers.data() + kept);
    m_buffers.resize(kept);
}

} // namespace dravelin::detail
