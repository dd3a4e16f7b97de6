// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#pragma once

#include <dravelin/platform/soundoutput.h>

#include <QtCore/QList>

#include <utility>

/// A sound output without a device: plays end when the test says so.
struct RecordingOutput : dravelin::SoundOutput
{
    struct Voice : dravelin::SoundVoice
    {
        Voice(QList<Voice *> &among, float volume, Ended end) : all(among), level(volume), ended(std::move(end))
        {
            all.append(this);
        }
        ~Voice() override { all.removeOne(this); }
        void pause() override { paused = true; }
        void resume() override { paused = false; }
        void setVolume(float volume) override { level = volume; }
        double position() const override { return 0.5; }

        QList<Voice *> &all;
        float level;
        Ended ended;
        bool paused = false;
    };

    std::unique_ptr<dravelin::SoundVoice> start(std::shared_ptr<const dravelin::SoundData>, float volume,
                                                Ended ended) override
    {
        return refuses ? nullptr : std::make_unique<Voice>(plays, volume, std::move(ended));
    }
    QString deviceName() const override { return {}; }
    void end(qsizetype index = 0) { std::exchange(plays.at(index)->ended, {})(true); }

    QList<Voice *> plays; ///< what plays or is paused, the oldest first
    bool refuses = false;
};
