// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/files.h>
#include <dravelin/platform/bundle.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include "processwatch.h"

#include <QtCore/QTemporaryFile>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>

#include <dlfcn.h>

#include <array>
#include <clocale>
#include <csignal>
#include <optional>
#include <string>
#include <tuple>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

using CommandRow = std::tuple<const char *, QString, QString>; // name, command, output

class ShellTest : public testing::Test
{
protected:
    LogRecorder log;
    ProcessWatch processes;
};

/// What a signal does in this process, for a while.
class SignalSetting
{
public:
    SignalSetting(int signal, void (*handler)(int)) : m_signal(signal)
    {
        struct sigaction action = {};
        action.sa_handler = handler; // without SA_RESTART: system calls are interrupted
        sigaction(signal, &action, &m_old);
    }
    ~SignalSetting() { sigaction(m_signal, &m_old, nullptr); }
    Q_DISABLE_COPY_MOVE(SignalSetting)

private:
    int m_signal;
    struct sigaction m_old = {};
};

volatile sig_atomic_t childrenEnded = 0;

} // namespace

TEST_F(ShellTest, ReturnsWhatCommandsWrite)
{
    const std::array rows{
        CommandRow{"both streams in order", u"echo a; echo b >&2; echo c"_s, u"a\nb\nc\n"_s},
        CommandRow{"nothing", u"exit 3"_s, u""_s},
        CommandRow{"empty command", u""_s, u""_s},
        CommandRow{"command that does not exist", u"no-such-command 2>/dev/null; echo $?"_s, u"127\n"_s},
        CommandRow{"characters beyond ASCII", u"echo 'ä€𝄞'"_s, u"ä€𝄞\n"_s},
        CommandRow{"null character", uR"(printf 'a\000b')"_s, QString(u"a\0b"_s)},
        CommandRow{"byte order mark", uR"(printf '\357\273\277a')"_s, u"\uFEFFa"_s},
        CommandRow{"child left behind", u"(sleep 0.1; echo late) & echo early"_s, u"early\nlate\n"_s},
        CommandRow{"no UTF-8", uR"(printf 'a\377b')"_s, {}},
        CommandRow{"cut character", uR"(printf 'a\303')"_s, {}},
        CommandRow{"surrogate", uR"(printf '\355\240\200')"_s, {}},
        CommandRow{"bad, then much", uR"(printf '\377'; head -c 300000 /dev/zero)"_s, {}},
    };
    for (const auto &[name, command, expected] : rows) {
        SCOPED_TRACE(name);
        const QString output = runShellCommand(command);
        EXPECT_EQ(output, expected);
        EXPECT_EQ(output.isNull(), expected.isNull());
        EXPECT_EQ(log.take().size(), expected.isNull() ? 1 : 0);
    }
    EXPECT_EQ(runShellCommand({}), runShellCommand(u"(null)"_s));
    EXPECT_TRUE(runShellCommand({}).contains("null"));
}

