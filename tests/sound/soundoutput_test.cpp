// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <sound/recording.h>
#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtTest/QTest>

#define AL_ALEXT_PROTOTYPES
#include <AL/alc.h>
#include <AL/alext.h>
#include <gtest/gtest.h>

#include <ctime>
#include <limits>
#include <thread>

using namespace dravelin;

namespace {

bool waitFor(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 20'000); }

/// Plays are recorded and then looked at.
class SoundOutputTest : public testing::Test
{
protected:
    Recorder recorder;
    std::shared_ptr<SoundOutput> output = SoundOutput::current();
    int ends = 0;

    std::unique_ptr<SoundVoice> play(std::shared_ptr<const SoundData> data, float volume = 1)
    {
        return output->start(std::move(data), volume, [this](bool finished) { ends += finished ? 1 : 100; });
    }
    bool waitForEnds(int count)
    {
        return waitFor([&] { return ends >= count; });
    }
    Recording finish()
    {
        output = nullptr;
        return Recorder::finish();
    }
};

struct Level
{
    const char *name;
    float volume;
    int channels;
    int rate;
    double heard;
};

class LevelTest : public SoundOutputTest, public testing::WithParamInterface<Level>
{};

} // namespace

TEST_P(LevelTest, IsHeardAtItsVolumeForItsTime)
{
    const Level &row = GetParam();
    const auto voice = play(sine(500, 0.3, row.channels, row.rate), row.volume);
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_NEAR(voice->position(), 0.3, 1e-9);
    const Recording heard = finish();
    const auto stretches = heard.stretches();
    ASSERT_EQ(stretches.size(), row.heard > 0 ? 1U : 0U);
    if (stretches.empty())
        return;
    const auto [start, end] = stretches[0];
    EXPECT_NEAR(end - start, 0.3, Recording::period);
    for (const int channel : {0, 1})
        EXPECT_NEAR(heard.amplitude(500, start + 0.02, start + 0.28, channel), row.heard, 0.01 * row.heard);
}

INSTANTIATE_TEST_SUITE_P(Sounds, LevelTest,
                         testing::Values(Level{"Full", 1, 2, 44100, 0.998}, Level{"HalfMono", 0.5, 1, 44100, 0.499},
                                         Level{"QuarterLowRate", 0.25, 2, 22050, 0.2495},
                                         Level{"HighRate", 0.9F, 2, 48000, 0.898},
                                         Level{"TooLoud", 1.7F, 1, 44100, 0.998}, Level{"Negative", -1, 2, 44100, 0},
                                         Level{"NoNumber", std::numeric_limits<float>::quiet_NaN(), 2, 44100, 0}),
                         [](const auto &row) { return row.param.name; });

TEST_F(SoundOutputTest, MixesAndStops)
{
    const auto lowSound = sine(500, 0.8), highSound = sine(1200, 2, 1);
    const auto low = play(lowSound, 0.3F);
    auto high = play(highSound, 0.6F);
    ASSERT_TRUE(waitFor([&] { return high->position() > 0.2; }));
    high = nullptr;
    ASSERT_TRUE(waitForEnds(1));
    const Recording heard = finish();
    const auto [start, end] = heard.stretches().at(0);
    double loudest = 0;
    for (double time = start; time + 0.05 < end; time += 0.05) {
        EXPECT_NEAR(heard.amplitude(500, time, time + 0.05), 0.3, 0.01);
        loudest = std::max(loudest, heard.amplitude(1200, time, time + 0.05));
    }
    EXPECT_NEAR(loudest, 0.6, 0.01);
    EXPECT_NEAR(heard.amplitude(1200, end - 0.05, end), 0, 0.01);
    EXPECT_EQ(ends, 1);
}

TEST_F(SoundOutputTest, GoesOnWhereItWasPausedAndFollowsItsVolume)
{
    const auto voice = play(sine(500, 0.8, 2, 44100, 0.1));
    ASSERT_TRUE(waitFor([&] { return voice->position() > 0.3; }));
    voice->pause();
    const double position = voice->position();
    const auto other = play(sine(500, 0.3), 0); // time passes
    ASSERT_TRUE(waitForEnds(1));
    EXPECT_EQ(voice->position(), position);
    voice->resume();
    ASSERT_TRUE(waitFor([&] { return voice->position() > 0.6; }));
    voice->setVolume(0.25F);
    ASSERT_TRUE(waitForEnds(2));
    const Recording heard = finish();
    const auto parts = heard.stretches();
    ASSERT_EQ(parts.size(), 2U);
    const auto level = [](double time) { return 0.1 + 0.9 * time / 0.8; };
    const double gap = parts[1].first - parts[0].second;
    EXPECT_NEAR(parts[0].second - parts[0].first, position, 0.002);
    EXPECT_GT(gap, 0.29);
    EXPECT_NEAR(parts[1].second - parts[0].first - gap, 0.8, Recording::period);
    EXPECT_NEAR(heard.amplitude(500, parts[0].second - 0.04, parts[0].second), level(position - 0.02), 0.02);
    EXPECT_NEAR(heard.amplitude(500, parts[1].first, parts[1].first + 0.04), level(position + 0.02), 0.02);
    EXPECT_NEAR(heard.amplitude(500, parts[1].second - 0.04, parts[1].second), 0.25 * level(0.78), 0.02);
}

TEST_F(SoundOutputTest, OutlastsAnEventLoopThatIsHeldUp)
{
    const auto voice = play(sine(500, 1.5, 1));
    ASSERT_TRUE(waitFor([&] { return voice->position() > 0; }));
    QElapsedTimer heldUp;
    heldUp.start();
    while (heldUp.elapsed() < 700)
        std::this_thread::yield();
    ASSERT_TRUE(waitForEnds(1));
    const auto parts = finish().stretches();
    ASSERT_EQ(parts.size(), 1U);
    EXPECT_NEAR(parts[0].second - parts[0].first, 1.5, Recording::period);
}

TEST_F(SoundOutputTest, CostsNothingWhenIdle)
{
    struct TimerEvents : QObject
    {
        int count = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::Timer;
            return false;
        }
    } events;
    const auto ended = play(sine(500, 0.05));
    const auto paused = play(sine(500, 9));
    ASSERT_TRUE(waitForEnds(1));
    paused->pause();
    const auto pass = [](int milliseconds) {
        QEventLoop loop;
        QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
        loop.exec();
    };
    pass(1500);
    qApp->installEventFilter(&events);
    const std::clock_t before = std::clock();
    pass(2000);
    EXPECT_LT(double(std::clock() - before) / CLOCKS_PER_SEC, 0.01);
    EXPECT_EQ(events.count, 1) << "that which ends the waiting";
    paused->resume();
    const double position = paused->position();
    EXPECT_TRUE(waitFor([&] { return paused->position() > position + 0.1; }));
}

