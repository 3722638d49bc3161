// The tabs "Pop Units -  Aggt. Schema" and "Causes of Burden".

#include "setup_test_support.h"
#include "study/study_setup.h"
#include "study/study_setup_causes.h"
#include "study/study_setup_scheme.h"

using namespace vesk;
using namespace vesk::test;

namespace {

class SchemeCausesTest : public SetupTest {
protected:
    void SetUp() override {
        SetupTest::SetUp();
        ASSERT_TRUE(applyNewStudy(ctx(), {"S1", "2001,2002", "First"}).applied);
        prompts.clear();
    }
    QStringList causeColumn(const GridModel& g) {
        QStringList out;
        for (int r = 1; r < g.rows(); ++r)
            out << g.textMatrix(r, 0) + "=" + g.textMatrix(r, kCauseChoiceColumn);
        return out;
    }
};

} // namespace

TEST_F(SchemeCausesTest, SchemeBlanksAreRefusedInTheirOrder) {
    EXPECT_FALSE(applyScheme(ctx(), {"", "", "", ""}, "S1"));
    EXPECT_FALSE(applyScheme(ctx(), {"SCH", "", "", ""}, "S1"));
    EXPECT_FALSE(applyScheme(ctx(), {"SCH", "District", " ", ""}, "S1"));
    EXPECT_FALSE(applyScheme(ctx(), {"SCH", "District", "State", ""}, "S1"));
    EXPECT_EQ(prompts.messages(),
              QStringList({"PAGSch is blank Append record is not possible", "BPUDscrptr are not entered",
                           "PAG1Dscrptr are not entered", "PAG2Dscrptr are not entered"}));
    EXPECT_TRUE(rows("SELECT * FROM _DfnBPUPAGDscrptrs").isEmpty());
}

TEST_F(SchemeCausesTest, ASchemeIsAddedThenEditedAndGivenToTheStudy) {
    ASSERT_TRUE(applyScheme(ctx(), {"SCH", "District", "State", "Nation"}, "S1"));
    EXPECT_EQ(rows("SELECT PAGSch, BPU, PAG1, PAG2 FROM _DfnBPUPAGDscrptrs"),
              QStringList({"SCH|District|State|Nation"}));
    EXPECT_EQ(rows("SELECT PAGSch FROM _DctBDS WHERE BDSId = 'S1'"), QStringList({"SCH", "SCH"}));
    EXPECT_EQ(ctx().LblBPU, "District");
    EXPECT_EQ(ctx().LblPAG1, "State");
    EXPECT_EQ(ctx().LblPAG2, "Nation");
    EXPECT_EQ(ctx().CurPAGSch, "SCH");
    EXPECT_EQ(menus.menuCaption("mnu_pag2"), "Nation");
    EXPECT_EQ(menus.menuCaption("mnu_Pag1Results"), "State");
    ASSERT_TRUE(applyScheme(ctx(), {"SCH", "Block", "State", "Nation"}, "S1"));
    EXPECT_EQ(rows("SELECT PAGSch, BPU FROM _DfnBPUPAGDscrptrs"), QStringList({"SCH|Block"}));
    EXPECT_EQ(menus.menuCaption("mnu_bpu"), "Block");
    EXPECT_TRUE(prompts.messages().isEmpty());
}

TEST_F(SchemeCausesTest, SchemesArePickedAndShown) {
    EXPECT_TRUE(schemeIds(*db).isEmpty());
    EXPECT_EQ(prompts.messages(), QStringList({"No Population Aggregate Schema in the Database"}));
    prompts.clear();
    EXPECT_FALSE(pickScheme(*db, "NONE"));
    EXPECT_FALSE(studyScheme(*db, "S1"));
    EXPECT_EQ(prompts.messages(), QStringList({"NO RECORDS", "NO RECORDS"}));
    exec("INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES ('A', 'Town', 'Region', 'Land'), "
         "('B', 'Village', 'Block', 'State')");
    prompts.clear();
    EXPECT_TRUE(checkNewSchemeId(*db, "C"));
    EXPECT_FALSE(checkNewSchemeId(*db, "A"));
    EXPECT_EQ(prompts.messages(), QStringList({" Already PAGSch : Arecord exist in the _DfnBPUPAGDscrptrs"}));
    EXPECT_EQ(schemeIds(*db), QStringList({"A", "B"}));
    const auto b = pickScheme(*db, "B");
    ASSERT_TRUE(b);
    EXPECT_EQ(b->bpu, "Village");
    EXPECT_EQ(b->pag2, "State");
    exec("UPDATE _DctBDS SET PAGSch = 'A'");
    const auto shown = studyScheme(*db, "S1");
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->scheme, "A");
    EXPECT_EQ(shown->pag1, "Region");
}

