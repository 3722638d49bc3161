// The named dimensions and slots of the computation's arrays, pinned to the table they come from, so
// that a slip in a constant fails here before it moves a number into the wrong slot.

#include "burden/computation_arrays.h"
#include "platform/cell_array.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace vesk;

namespace {
std::vector<std::string> texts(const auto& names) {
    return std::vector<std::string>(names.begin(), names.end());
}
} // namespace

TEST(ComputationArrays, SixDimensionsInTheOrderYearBpuDapCauseGroupSlot) {
    EXPECT_EQ(kComputationRank, 6);
    EXPECT_EQ(kDimYear, 0);
    EXPECT_EQ(kDimBPU, 1);
    EXPECT_EQ(kDimDAP, 2);
    EXPECT_EQ(kDimCause, 3);
    EXPECT_EQ(kDimAsg, 4);
    EXPECT_EQ(kDimSlot, 5);
    EXPECT_EQ(kInputDap, 0);
    EXPECT_EQ(kNoCause, 0);
}

TEST(ComputationArrays, SequelaeSitInTheFirstCellOfTheCause) {
    EXPECT_EQ(kSequelaHolderAsg, 0);
    EXPECT_EQ(kSequelaHolderSlot, 0);
    EXPECT_EQ(kSqlaRank, 3);
    EXPECT_EQ(kSqlaDimSequela, 0);
    EXPECT_EQ(kSqlaDimAsg, 1);
    EXPECT_EQ(kSqlaDimSlot, 2);
    EXPECT_EQ(kSqlaCodeAsg, 0);
    EXPECT_EQ(kSqlaCodeSlot, 0);
}

TEST(ComputationArrays, SlotsOfTheInputs) {
    EXPECT_EQ(kAdwipAsg, 1);
    EXPECT_EQ(kAdwipAgo, 2);
    EXPECT_EQ(kAdwipDurn, 3);
    EXPECT_EQ(kAdwipDwt, 4);
    EXPECT_EQ(kAdwipIncident, 5);
    EXPECT_EQ(kAdwipAgp, 6);
    EXPECT_EQ(kAdwipPrevalent, 7);
    EXPECT_EQ(kAdwipLastSlot, 7);

    EXPECT_EQ(kDbcAsg, 1);
    EXPECT_EQ(kDbcDeaths, 2);
    EXPECT_EQ(kDbcLastSlot, 2);

    EXPECT_EQ(kAgdAsg, 0);
    EXPECT_EQ(kAgdAge, 1);
    EXPECT_EQ(kAgdLastSlot, 1);

    EXPECT_EQ(kYllPerDeathAsg, 0);
    EXPECT_EQ(kYllPerDeathValue, 1);
    EXPECT_EQ(kYllPerDeathLastSlot, 1);
}

TEST(ComputationArrays, SlotsOfTheResultsAndTheirMeasureNames) {
    EXPECT_EQ(kYldAsg, 1);
    EXPECT_EQ(kYldIYLD, 2);
    EXPECT_EQ(kYldPYLD, 3);
    EXPECT_EQ(kYldLastSlot, 3);
    EXPECT_EQ(kYllAsg, 1);
    EXPECT_EQ(kYllYLL, 2);
    EXPECT_EQ(kYllLastSlot, 2);
    EXPECT_EQ(kDalyAsg, 1);
    EXPECT_EQ(kDalyIDALY, 2);
    EXPECT_EQ(kDalyPDALY, 3);
    EXPECT_EQ(kDalyLastSlot, 3);

    // One name for each slot, the name of a slot at its index.
    EXPECT_EQ(texts(kYldMeasureNames), (std::vector<std::string>{"Sqla", "ASG", "IYLD", "PYLD"}));
    EXPECT_EQ(texts(kYllMeasureNames), (std::vector<std::string>{"Sqla", "ASG", "YLL"}));
    EXPECT_EQ(texts(kDalyMeasureNames), (std::vector<std::string>{"Sqla", "ASG", "IDALY", "PDALY"}));
    EXPECT_STREQ(kYldMeasureNames[kYldPYLD], "PYLD");
    EXPECT_STREQ(kYllMeasureNames[kYllYLL], "YLL");
    EXPECT_STREQ(kDalyMeasureNames[kDalyIDALY], "IDALY");
}

