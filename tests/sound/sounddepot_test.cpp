// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/sound.h>

#include "recordingoutput.h"

#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gmock/gmock.h>

#include <cmath>

using namespace dravelin;
using testing::ElementsAre;

namespace {

constexpr quint64 effects = 0b0101;
const float notANumber = std::nanf("");

std::shared_ptr<const SoundData> halfSecond()
{
    static const auto data = SoundData::fromSamples(std::vector<qint16>(4000), 1, 8000);
    return data;
}

/// Its steps are called by the event loop, as those of the class above, which the timer finds here by name.
class Cue : public Sound
{
    Q_OBJECT

public:
    explicit Cue(qint64 id = 1, quint64 category = effects) : Sound(halfSecond(), id, category) {}
    std::shared_ptr<std::weak_ptr<Object>> timer = std::make_shared<std::weak_ptr<Object>>();
    int steps = 0;

    Q_INVOKABLE void fadeOutTimerHandler(dravelin::Timer *running)
    {
        *timer = running->weak_from_this();
        ++steps;
        Sound::fadeOutTimerHandler(running);
    }
};

class Window : public Object
{
    Q_OBJECT

public:
    QList<Sound *> heard;
    Q_INVOKABLE void rang() { heard.append(nullptr); }
    Q_INVOKABLE void bellRang(dravelin::Sound *sound) { heard.append(sound); }
};

class SoundTest : public testing::Test
{
protected:
    std::shared_ptr<RecordingOutput> output = std::make_shared<RecordingOutput>();
    std::shared_ptr<SoundOutput> previous = SoundOutput::setCurrent(output);
    std::shared_ptr<Cue> cue = std::make_shared<Cue>();
    int calls = 0;
    SoundHandler count = [this] { ++calls; };