TEST_F(SchemeCausesTest, CausesAreSelectedUnselectedAndSwapped) {
    for (const char* code : {"A0101", "A0102", "B0101"})
        addCause(code);
    GridModel grid;
    ASSERT_TRUE(fillCauseGrid(*db, "s1", grid)); // found by the upper-cased name
    EXPECT_EQ(grid.textMatrix(0, 0), "Cobcd");
    EXPECT_EQ(grid.textMatrix(0, 1), "Disease");
    EXPECT_EQ(grid.textMatrix(0, 2), "S1");
    EXPECT_EQ(causeColumn(grid), QStringList({"A0101=False", "A0102=False", "B0101=False"}));
    ASSERT_TRUE(toggleCause(*db, "S1", grid, 2));
    EXPECT_EQ(rows("SELECT CobCd FROM _DctBDM WHERE S1 <> 0"), QStringList({"A0102"}));
    ASSERT_TRUE(swapCauses(*db, "S1"));
    EXPECT_EQ(rows("SELECT CobCd FROM _DctBDM WHERE S1 <> 0 ORDER BY CobCd"),
              QStringList({"A0101", "B0101"}));
    ASSERT_TRUE(setAllCauses(*db, "S1", true));
    EXPECT_EQ(value("SELECT count(*) FROM _DctBDM WHERE S1 <> 0"), "3");
    ASSERT_TRUE(setAllCauses(*db, "S1", false));
    EXPECT_EQ(value("SELECT count(*) FROM _DctBDM WHERE S1 <> 0"), "0");
    // A study without a column has nothing to change.
    EXPECT_FALSE(setAllCauses(*db, "S9", true));
    EXPECT_FALSE(fillCauseGrid(*db, "S9", grid));
}

TEST_F(SchemeCausesTest, ApplyOnCausesSwitchesTheMenusAndLoadsTheCauses) {
    addCause("A0101");
    addCause("A0102");
    EXPECT_EQ(applyCauses(ctx(), "S1"), 0);
    for (const char* item : {"mnu_studyInp", "mnu_Daly", "mnu_Compute"})
        EXPECT_FALSE(menus.isMenuEnabled(item)) << item;
    EXPECT_FALSE(ctx().MtxCobCd.isArray());
    EXPECT_EQ(errorStoreCount(), 1);
    setAllCauses(*db, "S1", true);
    EXPECT_EQ(applyCauses(ctx(), "S1"), 2);
    for (const char* item : {"mnu_studyInp", "mnu_Daly", "mnu_Compute"})
        EXPECT_TRUE(menus.isMenuEnabled(item)) << item;
    ASSERT_TRUE(ctx().MtxCobCd.isArray());
    EXPECT_EQ(ctx().MtxCobCd.array().size(0), 2);
    EXPECT_EQ(applyCauses(ctx(), "NOPE"), -1);
}

TEST_F(SchemeCausesTest, SequelaMapsAreEditedAndTheFlagFollows) {
    EXPECT_TRUE(sequelaList(*db).isEmpty());
    EXPECT_EQ(
        prompts.messages(),
        QStringList(
            {"Dictionaries are not imported\nPlease import from File - Import  -  Dictinaries and maps"}));
    addCause("A0101", "Tuberculosis");
    addCause("A0102", "Measles");
    exec("INSERT INTO _DctBDMSqla (SqlaCd, Sequela) VALUES ('SQ1', 'Episode'), ('SQ2', 'Blindness')");
    prompts.clear();
    ASSERT_EQ(sequelaList(*db).size(), 2);
    EXPECT_FALSE(mapCauseToSequela(*db, "SQ1", "Z9999"));
    EXPECT_EQ(prompts.messages(), QStringList({"This COBcd doesnot exist"}));
    ASSERT_TRUE(mapCauseToSequela(*db, "SQ1", "A0101"));
    ASSERT_TRUE(mapCauseToSequela(*db, "SQ2", "A0101"));
    prompts.clear();
    EXPECT_FALSE(mapCauseToSequela(*db, "SQ1", "A0101"));
    EXPECT_EQ(prompts.messages(),
              QStringList({"This Cobcd has allready been mapped to the above Sequelacd"}));
    EXPECT_EQ(value("SELECT Sqla FROM _DctBDM WHERE CobCd = 'A0101'"), "-1");
    GridModel grid;
    fillSequelaCauseGrid(*db, "SQ1", grid);
    EXPECT_EQ(grid.textMatrix(0, 0), "Cobcd");
    EXPECT_EQ(grid.textMatrix(0, 1), "Cobcdname");
    EXPECT_EQ(grid.textMatrix(1, 0), "A0101");
    EXPECT_EQ(grid.textMatrix(1, 1), "Tuberculosis");
    EXPECT_EQ(grid.rows(), 3); // the row to type the next one into
    // Removing one of two sequelae keeps the flag; removing the last clears it.
    ASSERT_TRUE(unmapCauseFromSequela(*db, "SQ1", "A0101"));
    EXPECT_EQ(value("SELECT Sqla FROM _DctBDM WHERE CobCd = 'A0101'"), "-1");
    ASSERT_TRUE(unmapCauseFromSequela(*db, "SQ2", "A0101"));
    EXPECT_EQ(value("SELECT Sqla FROM _DctBDM WHERE CobCd = 'A0101'"), "0");
    EXPECT_TRUE(rows("SELECT * FROM _MapBDMSqla").isEmpty());
}
