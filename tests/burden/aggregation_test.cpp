// Roll-ups: aggregates of BPUs, the cause dictionary's levels, shares and the sex ratio, by hand on
// small arrays, and the whole hierarchy walked on the small study computed.

#include "burden/aggregation.h"
#include "burden/calculator_models.h"
#include "burden/cause_levels.h"
#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "burden/population_aggregates.h"
#include "foundation/error_store.h"
#include "small_study_fixture.h"

#include <gtest/gtest.h>

using namespace vesk;
using namespace vesk::test;

namespace {

// A YLL-shaped result of one year, `units` units, one set, two causes and the groups F0-59, M0-59;
// value(u, c, m) in slot 2.
template <class F> Cell result(int units, F value) {
    CellArray a({1, units, 1, 2, 2, kYllLastSlot + 1});
    const QStringList labels = {"F0-59", "M0-59"};
    for (int u = 0; u < units; ++u)
        for (int c = 0; c < 2; ++c)
            for (int m = 0; m < 2; ++m) {
                a(0, u, 0, c, m, kYllAsg) = Cell(labels[m]);
                a(0, u, 0, c, m, kYllYLL) = value(u, c, m);
            }
    return Cell(std::move(a));
}

Cell codes(const QStringList& list) {
    CellArray m({int(list.size()), 2});
    for (int r = 0; r < list.size(); ++r)
        m(r, 0) = Cell(list[r]);
    return Cell(std::move(m));
}

} // namespace

TEST(BpuToPag, AnAggregateOfOneBpuHoldsItsValuesUnchanged) {
    const Cell a = result(3, [](int u, int c, int m) { return Cell(100.0 * u + 10 * c + m + 0.1); });
    const Cell p = FnBPUToPag(a, {{1}});
    ASSERT_TRUE(p.isArray());
    const CellArray& r = p.array();
    ASSERT_EQ(r.size(kDimBPU), 1);
    for (int c = 0; c < 2; ++c)
        for (int m = 0; m < 2; ++m)
            for (int k = 0; k <= kYllLastSlot; ++k)
                EXPECT_EQ(r(0, 0, 0, c, m, k), a.array()(0, 1, 0, c, m, k));
}

TEST(BpuToPag, MembersAreAddedNullsSkippedAndTheLabelTakenFromTheFirst) {
    const Cell a = result(3, [](int u, int c, int m) {
        return u == 1 && c == 0 ? Cell::null() : Cell(1.5 * (u + 1) + c + m);
    });
    const Cell pags = FnBPUToPag(a, {{0, 1, 2}, {2, 0}});
    const CellArray& r = pags.array();
    // Cause 0, group 1: 1.5 + 1 (unit 0), Null (unit 1), 4.5 + 1 (unit 2).
    EXPECT_EQ(r(0, 0, 0, 0, 1, kYllYLL).toDouble(), 2.5 + 5.5);
    // Cause 1, group 0: 2.5 + 4 + 5.5.
    EXPECT_EQ(r(0, 0, 0, 1, 0, kYllYLL).toDouble(), 2.5 + 4.0 + 5.5);
    EXPECT_EQ(r(0, 1, 0, 1, 0, kYllYLL).toDouble(), 5.5 + 2.5);
    EXPECT_EQ(r(0, 0, 0, 1, 1, kYllAsg).toString(), QString("M0-59"));
}

TEST(BpuToPag, AllNullStaysEmptyAndAnIndexOutsideTheUnitsGivesEmpty) {
    const Cell a = result(2, [](int, int, int) { return Cell::null(); });
    EXPECT_TRUE(FnBPUToPag(a, {{0, 1}}).array()(0, 0, 0, 0, 0, kYllYLL).isEmpty());
    EXPECT_TRUE(FnBPUToPag(a, {{0, 2}}).isEmpty());
    EXPECT_TRUE(FnBPUToPag(Cell(1.0), {{0}}).isEmpty());
}

TEST(BpuToPag, NestedSequelaArraysAreAddedCellByCell) {
    CellArray a({1, 2, 1, 1, 1, kYldLastSlot + 1});
    for (int u = 0; u < 2; ++u) {
        CellArray s({2, 1, kYldLastSlot + 1});
        s(0, 0, 0) = Cell("SQ1"), s(1, 0, 0) = Cell("SQ2");
        s(0, 0, kYldAsg) = Cell("F0-14"), s(1, 0, kYldAsg) = Cell("F0-14");
        s(0, 0, kYldIYLD) = Cell(1.0 + u);
        s(1, 0, kYldIYLD) = u == 0 ? Cell::null() : Cell(7.0);
        a(0, u, 0, 0, 0, 0) = Cell(std::move(s));
    }
    const Cell p = FnBPUToPag(Cell(std::move(a)), {{0, 1}});
    const CellArray& s = p.array()(0, 0, 0, 0, 0, 0).array();
    EXPECT_EQ(s(0, 0, 0).toString(), QString("SQ1"));
    EXPECT_EQ(s(0, 0, kYldAsg).toString(), QString("F0-14"));
    EXPECT_EQ(s(0, 0, kYldIYLD).toDouble(), 3.0);
    EXPECT_EQ(s(1, 0, kYldIYLD).toDouble(), 7.0);
}

