// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <sound/recording.h>
#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <QtTest/QTest>

#include <gtest/gtest.h>

using namespace dravelin;

namespace {

bool waitFor(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 20'000); }

/// A machine without a sound device.
class SilenceTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        qputenv("ALSOFT_DRIVERS", "pulse");
        qputenv("PULSE_SERVER", "unix:/nonexistent");
    }

    std::shared_ptr<SoundOutput> output = SoundOutput::createSystemOutput();
    std::vector<std::unique_ptr<SoundVoice>> voices;
    int good = 0;
    int bad = 0;

    SoundOutput::Ended count()
    {
        return [this](bool finished) { ++(finished ? good : bad); };
    }
};

/// Is read while it plays; from some frame on that fails.
class BrokenFile : public SoundData
{
public:
    BrokenFile(qint64 frames, qint64 readable) : SoundData({}, frames, 1, 44100), m_readable(readable) {}
    [[nodiscard]] std::span<const qint16> samples() const override { return {}; }
    [[nodiscard]] std::unique_ptr<SoundReader> reader() const override { return std::make_unique<Reader>(m_readable); }

private:
    struct Reader : SoundReader
    {
        explicit Reader(qint64 end) : readable(end) {}
        [[nodiscard]] qint64 read(qint64 frame, std::span<qint16> samples) override
        {
            return frame < readable ? qint64(samples.size()) : -1;
        }
        qint64 readable;
    };
    qint64 m_readable;
};

} // namespace

TEST_F(SilenceTest, KeepsTheTime)
{
    LogRecorder log;
    output->prepare();
    for (const double seconds : {0.0, 0.06, 0.4, 3.0}) {
        QElapsedTimer asked, started;
        int ended = 0;
        const auto since = [](const QElapsedTimer &time) { return double(time.nsecsElapsed()) * 1e-9; };
        asked.start();
        const auto voice = output->start(sine(500, seconds, 1, 22050), 1, [&](bool) { ++ended; });
        started.start();
        ASSERT_TRUE(voice);
        EXPECT_EQ(ended, 0) << "never from within start()";
        EXPECT_TRUE(waitFor([&] {
            const double least = std::min(since(started), seconds);
            const double position = voice->position();
            EXPECT_GE(position, least - 0.001);
            EXPECT_LE(position, since(asked) + 0.001);
            return ended > 0;
        }));
        EXPECT_GE(since(asked), seconds);
        EXPECT_LT(since(started), seconds + 1);
        EXPECT_DOUBLE_EQ(voice->position(), seconds);
    }
    EXPECT_TRUE(output->deviceName().isNull());
    EXPECT_EQ(log.lines().size(), 1);
}

TEST_F(SilenceTest, EndsEachOfAThousandPlaysOnce)
{
    LogRecorder log;
    const auto shortSound = sine(500, 0.02);
    const auto longSound = sine(500, 300, 1, 8000); // none ends while they are started, however slowly
    for (int i = 0; i < 1000; ++i)
        voices.push_back(output->start(shortSound, 1, count()));
    EXPECT_TRUE(waitFor([&] { return good == 1000; }));
    for (int i = 0; i < 1024; ++i)
        voices.push_back(output->start(longSound, 1, count()));
    EXPECT_FALSE(output->start(shortSound, 1, count()));
    EXPECT_EQ(log.lines().size(), 2) << "no device, too many";
    EXPECT_FALSE(voices.back() == nullptr);
    voices.pop_back();
    voices.push_back(output->start(shortSound, 1, count()));
    EXPECT_TRUE(waitFor([&] { return good == 1001; }));
    EXPECT_EQ(bad, 0);
}

TEST_F(SilenceTest, ReportsSamplesThatCannotBeRead)
{
    for (const qint64 readable : {0, 22050, 132300})
        voices.push_back(output->start(std::make_shared<BrokenFile>(88200, readable), 1, count()));
    EXPECT_TRUE(waitFor([&] { return good + bad == 3; }));
    EXPECT_EQ(bad, 2);
    EXPECT_DOUBLE_EQ(voices[0]->position(), 0);
    EXPECT_DOUBLE_EQ(voices[1]->position(), 0.5);
    EXPECT_DOUBLE_EQ(voices[2]->position(), 2);
}

TEST_F(SilenceTest, LetsAnEndDoWhatItLikes)
{
    const auto data = sine(500, 0.02);
    std::unique_ptr<SoundVoice> itself, other, later;
    itself = output->start(data, 1, [&](bool) {
        itself = nullptr;
        other = nullptr; // the other one's end is due at the same time
        later = output->start(data, 1, [&](bool) {
            QTimer::singleShot(0, [&] { voices.push_back(output->start(data, 1, count())); });
            EXPECT_TRUE(waitFor([&] { return good == 1; })) << "an event loop of its own";
            output = nullptr;
        });
    });
    other = output->start(data, 1, [&](bool) { ++bad; });
    EXPECT_TRUE(waitFor([&] { return !output; }));
    later->pause();
    later->resume();
    later->setVolume(0.5F);
    EXPECT_GE(later->position(), 0);
    EXPECT_EQ(bad, 0);
}
