// A whole computation of the small study of tests/support/small_study.h, from its tables to the rows
// it stores, every row checked against figures worked by hand below.

#include "burden/compute_run.h"
#include "burden/computation_arrays.h"
#include "burden/calculator_models.h"
#include "demography/open_interval.h"
#include "foundation/settings.h"
#include "foundation/time_log.h"
#include "small_study_fixture.h"
#include "straight_life_table.h"

#include <QHash>

using namespace vesk;
using namespace vesk::test;

namespace {

// Parameter set 0 (r = 0, K = 0) makes every figure a product:
//   IYLD = incident cases x weight x duration,  PYLD = prevalent cases x weight,
//   YLL  = deaths x e(age at death) on the straight table e_F(x) = 82.5 - 0.8x, e_M(x) = 80 - 0.78x.
// The kernel works in single floats: a relative 1e-6 covers their rounding (2^-24 is 6e-8 a step,
// and no figure goes through more than a few steps).
constexpr double kSingle = 1e-6;

// The population of the YLD groups of U1 (F: 15 years x 100 and 20 x 100 + 500; M: x 80 and + 400)
// and the disability weights of A0001 by group (the two sexes share the five).
const double kYldPeople[] = {1500, 1500, 1500, 1500, 2500, 1200, 1200, 1200, 1200, 2000};
double weightA(int g) {
    return 0.1 * (g % 5 + 1);
}

// The age at death of the YLL groups: 0-59 is (1770 + 0.15 + 0.4 + 58 x 0.5) / 60 = 29.9925 for both
// sexes; 60-w is 60 and the fit's years beyond 60 at the ratio 40/75 and growth 0.01.
double ageAtDeath(int g) {
    return g % 2 == 0 ? 29.9925 : 60 + FnOIAGD("West", 60, 40.0 / 75.0, 0.01).toDouble();
}
double lifeExpectancy(int g) {
    return g < 2 ? femaleE(ageAtDeath(g)) : maleE(ageAtDeath(g));
}
// Deaths of the YLL groups: F0-59 60, F60-w 25, M0-59 96, M60-w 40; the shares of A0001 and B0001.
const double kDeaths[] = {60, 25, 96, 40};
const double kShareA[] = {0.5, 0.25, 0.5, 0.5};
constexpr double kShareB = 0.25;
// The YLD groups each YLL group holds: F0-59 the first four, F60-w the fifth, and so for men.
QList<int> heldBy(int g) {
    switch (g) {
    case 0: return {0, 1, 2, 3};
    case 1: return {4};
    case 2: return {5, 6, 7, 8};
    default: return {9};
    }
}

class ComputeRun : public SmallStudyTest {
protected:
    void SetUp() override {
        SmallStudyTest::SetUp();
        settings().StatOutPath = dir.path() + u'/';
        table = straightLifeTable();
    }
    RunOutcome run(const QStringList& daps, int mode) {
        DapGridModel grid(DapRowTexts::Computation);
        for (const QString& id : daps)
            for (int r = 0; r < grid.rowCount(); ++r)
                if (grid.text(r, DapGridModel::IdColumn) == id)
                    grid.chooseRow(r, mode);
        Computation& comp = computation();
        comp = Computation{};
        comp.MtxDAP = grid.chosenDaps();
        TimeLog log;
        const RunOutcome out = runComputation(studyContext(), comp, table, &bar, log,
                                              QStringLiteral(VESK_BIN_DIR "/Vesk.stp"));
        lines = log.lines();
        return out;
    }
    // The stored rows of `sql` as value by "unit|cause|sequela|group".
    QHash<QString, QString> stored(const QString& sql) {
        QHash<QString, QString> out;
        for (const QString& row : rows(sql)) {
            const QStringList f = row.split(u'|');
            out.insert(f.mid(0, f.size() - 1).join(u'|'), f.last());
        }
        return out;
    }
    static void expectValue(const QString& stored, double expected, const QString& where) {
        bool ok = false;
        const double v = stored.toDouble(&ok);
        EXPECT_TRUE(ok) << where.toStdString() << " holds " << stored.toStdString();
        EXPECT_NEAR(v, expected, std::max(1e-12, std::abs(expected) * kSingle)) << where.toStdString();
    }

    CellArray table;
    RecordingProgress bar;
    QStringList lines;
};

} // namespace