TEST(GrpBDNPnl, EachEntrySumsItsCausesOverTheGroupsATextByItsLeadingNumber) {
    CauseLevelDictionary dict;
    CellArray entries({2, 2});
    entries(0, 0) = Cell("11"), entries(1, 0) = Cell("12");
    dict.ArrDict = Cell(std::move(entries));
    CellArray map({2, 4});
    map(0, 0) = Cell("A1 "), map(0, 3) = Cell("11");
    map(1, 0) = Cell("B1"), map(1, 3) = Cell("11");
    dict.MtxCodLevels = Cell(std::move(map));
    const Cell a = result(2, [](int u, int c, int m) {
        if (u == 1 && c == 1 && m == 1)
            return Cell("2.5 years");
        return u == 0 && m == 1 ? Cell::null() : Cell(1.0 + u + 2 * c);
    });
    const Cell r = FnGrpBDNPnl(a, dict, codes({"A1", "B1"}), CauseLevel::Subgroup, kYllYLL, 0);
    ASSERT_TRUE(r.isArray());
    const CellArray& g = r.array();
    EXPECT_EQ(g(0, 0, 0).toString(), QString("11"));
    EXPECT_EQ(g(0, 0, 1).toDouble(), 1.0 + 3.0);             // unit 0: group 0 of A1 and B1, group 1 Null
    EXPECT_EQ(g(0, 1, 1).toDouble(), 2.0 + 2.0 + 4.0 + 2.5); // unit 1, the text by its leading number
    EXPECT_TRUE(g(1, 0, 1).isEmpty());                       // subgroup 12 has no cause
}

TEST(GrpBDNPnl, AFailureShowsItsMessageAndGivesEmpty) {
    ScriptedPrompts prompts;
    ScopedPromptService scope(&prompts);
    CauseLevelDictionary dict;
    dict.ArrDict = codes({"1"});
    dict.MtxCodLevels = codes({"A1"});
    const Cell a = result(1, [](int, int, int) { return Cell(1.0); });
    EXPECT_TRUE(FnGrpBDNPnl(a, dict, codes({"A1", "B1"}), CauseLevel::Group, kYllYLL, 5).isEmpty());
    EXPECT_TRUE(FnGrpBDNPnlpag1(a, dict, codes({"A1", "B1"}), CauseLevel::Group, kYllYLL, 5).isEmpty());
    ASSERT_EQ(prompts.messages().size(), 2);
    EXPECT_EQ(prompts.messages()[0], QString("Error from FnGrpBDNPnl procedure : 9 Subscript out of range"));
    EXPECT_EQ(prompts.messages()[1], QString("Error from FnGrpBDNPnlpag1 procedure : 9 Subscript out of range"));
}

TEST(Shares, OverTheEntriesOfAUnitAndZeroWhereTheTotalIsZero) {
    CellArray rolled({3, 2, 2});
    const double values[3][2] = {{1, 0}, {3, 0}, {4, 0}};
    for (int e = 0; e < 3; ++e)
        for (int u = 0; u < 2; ++u) {
            rolled(e, u, 0) = Cell(QString::number(e));
            rolled(e, u, 1) = Cell(values[e][u]);
        }
    rolled(2, 1, 1) = Cell(); // an entry without causes
    const Cell shares = FnPctOverCauses(Cell(std::move(rolled)));
    const CellArray& p = shares.array();
    EXPECT_EQ(p(0, 0, 2).toString(), QString("12.500"));
    EXPECT_EQ(p(1, 0, 2).toString(), QString("37.500"));
    EXPECT_EQ(p(2, 0, 2).toString(), QString("50.000"));
    for (int e = 0; e < 3; ++e) {
        EXPECT_TRUE(p(e, 1, 2).isNumber());
        EXPECT_EQ(p(e, 1, 2).toDouble(), 0.0);
    }
}

