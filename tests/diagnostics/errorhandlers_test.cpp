// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/diagnostics/errorhandlers.h>

#include <support/decimalcomma.h>
#include <support/printers.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace dravelin;
using namespace Qt::StringLiterals;

namespace {

struct Outcome
{
    QStringList lines; // of standard error
    bool ended;        // by itself, in time
    bool crashed;
    int exitCode;
};

/// Runs the child until it ends or, for one that does not, until its report has a line with `enough`.
Outcome runChild(const QString &way, const QString &enough = {})
{
    QProcess child;
    child.start(QString::fromLocal8Bit(CRASH_CHILD), {way});
    QString report;
    bool ended = false;
    QDeadlineTimer deadline(120'000);
    while (!ended && !deadline.hasExpired() && (enough.isNull() || !report.contains(enough))) {
        ended = child.waitForFinished(20);
        report += QString::fromUtf8(child.readAllStandardError());
    }
    child.kill();
    child.waitForFinished();
    return {report.split(u'\n'), ended, child.exitStatus() == QProcess::CrashExit, child.exitCode()};
}

bool hasFrame(const QStringList &lines, const QString &pattern)
{
    return lines.indexOf(QRegularExpression(u".*"_s + pattern + u".*"_s)) >= 0;
}

struct Uncaught
{
    const char *way;
    QStringList head;
    QString frame;
};

} // namespace

TEST(ErrorHandlers, ReportUncaughtExceptionsWithTheStackOfTheThrow)
{
    const QString at = uR"(.* at .*/crash_child\.cpp:\d+)"_s;
    const Uncaught rows[] = {
        {"ours",
         {u"Exception: NSRangeException"_s, u"no page 3"_s, u"{page = 3; pages = (1, 2)}"_s, u""_s},
         u"throwOurs"_s + at},
        {"bare", {u"Exception: Bare"_s, u"(null)"_s, u"(null)"_s, u""_s}, u"throwBare"_s + at},
        {"standard",
         {u"Exception: std::runtime_error"_s, u"disk"_s, u"on fire"_s, u"(null)"_s, u""_s},
         u"throwStandard"_s + at},
        {"number", {u"Exception: int"_s, u"(null)"_s, u"(null)"_s, u""_s}, u"throwNumber"_s + at},
        {"terminate",
         {u"Exception: std::terminate"_s, u"called without an exception"_s, u"(null)"_s, u""_s},
         u"terminate"_s + at},
    };
    for (const auto &[way, head, frame] : rows) {
        SCOPED_TRACE(way);
        const Outcome outcome = runChild(QLatin1String(way));
        EXPECT_EQ(outcome.lines.mid(0, head.size()), head);
        const qsizetype abort = outcome.lines.indexOf(u"Signal SIGABRT:"_s);
        EXPECT_GT(abort, head.size());
        EXPECT_TRUE(hasFrame(outcome.lines.mid(head.size(), abort - head.size()), frame))
            << outcome.lines.join(u'\n').toStdString();
        EXPECT_TRUE(outcome.ended && outcome.crashed);
    }
}

TEST(ErrorHandlers, ReportTheSevenSignalsAndReturn)
{
    const Outcome outcome = runChild(u"raise"_s);
    EXPECT_EQ(outcome.lines.filter(QRegularExpression(u"^Signal "_s)),
              (QStringList{u"Signal SIGILL:"_s, u"Signal SIGABRT:"_s, u"Signal SIGFPE:"_s, u"Signal SIGBUS:"_s,
                           u"Signal SIGSEGV:"_s, u"Signal SIGSYS:"_s, u"Signal SIGPIPE:"_s}));
    EXPECT_EQ(outcome.lines.filter(QRegularExpression(u"^raiseAll at "_s)).size(), 7);
    EXPECT_TRUE(outcome.ended && !outcome.crashed);
    EXPECT_EQ(outcome.exitCode, 0);
}

TEST(ErrorHandlers, ReportAFaultAgainAndAgain)
{
    for (const auto &[way, frame] :
         {std::pair(u"fault"_s, u"writeToForbiddenPage at "_s), {u"overflow"_s, u"overflowStack at "_s}}) {
        SCOPED_TRACE(way.toStdString());
        const Outcome first = runChild(way, u"Signal SIGSEGV:"_s);
        EXPECT_EQ(first.lines.value(0), u"Signal SIGSEGV:"_s);
        EXPECT_FALSE(first.ended);
        const Outcome reported = runChild(way, frame);
        EXPECT_TRUE(hasFrame(reported.lines, frame)) << reported.lines.join(u'\n').toStdString();
    }
}

TEST(ErrorHandlers, SurviveWhereAHandlerCouldHang)
{
    struct Row
    {
        const char *way;
        int reports; // at least
    };
    for (const auto &[way, reports] : {Row{"pipe", 1},
                                       {"no-heap", 1},
                                       {"in-log", 1},
                                       {"nested", 51},
                                       {"no-reader", 0},
                                       {"full", 0},
                                       {"console", 0}}) {
        SCOPED_TRACE(way);
        const Outcome outcome = runChild(QLatin1String(way));
        EXPECT_TRUE(outcome.ended && !outcome.crashed);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.lines.join(u'\n').toStdString();
        EXPECT_GE(outcome.lines.filter(u"Signal SIG"_s).size(), reports);
    }
}

TEST(ErrorHandlers, NameOtherSignalsUnknown)
{
    testing::internal::CaptureStderr();
    handleSignal(SIGTRAP);
    handleSignal(SIGPIPE);
    const QString report = QString::fromStdString(testing::internal::GetCapturedStderr());
    EXPECT_TRUE(report.startsWith(u"Signal UNKNOWN:\n"_s));
    EXPECT_TRUE(report.contains(u"Signal SIGPIPE:\n"_s));
}

namespace {

Q_NEVER_INLINE QString traceOfCaller() { return debugStackTrace() + u""_s; }

} // namespace

TEST(ErrorHandlers, TraceTheStackFromTheCallerOn)
{
    const QStringList frames = traceOfCaller().split(u'\r');
    ASSERT_GT(frames.size(), 3);
    EXPECT_TRUE(frames[0].contains(u"traceOfCaller"_s)) << frames[0].toStdString();
    EXPECT_TRUE(frames[1].contains(u"TestBody() at "_s)) << frames[1].toStdString();
    EXPECT_EQ(frames.constLast(), u""_s);
}

TEST(ErrorHandlers, ReportResidentMemory)
{
    const DecimalComma comma;
    const auto kibibytes = [] {
        const QString text = reportMemory();
        EXPECT_TRUE(QRegularExpression(u"^\\d+\\.\\d\\d k$"_s).match(text).hasMatch()) << text.toStdString();
        return text.chopped(2).toDouble();
    };
    const double before = kibibytes();
    const QByteArray memory(64 * 1024 * 1024, 'x');
    EXPECT_NEAR(kibibytes() - before, 64 * 1024, 4096) << memory.size();
}
