// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/sound.h>

#include "recordingoutput.h"

#include <support/logrecorder.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>

#include <gmock/gmock.h>

#include <cmath>

using namespace dravelin;
using testing::ElementsAre;

namespace {

constexpr quint64 effects = 0b0101;
const float notANumber = std::nanf("");

class Cue : public Sound
{
    Q_OBJECT

public:
    explicit Cue(qint64 id = 1, quint64 category = effects)
        : Sound(SoundData::fromSamples(std::vector<qint16>(4000), 1, 8000), id, category)
    {}
    std::shared_ptr<std::weak_ptr<Object>> timer = std::make_shared<std::weak_ptr<Object>>();
    QList<Sound *> heard;

    Q_INVOKABLE void rang() { heard.append(nullptr); }
    Q_INVOKABLE void bellRang(dravelin::Sound *sound) { heard.append(sound); }
    /// Found by name before that of the class above.
    Q_INVOKABLE void fadeOutTimerHandler(dravelin::Timer *running)
    {
        *timer = running->weak_from_this();
        Sound::fadeOutTimerHandler(running);
    }
};

class SoundTest : public testing::Test
{
protected:
    std::shared_ptr<RecordingOutput> output = std::make_shared<RecordingOutput>();
    std::shared_ptr<SoundOutput> previous = SoundOutput::setCurrent(output);
    std::shared_ptr<Cue> cue = std::make_shared<Cue>();
    std::unique_ptr<SoundDepot> depot = std::make_unique<SoundDepot>();
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
        bool started;
    } rows[] = {{"one of its categories", false, 0b0100, true},
                {"another category", false, 0b0010, false},
                {"no category", false, 0, false},
                {"muted", true, effects, false}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        Cue sound;
        sound.setMuted(row.muted);
        EXPECT_EQ(sound.playWithHandler({}, row.category, 0.5F), row.started);
        EXPECT_EQ(sound.volume(), row.started ? 0.5F : 1.0F);
        EXPECT_EQ(sound.playVoice({}, row.category, 0.5F) != nullptr, row.started);
        sound.stop();
        EXPECT_TRUE(sound.forcePlayWithHandler({}, 7));
        EXPECT_EQ(output->plays.at(0)->level, 1.0F);
    }
    EXPECT_TRUE(output->plays.isEmpty()) << "destroyed sounds are silent";

    output->refuses = true;
    EXPECT_FALSE(cue->forcePlayWithHandler({}, 1));
    EXPECT_FALSE(cue->playVoice({}, effects, 1));

    LogRecorder log;
    Sound missing(QStringLiteral("no such bell"), 5, effects);
    EXPECT_THAT(log.take(), ElementsAre(QStringLiteral("Sound: there is no sound resource \"no such bell\"")));
    EXPECT_FALSE(missing.forcePlayWithHandler(count, 1));
    missing.fadeOut(2, count);
    step(missing);
    EXPECT_EQ(calls, 0) << "there is nothing to fade at volume 0";
    EXPECT_EQ(missing.duration(), 0);
    EXPECT_EQ(cue->duration(), 0.5);
}

TEST_F(SoundTest, CallsTheHandlerOfThePlayThatEnded)
{
    QSignalSpy ended(cue.get(), &Sound::playEnded), playing(cue.get(), &Sound::playingChanged);
    int lost = 0;
    const SoundHandler lose = [&] { ++lost; };
    EXPECT_TRUE(cue->playWithHandler(lose, effects, 1));
    EXPECT_FALSE(cue->playWithHandler(count, effects, 0.5F)) << "plays already, but takes volume and handler";
    EXPECT_FALSE(cue->playWithHandler(lose, 0, 1)) << "takes nothing";
    EXPECT_EQ(output->plays.at(0)->level, 0.5F);
    EXPECT_TRUE(cue->pause());
    EXPECT_FALSE(cue->pause());
    EXPECT_FALSE(cue->isPlaying());
    EXPECT_FALSE(cue->forcePlayWithHandler(count, 1)) << "paused";
    cue->setMuted(true);
    EXPECT_FALSE(cue->resume());
    EXPECT_TRUE(output->plays.at(0)->paused);
    cue->setMuted(false);
    EXPECT_TRUE(cue->resume());
    EXPECT_FALSE(output->plays.at(0)->paused);
    output->end();
    EXPECT_EQ(calls, 1);
    cue->didFinishPlaying(nullptr, true);
    EXPECT_EQ(calls, 1) << "called once";
    EXPECT_EQ(ended.count(), 2);

    EXPECT_TRUE(cue->playWithHandler(lose, effects, 1));
    cue->stop();
    cue->stop();
    EXPECT_EQ(playing.count(), 6);
    EXPECT_TRUE(cue->playWithHandler({}, effects, 1));
    output->end();
    EXPECT_EQ(lost, 0);
}