TEST_F(SoundOutputTest, LeavesTheApplicationsContextAlone)
{
    ALCdevice *device = alcLoopbackOpenDeviceSOFT(nullptr);
    const ALCint attributes[] = {
        ALC_FORMAT_CHANNELS_SOFT, ALC_STEREO_SOFT, ALC_FORMAT_TYPE_SOFT, ALC_SHORT_SOFT, ALC_FREQUENCY, 44100, 0};
    ALCcontext *context = alcCreateContext(device, attributes);
    alcSetThreadContext(context);
    play(sine(500, 0.05)).reset();
    EXPECT_EQ(alcGetThreadContext(), context);
    output = nullptr;
    SoundOutput::setCurrent(nullptr); // closes it
    EXPECT_EQ(alcGetThreadContext(), context);
    alcSetThreadContext(nullptr);
    alcDestroyContext(context);
    alcCloseDevice(device);
}

TEST_F(SoundOutputTest, BelongsToOneThread)
{
    LogRecorder log;
    output->prepare();
    EXPECT_FALSE(output->deviceName().isEmpty());
    std::thread([&] { EXPECT_FALSE(play(sine(500, 0.1))); }).join();
    EXPECT_EQ(log.lines().size(), 1);
    EXPECT_FALSE(play(nullptr));
}