TEST_F(ComputeRun, EveryStoredRowOfTheSmallStudy) {
    const RunOutcome out = run({"0"}, kCompModeQuick);
    EXPECT_EQ(out.end, RunEnd::Stored);
    EXPECT_EQ(out.message, QString("Calculation of DALY is complete.  Results are stored in tables "));
    EXPECT_TRUE(prompts.messages().isEmpty()) << prompts.messages().join('\n').toStdString();

    // --- YLD: per unit 10 rows of A0001, 10 of each sequela of B0001, 10 of C0001.
    EXPECT_EQ(value("SELECT count(*) FROM RsltYLD"), "80");
    const auto iyld = stored("SELECT BPUID, COBCd, SqlaCd, ASG, IYLD FROM RsltYLD WHERE DAPID = 0 AND YEAR = 2000");
    const auto pyld = stored("SELECT BPUID, COBCd, SqlaCd, ASG, PYLD FROM RsltYLD WHERE DAPID = 0 AND YEAR = 2000");
    ASSERT_EQ(iyld.size(), 80);
    for (int g = 0; g < 10; ++g) {
        const QString group = kSmallYldLabels[g];
        // A0001: 0.001 x people cases x weight x 2 years; 0.01 x people prevalent x weight.
        expectValue(iyld.value("U1|A0001|xxxxxxx|" + group), 0.001 * kYldPeople[g] * weightA(g) * 2, group);
        expectValue(pyld.value("U1|A0001|xxxxxxx|" + group), 0.01 * kYldPeople[g] * weightA(g), group);
        // B0001, sequela SQ1: 0.002 x people x 0.5 x 1 year; 0.02 x people x 0.5. SQ2 has no data: its
        // rows carry the group's label and the defaults.
        expectValue(iyld.value("U1|B0001|SQ1|" + group), 0.002 * kYldPeople[g] * 0.5, group);
        expectValue(pyld.value("U1|B0001|SQ1|" + group), 0.02 * kYldPeople[g] * 0.5, group);
        EXPECT_EQ(iyld.value("U1|B0001|SQ2|" + group), "0");
        EXPECT_EQ(pyld.value("U1|B0001|SQ2|" + group), "0");
        // No row at cause level for B0001; C0001 without data and every cause of U2 store the
        // label and the defaults.
        EXPECT_FALSE(iyld.contains("U1|B0001|xxxxxxx|" + group));
        EXPECT_EQ(iyld.value("U1|C0001|xxxxxxx|" + group), "0");
        for (const char* c : {"U2|A0001|xxxxxxx|", "U2|B0001|SQ1|", "U2|B0001|SQ2|", "U2|C0001|xxxxxxx|"})
            EXPECT_EQ(iyld.value(c + group), "0") << c;
    }

    // --- YLL: deaths x e(age at death). U2 has no population: Null ages, so Null YLL under A0001's
    // labels; C0001 has no shares of death: its rows take the labels and IYLL's default, Null.
    EXPECT_EQ(value("SELECT count(*) FROM RsltYLL"), "24");
    const auto yll = stored("SELECT BPUID, COBCd, '', ASG, IYLL FROM RsltYLL WHERE DAPID = 0 AND YEAR = 2000");
    for (int g = 0; g < 4; ++g) {
        const QString group = kSmallYllLabels[g];
        expectValue(yll.value("U1|A0001||" + group), kDeaths[g] * kShareA[g] * lifeExpectancy(g), group);
        expectValue(yll.value("U1|B0001||" + group), kDeaths[g] * kShareB * lifeExpectancy(g), group);
        EXPECT_EQ(yll.value("U1|C0001||" + group), "<null>");
        EXPECT_EQ(yll.value("U2|A0001||" + group), "<null>");
        EXPECT_EQ(yll.value("U2|C0001||" + group), "<null>");
    }

    // --- DALY on the YLL groups, the shorter list: YLL plus the YLD of the groups each holds.
    EXPECT_EQ(value("SELECT count(*) FROM RsltDALY"), "24");
    const auto idaly = stored("SELECT BPUID, COBCd, '', ASG, IDALY FROM RsltDALY WHERE DAPID = 0");
    const auto pdaly = stored("SELECT BPUID, COBCd, '', ASG, PDALY FROM RsltDALY WHERE DAPID = 0");
    for (int g = 0; g < 4; ++g) {
        const QString group = kSmallYllLabels[g];
        double ia = 0, pa = 0, ib = 0, pb = 0;
        for (int h : heldBy(g)) {
            ia += 0.001 * kYldPeople[h] * weightA(h) * 2;
            pa += 0.01 * kYldPeople[h] * weightA(h);
            ib += 0.002 * kYldPeople[h] * 0.5;
            pb += 0.02 * kYldPeople[h] * 0.5;
        }
        const double yllA = kDeaths[g] * kShareA[g] * lifeExpectancy(g), yllB = kDeaths[g] * kShareB * lifeExpectancy(g);
        expectValue(idaly.value("U1|A0001||" + group), yllA + ia, group);
        expectValue(pdaly.value("U1|A0001||" + group), yllA + pa, group);
        expectValue(idaly.value("U1|B0001||" + group), yllB + ib, group);
        expectValue(pdaly.value("U1|B0001||" + group), yllB + pb, group);
        // U2's A0001: a Null YLL takes the YLD of its groups, which are 0.
        EXPECT_EQ(idaly.value("U2|A0001||" + group), "0");
        EXPECT_EQ(idaly.value("U1|C0001||" + group), "0");
    }

    // The arrays stay for the result views, with their labels.
    const Computation& comp = computation();
    ASSERT_TRUE(comp.ArrDaly.isArray());
    EXPECT_EQ(comp.ArrDaly.array().size(kDimAsg), 4);
    // One set chosen: the third dimension has the upper bound 0.
    for (const Cell* a : {&comp.ArrYld, &comp.ArrYll, &comp.ArrDaly})
        EXPECT_EQ(a->array().ubound(kDimDAP), 0);
    EXPECT_TRUE(comp.ArrYldLbl.isArray());
    EXPECT_TRUE(comp.ArrBDNParams.isArray());

    // Time.stp: the start line and the seven steps, in the output folder.
    ASSERT_EQ(lines.size(), 8);
    EXPECT_TRUE(lines[1].startsWith("Loading population and Mortality data to Memory...  =  "));
    EXPECT_TRUE(lines[7].startsWith("Storing DALY Results into Table... =  "));
    QFile f(timeLogPath());
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString::fromLatin1(f.readAll()).split("\r\n", Qt::SkipEmptyParts), lines);
}

