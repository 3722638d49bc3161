// The two outlines: causes (a study's or the whole dictionary) and the population schema.

#include "platform/progress.h"
#include "study/outline.h"
#include "study_units_support.h"

namespace vesk::test {

namespace {

class OutlineTest : public StudyDbTest {
protected:
    void SetUp() override {
        StudyDbTest::SetUp();
        exec("INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (2, 'Noncommunicable'), (1, 'Communicable')");
        exec("INSERT INTO _DctBDMSGrps (SGrpCd, Subgroup, GrpCd) VALUES ('12', 'Tropical', 1), "
             "('11', 'Infections', 1), ('21', 'Cancers', 2)");
        exec("INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES ('1101', 'Diarrhoea', '11'), "
             "('1201', 'Malaria', '12'), ('2101', 'Lung', '21')");
        exec("INSERT INTO _DctBDM (CobCd, Disease, ClstrCd, Sqla, S1) VALUES ('11011', 'Cholera', '1101', 0, "
             "-1), "
             "('11012', 'Shigella', '1101', 0, 0), ('12011', 'Falciparum', '1201', 0, -1), "
             "('21011', 'Lung cancer', '2101', 0, 0)");
    }
};

TEST_F(OutlineTest, TheWholeDictionary) {
    RecordingProgress progress;
    const OutlineNode root = causeOutline(*db, QString(), &progress);
    EXPECT_EQ(outlineLines(root, 2),
              QStringList({" Causes of Burden Outline", "  Cause of Burden", "    2;(Noncommunicable)",
                           "      21;(Cancers)", "        2101;(Lung)", "          21011;(Lung cancer)",
                           "    1;(Communicable)", "      11;(Infections)", "        1101;(Diarrhoea)",
                           "          11011;(Cholera)", "          11012;(Shigella)", "      12;(Tropical)",
                           "        1201;(Malaria)", "          12011;(Falciparum)"}));
    EXPECT_EQ(progress.max, 2);
    EXPECT_EQ(progress.value, 2);
    // Node keys hold the code.
    EXPECT_EQ(root.children[0].children[1].key, QStringLiteral("G1"));
    EXPECT_EQ(root.children[0].children[1].children[0].children[0].children[1].key, QStringLiteral("D11012"));
}

TEST_F(OutlineTest, TheStudysCausesAlone) {
    const QList<OutlineLine> lines = outlineEntries(causeOutline(*db, "s1"));
    QStringList causes;
    for (const OutlineLine& l : lines)
        if (l.depth == 5)
            causes << l.text;
    EXPECT_EQ(causes, QStringList({"11011;(Cholera)", "12011;(Falciparum)"}));
    // A study without its column shows no causes, but the hierarchy above them.
    EXPECT_EQ(outlineNodeCount(causeOutline(*db, "NOCOL")), 2 + 2 + 3 + 3);
}

TEST_F(OutlineTest, ThePopulationSchemaOfTheStudy) {
    addStudy("S2", 2001, false, "SCH");
    exec("INSERT INTO _DctPAG2 (BDSId, PAG2Id, PAG2Name) VALUES ('S1', 'N1', 'Nation'), ('S2', 'N9', "
         "'Other')");
    exec("INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('S1', 'P2', 'South', 'N1'), "
         "('S1', 'P1', 'North', 'N1'), ('S2', 'P1', 'Elsewhere', 'N9')");
    exec("INSERT INTO _DctBPU (BDSId, BPUID, BPUName, Prty, PAG1Id) VALUES ('S1', 'B1', 'One', 1, 'P1'), "
         "('S1', 'B2', 'Two', 2, 'P2'), ('S1', 'B3', 'Three', 3, 'P1'), ('S2', 'B9', 'Nine', 1, 'P1')");
    EXPECT_EQ(outlineLines(populationOutline(*db, "S1")),
              QStringList({" Population Schema Outline", "    Population Schema", "        N1;(Nation)",
                           "            P1;(North)", "                B1;(One)", "                B3;(Three)",
                           "            P2;(South)", "                B2;(Two)"}));
}

} // namespace

} // namespace vesk::test
