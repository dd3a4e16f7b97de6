// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <sound/recording.h>
#include <support/logrecorder.h>
#include <support/printers.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtTest/QTest>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

bool waitFor(const std::function<bool()> &condition) { return QTest::qWaitFor(condition, 20'000); }

/// A sound daemon of the test's own, whose only device drops what it is given.
class SoundDaemonTest : public testing::Test
{
protected:
    QTemporaryDir folder;
    QString socket = folder.filePath(u"socket"_s);
    QProcess daemon;
    QProcess ear;

    void SetUp() override
    {
        if (QStandardPaths::findExecutable(u"pulseaudio"_s).isEmpty())
            GTEST_SKIP() << "pulseaudio is not installed";
        for (const char *variable : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"})
            qputenv(variable, folder.path().toUtf8());
        qputenv("ALSOFT_DRIVERS", "pulse");
        qputenv("PULSE_SERVER", "unix:" + socket.toUtf8());
        ASSERT_TRUE(startDaemon());
    }
    void TearDown() override
    {
        kill(ear);
        kill(daemon);
    }

    /// The daemon's device first takes two seconds of silence ahead; it is ready when they are over.
    bool startDaemon()
    {
        kill(ear);
        daemon.start(u"pulseaudio"_s, {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"-L"_s,
                                       u"module-native-protocol-unix socket="_s + socket, u"-L"_s,
                                       u"module-null-sink sink_name=heard"_s});
        return waitFor([&] {
            if (ear.state() == QProcess::NotRunning)
                ear.start(u"parec"_s, {u"-d"_s, u"heard.monitor"_s, u"--raw"_s, u"--latency-msec=10"_s});
            return ear.bytesAvailable() > 30'000;
        });
    }
    static void kill(QProcess &process)
    {
        process.kill();
        process.waitForFinished();
    }
    /// Whether a sine of that amplitude arrives at the ear.
    bool hears(double amplitude)
    {
        return waitFor([&] {
            if (ear.bytesAvailable() < 8192)
                return false;
            const Recording heard("data" + QByteArray(4, 0) + ear.readAll());
            const double time = double(heard.frames()) / Recording::rate;
            return std::abs(heard.amplitude(500, 0, time) - amplitude) < 0.05;
        });
    }
};

} // namespace

TEST_F(SoundDaemonTest, MayDieAndComeBack)
{
    LogRecorder log;
    auto output = SoundOutput::createSystemOutput();
    output->prepare();
    int longEnds = 0, shortEnds = 0;
    QElapsedTimer time;
    time.start();
    const auto voice = output->start(sine(500, 6), 0.5F, [&](bool) { ++longEnds; });
    const auto paused = output->start(sine(500, 0.6), 1, [&](bool) { ++shortEnds; });
    paused->pause();
    EXPECT_FALSE(output->deviceName().isNull());
    const pid_t child = fork();
    if (child == 0) {
        alarm(20);
        output = nullptr; // which what plays in the other process survives
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(hears(0.5));
    EXPECT_TRUE(waitFor([&] { return voice->position() > 1; }));

    const auto lag = [&] { return double(time.elapsed()) / 1000 - voice->position(); };
    const double usualLag = lag();
    kill(daemon);
    EXPECT_TRUE(waitFor([&] { return output->deviceName().isNull(); }));
    EXPECT_EQ(log.take().size(), 1);
    EXPECT_NEAR(lag(), usualLag, 0.3);
    paused->resume();
    EXPECT_TRUE(waitFor([&] { return shortEnds == 1; }));
    EXPECT_TRUE(output->deviceName().isNull());

    QFile::remove(socket);
    ASSERT_TRUE(startDaemon());
    const auto next = output->start(sine(500, 0.1), 0, [&](bool) { ++shortEnds; });
    EXPECT_TRUE(waitFor([&] { return !output->deviceName().isNull(); }));
    EXPECT_TRUE(hears(0.5)) << "what was playing is heard again";
    EXPECT_TRUE(waitFor([&] { return longEnds == 1; }));
    EXPECT_GT(time.elapsed(), 5900);
    EXPECT_DOUBLE_EQ(voice->position(), 6);
    EXPECT_EQ(shortEnds, 2);
    EXPECT_EQ(log.take().size(), 1);
}
