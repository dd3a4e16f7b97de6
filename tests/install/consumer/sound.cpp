// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include "consumer.h"

#include <dravelin/sound.h>

#include <QtCore/QCoreApplication>

using namespace dravelin;

namespace {

std::shared_ptr<const SoundData> silence(int frames)
{
    return SoundData::fromSamples(std::vector<qint16>(std::size_t(frames)), 1, 8000);
}

class LoudSound : public Sound
{
public:
    using Sound::Sound;
    int ends = 0;

    void didFinishPlaying(SoundPlayer *player, bool finished) override
    {
        ++ends;
        Sound::didFinishPlaying(player, finished);
    }
};

void soundsArePlayed()
{
    LoudSound sound(silence(80), 7, 0b01);
    bool ended = false;
    CHECK(!sound.playWithHandler({}, 0b10, 1));
    CHECK(sound.playWithHandler([&] { ended = true; }, 0b01, 1) && sound.isPlaying());
    while (!ended)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    CHECK(sound.ends == 1 && sound.duration() == 0.01 && sound.soundId() == 7 && sound.category() == 1);
    CHECK(sound.fileName().isNull() && Sound("no such sound", 1, 1).duration() == 0);
}

void soundsAreControlled()
{
    Sound sound(silence(80000), 8, 1);
    sound.setMuted(true);
    CHECK(sound.muted() && sound.forcePlayWithHandler({}, 0.5F) && sound.volume() == 0.5F);
    sound.muteSound(false, 9);
    CHECK(!sound.muted() && sound.pause() && sound.resume());
    sound.setVolume(1);
    sound.fadeOutTimerHandler(nullptr);
    CHECK(sound.volume() < 1);
    sound.fadeOut(0);
    CHECK(!sound.isPlaying());
    sound.stop();
}

void depotsHoldSounds()
{
    SoundDepot depot;
    depot.addSound(std::make_shared<Sound>(silence(80000), 7, 0b01));
    CHECK(!depot.playSound(7) && depot.volume() == 0.25F);
    depot.setCurrentCategory(0b11);
    depot.setVolume(0.75F);
    depot.setVolumeForAllSound(0.5F);
    CHECK(depot.currentCategory() == 3 && depot.playSound(7) && depot.getSound(7)->volume() == 0.5F);
    depot.stopAllSounds();
    CHECK(depot.forcePlaySound(7) && depot.getSound(7)->isPlaying());
    depot.fadeOutAllSounds(0);
    CHECK(!depot.getSound(7)->isPlaying());
    depot.muteAllSounds(true, 0);
    CHECK(depot.getSound(7)->muted());
}

struct Listener : SoundPlayerDelegate
{
    bool heard = false;
    void didFinishPlaying(SoundPlayer *, bool) override { heard = true; }
};

void playersPlayOnce()
{
    SoundPlayer player(silence(80));
    Listener listener;
    player.setDelegate(&listener);
    player.setVolume(0.5F);
    CHECK(player.play() && player.isPlaying() && player.pause() && player.resume() && player.volume() == 0.5F);
    while (!listener.heard)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    CHECK(!player.stop() && player.duration() == 0.01);
}

} // namespace

void useSound()
{
    soundsArePlayed();
    soundsAreControlled();
    depotsHoldSounds();
    playersPlayOnce();
}
