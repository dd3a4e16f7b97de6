// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/platform/exception.h>
#include <dravelin/platform/log.h>

#include <support/logrecorder.h>
#include <support/printers.h>

#include <gtest/gtest.h>

using namespace dravelin;

TEST(Log, WritesOneLinePerMessage)
{
    LogRecorder log;
    logInfo(QStringLiteral("first\rsecond\r\nthird"));
    logWarning(QStringLiteral("plain"));
    EXPECT_EQ(log.lines(), (QStringList{QStringLiteral("first\\rsecond\\r\\nthird"), QStringLiteral("plain")}));
}

namespace {

QString handled;
void handler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    handled = QStringLiteral("%1 %2 %3").arg(type).arg(QLatin1String(context.category), message);
}

} // namespace

TEST(Log, GoesToTheCategoryByDefault)
{
    const auto previous = qInstallMessageHandler(handler);
    logWarning(QStringLiteral("disk is full"));
    qInstallMessageHandler(previous);
    EXPECT_EQ(handled, QStringLiteral("%1 dravelin disk is full").arg(QtWarningMsg));
}

TEST(Exception, CarriesNameReasonAndStack)
{
    const Exception exception(QLatin1String(NSRangeException), QStringLiteral("index 3 beyond 2"),
                              {{QStringLiteral("i"), 3}});
    EXPECT_STREQ(exception.what(), "NSRangeException: index 3 beyond 2");
    EXPECT_EQ(exception.userInfo().value(QStringLiteral("i")), QVariant(3));
    EXPECT_GT(exception.callStackReturnAddresses().size(), 3);
}
