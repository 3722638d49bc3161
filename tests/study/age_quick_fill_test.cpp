// The quick-fill lists and the upper-age checks of the age-interval dialog.

#include "asg_test_support.h"
#include "study/age_quick_fill.h"

using namespace vesk;

TEST(QuickFill, FiveYearLists) {
    EXPECT_EQ(FiveYrAgList(FirstYears::ZeroOneFour, 20), QList<int>({0, 1, 5, 10, 15, 20}));
    EXPECT_EQ(FiveYrAgList(FirstYears::ZeroOneTwoFour, 15), QList<int>({0, 1, 2, 5, 10, 15}));
    EXPECT_EQ(FiveYrAgList(FirstYears::ZeroToFour, 85).size(), 18);
    EXPECT_EQ(FiveYrAgList(FirstYears::ZeroToFour, 85).last(), 85);
    EXPECT_EQ(FiveAgeGroupList(), QList<int>({0, 5, 15, 45, 60}));
    EXPECT_EQ(SevenAgeGroupList(), QList<int>({0, 5, 15, 30, 45, 60, 70}));
    EXPECT_EQ(upperAgeChoices(), QList<int>({45, 50, 55, 60, 65, 70, 75, 80, 85}));
}

TEST(QuickFill, LimitsDefaultWheneverEitherIsZero) {
    VeskSettings s;
    s.MinMaxAge = 50;
    s.MaxMaxAge = 0;
    EXPECT_EQ(upperAgeLimits(s).min, 45);
    EXPECT_EQ(upperAgeLimits(s).max, 85);
    s.MaxMaxAge = 80;
    EXPECT_EQ(upperAgeLimits(s).min, 50);
    EXPECT_EQ(upperAgeLimits(s).max, 80);
}

TEST(QuickFill, TypedUpperAgeIncludesBothLimits) {
    const UpperAgeLimits lim{45, 85};
    EXPECT_EQ(checkTypedUpperAge("45", lim), UpperAgeCheck::Accepted);
    EXPECT_EQ(checkTypedUpperAge("85", lim), UpperAgeCheck::Accepted);
    EXPECT_EQ(checkTypedUpperAge("40", lim), UpperAgeCheck::OutOfRange);
    EXPECT_EQ(checkTypedUpperAge("90", lim), UpperAgeCheck::OutOfRange);
    EXPECT_EQ(checkTypedUpperAge("abc", lim), UpperAgeCheck::OutOfRange);
    EXPECT_EQ(checkTypedUpperAge("62", lim), UpperAgeCheck::NotDivisible);
    EXPECT_EQ(checkTypedUpperAge("", lim), UpperAgeCheck::Blank);
    EXPECT_EQ(
        typedUpperAgeMessage(UpperAgeCheck::OutOfRange, lim),
        "Entered value should be Greater than 45 less than 85\n Please check Misc Tab/Preferences form for "
        "MinmaxAge or MaxMaxAge");
    EXPECT_EQ(typedUpperAgeMessage(UpperAgeCheck::NotDivisible, lim),
              " The entered value should be divisble by 5");
}

TEST(QuickFill, ApplyMessages) {
    EXPECT_EQ(applyUpperAgeMessage(" "), "please fill  Upper/Last Age Group");
    EXPECT_EQ(applyUpperAgeMessage("63"), "The upper Age limit should be Divisible by 5");
    EXPECT_EQ(applyUpperAgeMessage("65"), "");
}
