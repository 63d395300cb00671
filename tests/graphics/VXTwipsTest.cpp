#include "graphics/VXTwips.h"

#include <gtest/gtest.h>

#include <limits>

TEST(VXTwips, HalfATwipGoesUpOnBothSidesOfZero) {
    EXPECT_EQ(VXToTwips(0.125), 3);
    EXPECT_EQ(VXToTwips(0.1249), 2);
    EXPECT_EQ(VXToTwips(-0.125), -2);
    EXPECT_EQ(VXToTwips(-0.1251), -3);
    EXPECT_EQ(VXToTwips(-0.025), 0);
    EXPECT_EQ(VXToTwips(-0.0251), -1);
    EXPECT_EQ(VXToTwips(-1.0), -20);
}

TEST(VXTwips, WhatThirtyTwoBitsCannotHoldSaturates) {
    constexpr VXReal kInfinity = std::numeric_limits<VXReal>::infinity();
    EXPECT_EQ(VXToTwips(107374182.35), 2147483647);
    EXPECT_EQ(VXToTwips(107374182.4), 2147483647);
    EXPECT_EQ(VXToTwips(kInfinity), 2147483647);
    EXPECT_EQ(VXToTwips(-107374182.35), -2147483647);
    EXPECT_EQ(VXToTwips(-107374182.4), INT_MIN);
    EXPECT_EQ(VXToTwips(-107374182.41), INT_MIN);
    EXPECT_EQ(VXToTwips(-107374182.43), INT_MIN);
    EXPECT_EQ(VXToTwips(-kInfinity), INT_MIN);
    EXPECT_EQ(VXToTwips(std::numeric_limits<VXReal>::quiet_NaN()), 0);
}
