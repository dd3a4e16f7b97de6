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
    struct Play
    {
        Ended ended;
        float volume;
        bool paused = false;
    };

    /// What plays or is paused, the oldest first.
    QList<std::shared_ptr<Play>> plays;
    int starts = 0;
    bool refuses = false;

    std::unique_ptr<dravelin::SoundVoice> start(std::shared_ptr<const dravelin::SoundData>, float volume,
                                                Ended ended) override
    {
        if (refuses)
            return nullptr;
        ++starts;
        plays.append(std::make_shared<Play>(Play{std::move(ended), volume}));
        return std::make_unique<Voice>(shared_from_this(), plays.constLast());
    }
    QString deviceName() const override { return {}; }

    void end(qsizetype index = 0, bool finished = true) { std::exchange(plays.at(index)->ended, {})(finished); }

private:
    struct Voice : dravelin::SoundVoice
    {
        Voice(std::shared_ptr<RecordingOutput> owner, std::shared_ptr<Play> own)
            : output(std::move(owner)), play(std::move(own))
        {}
        ~Voice() override { output->plays.removeOne(play); }
        void pause() override { play->paused = true; }
        void resume() override { play->paused = false; }
        void setVolume(float volume) override { play->volume = volume; }
        double position() const override { return 0.5; }

        std::shared_ptr<RecordingOutput> output;
        std::shared_ptr<Play> play;
    };
};