TEST_F(SoundTest, HandlersAreCallablesOrTargets)
{
    auto target = std::make_unique<Cue>();
    const std::function<void()> none;
    const SoundHandler handlers[] = {{target.get(), "rang"},
                                     {target.get(), "bellRang:"},
                                     {target.get(), &Cue::bellRang},
                                     {target.get(), [heard = &target->heard] { heard->append(nullptr); }},
                                     [heard = &target->heard](Sound *sound) { heard->append(sound); },
                                     {},
                                     nullptr,
                                     none};
    for (const SoundHandler &handler : handlers)
        cue->fadeOut(0, handler);
    EXPECT_THAT(target->heard, ElementsAre(nullptr, cue.get(), cue.get(), nullptr, cue.get()));
    EXPECT_FALSE(handlers[7]);
    target.reset();
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
        {"less than a step", 1, 0.05F, {}},
        {"next to no time", 1, 1e-45F, {}},
        {"for ever", 1, HUGE_VALF, {1, 1, 1}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        Cue sound;
        sound.forcePlayWithHandler({}, row.volume);
        sound.fadeOut(row.seconds, count);
        calls = 0;
        for (const float level : row.levels) {
            step(sound);
            EXPECT_EQ(output->plays.at(0)->level, level);
        }
        EXPECT_EQ(calls, 0);
        if (std::isinf(row.seconds))
            output->end();
        const float last = sound.volume();
        step(sound);
        EXPECT_FALSE(sound.isPlaying());
        EXPECT_EQ(sound.volume(), last);
        EXPECT_EQ(calls, 1);
    }
    for (const float seconds : {0.0F, -1.0F, notANumber}) {
        QSignalSpy ended(cue.get(), &Sound::fadeEnded);
        cue->forcePlayWithHandler({}, 0);
        cue->fadeOut(seconds, count);
        EXPECT_FALSE(cue->isPlaying()) << "at once";
        EXPECT_EQ(ended.count(), 1);
    }
    EXPECT_EQ(calls, 4);
}

TEST_F(SoundTest, FadesKeepTheirOddities)
{
    QSignalSpy ended(cue.get(), &Sound::fadeEnded);
    int lost = 0;
    cue->forcePlayWithHandler({}, notANumber);
    cue->fadeOut(2, [&] { ++lost; });
    step(*cue);
    cue->forcePlayWithHandler({}, 1);
    cue->fadeOut(1, [&] { ++lost; });
    step(*cue);
    cue->fadeOut(1, count);
    EXPECT_EQ(lost, 0) << "neither at volume 0 nor when replaced";
    cue->stop();
    cue->forcePlayWithHandler({}, 0.5F);
    step(*cue);
    EXPECT_EQ(calls, 0) << "the fade goes on with the next play, at its old rate";
    EXPECT_FLOAT_EQ(cue->volume(), 0.5F - 0.09F);
}

TEST_F(SoundTest, MutingFadesOut)
{
    cue->muteSound(false, 0, count);
    EXPECT_EQ(calls, 0) << "no call when it does not play";
    cue->forcePlayWithHandler({}, 1);
    cue->muteSound(false, 0.2F, count);
    cue->pause();
    step(*cue);
    EXPECT_EQ(calls, 1) << "a paused sound ends the fade";
    EXPECT_TRUE(cue->resume());
    cue->muteSound(true, 0.1F, count);
    step(*cue);
    EXPECT_FALSE(cue->isPlaying());
    EXPECT_TRUE(cue->muted());
}