TEST_F(ComputeRun, SensitivityStoresEachSetAndASecondRunLeavesTheFirstResults) {
    ASSERT_EQ(run({"0"}, kCompModeQuick).end, RunEnd::Stored);
    const QString first = value("SELECT IYLL FROM RsltYLL WHERE BPUID = 'U1' AND COBCd = 'A0001' AND ASG = 'F0-59'");
    // Double the shares: the arrays change, the stored rows of set 0 do not; set 3 is new.
    exec("UPDATE DatCSM SET CSMP = CSMP * 2");
    ASSERT_EQ(run({"0", "3"}, kCompModeSensitivity).end, RunEnd::Stored);
    EXPECT_EQ(value("SELECT IYLL FROM RsltYLL WHERE BPUID = 'U1' AND COBCd = 'A0001' AND ASG = 'F0-59' AND DAPID = 0"),
              first);
    EXPECT_EQ(value("SELECT count(*) FROM RsltYLL WHERE DAPID = 3"), "24");
    EXPECT_EQ(value("SELECT count(*) FROM RsltYLL"), "48");
    const Cell& yllArr = computation().ArrYll;
    ASSERT_TRUE(yllArr.isArray());
    EXPECT_NEAR(yllArr.array()(0, 0, 0, 0, 0, kYllYLL).toDouble(), 2 * first.toDouble(), 2 * first.toDouble() * kSingle);
    // Set 3 (r = 0.03, K = 0): (1 - exp(-0.03 e)) / 0.03 years a death.
    const double e = lifeExpectancy(0);
    expectValue(value("SELECT IYLL FROM RsltYLL WHERE BPUID = 'U1' AND COBCd = 'A0001' AND ASG = 'F0-59' AND DAPID = 3"),
                60 * 1.0 * (1 - std::exp(-0.03 * e)) / 0.03, "set 3");
}

TEST_F(ComputeRun, NoDeathRatesEndTheRunAtTheDemographicInputs) {
    exec("DELETE FROM DatASDR");
    const RunOutcome out = run({"0"}, kCompModeQuick);
    EXPECT_EQ(out.end, RunEnd::NoDemographicInputs);
    EXPECT_EQ(out.message, QString("Demographic Inputs could not be built as data for Population Or ASDR(Mortality "
                                   "Rate) may not be present. Computation of DALY cannot proceed further"));
    EXPECT_EQ(lines.size(), 1); // the start line only
    EXPECT_EQ(value("SELECT count(*) FROM RsltYLD"), "0");
}

