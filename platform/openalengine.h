// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/openalplay.h"

#include <QtCore/QBasicTimer>
#include <QtCore/QObject>

#include <deque>
#include <memory>
#include <vector>

namespace dravelin::detail {

/// All plays of one output, the device that they are on, and the one timer that follows them. It runs only while
/// something plays, and once more to let the device rest. Times are nanoseconds of the steady clock.
class OpenAlEngine : public QObject, public std::enable_shared_from_this<OpenAlEngine>
{
public:
    using Play = std::shared_ptr<OpenAlPlay>;

    /// Opens the device.
    OpenAlEngine();
    ~OpenAlEngine() override;

    /// \return empty when there are too many
    Play start(std::shared_ptr<const SoundData> data, float volume, SoundOutput::Ended ended);
    void drop(const Play &play);
    void pause(const Play &play);
    void resume(const Play &play);
    void setVolume(const Play &play, float volume);
    [[nodiscard]] double position(const Play &play);

    [[nodiscard]] QString deviceName() const;
    /// Ends everything without a call.
    void close();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    static qint64 readClock();
    void advance();
    bool updatePlays(qint64 now);
    void collectFinished(qint64 now);
    void deliverEnds();
    [[nodiscard]] Play takeFinished();

    void openFirst();
    void followDevice();
    void lookForDevice();
    void moveTo(std::unique_ptr<OpenAlDevice> device);
    void restWhenIdle();

    [[nodiscard]] bool isPlaying() const;
    void prepareToPlay();
    void goOn(qint64 now);
    void schedule();
    [[nodiscard]] qint64 nextDue(qint64 now) const;
    void wakeAt(qint64 due, qint64 now);

    std::unique_ptr<OpenAlDevice> m_device; ///< null while there is none, and once closed
    std::vector<Play> m_plays;
    std::deque<Play> m_finished; ///< their end is still to be reported
    QBasicTimer m_timer;
    qint64 m_process;         ///< that opened the device
    qint64 m_wake;            ///< what the timer is set to
    qint64 m_idleSince;       ///< since when nothing plays
    qint64 m_lastAttempt = 0; ///< to open the device
    bool m_wantsDevice = false;

    static constexpr qint64 restAfter = 1'000'000'000;
};

} // namespace dravelin::detail
