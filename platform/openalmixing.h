// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <AL/alc.h>

#include <QtCore/QThread>

#include <atomic>
#include <memory>

namespace dravelin::detail {

/// Starts and stops the mixing of a device on a thread of its own: the one creates a thread in the library, the other
/// waits for up to a period of the device for it to end. That thread waits otherwise.
class OpenAlMixing
{
public:
    /// \param device one that is mixing; has to live as long
    explicit OpenAlMixing(ALCdevice *device);
    ~OpenAlMixing();
    Q_DISABLE_COPY_MOVE(OpenAlMixing)

    /// What was asked for last.
    [[nodiscard]] bool isOn() const noexcept { return m_wanted.load(std::memory_order_relaxed) == On; }
    /// Does not wait for it.
    void set(bool on) noexcept;

private:
    enum State : int { Off, On, Gone };

    void change(State state) noexcept;
    void follow() noexcept;

    ALCdevice *m_device;
    std::atomic<State> m_wanted = On;
    std::unique_ptr<QThread> m_thread;
};

} // namespace dravelin::detail
