// The loaders of a computation on the small study of tests/support/small_study.h, worked by hand.

#include "burden/computation_arrays.h"
#include "burden/computation_texts.h"
#include "demography/open_interval.h"
#include "small_study_fixture.h"

#include <cmath>

using namespace vesk;
using namespace vesk::test;

namespace {

namespace ct = computation_texts;

QStringList storedSources() {
    QStringList out;
    if (ErrStore().isArray())
        for (int r = 0; r < ErrStore().array().size(0); ++r)
            out << ErrStore().array()(r, 2).toString() + QStringLiteral(": ") + ErrStore().array()(r, 1).toString();
    return out;
}

class InputLoaders : public SmallStudyTest {
protected:
    // The single-year population and deaths, as the run makes them.
    void singleYears() {
        pop = newp(Build4DArrPopData(loaderStudy()));
        deaths = newp(BldDthArr(loaderStudy()));
        ASSERT_TRUE(pop.isArray());
        ASSERT_TRUE(deaths.isArray());
        clearErrorStore(); // U2's missing population, seen above
    }
    Cell pop, deaths;
    LoaderProgress progress{&bar, [] { return 1.234; }};
    RecordingProgress bar;
};

} // namespace

TEST_F(InputLoaders, PopulationAndDeathsComeByBasicIntervalAUnitWithoutPopulationIsNull) {
    const Cell p = Build4DArrPopData(loaderStudy());
    ASSERT_TRUE(p.isArray());
    const CellArray& a = p.array();
    ASSERT_EQ(a.size(kAgeDimRow), 17); // BAI 0, 5, ..., 80
    EXPECT_EQ(a(0, 0, 0, kAgeBai).toDouble(), 0);
    EXPECT_EQ(a(0, 0, 0, kAgeWidth).toDouble(), 5);
    EXPECT_EQ(a(0, 0, 0, kAgeFemale).toDouble(), 500);
    EXPECT_EQ(a(0, 0, 0, kAgeMale).toDouble(), 400);
    EXPECT_EQ(a(0, 0, 0, kAgeBoth).toDouble(), 900);
    EXPECT_EQ(a(0, 0, 16, kAgeBai).toDouble(), 80);
    EXPECT_EQ(a(0, 0, 16, kAgeWidth).toString(), QString("W"));
    for (int r = 0; r < 17; ++r)
        for (int c = 0; c <= kAgeLastColumn; ++c)
            EXPECT_TRUE(a(0, 1, r, c).isNull()) << r << "," << c;
    EXPECT_EQ(storedSources(), QStringList{"Build4DArrPopData: There is no population available for U2"});

    // Deaths: the rate times the population of the same interval, 0.01 x 500 and 0.02 x 400; U2 has
    // rates but no population to join them to.
    const Cell d = BldDthArr(loaderStudy());
    ASSERT_TRUE(d.isArray());
    EXPECT_DOUBLE_EQ(d.array()(0, 0, 3, kAgeFemale).toDouble(), 5);
    EXPECT_DOUBLE_EQ(d.array()(0, 0, 3, kAgeMale).toDouble(), 8);
    EXPECT_DOUBLE_EQ(d.array()(0, 0, 3, kAgeBoth).toDouble(), 13);
    EXPECT_TRUE(d.array()(0, 1, 0, kAgeBai).isEmpty());
}

TEST_F(InputLoaders, NoRowsGiveNoArray) {
    exec("DELETE FROM DatASDR");
    EXPECT_FALSE(BldDthArr(loaderStudy()).isArray());
    exec("DELETE FROM DatPOP");
    EXPECT_FALSE(Build4DArrPopData(loaderStudy()).isArray());
}

