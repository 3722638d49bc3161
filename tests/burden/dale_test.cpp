// DALE: the Adjust vector from the fractions, the two expectancies of a table worked by hand, the
// fractions from the YLD and the population, and the whole computation on the small study.

#include "burden/basic_arrays.h"
#include "burden/calculator_models.h"
#include "burden/computation.h"
#include "burden/computation_arrays.h"
#include "burden/dale.h"
#include "burden/stored_results.h"
#include "database/db_create.h"
#include "demography/life_table.h"
#include "foundation/error_store.h"
#include "foundation/runtime_error.h"
#include "platform/runtime.h"
#include "small_study_fixture.h"

#include <gtest/gtest.h>

using namespace vesk;
using namespace vesk::test;

namespace {

// Rates of three rows: 0 (one year), 1-4 and the open row from 5.
Cell rates(double m0, double m1, double m5) {
    CellArray r({3, 2});
    r(0, 0) = Cell(0.0), r(0, 1) = Cell(m0);
    r(1, 0) = Cell(1.0), r(1, 1) = Cell(m1);
    r(2, 0) = Cell(5.0), r(2, 1) = Cell(m5);
    return Cell(std::move(r));
}

// ArrDaleFrac of one year, unit and set with the age rows `labels` and the fraction of each for the
// three sexes alike.
Cell fractions(const QStringList& labels, const QList<double>& values) {
    CellArray f({1, 1, 1, 1, int(labels.size()), 4});
    for (int n = 0; n < labels.size(); ++n) {
        f(0, 0, 0, 0, n, 0) = Cell(labels[n]);
        for (int k = 1; k <= 3; ++k)
            f(0, 0, 0, 0, n, k) = Cell(values[n]);
    }
    return Cell(std::move(f));
}

DaleFigures figuresOf(const Cell& r, const Cell& adjust) {
    const auto f = daleFigures(FnLifeTable(r, 0, 1000, 0, kLtStandard, adjust));
    EXPECT_TRUE(f.has_value());
    return f.value_or(DaleFigures{});
}

} // namespace

TEST(Dale, AdjustGivesEachRatesRowTheFractionOfItsAgeRowRoundedToFourDecimals) {
    const Cell adjust =
        FnAdjustFor(fractions({"A0", "A01-4", "A5-w"}, {0.12345, 0.12355, 0.3}), 0, 0, 0, "F", rates(0, 0.01, 0.05));
    ASSERT_TRUE(adjust.isArray());
    const CellArray& a = adjust.array();
    ASSERT_EQ(a.size(0), 3);
    EXPECT_EQ(a(0).toDouble(), 0.1234); // half to even: 0.12345 -> 0.1234 (as the double lies just below)
    EXPECT_EQ(a(1).toDouble(), roundHalfEven(0.12355, 4));
    EXPECT_EQ(a(2).toDouble(), 0.3);
}

TEST(Dale, ARatesRowInNoAgeGroupKeepsAnEmptyAdjustCellWhichMeansNoDisability) {
    // Fractions for the ages 5 and over only: the rows 0 and 1-4 stay Empty.
    const Cell r = rates(0, 0.01, 0.05);
    const Cell adjust = FnAdjustFor(fractions({"A5-w"}, {0.3}), 0, 0, 0, "M", r);
    ASSERT_TRUE(adjust.isArray());
    EXPECT_TRUE(adjust.array()(0).isEmpty());
    EXPECT_TRUE(adjust.array()(1).isEmpty());
    EXPECT_EQ(adjust.array()(2).toDouble(), 0.3);
    // The table reads the Empty cells as no disability: the same as explicit zeros.
    CellArray zeros({3});
    zeros(0) = Cell(0.0), zeros(1) = Cell(0.0), zeros(2) = Cell(0.3);
    const DaleFigures a = figuresOf(r, adjust), b = figuresOf(r, Cell(std::move(zeros)));
    EXPECT_EQ(a.dale.toDouble(), b.dale.toDouble());
    EXPECT_EQ(a.he.toDouble(), b.he.toDouble());
}

