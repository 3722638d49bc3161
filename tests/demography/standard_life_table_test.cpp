// The standard life table the settings choose: KRO, the user's, WHO, and why none can serve.

#include "demography/standard_life_table.h"
#include "demography/standard_table_texts.h"
#include "straight_life_table.h"

#include <QFile>
#include <QTemporaryDir>
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

TEST_F(StandardLifeTableChoice, GetUsrLifeTableIsACopyOfTheUsersTableOrNoArray) {
    EXPECT_TRUE(GetUsrLifeTable(p).isEmpty());
    EXPECT_FALSE(GetUsrLifeTable(p).isArray());
    p.userLifeTable = user;
    EXPECT_FALSE(GetUsrLifeTable(p).isArray()) << "kept but not loaded";
    p.userLifeTableLoaded = true;
    const Cell got = GetUsrLifeTable(p);
    ASSERT_TRUE(got.isArray());
    EXPECT_EQ(got.array(), user);
    p.userLifeTable(40, 1) = Cell("61"); // a copy: a later change of the table leaves it
    EXPECT_EQ(got.array()(40, 1), Cell("60"));
    p.userLifeTable = CellArray();
    EXPECT_FALSE(GetUsrLifeTable(p).isArray());
}

TEST_F(StandardLifeTableChoice, TheNoteOfEachChoice) {
    namespace t = standard_table_texts;
    EXPECT_EQ(standardLifeTableNote(1), QString::fromUtf8(t::kNoteKro));
    EXPECT_EQ(standardLifeTableNote(2), QString::fromUtf8(t::kNoteUser));
    EXPECT_EQ(standardLifeTableNote(3), QString::fromUtf8(t::kNoteWho));
    EXPECT_EQ(standardLifeTableNote(0), QString::fromUtf8(t::kNoteKro));
    EXPECT_TRUE(standardLifeTableNote(1).startsWith(
        "West Level 26 for Females is used as the basis for Female Standard Life Expectancy. West Level 25 "
        "for Females is used as the basis for Male Standard Life Expectancy."));
    EXPECT_TRUE(standardLifeTableNote(1).contains("Coale"));
    EXPECT_TRUE(standardLifeTableNote(1).contains("piece-wise exponential"));
    EXPECT_TRUE(standardLifeTableNote(3).startsWith("Interpolated values are taken from WHO."));
    EXPECT_TRUE(standardLifeTableNote(3).contains("National Burden of Disease Studies: A Practical Guide"));
    EXPECT_EQ(
        standardLifeTableNote(2),
        "Defined by you. Either by Entering/Editing data into the spreadsheet shown or by using the menu "
        "option File->Import->User Defined Standard Life Table");
}

TEST(StandardLifeTableFile, TheTablesOfASettingsFileAndItsChoices) {
    QTemporaryDir dir;
    const QString path = dir.filePath("Vesk.stp");
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[USRLTS]\r\nUsrLTSTblNm=MINE\r\n[LIFE TABLE]\r\n[LIFE TABLE TYPE]=2\r\n"
            "[Standard Life Table-KRO]\r\n[BAI]:0|1\r\n[EXM]:80|79.5\r\n[EXF]:82.5|82\r\n"
            "[Standard Life Table-WHO]\r\n[BAI]:0|1\r\n[EXM]:80|79\r\n[EXF]:82.5|81\r\n");
    f.close();
    VeskSettings s;
    PreferencesControls p;
    QString error;
    ASSERT_TRUE(readStandardLifeTables(path, s, p, &error)) << error.toStdString();
    EXPECT_EQ(s.LifeTblType, 2);
    EXPECT_EQ(s.UsrLTSTblNm, "MINE");
    EXPECT_EQ(s.MtxLTSKRO(1, 2), Cell("79.5"));
    EXPECT_EQ(s.MtxLTSWHO(1, 1), Cell("81"));
    EXPECT_FALSE(p.userLifeTableLoaded);
    ASSERT_TRUE(f.open(QIODevice::Append));
    f.write("[User Defined Life Table]\r\n[BAI]:0|1\r\n[EXM]:70|69\r\n[EXF]:75|74\r\n");
    f.close();
    ASSERT_TRUE(readStandardLifeTables(path, s, p, &error));
    EXPECT_TRUE(p.userLifeTableLoaded);
    EXPECT_EQ(p.userLifeTable(1, 1), Cell("74"));

    VeskSettings bare;
    EXPECT_FALSE(readStandardLifeTables(dir.filePath("none.stp"), bare, p, &error));
    EXPECT_EQ(error, "cannot read the settings file " + dir.filePath("none.stp"));
}
