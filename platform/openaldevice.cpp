// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "platform/openaldevice.h"

#include <algorithm>
#include <utility>

namespace dravelin::detail {

namespace {

/// Sources, and buffers of a quarter of a second at the usual rate, that lie ready for the next plays.
constexpr size_t spares = 16;
constexpr int usualRate = 44100;
constexpr size_t usualSamples = size_t(usualRate) / 4 * 2;

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
    ALCdevice *device = alcOpenDevice(nullptr);
    if (!device)
        return nullptr;
    std::unique_ptr<OpenAlDevice> result(new OpenAlDevice(device));
    return result->m_context ? std::move(result) : nullptr;
}

OpenAlDevice::OpenAlDevice(ALCdevice *device) : m_device(device)
{
    constexpr ALCint attributes[] = {ALC_MONO_SOURCES, maxSources, ALC_HRTF_SOFT, ALC_FALSE, 0};
    m_context = alcCreateContext(device, attributes);
}

OpenAlDevice::~OpenAlDevice()
{
    m_mixing.reset();
    if (m_context) {
        const Scope scope(this);
        deleteSpare(0);
    }
    if (m_context)
        alcDestroyContext(m_context);
    alcCloseDevice(m_device);
}

QString OpenAlDevice::name() const { return QString::fromUtf8(alcGetString(m_device, ALC_ALL_DEVICES_SPECIFIER)); }

bool OpenAlDevice::isConnected() const
{
    ALCint connected = ALC_FALSE;
    alcGetIntegerv(m_device, ALC_CONNECTED, 1, &connected);
    return connected != ALC_FALSE;
}

void OpenAlDevice::run()
{
    if (m_mixing)
        m_mixing->set(true);
}

void OpenAlDevice::rest()
{
    if (!m_mixing)
        m_mixing.emplace(m_device);
    m_mixing->set(false);
    const Scope scope(this);
    deleteSpare(spares);
}

/// Fresh memory costs more than the samples that are copied into it.
void OpenAlDevice::stockUp()
{
    while (m_sources.size() < spares && addSource()) {
    }
    if (m_buffers.size() < spares)
        m_scratch.assign(usualSamples, 0);
    while (m_buffers.size() < spares && addBuffer()) {
        alBufferData(m_buffers.back(), AL_FORMAT_STEREO16, m_scratch.data(), ALsizei(usualSamples * sizeof(qint16)),
                     usualRate);
    }
}

ALuint OpenAlDevice::takeSource()
{
    if (m_sources.empty() && !addSource())
        return 0;
    const ALuint source = m_sources.back();
    m_sources.pop_back();
    return source;
}

/// Both channels go straight to the two loudspeakers, at exactly the volume that is set.
bool OpenAlDevice::addSource()
{
    ALuint source = 0;
    alGetError();
    alGenSources(1, &source);
    if (alGetError() != AL_NO_ERROR)
        return false;
    alSourcei(source, AL_DIRECT_CHANNELS_SOFT, AL_TRUE);
    alSourcei(source, AL_SOURCE_RESAMPLER_SOFT, resampler());
    m_sources.push_back(source);
    return true;
}

void OpenAlDevice::giveSource(ALuint source)
{
    alSourceStop(source);
    alSourcei(source, AL_BUFFER, 0);
    m_sources.push_back(source);
}

ALuint OpenAlDevice::takeBuffer()
{
    if (m_buffers.empty() && !addBuffer())
        return 0;
    const ALuint buffer = m_buffers.back();
    m_buffers.pop_back();
    return buffer;
}

bool OpenAlDevice::addBuffer()
{
    ALuint buffer = 0;
    alGetError();
    alGenBuffers(1, &buffer);
    if (alGetError() != AL_NO_ERROR)
        return false;
    m_buffers.push_back(buffer);
    return true;
}

void OpenAlDevice::deleteSpare(size_t kept)
{
    const size_t sources = std::min(kept, m_sources.size());
    alDeleteSources(ALsizei(m_sources.size() - sources), m_sources.data() + sources);
    m_sources.resize(sources);
    const size_t buffers = std::min(kept, m_buffers.size());
    alDeleteBuffers(ALsizei(m_buffers.size() - buffers), m_buffers.data() + buffers);
    m_buffers.resize(buffers);
}

} // namespace dravelin::detail