TEST(Shares, ByAgeGroupOverTheCausesTwoDecimals) {
    // Unit 0: F0-59 1 + 3, M0-59 2 + 4 (of 10); unit 1: all 0.
    const Cell a = result(2, [](int u, int c, int m) { return u == 1 ? Cell(0.0) : Cell(1.0 + m + 2 * c); });
    const Cell shares = FnPctByAge(a, kYllYLL);
    const CellArray& p = shares.array();
    EXPECT_EQ(p(0, 0, 0, 0, 0).toString(), QString("F0-59"));
    EXPECT_EQ(p(0, 0, 0, 0, 1).toDouble(), 4.0);
    EXPECT_EQ(p(0, 0, 0, 0, 2).toString(), QString("40.00"));
    EXPECT_EQ(p(0, 0, 0, 1, 2).toString(), QString("60.00"));
    EXPECT_EQ(p(0, 1, 0, 1, 2).toDouble(), 0.0);
}

TEST(SexRatio, MaleSumOverFemaleSumAndZeroWhereEitherIsZero) {
    // Unit 0: F 1 + 3 = 4, M 2 + 4 = 6, ratio 1.500; unit 1: M only.
    const Cell a = result(2, [](int u, int c, int m) {
        if (u == 1)
            return m == 0 ? Cell::null() : Cell(5.0);
        return Cell(1.0 + m + 2 * c);
    });
    CellArray ids({2});
    ids(0) = Cell("U1"), ids(1) = Cell("U2");
    const Cell ratios = FnSexRatioByUnit(a, Cell(std::move(ids)), kYllYLL);
    const CellArray& r = ratios.array();
    EXPECT_EQ(r(0, 0, 0, 0).toString(), QString("U1"));
    EXPECT_EQ(r(0, 0, 0, 1).toDouble(), 6.0);
    EXPECT_EQ(r(0, 0, 0, 2).toDouble(), 4.0);
    EXPECT_EQ(r(0, 0, 0, 3).toString(), QString("1.500"));
    EXPECT_EQ(r(0, 1, 0, 2).toDouble(), 0.0);
    EXPECT_EQ(r(0, 1, 0, 3).toDouble(), 0.0);
}

namespace {

// The small study with a cause hierarchy and a second region: A0001 in cluster 1101 and B0001 in 1102
// (subgroup 11, group 1), C0001 in 2101 (subgroup 21, group 2); subgroup 12 without clusters. U2 is
// moved to the region R2 and given a population and demographic parameters.
const char* const kHierarchy[] = {
    "INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (1, 'Communicable')",
    "INSERT INTO _DctBDMGrps (GrpCd, \"Group\") VALUES (2, 'Noncommunicable')",
    "INSERT INTO _DctBDMSGrps (SGrpCd, SubGroup, GrpCd) VALUES ('11', 'Infections', 1)",
    "INSERT INTO _DctBDMSGrps (SGrpCd, SubGroup, GrpCd) VALUES ('12', 'Nutrition', 1)",
    "INSERT INTO _DctBDMSGrps (SGrpCd, SubGroup, GrpCd) VALUES ('21', 'Cancers', 2)",
    "INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES ('1101', 'Plain', '11')",
    "INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES ('1102', 'Sequelae', '11')",
    "INSERT INTO _DctBDMClstr (ClstrCd, Cluster, SGrpCd) VALUES ('2101', 'Empty', '21')",
    "UPDATE _DctBDM SET ClstrCd = '1101' WHERE CobCd = 'A0001'",
    "UPDATE _DctBDM SET ClstrCd = '1102' WHERE CobCd = 'B0001'",
    "UPDATE _DctBDM SET ClstrCd = '2101' WHERE CobCd = 'C0001'",
    "INSERT INTO _DctPAG1 (BDSId, PAG1Id, PAG1Name, PAG2Id) VALUES ('S1', 'R2', 'Second region', 'N1')",
    "UPDATE _DctBPU SET PAG1Id = 'R2' WHERE BPUID = 'U2'",
    "INSERT INTO DatDmgphyPrmtrs (BPUID, YEAR, Cdmdl, PGR, IMR) VALUES ('U2', 2000, 'West', 0.02, 40)",
};

class Hierarchy : public SmallStudyTest {
protected:
    void SetUp() override {
        SmallStudyTest::SetUp();
        for (const char* sql : kHierarchy)
            exec(QString::fromLatin1(sql));
        for (int age = 0; age <= 80; age += 5)
            exec("INSERT INTO DatPOP (BPUID, YEAR, Bai, M, F) VALUES ('U2', 2000, ?, 200, 300)", {age});
        ASSERT_TRUE(openComputationStudy(studyContext()));
        DapGridModel grid(DapRowTexts::Computation);
        for (int r : {1, 2})
            grid.chooseRow(r, kCompModeSensitivity);
        comp.MtxDAP = grid.chosenDaps();
        TimeLog log;
        ASSERT_EQ(runComputation(studyContext(), comp, CellArray(), nullptr, log, QStringLiteral(VESK_BIN_DIR "/Vesk.stp"))
                      .end,
                  RunEnd::Stored);
        clearErrorStore();
    }
    // The measures of the study: the result and its slot.
    std::vector<std::pair<Cell, int>> measures() const {
        return {{comp.ArrYll, kYllYLL}, {comp.ArrYld, kYldIYLD}, {comp.ArrYld, kYldPYLD},
                {comp.ArrDaly, kDalyIDALY}, {comp.ArrDaly, kDalyPDALY}};
    }
    CauseLevelDictionary dictionary(CauseLevel level) {
        CauseLevelDictionary d;
        EXPECT_TRUE(LoadDictionary(*db, level, QStringLiteral("S1"), d));
        return d;
    }
    // The value of an entry's row for unit u, 0 when Empty.
    static double valueOf(const Cell& rolled, const QString& code, int u) {
        const CellArray& r = rolled.array();
        for (int e = 0; e < r.size(0); ++e)
            if (r(e, u, 0).toString() == code)
                return r(e, u, 1).isEmpty() ? 0.0 : r(e, u, 1).toDouble();
        ADD_FAILURE() << "no entry " << code.toStdString();
        return 0;
    }
    Computation comp;
};

} // namespace

