// The standard life table the settings choose: KRO, the user's, WHO, and why none can serve.

#include "demography/standard_life_table.h"
#include "straight_life_table.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

class StandardLifeTableChoice : public ::testing::Test {
protected:
    void SetUp() override {
        s.MtxLTSKRO = vesk::test::straightLifeTable();
        s.MtxLTSWHO = vesk::test::straightLifeTable();
        s.MtxLTSWHO(40, 1) = Cell("50");
        user = vesk::test::straightLifeTable();
        user(40, 1) = Cell("60");
    }

    VeskSettings s;
    PreferencesControls p;
    CellArray user;
};

} // namespace

TEST_F(StandardLifeTableChoice, OneIsTheKroTable) {
    s.LifeTblType = 1;
    const StandardLifeTable chosen = standardLifeTable(s, p);
    EXPECT_EQ(chosen.table, &s.MtxLTSKRO);
    EXPECT_EQ(chosen.lack, StandardLifeTableLack::None);
    EXPECT_STREQ(chosen.block, "[Standard Life Table-KRO]");
}

TEST_F(StandardLifeTableChoice, ThreeIsTheWhoTable) {
    s.LifeTblType = 3;
    const StandardLifeTable chosen = standardLifeTable(s, p);
    EXPECT_EQ(chosen.table, &s.MtxLTSWHO);
    EXPECT_EQ(chosen.lack, StandardLifeTableLack::None);
    EXPECT_STREQ(chosen.block, "[Standard Life Table-WHO]");
}

TEST_F(StandardLifeTableChoice, AnyOtherNumberKeepsTheKroTable) {
    for (int type : {0, 4, -1}) {
        s.LifeTblType = type;
        EXPECT_EQ(standardLifeTable(s, p).table, &s.MtxLTSKRO) << type;
    }
}

TEST_F(StandardLifeTableChoice, TwoIsTheUsersTableWhenOneIsLoaded) {
    s.LifeTblType = 2;
    p.userLifeTable = user;
    p.userLifeTableLoaded = true;
    const StandardLifeTable chosen = standardLifeTable(s, p);
    EXPECT_EQ(chosen.table, &p.userLifeTable);
    EXPECT_EQ(chosen.lack, StandardLifeTableLack::None);
    EXPECT_STREQ(chosen.block, "[User Defined Life Table]");
    EXPECT_EQ((*chosen.table)(40, 1).toString(), "60");
}

TEST_F(StandardLifeTableChoice, TwoWithoutAUserTableHasNone) {
    s.LifeTblType = 2;
    StandardLifeTable chosen = standardLifeTable(s, p);
    EXPECT_EQ(chosen.table, nullptr);
    EXPECT_EQ(chosen.lack, StandardLifeTableLack::NoUserTable);
    // A table kept but not marked as loaded does not count, nor one marked loaded but empty.
    p.userLifeTable = user;
    EXPECT_EQ(standardLifeTable(s, p).lack, StandardLifeTableLack::NoUserTable);
    p.userLifeTable = CellArray();
    p.userLifeTableLoaded = true;
    chosen = standardLifeTable(s, p);
    EXPECT_EQ(chosen.table, nullptr);
    EXPECT_EQ(chosen.lack, StandardLifeTableLack::NoUserTable);
}

TEST_F(StandardLifeTableChoice, AMissingFixedBlockIsSaidAndItsEmptyTableKept) {
    s.LifeTblType = 3;
    s.MtxLTSWHO = CellArray();
    StandardLifeTable chosen = standardLifeTable(s, p);
    EXPECT_EQ(chosen.lack, StandardLifeTableLack::MissingBlock);
    EXPECT_EQ(chosen.table, &s.MtxLTSWHO);
    EXPECT_STREQ(chosen.block, "[Standard Life Table-WHO]");
    s.LifeTblType = 1;
    s.MtxLTSKRO = CellArray();
    chosen = standardLifeTable(s, p);
    EXPECT_EQ(chosen.lack, StandardLifeTableLack::MissingBlock);
    EXPECT_STREQ(chosen.block, "[Standard Life Table-KRO]");
}

TEST_F(StandardLifeTableChoice, TheGlobalSettingsByDefault) {
    const VeskSettings saved = settings();
    settings().LifeTblType = 3;
    EXPECT_EQ(standardLifeTable().table, &settings().MtxLTSWHO);
    settings() = saved;
}
