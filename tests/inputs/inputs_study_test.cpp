// The checks the Inputs window makes when it opens, against a real study file, in their order:
// age definitions, units, causes; and what a study that passes them gives the sheets.

#include "foundation/settings.h"
#include "inputs/inputs_study.h"
#include "inputs/sheet_texts.h"
#include "study_db_gtest.h"

namespace vesk::test {
namespace {

namespace t = sheet_texts;

class InputsStudyTest : public StudyDbGTest {
protected:
    void SetUp() override {
        StudyDbGTest::SetUp();
        QString error;
        ASSERT_TRUE(openCurrentStudy(&error)) << error.toStdString();
        preferences().txtwklocation = dir.path();
        preferences().txtVESKObj = QStringLiteral("study.vdb");
        studyContext().LblBPU.clear();
    }
    void TearDown() override { preferences() = PreferencesControls{}; }
    void addAges() {
        exec("INSERT INTO _DfnAgeGrps (BDSId, YLL, YLD, PND) VALUES ('S1', 0, 0, 0), ('S1', 5, 15, 1), "
             "('S1', NULL, NULL, 5), ('S1', NULL, NULL, 10)");
    }
    void addUnits() {
        exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty) VALUES ('S1', 'B2', 'Two', 2), ('S1', 'B1', 'One', 1)");
    }
    void addCauses() {
        exec("INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (1, 'Communicable')");
        exec("INSERT INTO _DctBDMSGrps (SGrpCd, Subgroup, GrpCd) VALUES ('11', 'Infections', 1)");
        exec("INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES ('1101', 'Diarrhoea', '11')");
        exec("INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla, S1) VALUES ('11011', 'Cholera', '1101', 0, -1), "
             "('11012', 'Shigella', '1101', 0, 0)");
    }
};

TEST_F(InputsStudyTest, AStudyWithoutAgeDefinitionsOpensNoSheet) {
    EXPECT_FALSE(openInputsStudy(studyContext()));
    EXPECT_EQ(prompts.messages().last(), text(t::kNoAgeDefinitions) + "S1");
}

TEST_F(InputsStudyTest, AStudyWithoutUnitsOpensNoSheet) {
    addAges();
    EXPECT_FALSE(openInputsStudy(studyContext()));
    EXPECT_EQ(prompts.messages().last(), text(t::kNoUnitsPart1) + "District" + text(t::kNoUnitsPart2));
}

TEST_F(InputsStudyTest, AStudyWithoutCausesOpensNoSheet) {
    addAges();
    addUnits();
    EXPECT_FALSE(openInputsStudy(studyContext()));
    EXPECT_EQ(prompts.messages().last(), text(t::kNoCauses));
}

TEST_F(InputsStudyTest, AStudyThatPassesGivesTheSheetsWhatTheyNeed) {
    addAges();
    addUnits();
    addCauses();
    const auto s = openInputsStudy(studyContext());
    ASSERT_TRUE(s) << prompts.messages().join(u'\n').toStdString();
    EXPECT_EQ(s->studyId, "S1");
    EXPECT_EQ(s->year, 2000);
    EXPECT_EQ(s->term, "District");
    EXPECT_EQ(s->pndAges, (QList<double>{0, 1, 5, 10}));
    EXPECT_EQ(s->yllLabels, (QStringList{"F0-4", "F5-w", "M0-4", "M5-w"}));
    EXPECT_EQ(s->yldLabels, (QStringList{"F0-14", "F15-w", "M0-14", "M15-w"}));
    EXPECT_EQ(s->units, (QStringList{"B1", "B2"}));
    ASSERT_EQ(s->causes.size(), 1);
    EXPECT_EQ(s->causes[0].code, "11011");
    EXPECT_EQ(s->causes[0].name, "Cholera");
    EXPECT_EQ(inputsCaption(*s), "Inputs: Study S1 (2000)");
}

} // namespace
} // namespace vesk::test
