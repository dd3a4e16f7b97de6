// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/soundoutput.h>

#include <QtCore/QList>

#include <utility>

/// A sound output without a device: plays end when the test says so.
class RecordingOutput : public dravelin::SoundOutput, public std::enable_shared_from_this<RecordingOutput>
{
public:
    /// What plays or is paused, the oldest first.
    struct Voice;
    QList<Voice *> plays;
    bool refuses = false;

    std::unique_ptr<dravelin::SoundVoice> start(std::shared_ptr<const dravelin::SoundData>, float volume,
                                                Ended ended) override;
    QString deviceName() const override { return {}; }
    void end(qsizetype index = 0);
};

struct RecordingOutput::Voice : dravelin::SoundVoice
{
    Voice(std::shared_ptr<RecordingOutput> owner, float loudness, Ended end)
        : output(std::move(owner)), level(loudness), ended(std::move(end))
    {}
    ~Voice() override { output->plays.removeOne(this); }
    void pause() override { paused = true; }
    void resume() override { paused = false; }
    void setVolume(float volume) override { level = volume; }
    double position() const override { return 0.5; }

    std::shared_ptr<RecordingOutput> output;
    float level;
    Ended ended;
    bool paused = false;
};

inline std::unique_ptr<dravelin::SoundVoice> RecordingOutput::start(std::shared_ptr<const dravelin::SoundData>,
                                                                    float volume, Ended ended)
{
    if (refuses)
        return nullptr;
    auto voice = std::make_unique<Voice>(shared_from_this(), volume, std::move(ended));
    plays.append(voice.get());
    return voice;
}

inline void RecordingOutput::end(qsizetype index) { std::exchange(plays.at(index)->ended, {})(true); }