TEST_F(SoundTest, TheEventLoopMakesTheSteps)
{
    const auto timer = cue->timer;
    const std::weak_ptr<Cue> watch = cue;
    cue->forcePlayWithHandler({}, 1);
    cue->fadeOut(0.3F, count);
    cue.reset();
    EXPECT_TRUE(waitFor([&] { return !output->plays.isEmpty() && output->plays.at(0)->level < 0.7F; }));
    EXPECT_FALSE(timer->expired());
    EXPECT_TRUE(waitFor([&] { return watch.expired(); })) << "it lives while it fades";
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(timer->expired()) << "no timer runs on";

    auto mortal = std::make_unique<Cue>();
    const auto mortalTimer = mortal->timer;
    mortal->forcePlayWithHandler(count, 1);
    mortal->fadeOut(2, count);
    EXPECT_TRUE(waitFor([&] { return !mortalTimer->expired(); }));
    mortal.reset();
    EXPECT_TRUE(mortalTimer->expired());
    EXPECT_TRUE(output->plays.isEmpty());
    EXPECT_EQ(calls, 1);
}

TEST_F(SoundTest, VoicesOverlapAndFollowTheirSound)
{
    depot->addSound(cue);
    depot->setCurrentCategory(effects);
    QSignalSpy ended(depot.get(), &SoundDepot::playEnded);
    cue->forcePlayWithHandler({}, 0.2F);
    const auto kept = cue->playVoice({}, effects, 0.8F);
    const std::weak_ptr<Sound> dropped = depot->playVoice(1, [&](Sound *voice) { calls += voice != cue.get(); });
    ASSERT_EQ(output->plays.size(), 3);
    output->end(2);
    EXPECT_TRUE(dropped.expired());
    EXPECT_THAT(cue->voices(), ElementsAre(kept));
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(ended.count(), 1);

    EXPECT_TRUE(cue->pause());
    EXPECT_TRUE(output->plays.at(1)->paused);
    cue->setMuted(true);
    EXPECT_FALSE(kept->resume());
    cue->setMuted(false);
    EXPECT_TRUE(cue->resume());
    EXPECT_FALSE(output->plays.at(1)->paused);
    depot->setVolumeForAllSound(0.6F);
    EXPECT_EQ(output->plays.at(1)->level, 0.6F);
    kept->setVolume(0.9F);
    cue->fadeOut(0.3F);
    step(*kept);
    EXPECT_FLOAT_EQ(kept->volume(), 0.6F) << "at a rate of its own";
    cue->stop();
    EXPECT_TRUE(output->plays.isEmpty());
    EXPECT_TRUE(cue->voices().isEmpty());

    const auto faded = depot->playVoice(1);
    cue->muteSound(false, 0, {});
    EXPECT_FALSE(faded->isPlaying()) << "also when the sound itself does not play";
    EXPECT_EQ(ended.count(), 1);
}

