// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values.h>

#include <support/decimalcomma.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

using namespace dravelin;

TEST(StrToInt, ReadsA32BitNumber)
{
    const struct
    {
        QString text;
        qint64 value;
    } rows[] = {
        {QString(), 0},
        {QStringLiteral(""), 0},
        {QStringLiteral("maybe 5"), 0},
        {QStringLiteral(" \t\r\n\u00A0\u200B42abc"), 42},
        {QStringLiteral("+7"), 7},
        {QStringLiteral("-7.9"), -7},
        {QStringLiteral("+-7"), 0},
        {QStringLiteral("- 7"), 0},
        {QStringLiteral("0x10"), 0},
        {QStringLiteral("2147483647"), 2147483647},
        {QStringLiteral("2147483648"), 2147483647},
        {QStringLiteral("-2147483648"), -2147483648LL},
        {QStringLiteral("-2147483649"), -2147483648LL},
        {QStringLiteral("99999999999"), 2147483647},
        {QString(5000, u'9'), 2147483647},
        {QStringLiteral("1\u0661"), 1},
    };
    for (const auto &row : rows)
        EXPECT_EQ(strToInt(row.text), row.value) << row.text.toStdString();
}

TEST(IntToStr, PrintsTheLow32Bits)
{
    EXPECT_EQ(intToStr(4294967297), QStringLiteral("1"));
    EXPECT_EQ(intToStr(2147483648), QStringLiteral("-2147483648"));
    EXPECT_EQ(intToStr(-1), QStringLiteral("-1"));
}

TEST(StrToBool, LooksAtTheFirstCharacterThatCounts)
{
    for (const char *text : {"YES", "y", "true", "T", "1", "007", "  +0005", "-9x", "\n0y"})
        EXPECT_TRUE(strToBool(QString::fromUtf8(text))) << text;
    for (const char *text : {"NO", "0", "false", "", "maybe", "-0", "+ 1", "++1", "00.1", "n"})
        EXPECT_FALSE(strToBool(QString::fromUtf8(text))) << text;
    EXPECT_FALSE(strToBool(QString()));
    EXPECT_EQ(boolToStr(2), QStringLiteral("YES"));
    EXPECT_EQ(boolToStr(0), QStringLiteral("NO"));
}

TEST(StrToDouble, ReadsADecimalNumber)
{
    const struct
    {
        QString text;
        double value;
    } rows[] = {
        {QString(), 0},
        {QStringLiteral("abc"), 0},
        {QStringLiteral("."), 0},
        {QStringLiteral("-.e5"), 0},
        {QStringLiteral(" 1.5e3 apples"), 1500},
        {QStringLiteral("+.5"), 0.5},
        {QStringLiteral("5."), 5},
        {QStringLiteral("1,5"), 1},
        {QStringLiteral("1e"), 1},
        {QStringLiteral("1e+"), 1},
        {QStringLiteral("1E-2"), 0.01},
        {QStringLiteral("1e5.5"), 100000},
        {QStringLiteral("1.2.3"), 1.2},
        {QStringLiteral("0x10"), 0},
        {QStringLiteral("inf"), 0},
        {QStringLiteral("nan"), 0},
        {QStringLiteral("+-1"), 0},
        {QStringLiteral("1e400"), INFINITY},
        {QStringLiteral("-1e400"), -INFINITY},
        {QStringLiteral("1e-400"), 0},
        {QStringLiteral("1e99999999999999999999"), INFINITY},
        {QStringLiteral("0e99999999999999999999"), 0},
        {QStringLiteral("5e-324"), 5e-324},
        {QString(400, u'1'), INFINITY},
        {QStringLiteral("1") + QString(QChar(0)) + QStringLiteral("2"), 1},
    };
    const DecimalComma comma;
    for (const auto &row : rows)
        EXPECT_EQ(strToDouble(row.text), row.value) << row.text.toStdString();
    EXPECT_TRUE(std::signbit(strToDouble(QStringLiteral("-0"))));
}

TEST(StrToFloat, RoundsOnce)
{
    // Just above the middle of two floats; by way of double it would be the middle itself and go to the even float.
    EXPECT_EQ(strToFloat(QStringLiteral("1.00000005960464477540")), std::nextafter(1.0F, 2.0F));
    EXPECT_EQ(strToFloat(QStringLiteral("1e39")), INFINITY);
    EXPECT_EQ(strToFloat(QStringLiteral("1e-60")), 0);
    EXPECT_EQ(strToFloat(QStringLiteral("1e-45")), std::numeric_limits<float>::denorm_min());
}

TEST(StrToDouble, AgreesWithTheCLibraryOnRandomNumbers)
{
    const auto seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (int round = 0; round < 20'000; ++round) {
        const double value = std::bit_cast<double>(random());
        if (!std::isfinite(value))
            continue;
        char text[64];
        std::snprintf(text, sizeof text, "%.*e", int(random() % 30), value);
        ASSERT_EQ(strToDouble(QString::fromLatin1(text)), std::strtod(text, nullptr)) << text;
        ASSERT_EQ(strToFloat(QString::fromLatin1(text)), std::strtof(text, nullptr)) << text;
    }
}