TEST_F(ComputeRun, UnmatchedGroupsStoreYldAndYllButNoDaly) {
    // YLD groups at 0 and 50 end inside the YLL group 0-59: no classification holds the other.
    exec("UPDATE _DfnAgeGrps SET YLD = NULL");
    exec("UPDATE _DfnAgeGrps SET YLD = PND WHERE PND IN (0, 50)");
    exec("DELETE FROM DatADW");
    exec("DELETE FROM DatADWSqla");
    for (const char* g : {"F0-49", "F50-w", "M0-49", "M50-w"})
        exec("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P, ago, DURN, agp) "
             "VALUES ('U1', 2000, 'A0001', ?, 0.001, 0.01, 20, 2, 40)",
             {g});
    ASSERT_TRUE(openComputationStudy(studyContext()));
    const RunOutcome out = run({"0"}, kCompModeQuick);
    EXPECT_EQ(out.end, RunEnd::NotComputed);
    EXPECT_EQ(out.message, QString("Calculation of Daly are not computed "));
    EXPECT_FALSE(computation().ArrDaly.isArray());
    EXPECT_TRUE(computation().ArrYld.isArray());
    EXPECT_TRUE(computation().ArrYll.isArray());
    EXPECT_EQ(value("SELECT count(*) FROM RsltYLD"), "32"); // 4 groups: A0001, SQ1, SQ2, C0001 on 2 units
    EXPECT_EQ(value("SELECT ASG FROM RsltYLD WHERE BPUID = 'U1' AND COBCd = 'A0001' ORDER BY ASG LIMIT 1"), "F0-49");
    EXPECT_EQ(value("SELECT count(*) FROM RsltYLL"), "24");
    EXPECT_EQ(value("SELECT count(*) FROM RsltDALY"), "0");
}

TEST_F(ComputeRun, AnEmptyCustomSetCountsAsZero) {
    DapGridModel grid(DapRowTexts::Computation);
    grid.chooseRow(DapGridModel::kCustomRow, kCompModeSensitivity);
    const Cell m = grid.chosenDaps();
    ASSERT_TRUE(m.isArray());
    for (int c = 0; c <= 4; ++c)
        EXPECT_TRUE(m.array()(0, c).isEmpty()) << c;
    computation() = Computation{};
    computation().MtxDAP = m;
    TimeLog log;
    ASSERT_EQ(runComputation(studyContext(), computation(), table, &bar, log,
                             QStringLiteral(VESK_BIN_DIR "/Vesk.stp")).end,
              RunEnd::Stored);
    // r and K Empty are 0, and the id Empty stores as 0: the figures of set 0.
    expectValue(value("SELECT IYLL FROM RsltYLL WHERE BPUID = 'U1' AND COBCd = 'A0001' AND ASG = 'F0-59'"),
                30 * lifeExpectancy(0), "custom");
}

TEST(DapChoice, QuickChoosesOneSensitivityToggles) {
    DapGridModel grid(DapRowTexts::Computation);
    ASSERT_EQ(grid.rowCount(), 5);
    QStringList first;
    for (int c = 0; c < grid.columnCount(); ++c)
        first << grid.text(1, c);
    EXPECT_EQ(first, QStringList({"1", "0.03", "1", "0.04", "0.1658", "False"}));
    EXPECT_EQ(grid.text(DapGridModel::kCustomRow, DapGridModel::IdColumn), QString());
    grid.chooseRow(1, kCompModeQuick);
    grid.chooseRow(3, kCompModeQuick);
    QStringList chosen;
    for (int r = 0; r < grid.rowCount(); ++r)
        chosen << grid.text(r, DapGridModel::SelectColumn);
    EXPECT_EQ(chosen, QStringList({"False", "False", "False", "True", "False"}));
    grid.chooseRow(0, kCompModeSensitivity);
    grid.chooseRow(3, kCompModeSensitivity);
    grid.chooseRow(2, kCompModeSensitivity);
    const Cell m = grid.chosenDaps();
    ASSERT_TRUE(m.isArray());
    ASSERT_EQ(m.array().size(0), 2);
    EXPECT_EQ(m.array()(0, 0).toString(), QString("0"));
    EXPECT_EQ(m.array()(1, 0).toString(), QString("2"));
    EXPECT_TRUE(m.array()(0, kDapBeta).isEmpty());
    EXPECT_FALSE(DapGridModel(DapRowTexts::Computation).chosenDaps().isArray());
}