TEST_F(SoundTest, HandlersMayDoAnything)
{
    std::unique_ptr<Cue> alone;
    const struct
    {
        const char *name;
        std::function<void(Sound *)> action;
        int callsAfterwards;
    } actions[] = {
        {"plays again", [&](Sound *sound) { sound->forcePlayWithHandler(count, 1); }, 1},
        {"stops", [](Sound *sound) { sound->stop(); }, 0},
        {"fades", [&](Sound *sound) { sound->setVolume(1), sound->fadeOut(1, count), step(*sound); }, 1},
        {"adds a sound", [&](Sound *) { depot->addSound(std::make_shared<Cue>(calls)); }, 0},
        {"destroys everything", [&](Sound *) { depot.reset(), cue.reset(), alone.reset(); }, 0},
        {"starts a voice", [&](Sound *sound) { sound->playVoice(count, effects, 1), output->end(); }, 1},
    };
    const struct
    {
        const char *name;
        std::function<void(Sound &, const SoundHandler &)> run;
    } ends[] = {
        {"play", [&](Sound &sound, auto &handler) { sound.forcePlayWithHandler(handler, 1), output->end(); }},
        {"fade", [&](Sound &sound, auto &handler) { sound.fadeOut(1, handler), step(sound); }},
        {"fade at once", [&](Sound &sound, auto &handler) { sound.fadeOut(0, handler); }},
        {"voice", [&](Sound &sound, auto &handler) { sound.playVoice(handler, effects, 1), output->end(); }},
        {"all", [&](Sound &, auto &handler) { depot->addSound(cue), depot->fadeOutAllSounds(0, handler); }},
    };
    for (int i = 0; i < 60; ++i) {
        const auto &end = ends[i / 12];
        const auto &action = actions[i % 12 / 2];
        SCOPED_TRACE(std::string("end of ") + end.name + ", handler " + action.name + (i % 2 ? ", shared" : ", owned"));
        depot = std::make_unique<SoundDepot>();
        cue = std::make_shared<Cue>();
        alone = std::make_unique<Cue>();
        depot->addSound(cue);
        int acted = 0;
        calls = 0;
        end.run(i % 2 ? *cue : *alone, [act = action.action, &acted](Sound *ended) { ++acted, act(ended); });
        while (!output->plays.isEmpty())
            output->end();
        EXPECT_EQ(acted, 1);
        EXPECT_EQ(calls, action.callsAfterwards);
    }
}

TEST_F(SoundTest, DepotsPassVolumeMuteAndCategoriesOn)
{
    for (qint64 id = 0; id < 1000; ++id)
        depot->addSound(std::make_shared<Cue>(id, id % 2 ? 1 : 2));
    EXPECT_FALSE(depot->playSound(7)) << "no category is on";
    EXPECT_FALSE(depot->forcePlaySound(1000));
    depot->setVolume(1.7F);
    EXPECT_EQ(depot->volume(), 1.7F);
    depot->setCurrentCategory(1);
    for (qint64 id = 0; id < 1000; ++id)
        EXPECT_EQ(depot->playSound(id, count), id % 2 == 1);
    EXPECT_EQ(output->plays.size(), 500);
    for (const auto &[given, volume] : {std::pair(1.7F, 1.0F), {-1.0F, 0.0F}, {notANumber, 0.0F}, {0.5F, 0.5F}}) {
        depot->setVolumeForAllSound(given);
        EXPECT_EQ(depot->volume(), volume);
        EXPECT_EQ(depot->getSound(8)->volume(), volume);
    }
    depot->muteAllSounds(false, 0, count);
    EXPECT_EQ(calls, 500) << "once for each that played, although it is unmuted";
    depot->muteAllSounds(true, 1, count);
    depot->addSound(cue);
    EXPECT_TRUE(cue->muted());
    EXPECT_TRUE(depot->forcePlaySound(1));
    depot->stopAllSounds();
    EXPECT_TRUE(output->plays.isEmpty());
}

TEST_F(SoundTest, DepotsTellSoundsApartByTheLowHalf)
{
    LogRecorder log;
    QSignalSpy plays(depot.get(), &SoundDepot::playEnded), fades(depot.get(), &SoundDepot::fadeEnded);
    const auto replaced = std::make_shared<Cue>(-1);
    const qint64 equal = 0xFFFFFFFFLL;
    depot->addSound(replaced);
    depot->addSound(std::make_shared<Cue>(equal));
    depot->addSound(depot->getSound(equal));
    EXPECT_EQ(depot->getSound(-1)->soundId(), equal);
    EXPECT_EQ(depot->getSound(equal + (1LL << 40)), depot->getSound(equal));
    replaced->forcePlayWithHandler({}, 1);
    EXPECT_TRUE(depot->forcePlaySound(-1));
    output->end();
    EXPECT_TRUE(plays.isEmpty()) << "it is in the depot no more";
    output->end();
    EXPECT_EQ(plays.count(), 1);
    EXPECT_EQ(plays.at(0).at(0).toLongLong(), equal);
    depot->fadeOutAllSounds(0);
    EXPECT_EQ(fades.count(), 1);
    depot->addSound(nullptr);
    EXPECT_EQ(log.take().size(), 1);
    EXPECT_EQ(depot->allSounds().size(), 1);
}

#include "sounddepot_test.moc"
