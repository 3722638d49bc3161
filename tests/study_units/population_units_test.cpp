// Population units of a study: copying, the map, Apply in its order, the deletion rules.

#include "database/study_context.h"
#include "study/asg_data.h"
#include "study/population_units.h"
#include "study_units_support.h"

namespace vesk::test {

namespace {

class PopulationUnitsTest : public StudyDbTest {
protected:
    PopulationUnits units() { return PopulationUnits(*db, QStringLiteral("S1")); }

    // One nation, two provinces and the units given, all mapped to P1 unless `map` says otherwise.
    bool applyUnits(const QList<UnitRow>& bpus, const QList<MapPair>& map) {
        return units().apply(currentLevelTerms(), {QStringLiteral("N1"), QStringLiteral("Nation one"), {}},
                             {{QStringLiteral("P1"), QStringLiteral("Province one"), {}},
                              {QStringLiteral("P2"), QStringLiteral("Province two"), {}}},
                             bpus, map);
    }
    void addPop(const QString& bpu) {
        exec(QStringLiteral("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES (?, 2000, 0, 10, 11)"),
             {bpu});
    }
};

TEST_F(PopulationUnitsTest, TermsComeFromTheStudysScheme) {
    const LevelTerms t = currentLevelTerms();
    EXPECT_EQ(t.bpu, QStringLiteral("District"));
    EXPECT_EQ(t.pag1, QStringLiteral("Province"));
    EXPECT_EQ(t.pag2, QStringLiteral("Nation"));
    studyContext().LblBPU.clear();
    EXPECT_EQ(currentLevelTerms().bpu, QStringLiteral("BPU"));
}

TEST_F(PopulationUnitsTest, ApplyWritesEveryLevelAndReloadsTheContext) {
    ASSERT_TRUE(applyUnits({{"B1", "Unit one", "2"}, {"B2", "Unit two", "1"}}, {{"B1", "P1"}, {"B2", "P2"}}));
    EXPECT_EQ(rows("SELECT BDSId, PAG2Id, PAG2Name FROM _DctPAG2"), QStringList({"S1|N1|Nation one"}));
    EXPECT_EQ(rows("SELECT BDSId, PAG1Id, PAG1Name, PAG2Id FROM _DctPAG1 ORDER BY PAG1Id"),
              QStringList({"S1|P1|Province one|N1", "S1|P2|Province two|N1"}));
    EXPECT_EQ(rows("SELECT BDSId, BPUID, BPUName, Prty, PAG1Id FROM _DctBPU ORDER BY BPUID"),
              QStringList({"S1|B1|Unit one|2|P1", "S1|B2|Unit two|1|P2"}));
    EXPECT_EQ(messages(), QStringList({"Population Units updated successfully"}));
    EXPECT_EQ(prompts.shown().last().title, QStringLiteral("VESK"));
    // The context's lists: the units in Prty order, the aggregates.
    const Cell& bpus = studyContext().VctrBPULst;
    ASSERT_TRUE(bpus.isArray());
    EXPECT_EQ(bpus.array()(0).toString(), QStringLiteral("B2"));
    EXPECT_EQ(bpus.array()(1).toString(), QStringLiteral("B1"));
    ASSERT_TRUE(studyContext().VctrPAGLst.isArray());
    EXPECT_EQ(studyContext().VctrPAGLst.array().size(), 2);
}

TEST_F(PopulationUnitsTest, ApplyWithoutAMapStopsFirst) {
    EXPECT_FALSE(applyUnits({{"B1", "Unit one", "1"}}, {}));
    EXPECT_EQ(messages(), QStringList({" bpu-pag1 map not set:"}));
    EXPECT_EQ(value("SELECT count(*) FROM _DctPAG2"), "0");
}

TEST_F(PopulationUnitsTest, ApplyWithABlankPAG2IdNamesTheSchemesTerm) {
    EXPECT_FALSE(units().apply(currentLevelTerms(), {" ", "Nation", {}}, {{"P1", "Province one", {}}},
                               {{"B1", "Unit one", "1"}}, {{"B1", "P1"}}));
    EXPECT_EQ(messages(), QStringList({"Nation Id should not be blank."}));
    EXPECT_EQ(value("SELECT count(*) FROM _DctPAG1"), "0");
}

// A unit in the grid without a pair is not saved and is listed; a unit already in the table keeps
// its old row.
TEST_F(PopulationUnitsTest, ApplyWithAnUnmappedUnitListsItAndKeepsItsOldRow) {
    ASSERT_TRUE(applyUnits({{"B1", "Unit one", "1"}, {"B2", "Unit two", "2"}}, {{"B1", "P1"}, {"B2", "P1"}}));
    prompts.clear();
    ASSERT_TRUE(applyUnits({{"B1", "Renamed", "1"}, {"B2", "Renamed two", "5"}, {"B3", "Unit three", "3"}},
                           {{"B1", "P2"}}));
    EXPECT_EQ(messages(),
              QStringList({"The Following District were not mapped with any of the Province\nB2,\nB3,\n"
                           "these wil not be saved if they are not mapped.",
                           "Population Units updated successfully"}));
    EXPECT_EQ(prompts.shown().first().title, QStringLiteral("Vesk"));
    EXPECT_EQ(rows("SELECT BPUID, BPUName, Prty, PAG1Id FROM _DctBPU ORDER BY BPUID"),
              QStringList({"B1|Renamed|1|P2", "B2|Unit two|2|P1"}));
}

TEST_F(PopulationUnitsTest, ASecondSetReplacesTheUnitsPair) {
    QList<MapPair> map;
    setMapPair(map, "B1", "P1");
    setMapPair(map, "B2", "P1");
    setMapPair(map, "B1", "P2");
    EXPECT_EQ(map, QList<MapPair>({{"B1", "P2"}, {"B2", "P1"}}));
    removeMapPairsOfPAG1(map, "P1");
    EXPECT_EQ(map, QList<MapPair>({{"B1", "P2"}}));
    removeMapPairOfBPU(map, "B1");
    EXPECT_TRUE(map.isEmpty());
}

TEST_F(PopulationUnitsTest, ATooLongIdShowsTheFieldSizeMessageAndKeepsEarlierRows) {
    EXPECT_FALSE(
        applyUnits({{"B1", "Unit one", "1"}, {"B123456", "Too long", "2"}, {"B3", "Unit three", "3"}},
                   {{"B1", "P1"}, {"B123456", "P1"}, {"B3", "P1"}}));
    EXPECT_EQ(messages(),
              QStringList({"Please check Actual  field size less than the data what you are entering on the "
                           "screen\nPopulation Aggregation Scheme id should be maximum of 3 char\nBasic "
                           "Population  unit id should contain maximun of 5 characters"}));
    EXPECT_EQ(rows("SELECT BPUID FROM _DctBPU"), QStringList({"B1"}));
    EXPECT_EQ(value("SELECT count(*) FROM _DctPAG1"), "2");
}

TEST_F(PopulationUnitsTest, ATooLongAggregateIdShowsTheSameMessage) {
    EXPECT_FALSE(units().apply(currentLevelTerms(), {"N1", "Nation", {}}, {{"P123", "Too long", {}}},
                               {{"B1", "Unit one", "1"}}, {{"B1", "P123"}}));
    ASSERT_EQ(messages().size(), 1);
    EXPECT_TRUE(messages().first().startsWith("Please check Actual  field size"));
    EXPECT_EQ(value("SELECT count(*) FROM _DctPAG2"), "1"); // written before the error, it stays
}

TEST_F(PopulationUnitsTest, CopyingSourcesAndRows) {
    EXPECT_TRUE(units().sourceStudies(PopLevel::BPU).isEmpty());
    addStudy("S2", 1999, false, "SCH");
    exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S2', 'B7', 'Seven', 4, 'Q1')");
    exec("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('S2', 'Q1', 'Quarter', 'M1')");
    EXPECT_EQ(units().sourceStudies(PopLevel::BPU), QStringList({"S2"}));
    EXPECT_EQ(units().sourceStudies(PopLevel::PAG1), QStringList({"S2"}));
    EXPECT_TRUE(units().sourceStudies(PopLevel::PAG2).isEmpty());
    EXPECT_EQ(units().copyRows(PopLevel::BPU, "S2"), QList<UnitRow>({{"B7", "Seven", "4"}}));
    EXPECT_EQ(units().copyRows(PopLevel::PAG1, "S2"), QList<UnitRow>({{"Q1", "Quarter", {}}}));
    EXPECT_TRUE(units().copyRows(PopLevel::PAG2, "S2").isEmpty()); // the form says "No records"
    // A copy fills the grid only: nothing has reached the tables of the current study.
    EXPECT_EQ(value("SELECT count(*) FROM _DctBPU WHERE BDSId = 'S1'"), "0");
}

// Copied units applied stand under the current study with the same ids, and the data already held
// under these ids belong to this study at once.
TEST_F(PopulationUnitsTest, CopiedUnitsShareTheirDataWithTheCurrentStudy) {
    addStudy("S2", 1999, false, "SCH");
    exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S2', 'B7', 'Seven', 4, 'Q1')");
    exec("INSERT INTO DatDmgphyPrmtrs (BPUID, YEAR, Cdmdl, PGR, IMR) VALUES ('B7', 2000, 'West', 0.02, 50)");
    Cell before;
    studyContext().InitDmgphyPrmtrs("S1", before);
    EXPECT_FALSE(before.isArray());
    const QList<UnitRow> copied = units().copyRows(PopLevel::BPU, "S2");
    ASSERT_TRUE(applyUnits(copied, {{"B7", "P1"}}));
    EXPECT_EQ(rows("SELECT BDSId, BPUID, BPUName, Prty FROM _DctBPU ORDER BY BDSId"),
              QStringList({"S1|B7|Seven|4", "S2|B7|Seven|4"}));
    Cell after;
    studyContext().InitDmgphyPrmtrs("S1", after);
    ASSERT_TRUE(after.isArray());
    EXPECT_EQ(after.array()(0, 0).toString(), QStringLiteral("B7"));
    EXPECT_TRUE(FnBpuHasData(db->database(), "B7", studyDataTables()));
}

TEST_F(PopulationUnitsTest, TheMapLeavesOutUnitsWhosePAG1HasGone) {
    ASSERT_TRUE(applyUnits({{"B1", "One", "1"}, {"B2", "Two", "2"}}, {{"B1", "P1"}, {"B2", "P2"}}));
    exec("DELETE FROM _DctPAG1 WHERE PAG1Id = 'P2'");
    EXPECT_EQ(units().loadMap(), QList<MapPair>({{"B1", "P1"}}));
    EXPECT_EQ(units().loadRows(PopLevel::BPU), QList<UnitRow>({{"B1", "One", "1"}, {"B2", "Two", "2"}}));
    EXPECT_EQ(units().loadRows(PopLevel::PAG1), QList<UnitRow>({{"P1", "Province one", {}}}));
    EXPECT_EQ(units().loadRows(PopLevel::PAG2), QList<UnitRow>({{"N1", "Nation one", {}}}));
}

// The add-or-edit queries compare the id exactly as the key column compares it (no blanks cut)
// and the study trimmed and without regard to case.
TEST_F(PopulationUnitsTest, TheIdComparesExactlyAndTheStudyCaseBlind) {
    exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES (' s1 ', 'B1', 'Old', 1, 'P1')");
    ASSERT_TRUE(applyUnits({{"B1", "New", "1"}}, {{"B1", "P1"}}));
    EXPECT_EQ(rows("SELECT BDSId, BPUID, BPUName FROM _DctBPU"), QStringList({" s1 |B1|New"}));
    ASSERT_TRUE(applyUnits({{"B1 ", "Blank after", "1"}}, {{"B1 ", "P1"}}));
    EXPECT_EQ(rows("SELECT BDSId, BPUID, BPUName FROM _DctBPU ORDER BY rowid"),
              QStringList({" s1 |B1|New", "S1|B1 |Blank after"}));
}

TEST_F(PopulationUnitsTest, DeletingAUnitWithoutDataRemovesItFromEveryStudy) {
    addStudy("S2", 1999, false, "SCH");
    exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S2', 'B1', 'One', 1, 'Q1')");
    exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S2', 'B2', 'Two', 2, 'Q1')");
    ASSERT_TRUE(applyUnits({{"B1", "One", "1"}, {"B2", "Two", "2"}}, {{"B1", "P1"}, {"B2", "P1"}}));
    prompts.clear();
    EXPECT_TRUE(units().deleteBPU("B1", studyDataTables()));
    EXPECT_TRUE(messages().isEmpty()); // no question
    EXPECT_EQ(rows("SELECT BDSId, BPUID FROM _DctBPU ORDER BY BDSId, BPUID"),
              QStringList({"S1|B2", "S2|B2"}));
}

TEST_F(PopulationUnitsTest, DeletingAUnitWithDataAsksAndLeavesOtherStudiesAndTheData) {
    const QStringList tables = studyDataTables();
    addStudy("S2", 1999, false, "SCH");
    exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S2', 'B1', 'One', 1, 'Q1')");
    ASSERT_TRUE(applyUnits({{"B1", "One", "1"}}, {{"B1", "P1"}}));
    addPop("B1");
    prompts.clear();
    prompts.answer(Answer::Cancel);
    EXPECT_FALSE(units().deleteBPU("b1", tables));
    EXPECT_EQ(messages(), QStringList({"Are you sure to delete the row ?"}));
    EXPECT_EQ(prompts.shown().first().buttons, Buttons::OkCancel);
    EXPECT_EQ(prompts.shown().first().title, QStringLiteral("Vesk"));
    EXPECT_EQ(value("SELECT count(*) FROM _DctBPU"), "2");
    prompts.answer(Answer::Ok);
    EXPECT_TRUE(units().deleteBPU("b1", tables));
    EXPECT_EQ(rows("SELECT BDSId, BPUID FROM _DctBPU"), QStringList({"S2|B1"}));
    EXPECT_EQ(value("SELECT count(*) FROM DatPOP WHERE BPUID = 'B1'"), "1");
}

TEST_F(PopulationUnitsTest, DeletingAPAG1TakesItsUnitsAfterTwoQuestions) {
    ASSERT_TRUE(applyUnits({{"B1", "One", "1"}, {"B2", "Two", "2"}, {"B3", "Three", "3"}},
                           {{"B1", "P1"}, {"B2", "P1"}, {"B3", "P2"}}));
    addPop("B1");
    prompts.clear();
    prompts.answer(Answer::No);
    EXPECT_FALSE(units().deletePAG1("P1"));
    EXPECT_EQ(messages(), QStringList({"Do you want to delete the Row ?"}));
    EXPECT_EQ(prompts.shown().first().buttons, Buttons::YesNo);
    prompts.clear();
    prompts.answer(Answer::Yes);
    prompts.answer(Answer::No);
    EXPECT_FALSE(units().deletePAG1("P1"));
    EXPECT_EQ(messages(),
              QStringList({"Do you want to delete the Row ?",
                           "There are 2 Row(s) of data in Bpu Dictionary Mapped to the current PAG1 "
                           "id \nThese will be lost if the current pagid is deleted.\nDo you still "
                           "want to continue ?"}));
    EXPECT_EQ(value("SELECT count(*) FROM _DctPAG1"), "2");
    prompts.answer(Answer::Yes);
    prompts.answer(Answer::Yes);
    EXPECT_TRUE(units().deletePAG1("p1"));
    EXPECT_EQ(rows("SELECT PAG1Id FROM _DctPAG1"), QStringList({"P2"}));
    EXPECT_EQ(rows("SELECT BPUID FROM _DctBPU"), QStringList({"B3"}));
    EXPECT_EQ(value("SELECT count(*) FROM DatPOP"), "1"); // data rows stay
    EXPECT_EQ(prompts.unanswered(), 0);
}

TEST_F(PopulationUnitsTest, DeletingAnEmptyPAG1AsksOnce) {
    ASSERT_TRUE(applyUnits({{"B1", "One", "1"}}, {{"B1", "P1"}}));
    prompts.clear();
    prompts.answer(Answer::Yes);
    EXPECT_TRUE(units().deletePAG1("P2"));
    EXPECT_EQ(messages(), QStringList({"Do you want to delete the Row ?"}));
    EXPECT_EQ(rows("SELECT PAG1Id FROM _DctPAG1"), QStringList({"P1"}));
}

TEST_F(PopulationUnitsTest, EngineErrorNumbersOfTheRefusals) {
    QSqlError e;
    EXPECT_FALSE(db->exec("INSERT INTO _DctPAG2 (BDSId, PAG2Id) VALUES ('S1', 'TOOLONG')", {}, &e));
    EXPECT_EQ(engineErrorNumber(e), 3163);
    EXPECT_FALSE(db->exec("INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (12, 'x')", {}, &e));
    EXPECT_EQ(engineErrorNumber(e), 3316);
    EXPECT_FALSE(db->exec("INSERT INTO _DctPAG2 (BDSId, PAG2Id, PAG2Name) VALUES ('S1', 'N1', '')", {}, &e));
    EXPECT_EQ(engineErrorNumber(e), 3315);
    EXPECT_FALSE(db->exec("INSERT INTO _DctPAG2 (BDSId, PAG2Id) VALUES ('S1', NULL)", {}, &e));
    EXPECT_EQ(engineErrorNumber(e), 3058);
    ASSERT_TRUE(db->exec("INSERT INTO _DctPAG2 (BDSId, PAG2Id) VALUES ('S1', 'N1')", {}, &e));
    EXPECT_FALSE(db->exec("INSERT INTO _DctPAG2 (BDSId, PAG2Id) VALUES ('S1', 'N1')", {}, &e));
    EXPECT_EQ(engineErrorNumber(e), 3022);
    EXPECT_FALSE(db->exec("INSERT INTO _DctBDMSGrps (SGrpCd, GrpCd) VALUES ('A', 5)", {}, &e));
    EXPECT_EQ(engineErrorNumber(e), 3201);
    EXPECT_FALSE(db->exec("DELETE FROM DatPOP WHERE cobcd = 'x'", {}, &e));
    EXPECT_EQ(engineErrorNumber(e), 3061);
    EXPECT_FALSE(db->exec("DELETE FROM NoTable", {}, &e));
    EXPECT_EQ(engineErrorNumber(e), 3078);
}

} // namespace

} // namespace vesk::test
