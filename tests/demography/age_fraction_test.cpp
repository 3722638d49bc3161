// The exact age of death of an age-sex group from the fraction of its interval.

#include "demography/age_fraction.h"

#include <gtest/gtest.h>

using namespace vesk;

TEST(AgeFraction, BoundsOfTheLabel) {
    const auto b = ageGroupBounds("F0-4");
    ASSERT_TRUE(b);
    EXPECT_EQ(b->lower, 0.0);
    EXPECT_EQ(b->upper, 5.0);
    const auto open = ageGroupBounds("M80-w");
    ASSERT_TRUE(open);
    EXPECT_EQ(open->lower, 80.0);
    EXPECT_FALSE(open->upper);
    EXPECT_TRUE(ageGroupBounds("P15-W"));
    for (const char* bad : {"", "X", "F-4", "04", "F0-", "F0-4x"})
        EXPECT_FALSE(ageGroupBounds(bad)) << bad;
}

TEST(AgeFraction, LowerAgePlusTheFractionOfTheInterval) {
    EXPECT_EQ(*exactAgeOfDeath("F0-4", 0.5), 2.5);
    EXPECT_EQ(*exactAgeOfDeath("M15-29", 0.2), 18.0);
    EXPECT_EQ(*exactAgeOfDeath("F0-0", 0.1), 0.1);
    EXPECT_EQ(*exactAgeOfDeath("M80-w", 0.7), 80.0); // the open group: its lower age
    EXPECT_FALSE(exactAgeOfDeath("F0-4", 1.5));
    EXPECT_FALSE(exactAgeOfDeath("F0-4", -0.1));
    EXPECT_EQ(*exactAgeOfDeath("F0-4", 1), 5.0);
}
