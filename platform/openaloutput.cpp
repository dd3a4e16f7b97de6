// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/soundoutput.h>

#include <dravelin/platform/log.h>

#include "platform/openalengine.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QThread>

#include <utility>

namespace dravelin {

namespace {

using detail::OpenAlEngine;

/// Values outside 0 to 1 count as the nearer bound, what is no number as 0.
float validVolume(float volume) { return volume > 0 ? qMin(volume, 1.0F) : 0; }

/// It may outlive the output; its engine is closed then and does nothing.
class OpenAlVoice : public SoundVoice
{
public:
    OpenAlVoice(std::shared_ptr<OpenAlEngine> engine, OpenAlEngine::Play play)
        : m_engine(std::move(engine)), m_play(std::move(play))
    {}
    ~OpenAlVoice() override { m_engine->drop(m_play); }
    Q_DISABLE_COPY_MOVE(OpenAlVoice)

    void pause() override { m_engine->pause(m_play); }
    void resume() override { m_engine->resume(m_play); }
    void setVolume(float volume) override { m_engine->setVolume(m_play, validVolume(volume)); }
    [[nodiscard]] double position() const override { return m_engine->position(m_play); }

private:
    std::shared_ptr<OpenAlEngine> m_engine;
    OpenAlEngine::Play m_play;
};

class OpenAlOutput : public SoundOutput
{
public:
    OpenAlOutput() = default;
    ~OpenAlOutput() override
    {
        if (m_engine)
            m_engine->close();
    }
    Q_DISABLE_COPY_MOVE(OpenAlOutput)

    [[nodiscard]] std::unique_ptr<SoundVoice> start(std::shared_ptr<const SoundData> data, float volume,
                                                    Ended ended) override
    {
        if (!data || !isReady())
            return nullptr;
        auto play = m_engine->start(std::move(data), validVolume(volume), std::move(ended));
        return play ? std::make_unique<OpenAlVoice>(m_engine, std::move(play)) : nullptr;
    }

    void prepare() override { isReady(); }

    [[nodiscard]] QString deviceName() const override { return m_engine ? m_engine->deviceName() : QString(); }

private:
    bool isReady();

    std::shared_ptr<OpenAlEngine> m_engine; ///< from the first play on
};

/// Opens the device on the first call, for the thread of that call.
bool OpenAlOutput::isReady()
{
    if (!QAbstractEventDispatcher::instance()) {
        logWarning(QStringLiteral("Sound output: nothing is played, since this thread has no event loop"));
        return false;
    }
    if (!m_engine)
        m_engine = std::make_shared<OpenAlEngine>();
    if (m_engine->thread() == QThread::currentThread())
        return true;
    logWarning(QStringLiteral("Sound output: nothing is played from any other thread than that of the first play"));
    return false;
}

} // namespace

std::shared_ptr<SoundOutput> SoundOutput::createSystemOutput() { return std::make_shared<OpenAlOutput>(); }

} // namespace dravelin