TEST_F(Hierarchy, TheDictionaryMapsEachCauseThroughItsCluster) {
    const CauseLevelDictionary d = dictionary(CauseLevel::Cluster);
    ASSERT_EQ(d.ArrDict.array().size(0), 3);
    EXPECT_EQ(FnCodeAtLevel(d.MtxCodLevels, " B0001 ", CauseLevel::Cluster).toString(), QString("1102"));
    EXPECT_EQ(FnCodeAtLevel(d.MtxCodLevels, "B0001", CauseLevel::Subgroup).toString(), QString("11"));
    EXPECT_EQ(FnCodeAtLevel(d.MtxCodLevels, "C0001", CauseLevel::Group).toDouble(), 2.0);
    EXPECT_TRUE(FnCodeAtLevel(d.MtxCodLevels, "Z0001", CauseLevel::Group).isEmpty());
}

TEST_F(Hierarchy, ALevelWithoutEntriesAsksForItsDictionary) {
    exec("UPDATE _DctBDMSGrps SET GrpCd = NULL");
    exec("DELETE FROM _DctBDMGrps");
    CauseLevelDictionary d;
    EXPECT_FALSE(LoadDictionary(*db, CauseLevel::Group, QStringLiteral("S1"), d));
    ASSERT_EQ(prompts.messages().size(), 1);
    EXPECT_EQ(prompts.messages()[0], QString("Please fill up the Required Level dictionary"));
}

TEST_F(Hierarchy, EveryRowOfEveryLevelIsTheSumOfItsMembers) {
    const CauseLevelDictionary clusters = dictionary(CauseLevel::Cluster);
    const CauseLevelDictionary subgroups = dictionary(CauseLevel::Subgroup);
    const CauseLevelDictionary groups = dictionary(CauseLevel::Group);
    const Cell causes = studyContext().MtxCobCd;
    // Which entry of the level above holds each entry, from the dictionary's own tables.
    const QStringList clusterOf = rows("SELECT ClstrCd, SGrpCd FROM _DctBDMClstr");
    const QStringList subgroupOf = rows("SELECT SGrpCd, GrpCd FROM _DctBDMSGrps");
    const QStringList causeOf = rows("SELECT CobCd, ClstrCd FROM _DctBDM WHERE S1 <> 0");
    int checked = 0;
    for (const auto& [array, slot] : measures()) {
        ASSERT_TRUE(array.isArray());
        const CellArray& a = array.array();
        for (int d = 0; d < a.size(kDimDAP); ++d) {
            const Cell byCluster = FnGrpBDNPnl(array, clusters, causes, CauseLevel::Cluster, slot, d);
            const Cell bySubgroup = FnGrpBDNPnl(array, subgroups, causes, CauseLevel::Subgroup, slot, d);
            const Cell byGroup = FnGrpBDNPnl(array, groups, causes, CauseLevel::Group, slot, d);
            for (int u = 0; u < a.size(kDimBPU); ++u) {
                // A cluster: its causes' cells over every group, a Null skipped.
                for (const QString& pair : clusterOf) {
                    const QString cluster = pair.section('|', 0, 0);
                    double sum = 0;
                    for (const QString& c : causeOf)
                        if (c.section('|', 1, 1) == cluster) {
                            const int k = int(kSmallCauses.indexOf(c.section('|', 0, 0)));
                            for (int m = 0; m < a.size(kDimAsg); ++m)
                                if (a(0, u, d, k, m, slot).isNumber())
                                    sum += a(0, u, d, k, m, slot).toDouble();
                        }
                    EXPECT_NEAR(valueOf(byCluster, cluster, u), sum, 1e-9 * std::max(1.0, sum));
                    ++checked;
                }
                // A subgroup: its clusters; a group: its subgroups.
                for (const QString& s : subgroupOf) {
                    const QString sub = s.section('|', 0, 0);
                    double sum = 0;
                    for (const QString& c : clusterOf)
                        if (c.section('|', 1, 1) == sub)
                            sum += valueOf(byCluster, c.section('|', 0, 0), u);
                    EXPECT_NEAR(valueOf(bySubgroup, sub, u), sum, 1e-9 * std::max(1.0, sum));
                    ++checked;
                }
                for (const QString& g : rows("SELECT GrpCd FROM _DctBDMGrps")) {
                    double sum = 0;
                    for (const QString& s : subgroupOf)
                        if (s.section('|', 1, 1) == g)
                            sum += valueOf(bySubgroup, s.section('|', 0, 0), u);
                    EXPECT_NEAR(valueOf(byGroup, g, u), sum, 1e-9 * std::max(1.0, sum));
                    ++checked;
                }
            }
        }
    }
    EXPECT_EQ(checked, 5 * 2 * 2 * (3 + 3 + 2));
}