TEST_F(InputLoaders, AgesAtDeathFromTheSingleYearPopulation) {
    singleYears();
    // Sprague's multipliers give even single years for even groups: 100 women and 80 men a year, the
    // open row 80 keeps its 500 and 400.
    for (int x : {0, 1, 37, 79}) {
        EXPECT_NEAR(pop.array()(0, 0, x, kAgeFemale).toDouble(), 100, 1e-9) << x;
        EXPECT_NEAR(pop.array()(0, 0, x, kAgeMale).toDouble(), 80, 1e-9) << x;
    }
    EXPECT_NEAR(pop.array()(0, 0, 80, kAgeFemale).toDouble(), 500, 1e-9);
    Cell agd;
    ASSERT_TRUE(loadAgesAtDeath(loaderStudy(), pop, deaths, agd));
    const CellArray& a = agd.array();
    // 0-59 with even weights: (sum of x for 0..59 = 1770, plus the fractions 0.15 (IMR 30), 0.4 and
    // 58 x 0.5 = 29.55) / 60 = 29.9925, for both sexes.
    EXPECT_EQ(a(0, 0, 0, 0, 0, kAgdAsg).toString(), QString("F0-59"));
    EXPECT_NEAR(a(0, 0, 0, 0, 0, kAgdAge).toDouble(), 29.9925, 1e-9);
    EXPECT_NEAR(a(0, 0, 0, 0, 2, kAgdAge).toDouble(), 29.9925, 1e-9);
    // 60-w: 60 and the fit's years beyond it, with the deaths at 45+ over those at 10+: women
    // (35 x 1 + 5) / (70 x 1 + 5), men (35 x 1.6 + 8) / (70 x 1.6 + 8), 40/75 both.
    const double beyond = FnOIAGD("West", 60, 40.0 / 75.0, 0.01).toDouble();
    EXPECT_GT(beyond, 5);
    EXPECT_NEAR(a(0, 0, 0, 0, 1, kAgdAge).toDouble(), 60 + beyond, 1e-9);
    EXPECT_NEAR(a(0, 0, 0, 0, 3, kAgdAge).toDouble(), 60 + beyond, 1e-9);
    // U2 has no population: Null ages, and its missing parameters are never asked for.
    for (int g = 0; g < 4; ++g)
        EXPECT_TRUE(a(0, 1, 0, 0, g, kAgdAge).isNull()) << g;
    EXPECT_TRUE(prompts.messages().isEmpty()) << prompts.messages().join('\n').toStdString();
}

TEST_F(InputLoaders, TheInfantFractionFollowsTheImrAndMissingParametersAreSaid) {
    singleYears();
    const auto meanOfFirstGroup = [&](double imr) {
        exec("UPDATE DatDmgphyPrmtrs SET IMR = ?", {imr});
        studyContext().InitDmgphyPrmtrs("S1", studyContext().MtxDmgphy);
        Cell agd;
        EXPECT_TRUE(loadAgesAtDeath(loaderStudy(), pop, deaths, agd));
        // (1770 + f(0) + 0.4 + 29) / 60, so f(0) = 60 x mean - 1799.4.
        return std::round((60 * agd.array()(0, 0, 0, 0, 0, kAgdAge).toDouble() - 1799.4) * 1e9) / 1e9;
    };
    EXPECT_DOUBLE_EQ(meanOfFirstGroup(20), 0.15);
    EXPECT_DOUBLE_EQ(meanOfFirstGroup(60), 0.23);
    EXPECT_DOUBLE_EQ(meanOfFirstGroup(60.5), 0.3);
    EXPECT_DOUBLE_EQ(meanOfFirstGroup(19), 0.09);

    exec("DELETE FROM DatDmgphyPrmtrs");
    studyContext().MtxDmgphy = Cell();
    prompts.clear();
    Cell agd;
    ASSERT_TRUE(loadAgesAtDeath(loaderStudy(), pop, deaths, agd));
    EXPECT_EQ(prompts.messages(),
              QStringList{"Message from AGD procedure : Demographic parameters are not set for the BPUs under S1"});
    // Without an IMR the first year has no fraction and drops out: (1770 - 0 + 0.4 + 29) / 59 ... over
    // the years 1..59: (1770 + 29.4) / 59. Without a growth rate the open group takes the fit alone.
    EXPECT_NEAR(agd.array()(0, 0, 0, 0, 0, kAgdAge).toDouble(), (1770 + 29.4) / 59, 1e-9);
    EXPECT_TRUE(agd.array()(0, 0, 0, 0, 1, kAgdAge).isNull()); // no model family: no fit
}

