// SPDX-FileCopyrightText: Dravelin contributors
// SPDX-License-Identifier: MIT

#include <dravelin/values.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>

using namespace dravelin;

TEST(Angles, AreComputedInDoublePrecision)
{
    EXPECT_EQ(degreesToRadians(180), 3.14159274F);
    EXPECT_EQ(radiansToDegrees(3.14159274F), 180.0F);
    // Single precision gives a neighbour of this.
    EXPECT_EQ(degreesToRadians(27), float(27 * 0.017453292519943295));
}

TEST(RandomValueBetween, KeepsToItsBounds)
{
    constexpr qint32 Least = std::numeric_limits<qint32>::min(), Most = std::numeric_limits<qint32>::max();
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(randomValueBetween(5, 5), 5);
        EXPECT_EQ(randomValueBetween(5, 4), 5) << "no value between";
        EXPECT_EQ(randomValueBetween(Least, Most), Least) << "2^32 values between";
        const qint32 wrapped = randomValueBetween(Most, Least); // Most + 0 or Most + 1 in 32 bits
        EXPECT_TRUE(wrapped == Most || wrapped == Least) << wrapped;
    }
}

TEST(RandomValueBetween, IsUniform)
{
    constexpr int Rounds = 60'000;
    std::array<int, 6> counts{};
    for (int i = 0; i < Rounds; ++i)
        ++counts.at(std::size_t(randomValueBetween(-2, 3) + 2));
    // Ten standard deviations of a count (91) either way.
    const auto [least, most] = std::minmax_element(counts.begin(), counts.end());
    EXPECT_GT(*least, Rounds / 6 - 910);
    EXPECT_LT(*most, Rounds / 6 + 910);
}
