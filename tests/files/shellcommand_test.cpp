// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files/shellcommand.h>
#include <dravelin/files/systemservices.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include "processwatch.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QPointer>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTimer>
#include <QtTest/QSignalSpy>

#include <csignal>
#include <memory>
#include <optional>
#include <thread>
#include <tuple>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

class ShellCommandTest : public testing::Test
{
protected:
    ProcessWatch processes;
    LogRecorder log;
    std::unique_ptr<ShellCommand> command = std::make_unique<ShellCommand>();
    QSignalSpy finished{command.get(), &ShellCommand::finished};
    QSignalSpy readings{command.get(), &ShellCommand::bytesRead};
    QString text;

    ShellCommandTest()
    {
        QObject::connect(command.get(), &ShellCommand::outputRead, [this](const QString &piece) { text += piece; });
    }

    /// Without the pauses that QTest's own makes after each event.
    static bool waitFor(const std::function<bool()> &condition)
    {
        QTimer tick;
        tick.start(10);
        const QDeadlineTimer end(60'000);
        while (!condition() && !end.hasExpired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        return condition();
    }
    bool runs(const QString &line, std::size_t files = 100)
    {
        finished.clear();
        text.clear();
        std::optional<FileLimit> limit(files);
        const bool runs = command->start(line);
        limit.reset();
        return runs && waitFor([this] { return !finished.isEmpty(); });
    }
    static bool isGone(qint64 group)
    {
        return waitFor([group] { return kill(-pid_t(group), 0) == -1 && errno == ESRCH; });
    }
};

using Row = std::tuple<const char *, QString, QByteArray, int, QString>; // name, command, input, status, output

} // namespace

TEST_F(ShellCommandTest, TellsWhatCommandsWroteAndHowTheyEnded)
{
    const QByteArray large(1'000'000, 'x');
    command->setKeepsOutput(true);
    for (const auto &[name, line, input, status, output] :
         {Row{"both streams", u"echo a; echo b >&2; exit 3"_s, {}, 3, u"a\nb\n"_s},
          Row{"no input", u"cat"_s, {}, 0, u""_s},
          Row{"input", u"cat; echo end"_s, large, 0, QString(1'000'000, 'x') + u"end\n"_s},
          Row{"input that is not read", u"exec <&-; echo end"_s, large, 0, u"end\n"_s},
          Row{"child left behind", u"(sleep 0.1; echo late) & echo early"_s, {}, 0, u"early\nlate\n"_s},
          Row{"goes on without output", u"exec >&- 2>&-; sleep 0.1; exit 4"_s, {}, 4, u""_s},
          Row{"no UTF-8", uR"(printf 'a\377b\303')"_s, {}, 0, u"a\uFFFDb\uFFFD"_s}}) {
        command->setInput(input);
        for (const std::size_t files : {100, 3}) { // with only three the system cannot tell when the shell has ended
            SCOPED_TRACE(testing::Message() << name << ", files " << files);
            ASSERT_TRUE(runs(u"ulimit -Sn 100; "_s + line, files));
            EXPECT_EQ(finished.constFirst(), (QVariantList{status, 0}));
            EXPECT_TRUE(text == output) << qPrintable(text.left(100));
            EXPECT_EQ(QString::fromUtf8(command->output()), output);
            EXPECT_EQ(command->ending(), ShellCommand::Exited);
        }
    }
}

TEST_F(ShellCommandTest, HandsOutputOverAsItComes)
{
    const QTemporaryDir folder;
    const QString flag = folder.filePath(u"go"_s);
    const QString wait = u"while ! test -e '%1'; do sleep 0.01; done"_s.arg(flag);
    ASSERT_TRUE(command->start(uR"(printf 'a\303'; %1; printf '\244z')"_s.arg(wait)));
    EXPECT_TRUE(waitFor([this] { return !readings.isEmpty(); }));
    EXPECT_EQ(readings.constFirst().constFirst().toByteArray(), "a\303");
    EXPECT_EQ(text, u"a");
    EXPECT_TRUE(command->isRunning());
    EXPECT_FALSE(command->start(u"true"_s));
    EXPECT_EQ(log.take().size(), 1);
    EXPECT_TRUE(QFile(flag).open(QIODevice::WriteOnly));
    EXPECT_TRUE(waitFor([this] { return !finished.isEmpty(); }));
    EXPECT_EQ(text, u"aäz");
    EXPECT_TRUE(command->output().isNull());
}

TEST_F(ShellCommandTest, EndsTheWholeGroup)
{
    using Ended = std::tuple<const char *, QString, int>; // name, command, signal
    for (const auto &[name, line, signal] :
         {Ended{"children", u"sleep 100 & sleep 100 & echo ready; wait"_s, SIGTERM},
          Ended{"pays no heed", u"trap '' TERM; echo ready; while :; do sleep 0.1; done"_s, SIGKILL},
          Ended{"closes the output", u"(trap '' TERM; echo ready; exec sleep 100 >&- 2>&-) & exec sleep 100"_s,
                SIGTERM},
          Ended{"left the group", u"setsid sleep 70 & echo ready; exec sleep 100"_s, SIGTERM}}) {
        SCOPED_TRACE(name);
        readings.clear();
        finished.clear();
        ASSERT_TRUE(command->start(line));
        EXPECT_TRUE(waitFor([this] { return !readings.isEmpty(); }));
        const qint64 group = command->processGroup();
        command->cancel();
        EXPECT_TRUE(command->isRunning());
        ASSERT_TRUE(waitFor([this] { return !finished.isEmpty(); }));
        EXPECT_EQ(finished.constFirst(), (QVariantList{-1, signal}));
        EXPECT_EQ(command->ending(), ShellCommand::Cancelled);
        EXPECT_TRUE(isGone(group));
    }
    command->cancel();
    EXPECT_EQ(finished.size(), 1);
}

TEST_F(ShellCommandTest, KeepsToTheTimeLimit)
{
    command->setTimeLimit(0.05);
    ASSERT_TRUE(runs(u"exec sleep 100"_s));
    EXPECT_EQ(command->ending(), ShellCommand::TimedOut);
    for (const double limit : {60.0, 1e300, -1.0, qQNaN()}) {
        command->setTimeLimit(limit);
        ASSERT_TRUE(runs(u"sleep 0.1"_s));
        EXPECT_EQ(command->ending(), ShellCommand::Exited) << limit;
    }
}

TEST_F(ShellCommandTest, TakesItsCommandAlongWhenItIsDestroyed)
{
    ASSERT_TRUE(command->start(u"trap '' TERM; sleep 100 & echo ready; sleep 100"_s));
    EXPECT_TRUE(waitFor([this] { return !readings.isEmpty(); }));
    const qint64 group = command->processGroup();
    command.reset();
    EXPECT_TRUE(isGone(group));
    EXPECT_TRUE(finished.isEmpty());
}

TEST_F(ShellCommandTest, SurvivesSlotsThatDeleteIt)
{
    const auto survives = [](auto signal) {
        QPointer<ShellCommand> mortal = new ShellCommand;
        QObject::connect(mortal, signal, mortal, [mortal] { delete mortal; });
        EXPECT_TRUE(mortal->start(uR"(printf 'a\303')"_s));
        EXPECT_TRUE(waitFor([mortal] { return mortal.isNull(); }));
    };
    survives(&ShellCommand::bytesRead);
    survives(&ShellCommand::outputRead);
    survives(&ShellCommand::finished);
    survives(&ShellCommand::runningChanged);
}

TEST_F(ShellCommandTest, RunsManyInTurn)
{
    int left = 1000;
    QObject::connect(command.get(), &ShellCommand::finished, command.get(), [&] {
        QCoreApplication::processEvents(); // as a dialog would
        if (--left)
            command->start(u"echo %1"_s.arg(left));
    });
    command->setInput("x");
    command->start(u"echo 1000"_s);
    EXPECT_TRUE(waitFor([&] { return left == 0; }));
    EXPECT_TRUE(text.startsWith("1000\n999\n") && text.endsWith("\n2\n1\n"));
}

TEST_F(ShellCommandTest, KeepsTheOrderWhenSlotsRunTheEventLoop)
{
    QObject::connect(command.get(), &ShellCommand::bytesRead,
                     [this] { waitFor([this] { return !finished.isEmpty(); }); });
    QObject::connect(command.get(), &ShellCommand::finished, [this] { EXPECT_EQ(text, u"a\nb\nc\n"); });
    ASSERT_TRUE(runs(u"echo a; sleep 0.05; echo b; sleep 0.05; echo c"_s));
    EXPECT_EQ(text, u"a\nb\nc\n");
}

TEST_F(ShellCommandTest, KeepsItsFilesFromOtherCommands)
{
    const QString list = u"ls -l /proc/self/fd | grep -c 'pipe\\|memfd\\|pidfd'"_s;
    const QString before = runShellCommand(list);
    command->setInput("x");
    ASSERT_TRUE(command->start(u"exec sleep 100"_s));
    EXPECT_EQ(runShellCommand(list), before);
    command.reset();
}

TEST_F(ShellCommandTest, SaysWhyItCannotStart)
{
    EXPECT_FALSE(command->start(QString(200'000, u' ')));
    EXPECT_EQ(log.take().size(), 1);
    EXPECT_TRUE(command->ending() == ShellCommand::NotStarted && !command->isRunning());
    std::thread([] { EXPECT_FALSE(ShellCommand().start(u"true"_s)); }).join();
    EXPECT_THAT(log.take(),
                testing::ElementsAre(u"Shell command \"true\" was not started: this thread has no event loop"_s));
    ASSERT_TRUE(runs(u""_s)) << "and then can";
}