TEST(ComputationArrays, LabelArraysDescribeTheSixAxes) {
    EXPECT_EQ(kLblEntries, 6);
    EXPECT_EQ(kLblYears, 0);
    EXPECT_EQ(kLblBPUs, 1);
    EXPECT_EQ(kLblDAPs, 2);
    EXPECT_EQ(kLblCauses, 3);
    EXPECT_EQ(kLblAsgs, 4);
    EXPECT_EQ(kLblMeasures, 5);
}

TEST(ComputationArrays, ColumnsOfTheMatrices) {
    // MtxDAP: DAP id, r, K, Beta, C.
    EXPECT_EQ(kDapId, 0);
    EXPECT_EQ(kDapR, 1);
    EXPECT_EQ(kDapK, 2);
    EXPECT_EQ(kDapBeta, 3);
    EXPECT_EQ(kDapC, 4);
    EXPECT_EQ(kDapLastColumn, 4);
    EXPECT_EQ(kCobCdCode, 0);
    EXPECT_EQ(kCobCdSequelae, 1);
    EXPECT_EQ(kDwtCobCd, 0);
    EXPECT_EQ(kDwtFirstWeight, 1);
    EXPECT_EQ(kDwtWeightCycle, 5);
}

TEST(ComputationArrays, PopulationAndDeathsByAgeRow) {
    EXPECT_EQ(kAgeArrRank, 4);
    EXPECT_EQ(kAgeDimYear, 0);
    EXPECT_EQ(kAgeDimBPU, 1);
    EXPECT_EQ(kAgeDimRow, 2);
    EXPECT_EQ(kAgeDimColumn, 3);
    EXPECT_EQ(kAgeBai, 0);
    EXPECT_EQ(kAgeWidth, 1);
    EXPECT_EQ(kAgeFemale, 2);
    EXPECT_EQ(kAgeMale, 3);
    EXPECT_EQ(kAgeBoth, 4);
    EXPECT_EQ(kAgeLastColumn, 4);
    EXPECT_STREQ(kOpenWidth, "W");

    EXPECT_EQ(kAsgMapRank, 4);
    EXPECT_EQ(kAsgMapDimYear, 0);
    EXPECT_EQ(kAsgMapDimBPU, 1);
    EXPECT_EQ(kAsgMapDimAsg, 2);
    EXPECT_EQ(kAsgMapDimSlot, 3);
    EXPECT_EQ(kAsgMapAsg, 0);
    EXPECT_EQ(kAsgMapValue, 1);
    EXPECT_EQ(kAsgMapLastSlot, 1);
}

// The constants size an array and reach its cells as the loops will.
TEST(ComputationArrays, ShapeAnArrYldAndReachItsSlots) {
    const int years = 1, bpus = 2, daps = 3, causes = 4, groups = 5;
    std::vector<int> sizes(kComputationRank);
    sizes[kDimYear] = years;
    sizes[kDimBPU] = bpus;
    sizes[kDimDAP] = daps;
    sizes[kDimCause] = causes;
    sizes[kDimAsg] = groups;
    sizes[kDimSlot] = kYldLastSlot + 1;
    CellArray yld = CellArray::fromSizes(sizes);
    EXPECT_EQ(yld.rank(), 6);
    EXPECT_EQ(yld.ubound(kDimDAP), 2);
    EXPECT_EQ(yld.ubound(kDimSlot), 3);
    yld(0, 1, 2, 3, 4, kYldPYLD) = Cell(1.5);
    EXPECT_DOUBLE_EQ(yld.at({0, 1, 2, 3, 4, 3}).toDouble(), 1.5);
    EXPECT_THROW(yld(0, 1, 2, 3, 4, kYldLastSlot + 1), std::out_of_range);
}