TEST_F(Hierarchy, AggregatesAreTheSumsOfTheirBpusAtEveryCell) {
    QString error;
    const auto pag1 = populationAggregates(*db, "S1", studyContext().VctrBPULst, PagLevel::Pag1, &error);
    const auto pag2 = populationAggregates(*db, "S1", studyContext().VctrBPULst, PagLevel::Pag2, &error);
    ASSERT_TRUE(pag1 && pag2) << error.toStdString();
    ASSERT_EQ(pag1->size(), 2u);
    EXPECT_EQ((*pag1)[0].id, QString("R1"));
    EXPECT_EQ((*pag1)[0].members, PagMembers({0}));
    EXPECT_EQ((*pag1)[1].members, PagMembers({1}));
    ASSERT_EQ(pag2->size(), 1u);
    EXPECT_EQ((*pag2)[0].name, QString("Nation"));
    EXPECT_EQ((*pag2)[0].members, PagMembers({0, 1}));
    for (const auto& [array, slot] : measures()) {
        const CellArray& a = array.array();
        const Cell regions = FnBPUToPag(array, memberLists(*pag1)), nation = FnBPUToPag(array, memberLists(*pag2));
        const CellArray& r1 = regions.array();
        const CellArray& n1 = nation.array();
        for (int d = 0; d < a.size(kDimDAP); ++d)
            for (int c = 0; c < a.size(kDimCause); ++c)
                for (int m = 0; m < a.size(kDimAsg); ++m) {
                    const Cell& u1 = a(0, 0, d, c, m, slot);
                    const Cell& u2 = a(0, 1, d, c, m, slot);
                    EXPECT_EQ(r1(0, 0, d, c, m, slot), u1); // a region of one unit: that unit
                    EXPECT_EQ(r1(0, 1, d, c, m, slot), u2);
                    const double sum = (u1.isNumber() ? u1.toDouble() : 0) + (u2.isNumber() ? u2.toDouble() : 0);
                    if (u1.isNumber() || u2.isNumber())
                        EXPECT_EQ(n1(0, 0, d, c, m, slot).toDouble(), sum);
                    else
                        EXPECT_FALSE(n1(0, 0, d, c, m, slot).isNumber());
                }
        // The nation's groups of causes are the sums of the two units' rows.
        const CauseLevelDictionary groups = dictionary(CauseLevel::Group);
        const Cell byUnit = FnGrpBDNPnl(array, groups, studyContext().MtxCobCd, CauseLevel::Group, slot, 0);
        const Cell byNation = FnGrpBDNPnlpag1(FnBPUToPag(array, memberLists(*pag2)), groups, studyContext().MtxCobCd,
                                              CauseLevel::Group, slot, 0);
        for (const QString& g : {QString("1"), QString("2")}) {
            const double sum = valueOf(byUnit, g, 0) + valueOf(byUnit, g, 1);
            EXPECT_NEAR(valueOf(byNation, g, 0), sum, 1e-12 * std::max(1.0, sum));
        }
    }
}
