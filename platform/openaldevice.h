// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#define AL_ALEXT_PROTOTYPES
#include <AL/al.h>
#include <AL/alc.h>
#include <AL/alext.h>

#include "platform/openalmixing.h"

#include <QtCore/QString>

#include <memory>
#include <optional>
#include <vector>

namespace dravelin::detail {

/// A connection to a sound device with a context, and the sources and buffers that were made in it, for use again and
/// again: making them takes longer than starting a sound.
class OpenAlDevice
{
public:
    /// Makes a device's context the one of this thread while it lives, without disturbing what the application has set.
    class Scope
    {
    public:
        /// \param device may be null
        explicit Scope(const OpenAlDevice *device) : m_previous(alcGetThreadContext())
        {
            if (device)
                alcSetThreadContext(device->m_context);
        }
        ~Scope() { alcSetThreadContext(m_previous); }
        Q_DISABLE_COPY_MOVE(Scope)

    private:
        ALCcontext *m_previous;
    };

    static constexpr int maxSources = 1024;

    /// \return null when there is none
    static std::unique_ptr<OpenAlDevice> openSystem();

    /// Whatever plays has to be detached before.
    ~OpenAlDevice();

    [[nodiscard]] QString name() const;
    /// False once the device went away. Its sources have stopped then.
    [[nodiscard]] bool isConnected() const;

    [[nodiscard]] bool isRunning() const noexcept { return !m_mixing || m_mixing->isOn(); }
    /// Goes on mixing, soon after. What is set to play before is heard from its beginning.
    void run();
    /// Stops the mixing, soon after, so that no processor time is used, and gives memory back.
    void rest();

    // The following within a Scope.

    /// Makes what the next plays will take.
    void stockUp();
    /// \return 0 when the device has no more
    [[nodiscard]] ALuint takeSource();
    /// Stops it and takes its buffers out of its queue.
    void giveSource(ALuint source);
    /// \return 0 when there is no memory
    [[nodiscard]] ALuint takeBuffer();
    void giveBuffer(ALuint buffer) { m_buffers.push_back(buffer); }

    /// For samples on their way into a buffer.
    [[nodiscard]] std::vector<qint16> &scratch() noexcept { return m_scratch; }

private:
    explicit OpenAlDevice(ALCdevice *device);
    bool addSource();
    bool addBuffer();
    void deleteSpare(size_t kept);

    ALCdevice *m_device;
    ALCcontext *m_context;
    std::optional<OpenAlMixing> m_mixing; ///< from the first rest on
    std::vector<ALuint> m_sources;        ///< not in use
    std::vector<ALuint> m_buffers;        ///< not in use
    std::vector<qint16> m_scratch;
};

} // namespace dravelin::detail