TEST_F(InputLoaders, SharesOfDeathSummingAboveOneAreReportedAndUsed) {
    // A0001 0.5 + B0001 0.25 + a new cause 0.25 in F0-59 make 1.0 exactly: no report.
    exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('U1', 2000, 'C0001', 'F0-59', 0.25)");
    FnChkCSMTotals(loaderStudy());
    EXPECT_TRUE(storedSources().isEmpty()) << storedSources().join('\n').toStdString();
    exec("UPDATE DatCSM SET CSMP = 0.26 WHERE COBCd = 'C0001'");
    FnChkCSMTotals(loaderStudy());
    ASSERT_EQ(ErrStore().array().size(0), 1);
    EXPECT_EQ(ErrStore().array()(0, 0).toDouble(), -20);
    EXPECT_EQ(storedSources(), QStringList{"FnChkCSMTotals: CSMP sum for U1[F0-59] is greater than 1"});
    // The deaths are formed all the same: 0.26 x 60.
    singleYears();
    Cell dbc;
    ASSERT_TRUE(DBCProc(loaderStudy(), deaths, progress, dbc));
    EXPECT_NEAR(dbc.array()(0, 0, 0, 2, 0, kDbcDeaths).toDouble(), 0.26 * 60, 1e-9);
}

TEST_F(InputLoaders, DeathsByCauseAreTheSharesOfTheGroupsDeaths) {
    singleYears();
    Cell dbc;
    ASSERT_TRUE(DBCProc(loaderStudy(), deaths, progress, dbc));
    const CellArray& a = dbc.array();
    ASSERT_EQ(a.size(kDimCause), 3);
    ASSERT_EQ(a.size(kDimAsg), 4);
    // Deaths of the YLL groups: F0-59 60 x 1 = 60, F60-w 20 x 1 + 5 = 25, M0-59 60 x 1.6 = 96,
    // M60-w 20 x 1.6 + 8 = 40. A0001 takes 0.5, 0.25, 0.5, 0.5 of them; B0001 a quarter.
    const double a1[] = {30, 6.25, 48, 20}, b1[] = {15, 6.25, 24, 10};
    for (int g = 0; g < 4; ++g) {
        EXPECT_EQ(a(0, 0, 0, 0, g, kDbcAsg).toString(), kSmallYllLabels[g]);
        EXPECT_NEAR(a(0, 0, 0, 0, g, kDbcDeaths).toDouble(), a1[g], 1e-9) << g;
        EXPECT_NEAR(a(0, 0, 0, 1, g, kDbcDeaths).toDouble(), b1[g], 1e-9) << g;
        EXPECT_TRUE(a(0, 0, 0, 2, g, kDbcAsg).isEmpty()); // C0001 has no shares
        // U2's groups have no deaths (no population): its shares meet an Empty count, which is 0.
        EXPECT_EQ(a(0, 1, 0, 0, g, kDbcAsg).toString(), kSmallYllLabels[g]);
        EXPECT_EQ(a(0, 1, 0, 0, g, kDbcDeaths).toDouble(), 0);
    }
    EXPECT_EQ(bar.max, (3 + 1) * (2 + 1));
    EXPECT_EQ(bar.text, QString("Loading Cause of Death data into Memory..   1.23  Secs"));
    EXPECT_TRUE(prompts.messages().isEmpty());
}