TEST(Dale, BothExpectanciesOfATableWorkedByHand) {
    // Standard method, IMR 0: the infant row has q0 = R / (...) = 0, so l1 = l0 and L0 = l0.
    // Row 1-4: m 0.01, ax 0.4, n 4: q = 0.04 / (1 + 0.6 x 0.04) = 0.0390625; d = 0.0390625 l0;
    //   L = 4 (l0 x 0.9609375 + 0.4 x 0.0390625 l0) = 3.90625 l0.
    // Open row from 5: m 0.05, l = 0.9609375 l0, L = l / m = 19.21875 l0.
    // T0 = 24.125 l0, so E0 = 24.125 (every figure so far is exact in binary).
    // Fractions 0.1, 0.2, 0.3:
    //   DALE = E0 (1 - 0.1) = 21.7125;
    //   Sullivan = (1 x 0.9 + 3.90625 x 0.8 + 19.21875 x 0.7) / 1 = 0.9 + 3.125 + 13.453125 = 17.478125.
    // Each of the few products and sums rounds once at 2^-53 relative; 1e-12 is far above that and far
    // below any slip of a row.
    const Cell r = rates(0, 0.01, 0.05);
    const DaleFigures f = figuresOf(r, FnAdjustFor(fractions({"A0", "A01-4", "A5-w"}, {0.1, 0.2, 0.3}), 0, 0, 0, "P", r));
    EXPECT_NEAR(f.e0.toDouble(), 24.125, 1e-12);
    EXPECT_NEAR(f.dale.toDouble(), 21.7125, 1e-12);
    EXPECT_NEAR(f.he.toDouble(), 17.478125, 1e-12);
}

TEST(Dale, WithoutDisabilityBothFiguresAreTheLifeExpectancy) {
    const Cell r = rates(0, 0.013, 0.041);
    const DaleFigures f = figuresOf(r, FnAdjustFor(fractions({"A0", "A01-4", "A5-w"}, {0, 0, 0}), 0, 0, 0, "F", r));
    EXPECT_EQ(f.dale.toDouble(), f.e0.toDouble());
    // The sum of Lx over l0 against Tx(0) / l0: the same additions in another order.
    EXPECT_NEAR(f.he.toDouble(), f.e0.toDouble(), 1e-12);
}

TEST(Dale, TheAdjustTestPassesAtOneAndFailsAboveIt) {
    CellArray a({3});
    a(0) = Cell(0.5), a(2) = Cell(1.0);
    EXPECT_TRUE(FnFracValid(Cell(a)));
    a(1) = Cell(1.0001);
    EXPECT_FALSE(FnFracValid(Cell(a)));
    EXPECT_TRUE(FnFracValid(Cell()));
}

namespace {

// ArrYld of one year, one unit, one set, two causes and the groups F0-14, F15-w, M0-14, M15-w.
Cell yld(const QList<double>& iyld, const QList<double>& pyld) {
    const QStringList labels = {"F0-14", "F15-w", "M0-14", "M15-w"};
    CellArray a({1, 1, 1, 2, 4, kYldLastSlot + 1});
    for (int c = 0; c < 2; ++c)
        for (int m = 0; m < 4; ++m) {
            a(0, 0, 0, c, m, kYldAsg) = Cell(labels[m]);
            a(0, 0, 0, c, m, kYldIYLD) = Cell(iyld[c * 4 + m]);
            a(0, 0, 0, c, m, kYldPYLD) = Cell(pyld[c * 4 + m]);
        }
    return Cell(std::move(a));
}

Cell population(const QList<double>& people) {
    const QStringList labels = {"F0-14", "F15-w", "M0-14", "M15-w"};
    CellArray p({1, 1, 4, 2});
    for (int m = 0; m < 4; ++m) {
        p(0, 0, m, 0) = Cell(labels[m]);
        p(0, 0, m, 1) = Cell(people[m]);
    }
    return Cell(std::move(p));
}

} // namespace

