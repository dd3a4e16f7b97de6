// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values.h>

#include <support/decimalcomma.h>
#include <support/printers.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

using namespace dravelin;

namespace {

// The tests run in the "C" locale unless they say otherwise.
std::string printed(double value, int decimals)
{
    char buffer[1500];
    std::snprintf(buffer, sizeof buffer, "%.*f", decimals, value);
    return buffer;
}

std::string ours(double value, int decimals) { return doubleToStr(value, decimals).toStdString(); }

} // namespace

TEST(DoubleToStr, PrintsKnownTexts)
{
    const struct
    {
        double value;
        qint64 decimals;
        const char *text;
    } rows[] = {
        {2.5, 0, "2"},
        {3.5, 0, "4"},
        {0.5, 0, "0"},
        {1.5, 0, "2"},
        {-0.0, 2, "-0.00"},
        {-0.4, 0, "-0"},
        {0.9999, 3, "1.000"},
        {9.5, 0, "10"},
        {99.9996, 3, "100.000"},
        {0.125, 2, "0.12"},
        {0.375, 2, "0.38"},
        {1, 3, "1.000"},
        {1.5, -1, "1.500000"},
        {0.1, 19, "0.1000000000000000056"},
        {INFINITY, 3, "inf"},
        {-INFINITY, 3, "-inf"},
        {std::nan(""), 3, "nan"},
        {-std::nan(""), 0, "nan"},
        {0x1p63, 1, "9223372036854775808.0"},
        {0x1p63 - 1024, 1, "9223372036854774784.0"},
        {1e-300, 15, "0.000000000000000"},
    };
    const DecimalComma comma;
    for (const auto &row : rows)
        EXPECT_EQ(ours(row.value, int(row.decimals)), row.text) << row.value << " with " << row.decimals;
}

TEST(DoubleToStr, CutsTheCountOfDecimals)
{
    EXPECT_EQ(doubleToStr(0.1, std::numeric_limits<qint64>::max()), doubleToStr(0.1, 1074));
    EXPECT_EQ(ours(5e-324, 1074), printed(5e-324, 1074));
    EXPECT_EQ(ours(-1.7976931348623157e308, 1074), printed(-1.7976931348623157e308, 1074));
}

TEST(DoubleToStr, AgreesWithTheCLibraryOnTies)
{
    for (int shift = 0; shift <= 24; ++shift) {
        for (int numerator = 0; numerator < 2000; numerator += 1 + shift / 8) {
            const double value = std::ldexp(numerator, -shift);
            for (int decimals = std::max(0, shift - 2); decimals <= std::min(shift + 1, 20); ++decimals)
                ASSERT_EQ(ours(value, decimals), printed(value, decimals)) << value << " with " << decimals;
        }
    }
}

TEST(DoubleToStr, AgreesWithTheCLibraryOnRandomValues)
{
    const auto seed = std::random_device()();
    SCOPED_TRACE(seed);
    std::mt19937_64 random(seed);
    for (int round = 0; round < 60'000; ++round) {
        const quint64 bits = random();
        // Any double, one near 1, and one with few digits.
        const double values[] = {std::bit_cast<double>(bits), std::ldexp(double(bits >> 11), -int(random() % 120)),
                                 double(qint64(bits) >> 40) / 1000};
        const int decimals = int(random() % 24);
        for (const double value : values) {
            if (std::isnan(value))
                continue;
            ASSERT_EQ(ours(value, decimals), printed(value, decimals))
                << std::hexfloat << value << " with " << decimals;
        }
    }
}

TEST(FloatToStr, PrintsTheFloatsExactValue)
{
    EXPECT_EQ(floatToStr(0.1F, 9), QStringLiteral("0.100000001"));
    EXPECT_EQ(floatToStr(2.5F, 0), QStringLiteral("2"));
    EXPECT_EQ(floatToStr(16777216.0F, 1), QStringLiteral("16777216.0"));
}