TEST_F(InputLoaders, ACauseWithThreeRecordsTooManyIsTakenByDbcProcAndRefusedByLoadAdwip) {
    for (const char* g : {"F1-2", "F3-4", "M1-2"}) {
        exec("INSERT INTO DatCSM (BPUID, YEAR, COBCd, ASG, CSMP) VALUES ('U1', 2000, 'A0001', ?, 0.1)", {g});
        exec("INSERT INTO DatADW (BPUID, YEAR, COBCd, ASG, i, P, ago, DURN, agp) "
             "VALUES ('U1', 2000, 'A0001', ?, 0.1, 0.1, 1, 1, 1)",
             {g});
    }
    singleYears();
    Cell dbc;
    ASSERT_TRUE(DBCProc(loaderStudy(), deaths, progress, dbc));
    EXPECT_EQ(prompts.messages(), QStringList{text(ct::kDbcMismatch)});
    // Taken by position in the binary order of ASG: F0-59, F1-2, F3-4, F60-w, M0-59, ... so the
    // second group gets the share of "F1-2" (0.1 x 25), and the records beyond the groups are errors.
    EXPECT_EQ(dbc.array()(0, 0, 0, 0, 1, kDbcAsg).toString(), QString("F1-2"));
    EXPECT_NEAR(dbc.array()(0, 0, 0, 0, 1, kDbcDeaths).toDouble(), 2.5, 1e-9);
    EXPECT_EQ(ErrStore().array().size(0), 3);
    EXPECT_EQ(ErrStore().array()(0, 0).toDouble(), 9);

    prompts.clear();
    Cell adwip;
    ASSERT_TRUE(LoadADWIP(loaderStudy(), LoadDwt(loaderStudy()), pop, progress, adwip));
    EXPECT_EQ(prompts.messages(), QStringList{text(ct::kAdwipMismatch)});
    for (int g = 0; g < 10; ++g)
        EXPECT_TRUE(adwip.array()(0, 0, 0, 0, g, kAdwipAsg).isEmpty()) << g;
}

TEST_F(InputLoaders, WeightsByCauseAndBySequela) {
    const Cell w = LoadDwt(loaderStudy());
    ASSERT_TRUE(w.isArray());
    const CellArray& m = w.array();
    // Ten YLD groups: five weights, columns 1 to 5.
    ASSERT_EQ(m.size(0), 3);
    ASSERT_EQ(m.size(1), 6);
    EXPECT_EQ(m(0, 0).toString(), QString("A0001"));
    for (int c = 1; c <= 5; ++c)
        EXPECT_NEAR(m(0, c).toDouble(), 0.1 * c, 1e-7) << c;
    EXPECT_EQ(m(1, 0).toString(), QString("B0001"));
    ASSERT_TRUE(m(1, 1).isArray());
    const CellArray& sq = m(1, 1).array();
    EXPECT_EQ(sq(0, 0).toString(), QString("SQ1"));
    EXPECT_EQ(sq(1, 0).toString(), QString("SQ2"));
    EXPECT_EQ(sq(0, 5).toDouble(), 0.5);
    EXPECT_EQ(sq(1, 3).toDouble(), 0.25);
    EXPECT_EQ(m(2, 0).toString(), QString("C0001"));
    EXPECT_TRUE(m(2, 1).isEmpty());
    EXPECT_TRUE(storedSources().isEmpty());
}