TEST(Dale, FractionsAreTheIncidentYldOfAllCausesOverThePopulationOfTheGroup) {
    clearErrorStore();
    const Cell f = FnDaleFractions(FnSumYldCauses(yld({1, 2, 3, 4, 10, 20, 30, 40}, {9, 9, 9, 9, 9, 9, 9, 9})),
                                   population({110, 220, 330, 440}));
    ASSERT_TRUE(f.isArray());
    const CellArray& a = f.array();
    ASSERT_EQ(a.size(4), 2);
    EXPECT_EQ(a(0, 0, 0, 0, 0, 0).toString(), QString("A0-14"));
    EXPECT_EQ(a(0, 0, 0, 0, 1, 0).toString(), QString("A15-w"));
    EXPECT_EQ(a(0, 0, 0, 0, 0, 1).toDouble(), 11.0 / 110); // F0-14: (1 + 10) / 110
    EXPECT_EQ(a(0, 0, 0, 0, 1, 2).toDouble(), 44.0 / 440); // M15-w: (4 + 40) / 440
    EXPECT_EQ(a(0, 0, 0, 0, 0, 3).toDouble(), (11.0 + 33.0) / (110 + 330));
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST(Dale, PrevalentYldPlaysNoPart) {
    const Cell people = population({110, 220, 330, 440});
    const Cell a = FnDaleFractions(FnSumYldCauses(yld({1, 2, 3, 4, 5, 6, 7, 8}, {1, 1, 1, 1, 1, 1, 1, 1})), people);
    const Cell b = FnDaleFractions(FnSumYldCauses(yld({1, 2, 3, 4, 5, 6, 7, 8}, {50, 0, 7, 3, 2, 1, 9, 9})), people);
    EXPECT_EQ(a, b);
}

TEST(Dale, AZeroPopulationStoresTheDivisionAndLeavesThatFractionEmpty) {
    clearErrorStore();
    const Cell f =
        FnDaleFractions(FnSumYldCauses(yld({1, 2, 3, 4, 5, 6, 7, 8}, {0, 0, 0, 0, 0, 0, 0, 0})), population({0, 220, 330, 440}));
    ASSERT_TRUE(f.isArray());
    EXPECT_TRUE(f.array()(0, 0, 0, 0, 0, 1).isEmpty()); // F0-14 over 0
    EXPECT_FALSE(f.array()(0, 0, 0, 0, 0, 2).isEmpty()); // M0-14 is there
    EXPECT_FALSE(f.array()(0, 0, 0, 0, 0, 3).isEmpty()); // both: over 0 + 330
    ASSERT_EQ(errorStoreCount(), 1);
    EXPECT_EQ(ErrStore().array()(0, 0).toDouble(), runtime_error::kDivisionByZero);
    clearErrorStore();
}

// The whole computation on the small study: U1 has a population, U2 none. The small study leaves the
// death rates of both sexes together at 0, which no life table can close; they are given here.
class DaleStudy : public SmallStudyTest {
protected:
    void SetUp() override {
        SmallStudyTest::SetUp();
        exec(kSmallPersonsRates);
    }
    void computeSets(const QStringList& ids) {
        DapGridModel grid(DapRowTexts::Computation);
        for (const QString& id : ids)
            for (int r = 0; r < grid.rowCount(); ++r)
                if (grid.text(r, DapGridModel::IdColumn) == id)
                    grid.chooseRow(r, kCompModeSensitivity);
        comp.MtxDAP = grid.chosenDaps();
        TimeLog log;
        const CellArray none;
        ASSERT_NE(runComputation(studyContext(), comp, none, nullptr, log, QStringLiteral(VESK_BIN_DIR "/Vesk.stp")).end,
                  RunEnd::NoAdwip);
        clearErrorStore();
    }
    Computation comp;
};

TEST_F(DaleStudy, FiguresOfAUnitFollowFromItsYldItsPopulationAndItsDeathRates) {
    computeSets({"1"});
    ASSERT_TRUE(computeDale(studyContext(), comp, QStringLiteral(VESK_BIN_DIR "/Vesk.stp")));
    ASSERT_TRUE(comp.ArrDale.isArray());
    const CellArray& d = comp.ArrDale.array();
    ASSERT_EQ(d.size(1), 2);
    EXPECT_EQ(d(0, 0, 0, dale_slot::kRegion).toString(), QString("U1"));
    // U1's women: rates 0.01 from 0 to 80+ by five years; the fraction of the first YLD group F0-14
    // is the IYLD of all causes there over 3 x 500 women.
    const CellArray& y = comp.ArrYld.array();
    double iyld = 0;
    for (int c = 0; c < y.size(kDimCause); ++c)
        if (y(0, 0, 0, c, 0, kYldIYLD).isNumber())
            iyld += y(0, 0, 0, c, 0, kYldIYLD).toDouble();
    ASSERT_GT(iyld, 0);
    CellArray r({17, 2});
    for (int k = 0; k < 17; ++k)
        r(k, 0) = Cell(5.0 * k), r(k, 1) = Cell(0.01);
    const Cell table = FnLifeTable(Cell(r), 0, 1000, 0, kLtStandard);
    ASSERT_TRUE(table.isArray());
    const double e0 = table.array()(0, life_table_col::Ex).toDouble();
    EXPECT_EQ(d(0, 0, 0, dale_slot::kE0F).toDouble(), e0);
    EXPECT_NEAR(d(0, 0, 0, dale_slot::kDaleF).toDouble(), e0 * (1 - roundHalfEven(iyld / 1500, 4)), 1e-12 * e0);
    // The Sullivan figure lies below E0 and above E0 less the largest share of life in disability.
    EXPECT_LT(d(0, 0, 0, dale_slot::kHeF).toDouble(), e0);
    // U2 has no population: its fractions divide by 0 and its tables take no disability.
    EXPECT_EQ(d(0, 1, 0, dale_slot::kRegion).toString(), QString("U2"));
    EXPECT_EQ(d(0, 1, 0, dale_slot::kDaleF).toDouble(), d(0, 1, 0, dale_slot::kE0F).toDouble());
    EXPECT_GT(errorStoreCount(), 0);
}

TEST_F(DaleStudy, ThreeSetsGiveNineTablesForEachUnitAndYear) {
    computeSets({"0", "1", "2"});
    ASSERT_TRUE(computeDale(studyContext(), comp));
    const CellArray& d = comp.ArrDale.array();
    ASSERT_EQ(d.size(2), 3);
    for (int b = 0; b < d.size(1); ++b) {
        int tables = 0;
        for (int s = 0; s < 3; ++s)
            for (int k : {dale_slot::kE0F, dale_slot::kE0M, dale_slot::kE0P})
                tables += d(0, b, s, k).isNumber() ? 1 : 0;
        EXPECT_EQ(tables, 9) << "unit " << b;
    }
}

TEST_F(DaleStudy, AFractionAboveOneIsStoredWithTheUnitAndTheRunGoesOn) {
    computeSets({"1"});
    // Ten thousand times the IYLD of every cause: far more disability than person-time.
    CellArray& y = comp.ArrYld.array();
    for (int c = 0; c < y.size(kDimCause); ++c)
        for (int m = 0; m < y.size(kDimAsg); ++m)
            if (y(0, 0, 0, c, m, kYldIYLD).isNumber())
                y(0, 0, 0, c, m, kYldIYLD) = Cell(y(0, 0, 0, c, m, kYldIYLD).toDouble() * 1e4);
    clearErrorStore();
    ASSERT_TRUE(computeDale(studyContext(), comp));
    bool found = false;
    const CellArray& e = ErrStore().array();
    for (int r = 0; r <= e.ubound(0); ++r)
        if (e(r, 0).toDouble() == -25) {
            found = true;
            EXPECT_TRUE(e(r, 1).toString().startsWith("Please Check the incidence and population rate."));
            EXPECT_TRUE(e(r, 1).toString().endsWith("for U1"));
            EXPECT_EQ(e(r, 2).toString(), QString("Dale Calculation"));
        }
    EXPECT_TRUE(found);
    // The table still ran: a negative adjusted expectancy, as the fraction exceeds 1.
    EXPECT_LT(comp.ArrDale.array()(0, 0, 0, dale_slot::kDaleF).toDouble(), 0);
}

TEST_F(DaleStudy, PrevalentYldOfTheStudyPlaysNoPart) {
    computeSets({"1"});
    ASSERT_TRUE(computeDale(studyContext(), comp));
    const Cell before = comp.ArrDale;
    CellArray& y = comp.ArrYld.array();
    for (int c = 0; c < y.size(kDimCause); ++c)
        for (int m = 0; m < y.size(kDimAsg); ++m)
            y(0, 0, 0, c, m, kYldPYLD) = Cell(12345.0);
    ASSERT_TRUE(computeDale(studyContext(), comp));
    EXPECT_EQ(comp.ArrDale, before);
}

TEST_F(DaleStudy, WithoutChosenSetsTheMenuSaysWhatToDoFirst) {
    comp.MtxDAP = Cell();
    EXPECT_FALSE(procCompDALE(studyContext(), comp, {}));
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_TRUE(prompts.shown()[0].text.startsWith("Either Compute DALY from Compute DALY"));
    EXPECT_EQ(prompts.shown()[0].title, QString("DALE Computation"));
}

TEST_F(DaleStudy, TheReportOffersTheStoredErrorsAndEmptiesTheStore) {
    computeSets({"1"});
    prompts.clear();
    prompts.answer(Answer::Yes);
    int viewed = 0;
    EXPECT_TRUE(procCompDALE(studyContext(), comp, [&] {
        ++viewed;
        EXPECT_GT(errorStoreCount(), 0); // the viewer sees the store before it is emptied
    }));
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(prompts.shown()[0].text.left(10), QString("Few errors")); // U2's divisions by 0
    EXPECT_EQ(prompts.shown()[0].title, QString("DALE Calculation"));
    EXPECT_EQ(viewed, 1);
    EXPECT_EQ(errorStoreCount(), 0);
}

TEST_F(DaleStudy, AfterALoadOfStoredResultsThePopulationIsBuiltAgain) {
    computeSets({"1"});
    ASSERT_TRUE(computeDale(studyContext(), comp));
    const Cell computed = comp.ArrDale;
    Computation loaded;
    loaded.MtxDAP = comp.MtxDAP;
    LoadedResults results;
    ASSERT_EQ(LoadStroedResults(computationStudy(studyContext()), loaded.MtxDAP, [](const QString&) {}, nullptr, results), LoadEnd::Loaded);
    adoptLoadedResults(std::move(results), loaded);
    ASSERT_FALSE(loaded.ArrPop4D.isArray());
    ASSERT_TRUE(computeDale(studyContext(), loaded, QStringLiteral(VESK_BIN_DIR "/Vesk.stp")));
    EXPECT_EQ(loaded.ArrDale, computed);
}

TEST(Dale, NoDeathRatesStopsWithItsMessage) {
    // An empty DatASDR: FnLoadASDRAll reports no data.
    QTemporaryDir dir;
    QString error;
    ASSERT_TRUE(createStudyFile(dir.path() + "/s.vdb", &error)) << error.toStdString();
    auto db = DbConnection::open(dir.path() + "/s.vdb", &error);
    bool noData = false;
    const auto a = FnLoadASDRAll(*db, Cell(), Cell(), &noData, &error);
    ASSERT_TRUE(a.has_value());
    EXPECT_TRUE(noData);
}