    ~SoundTest() override { SoundOutput::setCurrent(previous); }
    static bool waitFor(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 10'000); }
    static void step(Sound &sound) { sound.fadeOutTimerHandler(nullptr); }
};

} // namespace

TEST_F(SoundTest, PlaysUnlessItIsRefused)
{
    const struct
    {
        const char *name;
        bool muted;
        quint64 category;
        bool started, forced;
    } rows[] = {{"one of its categories", false, 0b0100, true, true},
                {"another category", false, 0b0010, false, true},
                {"no category", false, 0, false, true},
                {"all categories", false, ~0ULL, true, true},
                {"muted", true, effects, false, true}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        Cue sound;
        sound.setMuted(row.muted);
        EXPECT_EQ(sound.playWithHandler({}, row.category, 0.5F), row.started);
        EXPECT_EQ(sound.volume(), row.started ? 0.5F : 1.0F);
        EXPECT_EQ(sound.playVoice({}, row.category, 0.5F) != nullptr, row.started);
        sound.stop();
        EXPECT_EQ(sound.forcePlayWithHandler({}, 7), row.forced);
        EXPECT_EQ(sound.volume(), 1.0F);
        EXPECT_EQ(output->plays.size(), 1);
    }
    EXPECT_TRUE(output->plays.isEmpty()) << "destroyed sounds are silent";

    output->refuses = true;
    EXPECT_FALSE(cue->forcePlayWithHandler({}, 1));
    EXPECT_FALSE(cue->playVoice({}, effects, 1));
    EXPECT_TRUE(cue->voices().isEmpty());
}

TEST_F(SoundTest, WithoutSamplesNothingPlays)
{
    LogRecorder log;
    Sound missing(QStringLiteral("no such bell"), 5, effects);
    EXPECT_THAT(log.take(), ElementsAre(QStringLiteral("Sound: there is no sound resource \"no such bell\"")));
    missing.setVolume(0.5F);
    EXPECT_FALSE(missing.forcePlayWithHandler(count, 1));
    missing.fadeOut(2, count);
    EXPECT_EQ(missing.volume(), 0);
    EXPECT_EQ(missing.duration(), 0);
    EXPECT_EQ(missing.soundId(), 5);
    EXPECT_EQ(cue->duration(), 0.5);
    EXPECT_TRUE(cue->fileName().isNull());
}

TEST_F(SoundTest, CallsTheHandlerOfThePlayThatEnded)
{
    QSignalSpy ended(cue.get(), &Sound::playEnded);
    QSignalSpy playing(cue.get(), &Sound::playingChanged);
    int lost = 0;
    EXPECT_TRUE(cue->playWithHandler([&] { ++lost; }, effects, 1));
    EXPECT_FALSE(cue->playWithHandler(count, effects, 0.5F)) << "plays already, but takes volume and handler";
    EXPECT_FALSE(cue->playWithHandler([&] { ++lost; }, 0, 1)) << "takes nothing";
    EXPECT_EQ(output->plays.at(0)->volume, 0.5F);
    output->end(0, false);
    EXPECT_EQ(calls, 1);
    cue->didFinishPlaying(nullptr, true);
    EXPECT_EQ(calls, 1) << "called once";
    EXPECT_EQ(ended.count(), 2);

    EXPECT_TRUE(cue->playWithHandler([&] { ++lost; }, effects, 1));
    cue->stop();
    cue->stop();
    EXPECT_EQ(playing.count(), 4);
    EXPECT_TRUE(cue->playWithHandler({}, effects, 1));
    output->end();
    EXPECT_EQ(lost, 0);
}

TEST_F(SoundTest, PausesAndResumes)
{
    EXPECT_FALSE(cue->pause());
    EXPECT_FALSE(cue->resume());
    EXPECT_TRUE(cue->forcePlayWithHandler(count, 1));
    EXPECT_TRUE(cue->pause());
    EXPECT_FALSE(cue->pause());
    EXPECT_FALSE(cue->isPlaying());
    EXPECT_EQ(cue->currentTime(), 0.5);
    EXPECT_FALSE(cue->forcePlayWithHandler(count, 1)) << "paused";
    cue->setMuted(true);
    EXPECT_FALSE(cue->resume());
    EXPECT_TRUE(output->plays.at(0)->paused);
    cue->setMuted(false);
    EXPECT_TRUE(cue->resume());
    EXPECT_FALSE(output->plays.at(0)->paused);
    EXPECT_TRUE(cue->isPlaying());
}

TEST_F(SoundTest, HandlersAreCallablesOrTargets)
{
    auto window = std::make_unique<Window>();
    const std::function<void()> none;
    const SoundHandler handlers[] = {{window.get(), "rang"},
                                     {window.get(), "bellRang:"},
                                     {window.get(), &Window::bellRang},
                                     {window.get(), [target = window.get()] { target->rang(); }},
                                     [target = window.get()](Sound *sound) { target->bellRang(sound); },
                                     {},
                                     nullptr,
                                     none};
    for (const SoundHandler &handler : handlers)
        cue->fadeOut(0, handler);
    EXPECT_THAT(window->heard, ElementsAre(nullptr, cue.get(), cue.get(), nullptr, cue.get()));
    EXPECT_FALSE(handlers[7]);
    EXPECT_FALSE(handlers[5]);
    window.reset();
    for (int i = 0; i < 4; ++i)
        cue->fadeOut(0, handlers[i]);
}

TEST_F(SoundTest, FadesInEqualSteps)
{
    const struct
    {
        const char *name;
        float volume, seconds;
        std::vector<float> levels;
    } rows[] = {
        // the tenth step leaves a rest, since 0.8 / 10 is rounded, and an eleventh takes it
        {"0.8 in a second",
         0.8F,
         1,
         {0.720000029F, 0.640000045F, 0.560000062F, 0.480000079F, 0.400000095F, 0.320000112F, 0.240000114F,
          0.160000116F, 0.0800001174F, 1.1920929e-07F}},
        {"0.25 in three steps", 0.25F, 0.3F, {0.166666657F, 0.0833333209F}},
        {"one step", 0.5F, 0.1F, {}},
        {"less than a step", 1, 0.05F, {}},
        {"next to no time", 1, 1e-45F, {}},
        {"beyond all numbers", 1, HUGE_VALF, {1, 1, 1}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        Cue sound;
        sound.forcePlayWithHandler({}, row.volume);
        sound.fadeOut(row.seconds, count);
        calls = 0;
        for (const float level : row.levels) {
            step(sound);
            EXPECT_EQ(output->plays.at(0)->volume, level);
        }
        EXPECT_EQ(calls, 0);
        EXPECT_TRUE(sound.isPlaying());
        if (std::isinf(row.seconds))
            output->end();
        const float last = sound.volume();
        step(sound);
        EXPECT_FALSE(sound.isPlaying());
        EXPECT_EQ(sound.volume(), last);
        EXPECT_EQ(calls, 1);
    }
}

TEST_F(SoundTest, FadesOfNoLengthStopAtOnce)
{
    for (const float seconds : {0.0F, -1.0F, notANumber, -HUGE_VALF}) {
        QSignalSpy ended(cue.get(), &Sound::fadeEnded);
        calls = 0;
        cue->forcePlayWithHandler({}, 0);
        cue->fadeOut(seconds, count);
        EXPECT_FALSE(cue->isPlaying());
        EXPECT_EQ(calls, 1);
        EXPECT_EQ(ended.count(), 1);
    }
}

TEST_F(SoundTest, FadesKeepTheirOddities)
{
    cue->forcePlayWithHandler({}, notANumber);
    cue->fadeOut(2, count);
    step(*cue);
    EXPECT_EQ(calls, 0) << "nothing to fade at volume 0, so the handler was not taken";
    cue->stop();

    QSignalSpy ended(cue.get(), &Sound::fadeEnded);
    int replaced = 0;
    cue->forcePlayWithHandler({}, 1);
    cue->fadeOut(1, [&] { ++replaced; });
    step(*cue);
    cue->fadeOut(1, count);
    cue->stop();
    cue->forcePlayWithHandler({}, 0.5F);
    step(*cue);
    EXPECT_FLOAT_EQ(cue->volume(), 0.41F) << "the fade goes on with the next play, at its old rate";
    cue->pause();
    step(*cue);
    EXPECT_FLOAT_EQ(cue->volume(), 0.41F) << "a paused sound ends the fade";
    EXPECT_TRUE(cue->resume());
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(replaced, 0);
    EXPECT_EQ(ended.count(), 1);

    cue->muteSound(false, 0.1F, count);
    step(*cue);
    EXPECT_FALSE(cue->isPlaying()) << "unmuting fades out";
    cue->muteSound(true, 0, count);
    EXPECT_EQ(calls, 2) << "no call when it does not play";
    EXPECT_TRUE(cue->muted());
}

TEST_F(SoundTest, TheEventLoopMakesTheSteps)
{
    cue->forcePlayWithHandler({}, 1);
    cue->fadeOut(0.3F, count);
    const std::weak_ptr<Cue> watch = cue;
    const auto timer = cue->timer;
    cue.reset();
    EXPECT_FALSE(watch.expired()) << "it lives while it fades";
    EXPECT_TRUE(waitFor([&] { return !output->plays.isEmpty() && output->plays.at(0)->volume < 0.7F; }));
    EXPECT_FALSE(timer->expired());
    EXPECT_TRUE(waitFor([&] { return watch.expired(); }));
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(timer->expired()) << "no timer runs on";

    auto mortal = std::make_unique<Cue>();
    const auto mortalTimer = mortal->timer;
    mortal->forcePlayWithHandler(count, 1);
    mortal->fadeOut(2, count);
    EXPECT_TRUE(waitFor([&] { return mortal->steps == 1; }));
    EXPECT_FALSE(mortalTimer->expired());
    mortal.reset();
    EXPECT_TRUE(mortalTimer->expired());
    EXPECT_TRUE(output->plays.isEmpty());
    EXPECT_EQ(calls, 1);
}

TEST_F(SoundTest, VoicesOverlapAndFollowTheirSound)
{
    SoundDepot depot;
    depot.addSound(cue);
    QSignalSpy ended(&depot, &SoundDepot::playEnded);
    cue->forcePlayWithHandler({}, 0.2F);
    const auto kept = cue->playVoice([&](Sound *voice) { calls += voice != cue.get(); }, effects, 0.8F);
    std::weak_ptr<Sound> dropped = cue->playVoice(count, effects, 0.4F);
    ASSERT_EQ(output->plays.size(), 3);
    EXPECT_EQ(kept->data(), cue->data());
    output->end(2);
    EXPECT_TRUE(dropped.expired());
    EXPECT_THAT(cue->voices(), ElementsAre(kept));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(ended.takeFirst().at(0).toLongLong(), 1);

    EXPECT_TRUE(cue->pause());
    EXPECT_TRUE(output->plays.at(1)->paused);
    cue->setMuted(true);
    EXPECT_FALSE(kept->resume());
    cue->setMuted(false);
    EXPECT_TRUE(cue->resume());
    depot.setVolumeForAllSound(0.6F);
    EXPECT_EQ(output->plays.at(1)->volume, 0.6F);
    kept->setVolume(0.9F);
    cue->fadeOut(0.3F);
    step(*kept);
    EXPECT_FLOAT_EQ(kept->volume(), 0.6F);
    EXPECT_FLOAT_EQ(cue->volume(), 0.6F);
    cue->stop();
    EXPECT_TRUE(output->plays.isEmpty());
    EXPECT_TRUE(cue->voices().isEmpty());

    const auto alone = depot.playVoice(1, count);
    EXPECT_FALSE(alone) << "no category is on";
    depot.setCurrentCategory(effects);
    const auto faded = depot.playVoice(1);
    cue->muteSound(false, 0, count);
    EXPECT_FALSE(faded->isPlaying()) << "also when the sound itself does not play";
    EXPECT_TRUE(ended.isEmpty());
}

TEST_F(SoundTest, HandlersMayDoAnything)
{
    std::unique_ptr<SoundDepot> depot;
    std::unique_ptr<Cue> alone;
    const struct
    {
        const char *name;
        std::function<void(Sound *)> action;
        int callsAfterwards;
    } actions[] = {
        {"plays again", [&](Sound *sound) { sound->forcePlayWithHandler(count, 1); }, 1},
        {"stops", [](Sound *sound) { sound->stop(); }, 0},
        {"fades", [&](Sound *sound) { sound->fadeOut(0, count); }, 1},
        {"starts a fade", [&](Sound *sound) { sound->setVolume(1), sound->fadeOut(1, count), step(*sound); }, 1},
        {"replaces the sound",
         [&](Sound *) {
             if (depot)
                 depot->addSound(std::make_shared<Cue>());
         },
         0},
        {"destroys everything", [&](Sound *) { depot.reset(), cue.reset(), alone.reset(); }, 0},
        {"starts a voice", [&](Sound *sound) { sound->playVoice(count, effects, 1), output->end(); }, 1},
    };
    const struct
    {
        const char *name;
        std::function<void(Sound &, const SoundHandler &)> run;
    } ends[] = {
        {"end of play", [&](Sound &sound, auto &handler) { sound.forcePlayWithHandler(handler, 1), output->end(); }},
        {"end of fade", [&](Sound &sound, auto &handler) { sound.fadeOut(1, handler), step(sound); }},
        {"fade at once", [&](Sound &sound, auto &handler) { sound.fadeOut(0, handler); }},
        {"all faded",
         [&](Sound &, auto &handler) {
             if (depot)
                 depot->fadeOutAllSounds(0, handler);
             else
                 handler(alone.get());
         }},
        {"end of a voice", [&](Sound &sound, auto &handler) { sound.playVoice(handler, effects, 1), output->end(); }},
    };
    for (const auto &end : ends) {
        for (const auto &action : actions) {
            for (const bool owned : {false, true}) {
                SCOPED_TRACE(std::string(end.name) + ", " + action.name + (owned ? ", owned" : ", shared"));
                alone = owned ? std::make_unique<Cue>() : nullptr;
                depot = owned ? nullptr : std::make_unique<SoundDepot>();
                cue = owned ? nullptr : std::make_shared<Cue>();
                if (depot)
                    depot->addSound(cue);
                Sound &sound = owned ? *alone : *cue;
                int acted = 0;
                calls = 0;
                const auto act = action.action;
                end.run(sound, [act, &acted](Sound *ended) { ++acted, act(ended); });
                while (!output->plays.isEmpty())
                    output->end();
                EXPECT_EQ(acted, 1);
                EXPECT_EQ(calls, action.callsAfterwards);
            }
        }
    }
}

TEST(SoundDepotTest, PassesVolumeMuteAndCategoriesOn)
{
    const auto output = std::make_shared<RecordingOutput>();
    const auto previous = SoundOutput::setCurrent(output);
    SoundDepot depot;
    QSignalSpy volumes(&depot, &SoundDepot::volumeChanged), categories(&depot, &SoundDepot::currentCategoryChanged);
    for (qint64 id = 0; id < 1000; ++id)
        depot.addSound(std::make_shared<Cue>(id, id % 2 ? 1 : 2));
    int calls = 0;
    const SoundHandler count = [&] { ++calls; };

    EXPECT_EQ(depot.volume(), 0.25F);
    EXPECT_FALSE(depot.playSound(7)) << "no category is on";
    EXPECT_FALSE(depot.forcePlaySound(1000));
    depot.setVolume(1.7F);
    EXPECT_EQ(depot.volume(), 1.7F);
    EXPECT_EQ(depot.getSound(7)->volume(), 1);
    depot.setCurrentCategory(1);
    depot.setCurrentCategory(1);
    for (qint64 id = 0; id < 1000; ++id)
        EXPECT_EQ(depot.playSound(id, count), id % 2 == 1);
    EXPECT_EQ(output->plays.size(), 500);
    for (const auto &[given, volume] : {std::pair(1.7F, 1.0F), {-1.0F, 0.0F}, {notANumber, 0.0F}, {0.5F, 0.5F}}) {
        depot.setVolumeForAllSound(given);
        EXPECT_EQ(depot.volume(), volume);
        EXPECT_EQ(depot.getSound(8)->volume(), volume);
    }
    EXPECT_EQ(volumes.count(), 4);
    EXPECT_EQ(categories.count(), 1);

    depot.muteAllSounds(false, 0, count);
    EXPECT_EQ(calls, 500) << "once for each that played, although it is unmuted";
    depot.muteAllSounds(true, 1, count);
    depot.addSound(std::make_shared<Cue>(2000));
    EXPECT_TRUE(depot.getSound(2000)->muted());
    EXPECT_TRUE(depot.forcePlaySound(2000));
    depot.stopAllSounds();
    depot.fadeOutAllSounds(0, {});
    EXPECT_EQ(calls, 500);
    EXPECT_TRUE(output->plays.isEmpty());
    SoundOutput::setCurrent(previous);
}

TEST(SoundDepotTest, TellsSoundsApartByTheLowHalf)
{
    LogRecorder log;
    const auto output = std::make_shared<RecordingOutput>();
    const auto previous = SoundOutput::setCurrent(output);
    SoundDepot depot;
    QSignalSpy plays(&depot, &SoundDepot::playEnded), fades(&depot, &SoundDepot::fadeEnded);
    const auto replaced = std::make_shared<Cue>(-1);
    const qint64 equal = 0xFFFFFFFFLL;
    depot.addSound(replaced);
    depot.addSound(std::make_shared<Cue>(equal));
    depot.addSound(depot.getSound(equal));
    EXPECT_EQ(depot.getSound(-1)->soundId(), equal);
    EXPECT_EQ(depot.getSound(equal + (1LL << 40)), depot.getSound(equal));
    EXPECT_EQ(depot.allSounds().size(), 1);
    EXPECT_TRUE(depot.forcePlaySound(-1));
    replaced->forcePlayWithHandler({}, 1);
    output->end(1);
    output->end(0);
    EXPECT_EQ(plays.count(), 1);
    EXPECT_EQ(plays.at(0).at(0).toLongLong(), equal);
    depot.fadeOutAllSounds(0);
    EXPECT_EQ(fades.count(), 1);

    depot.addSound(nullptr);
    EXPECT_EQ(log.take().size(), 1);
    EXPECT_EQ(depot.allSounds().size(), 1);
    SoundOutput::setCurrent(previous);
}

#include "sounddepot_test.moc"