TEST_F(ShellTest, TakesAnyAmount)
{
    for (const int size : {1, 65'535, 65'536, 65'537, 262'143, 262'144, 262'145, 100'000'000})
        EXPECT_TRUE(runShellCommand(u"head -c %1 /dev/zero | tr '\\0' x"_s.arg(size)) == QString(size, u'x')) << size;
    for (const QString &line : {u"xä€𝄞\n"_s, u"ä€𝄞\n"_s}) // cut at every place
        EXPECT_TRUE(runShellCommand(u"yes '%1' | head -n 200000"_s.arg(line.chopped(1))) == line.repeated(200'000));
}

TEST_F(ShellTest, ReturnsWhenTheOutputIsClosedThoughTheShellGoesOn)
{
    for (const std::size_t files : {100, 2}) { // with only two the system cannot tell when a shell has ended
        std::optional<FileLimit> limit(files);
        const pid_t shell = runShellCommand(u"ulimit -Sn 100; echo $$; exec sleep 100 >&- 2>&-"_s).toInt();
        limit.reset();
        ASSERT_GT(shell, 1);
        EXPECT_EQ(kill(shell, SIGKILL), 0);
        EXPECT_TRUE(QTest::qWaitFor([&] { return runShellCommand(u""_s).isEmpty() && kill(shell, 0) == -1; }, 10'000))
            << "not reaped by later calls";
    }
}

TEST_F(ShellTest, UsesTheStandardInputOfThisProcessOrNone)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open() && file.write("given") == 5 && file.seek(0));
    const std::array saved{dup(0), dup(1), dup(2)};
    dup2(file.handle(), 0);
    EXPECT_EQ(runShellCommand(u"cat"_s), u"given");
    close(1); // the number goes to the file of the input
    ShellCommand command;
    command.setInput("in");
    command.setKeepsOutput(true);
    EXPECT_TRUE(command.start(u"cat"_s));
    EXPECT_TRUE(QTest::qWaitFor([&command] { return !command.isRunning(); }, 20'000));
    EXPECT_EQ(command.output(), "in");
    for (const int stream : {0, 1, 2}) { // and these to the pipe
        close(stream);
        EXPECT_EQ(runShellCommand(u"echo out; echo err >&2"_s), u"out\nerr\n") << stream;
    }
    for (const int stream : {0, 1, 2}) {
        dup2(saved[size_t(stream)], stream);
        close(saved[size_t(stream)]);
    }
}

TEST_F(ShellTest, LeavesSignalsAndLocaleAlone)
{
    const SignalSetting ignoredPipe(SIGPIPE, SIG_IGN);
    const SignalSetting children(SIGCHLD, [](int) { childrenEnded = childrenEnded + 1; });
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    sigset_t blocked, before, after;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGUSR1);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    EXPECT_EQ(runShellCommand(u"grep SigBlk /proc/self/status | tr -d '0[:space:]'"_s), u"SigBlk:");
    const SignalSetting alarms(SIGALRM, [](int) {});
    ualarm(1000, 1000);
    EXPECT_EQ(runShellCommand(u"sleep 0.1; echo late"_s), u"late\n");
    ualarm(0, 0);
    EXPECT_EQ(childrenEnded, 2) << "the program's own handler still hears";
    pthread_sigmask(SIG_SETMASK, &before, &after);
    EXPECT_TRUE(sigismember(&after, SIGUSR1) && !sigismember(&after, SIGCHLD));
    EXPECT_EQ(signal(SIGPIPE, SIG_IGN), SIG_IGN);
    EXPECT_EQ(locale, std::setlocale(LC_ALL, nullptr));

    const SignalSetting ignoredChildren(SIGCHLD, SIG_IGN);
    const QString ignored = runShellCommand(u"grep SigIgn /proc/self/status"_s).section(u'\t', 1).trimmed();
    EXPECT_EQ(ignored.size(), 16);
    EXPECT_EQ(ignored.toULongLong(nullptr, 16) & (1U << (SIGPIPE - 1) | 1U << (SIGCHLD - 1)), 0U);
}

TEST_F(ShellTest, LogsWhyACommandWasNotStarted)
{
    for (const QString &command : {QString(u"echo a\0rm b"_s), QString(200'000, u' ')}) {
        EXPECT_TRUE(runShellCommand(command).isNull());
        EXPECT_EQ(log.take().size(), 1);
    }
    const FileLimit none(0);
    EXPECT_TRUE(runShellCommand(u"echo a"_s).isNull());
    EXPECT_THAT(log.take(), testing::ElementsAre(u"Shell command \"echo a\" was not started: Too many open files"_s));
}

TEST(VersionNumberTest, HasTheBuildNumberOnRequest)
{
    auto &bundle = Bundle::mainBundle();
    using Row = std::tuple<QVariant, QVariant, QString>; // version, build number, both
    for (const auto &[version, build, both] :
         {Row{u"2.1"_s, 57, u"2.1 build 57"_s}, Row{u"2.1"_s, {}, u"2.1"_s}, Row{u"%2"_s, u"%1"_s, u"%2 build %1"_s},
          Row{QString(), u"57"_s, u"(null) build 57"_s}, Row{QString(), {}, {}}}) {
        bundle.setObject(version, u"CFBundleShortVersionString"_s);
        bundle.setObject(build, u"CFBundleVersion"_s);
        EXPECT_EQ(versionNumber(false), version.toString());
        EXPECT_EQ(versionNumber(true), both);
        EXPECT_EQ(versionNumber(true).isNull(), both.isNull());
    }
    bundle.setObject({}, u"CFBundleShortVersionString"_s);
    bundle.setObject({}, u"CFBundleVersion"_s);
}

TEST(CallActionTest, NeedsATargetThatHasTheOperation)
{
    const LogRecorder log;
    callAction(nullptr, "clear");
    callAction(static_cast<QLabel *>(nullptr), &QLabel::clear);
    callActionWithId(nullptr, "setText:", u""_s);
    callActionWithId(static_cast<QLabel *>(nullptr), &QLabel::setText, u""_s);
    EXPECT_TRUE(log.lines().isEmpty());
    QLabel label;
    callActionWithId(&label, &QLabel::setText, u"by member"_s);
    EXPECT_EQ(label.text(), u"by member");
    callAction(&label, "absent");
    EXPECT_EQ(log.lines(), QStringList(u"QLabel has no operation absent"_s));
}

TEST(ObjectDataTest, ComesBack)
{
    LogRecorder log;
    for (const QVariant &value : {QVariant(u"text"_s), QVariant(1.5), QVariant(QVariantList{1, u"a"_s}), QVariant()}) {
        EXPECT_EQ(decodeObjectData(encodeObjectData(value)), value);
        EXPECT_EQ(KeyedUnarchiver(encodeObjectData(value)).decodeObjectForKey(u"objectDataKey"_s), value);
    }
    EXPECT_FALSE(decodeObjectData(KeyedArchiver::archivedDataWithRootObject(5)).isValid()) << "another key";
    EXPECT_TRUE(log.take().isEmpty());
    EXPECT_FALSE(decodeObjectData("noise").isValid());
    EXPECT_FALSE(decodeObjectData({}).isValid());
    EXPECT_EQ(log.take().size(), 2);
}

TEST(BuildIdentityTest, StandsInTheLibraryFile)
{
    EXPECT_EQ(DravelinVersionNumber, 1.0);
    EXPECT_STREQ(DravelinVersionString, "@(#)PROGRAM:Dravelin  PROJECT:Dravelin-1\n");
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "DravelinVersionString"), DravelinVersionString);
    Dl_info library{};
    ASSERT_TRUE(dladdr(reinterpret_cast<const void *>(&logCategory), &library));
    const QString search = u"strings '%1' | grep -Fxc '@(#)PROGRAM:Dravelin  PROJECT:Dravelin-1'"_s;
    EXPECT_EQ(runShellCommand(search.arg(QFile::decodeName(library.dli_fname))), u"1\n");
}
