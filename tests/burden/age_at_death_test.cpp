// Ages at death by age-sex group, and the basic arrays mapped to age-sex groups, worked by hand.

#include "burden/age_at_death.h"
#include "burden/basic_arrays.h"
#include "burden/computation_arrays.h"
#include "demography/open_interval.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

Cell labels(std::initializer_list<const char*> items) {
    CellArray a({int(items.size())});
    int i = 0;
    for (const char* s : items)
        a(i++) = Cell(s);
    return Cell(std::move(a));
}

// Single years 0..ages-1 of one year and unit: female and male values given by functions of age.
template <class F, class M> CellArray singleYears(int ages, F female, M male) {
    CellArray a({1, 1, ages, kAgeLastColumn + 1});
    for (int x = 0; x < ages; ++x) {
        a(0, 0, x, kAgeBai) = Cell(x);
        a(0, 0, x, kAgeWidth) = x + 1 < ages ? Cell(1) : Cell("W");
        a(0, 0, x, kAgeFemale) = Cell(female(x));
        a(0, 0, x, kAgeMale) = Cell(male(x));
        a(0, 0, x, kAgeBoth) = Cell(female(x) + male(x));
    }
    return a;
}

TEST(MapBasicToAsg, GroupsCollectTheirRowsOpenOnesToTheEnd) {
    const CellArray a = singleYears(90, [](int) { return 1.0; }, [](int x) { return double(x); });
    const Cell m = FnMapBasicToAsg(labels({"M0-4", "F0-4", "M85-w", "P80-w"}), Cell(a));
    ASSERT_TRUE(m.isArray());
    const CellArray& g = m.array();
    // Sorted as text: F0-4, M0-4, M85-w, P80-w.
    EXPECT_EQ(g(0, 0, 0, kAsgMapAsg).toString(), QStringLiteral("F0-4"));
    EXPECT_EQ(g(0, 0, 0, kAsgMapValue).toDouble(), 5.0);
    EXPECT_EQ(g(0, 0, 1, kAsgMapValue).toDouble(), 0 + 1 + 2 + 3 + 4);
    EXPECT_EQ(g(0, 0, 2, kAsgMapValue).toDouble(), 85 + 86 + 87 + 88 + 89); // the open group to the end
    EXPECT_EQ(g(0, 0, 3, kAsgMapValue).toDouble(), 10 + (80 + 81 + 82 + 83 + 84 + 85 + 86 + 87 + 88 + 89));
}

class AgeAtDeath : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(FnReadOAIGD(settings().MtxOAIGD, QStringLiteral(VESK_BIN_DIR "/Vesk.stp")));
    }
};

TEST_F(AgeAtDeath, ClosedGroupIsThePopulationWeightedMeanOfAgePlusFraction) {
    // F0-4 with 100 women at each age and IMR 50: fractions 0.23, 0.4, 0.5, 0.5, 0.5, so the mean is
    // (0.23 + 1.4 + 2.5 + 3.5 + 4.5) / 5 = 12.13 / 5 = 2.426.
    const CellArray pop = singleYears(10, [](int) { return 100.0; }, [](int) { return 50.0; });
    DemographicParameters p{"West", 0.01, 50};
    CellArray ages = FnAgeAtDeath(labels({"F0-4"}), pop, pop, 0, 0, p);
    EXPECT_NEAR(ages(0, 1).toDouble(), 2.426, 1e-12);
    for (auto [imr, f0] : {std::pair<double, double>{60, 0.23}, {60.5, 0.3}, {20, 0.15}}) {
        p.imr = imr;
        ages = FnAgeAtDeath(labels({"F0-0"}), pop, pop, 0, 0, p); // the year of birth alone
        EXPECT_NEAR(ages(0, 1).toDouble(), f0, 1e-15) << imr;
    }
}

TEST_F(AgeAtDeath, OpenGroupsFromTheFitAndNoneForBothSexes) {
    // Deaths of men: 1 at each age below 45 and 3 at each age from 45 to 89: Ratio = 135 / (35 + 135).
    const CellArray pop = singleYears(90, [](int) { return 100.0; }, [](int) { return 100.0; });
    const CellArray deaths = singleYears(90, [](int) { return 1.0; }, [](int x) { return x < 45 ? 1.0 : 3.0; });
    const DemographicParameters p{"West", 0.01, 30};
    const CellArray ages = FnAgeAtDeath(labels({"M85-w", "P85-w"}), pop, deaths, 0, 0, p);
    const double ratio = 135.0 / 170.0;
    EXPECT_NEAR(ages(0, 1).toDouble(), 85 + FnOIAGD("West", 85, ratio, 0.01).toDouble(), 1e-12);
    EXPECT_TRUE(ages(1, 1).isNull());
}

TEST_F(AgeAtDeath, UnitWithoutPopulationHasNullAges) {
    CellArray pop({1, 2, 10, kAgeLastColumn + 1});
    for (int x = 0; x < 10; ++x) {
        pop(0, 1, x, kAgeBai) = Cell(x);
        pop(0, 1, x, kAgeFemale) = Cell(10.0);
        pop(0, 1, x, kAgeMale) = Cell(10.0);
    }
    for (int x = 0; x < 10; ++x)
        pop(0, 0, x, kAgeBai) = Cell::null(); // the first unit has no population
    const Cell agd = AGDARR(labels({"F0-4", "M0-4"}), Cell(pop), Cell(pop),
                            [](int) { return DemographicParameters{"West", 0.0, 10}; });
    ASSERT_TRUE(agd.isArray());
    EXPECT_TRUE(agd.array()(0, 0, 0, 0, 0, kAgdAge).isNull());
    EXPECT_TRUE(agd.array()(0, 0, 0, 0, 1, kAgdAge).isNull());
    EXPECT_EQ(agd.array()(0, 0, 0, 0, 1, kAgdAsg).toString(), QStringLiteral("M0-4"));
    EXPECT_NEAR(agd.array()(0, 1, 0, 0, 0, kAgdAge).toDouble(), (0.09 + 1.4 + 2.5 + 3.5 + 4.5) / 5, 1e-12);
}

} // namespace