TEST_F(InputLoaders, EpidemiologyIsTheRatesTimesThePopulationWithTheWeightsGoingRoundFive) {
    singleYears();
    Cell adwip;
    ASSERT_TRUE(LoadADWIP(loaderStudy(), LoadDwt(loaderStudy()), pop, progress, adwip));
    const CellArray& a = adwip.array();
    // Population of the YLD groups: F 1500 in each closed group and 20 x 100 + 500 = 2500 in F60-w;
    // M 1200 and 20 x 80 + 400 = 2000.
    const double people[] = {1500, 1500, 1500, 1500, 2500, 1200, 1200, 1200, 1200, 2000};
    for (int g = 0; g < 10; ++g) {
        SCOPED_TRACE(g);
        EXPECT_EQ(a(0, 0, 0, 0, g, kAdwipAsg).toString(), kSmallYldLabels[g]);
        EXPECT_EQ(a(0, 0, 0, 0, g, kAdwipAgo).toDouble(), 20);
        EXPECT_EQ(a(0, 0, 0, 0, g, kAdwipDurn).toDouble(), 2);
        EXPECT_NEAR(a(0, 0, 0, 0, g, kAdwipDwt).toDouble(), 0.1 * (g % 5 + 1), 1e-7);
        EXPECT_NEAR(a(0, 0, 0, 0, g, kAdwipIncident).toDouble(), 0.001 * people[g], 1e-9);
        EXPECT_EQ(a(0, 0, 0, 0, g, kAdwipAgp).toDouble(), 40);
        EXPECT_NEAR(a(0, 0, 0, 0, g, kAdwipPrevalent).toDouble(), 0.01 * people[g], 1e-9);
    }
    // B0001: its sequelae in the nested array, SQ2 with its code and nothing else.
    const Cell& holder = a(0, 0, 0, 1, kSequelaHolderAsg, kSequelaHolderSlot);
    ASSERT_TRUE(holder.isArray());
    const CellArray& n = holder.array();
    EXPECT_EQ(n(0, kSqlaCodeAsg, kSqlaCodeSlot).toString(), QString("SQ1"));
    EXPECT_EQ(n(1, kSqlaCodeAsg, kSqlaCodeSlot).toString(), QString("SQ2"));
    EXPECT_EQ(n(0, 9, kAdwipDwt).toDouble(), 0.5);
    EXPECT_NEAR(n(0, 9, kAdwipIncident).toDouble(), 0.002 * 2000, 1e-9);
    EXPECT_TRUE(n(1, 3, kAdwipAsg).isEmpty());
    // C0001 and the unit without rows stay Empty.
    EXPECT_TRUE(a(0, 0, 0, 2, 0, kAdwipAsg).isEmpty());
    EXPECT_TRUE(a(0, 1, 0, 0, 0, kAdwipAsg).isEmpty());
    EXPECT_EQ(bar.text, QString("Loading Epidemiological Data into Memory..   1.23   Secs"));
    EXPECT_TRUE(prompts.messages().isEmpty());
    EXPECT_TRUE(storedSources().isEmpty()) << storedSources().join('\n').toStdString();
}

TEST_F(InputLoaders, WhatIsMissingOfTheStudyIsSaidAndStopsTheLoad) {
    singleYears();
    Cell out;
    LoaderStudy s = loaderStudy();
    s.causes = Cell();
    EXPECT_FALSE(DBCProc(s, deaths, progress, out));
    s.units = Cell();
    EXPECT_FALSE(DBCProc(s, deaths, progress, out));
    s.years = Cell();
    EXPECT_FALSE(DBCProc(s, deaths, progress, out));
    EXPECT_FALSE(LoadADWIP(s, Cell(), pop, progress, out));
    s.study.clear();
    EXPECT_FALSE(DBCProc(s, deaths, progress, out));
    EXPECT_FALSE(LoadADWIP(s, Cell(), pop, progress, out));
    EXPECT_EQ(prompts.messages(),
              QStringList({"The Input data for DBC array for the current study  S1  is not available.",
                           "The Input arrays for the current study  S1  are not defined. Please fill the BPUs in the "
                           "Population of the Study menu",
                           "The Input arrays for the current study  S1  are not defined. Please fill the study year "
                           "in the Setup of the Study menu",
                           "The study year for the S1 is not defined. Please fill the study year in the Setup of "
                           "Study menu",
                           "The Study is not defined. Cannot proceed further",
                           "The Study is not defined. Cannot proceed further"}));
}
