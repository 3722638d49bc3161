// The N leading causes: cause totals, their shares, the exchange sort and the report, worked by hand.

#include "burden/computation_arrays.h"
#include "burden/computation.h"
#include "burden/leading_causes.h"
#include "platform/prompts.h"
#include "foundation/error_store.h"

#include <gtest/gtest.h>

using namespace vesk;

namespace {

// A DALY result of one year, two units, one set, `values.size()` causes and two groups: the cause's
// value in each group of unit 0, and 1000 in each group of unit 1.
struct Result {
    Cell array, labels;
};

Result daly(const QList<double>& values) {
    const int causes = int(values.size());
    CellArray a({1, 2, 1, causes, 2, kDalyLastSlot + 1});
    CellArray codes({causes});
    for (int c = 0; c < causes; ++c) {
        codes(c) = Cell(QStringLiteral("C%1").arg(c, 2, 10, QChar('0')));
        for (int m = 0; m < 2; ++m) {
            a(0, 0, 0, c, m, kDalyIDALY) = Cell(values[c]);
            a(0, 0, 0, c, m, kDalyPDALY) = Cell(2 * values[c]);
            a(0, 1, 0, c, m, kDalyIDALY) = Cell(1000.0);
        }
    }
    CellArray labels({kLblEntries});
    labels(kLblCauses) = Cell(std::move(codes));
    return {Cell(std::move(a)), Cell(std::move(labels))};
}

QString name(const QString& code) {
    return QStringLiteral("Cause ") + code;
}

QStringList column(const CellArray& m, int k) {
    QStringList out;
    for (int r = 0; r < m.size(0); ++r)
        out << m(r, k).toString();
    return out;
}

} // namespace

TEST(LeadingCauses, TotalsOfAUnitAndTheirSharesOfAllCauses) {
    // Unit 0: causes 1, 2, 3 and 4 in each of two groups: sums 2, 4, 6, 8 of a total of 20.
    const Result r = daly({1, 2, 3, 4});
    const Cell t = FnCauseTotals(r.array, r.labels, kDalyIDALY, 0);
    ASSERT_TRUE(t.isArray());
    const CellArray& a = t.array();
    EXPECT_EQ(a(0, 0, 0, 2, 0).toString(), QString("C02"));
    EXPECT_EQ(a(0, 0, 0, 2, 1).toDouble(), 6);
    EXPECT_EQ(a(0, 0, 0, 2, 2).toString(), QString("30.000"));
    EXPECT_EQ(a(0, 0, 0, 0, 2).toString(), QString("10.000"));
    // PDALY is twice: the same shares. Both units: 2 x 1000 more a cause.
    EXPECT_EQ(FnCauseTotals(r.array, r.labels, kDalyPDALY, 0).array()(0, 0, 0, 3, 1).toDouble(), 16);
    EXPECT_EQ(FnCauseTotals(r.array, r.labels, kDalyIDALY).array()(0, 0, 0, 3, 1).toDouble(), 2008);
}

TEST(LeadingCauses, ASlotOtherThanTwoOrThreeGivesNothing) {
    const Result r = daly({1, 2});
    EXPECT_FALSE(FnCauseTotals(r.array, r.labels, 1).isArray());
    EXPECT_FALSE(FnCauseTotals(r.array, r.labels, 4).isArray());
    EXPECT_FALSE(FnCauseTotals(Cell(), r.labels, 2).isArray());
}

TEST(LeadingCauses, ATotalOfZeroGivesZeroSharesAndNoDivision) {
    const Result r = daly({0, 0, 0});
    const Cell t = FnCauseTotals(r.array, r.labels, kDalyIDALY, 0);
    const CellArray report = leadingCausesReport(t, 0, 0, 10, name);
    EXPECT_EQ(column(report, 3), QStringList({"0", "0", "0"}));
    // No values: the rows in the order of the causes.
    EXPECT_EQ(column(report, 0), QStringList({"C00", "C01", "C02"}));
}

TEST(LeadingCauses, TenOfTwentyAreTheLargestTenAndSevenOfSevenAreAll) {
    QList<double> twenty;
    for (int c = 0; c < 20; ++c)
        twenty << double((c * 7) % 20 + 1); // 1..20, each once, shuffled
    const Result r = daly(twenty);
    const CellArray report = leadingCausesReport(FnCauseTotals(r.array, r.labels, kDalyIDALY, 0), 0, 0, 10, name);
    ASSERT_EQ(report.size(0), 10);
    QList<double> shown;
    double shares = 0;
    for (int k = 0; k < 10; ++k) {
        shown << report(k, 2).toDouble();
        shares += report(k, 3).toString().toDouble();
    }
    EXPECT_EQ(shown, QList<double>({40, 38, 36, 34, 32, 30, 28, 26, 24, 22})); // twice 20 .. 11
    // Shares of the total of all twenty (2 x 210), so the ten shown make 310 / 420.
    EXPECT_NEAR(shares, 100.0 * 310 / 420, 0.01);
    EXPECT_EQ(report(0, 1).toString(), QString("Cause ") + report(0, 0).toString());
    EXPECT_EQ(leadingCausesHeads("IDALY"), QStringList({"Cob Code", "Cob Description", "IDALY", "IDALY Percentage"}));

    const Result seven = daly({5, 1, 7, 2, 6, 3, 4});
    EXPECT_EQ(leadingCausesReport(FnCauseTotals(seven.array, seven.labels, kDalyIDALY, 0), 0, 0, 10, name).size(0), 7);
}

TEST(LeadingCauses, TiesAreLeftToTheExchangeSort) {
    // Values 1, 2, 2, 3 (causes a, b, c, d). i = 0: b > a swap (b a c d), c > b no, d > b swap (d a c b);
    // i = 1: c > a swap (d c a b), b > c no; i = 2: b > a swap (d c b a). The two equal causes end
    // reversed: the third row moved one of them.
    CellArray m({4, 2});
    const char* codes[] = {"a", "b", "c", "d"};
    const double values[] = {1, 2, 2, 3};
    for (int r = 0; r < 4; ++r) {
        m(r, 0) = Cell(codes[r]);
        m(r, 1) = Cell(QString::number(values[r])); // read through its text
    }
    FnSortMtx(m, 1, 0);
    EXPECT_EQ(column(m, 0), QStringList({"d", "c", "b", "a"}));
    FnSortMtx(m, 1, 1);
    EXPECT_EQ(column(m, 1), QStringList({"1", "2", "2", "3"}));
}

TEST(LeadingCauses, AColumnMovesAndTheOthersShift) {
    CellArray m({1, 4});
    for (int k = 0; k < 4; ++k)
        m(0, k) = Cell(QString::number(k));
    EXPECT_EQ((QStringList{FnMoveCol(m, 3, 1)(0, 0).toString(), FnMoveCol(m, 3, 1)(0, 1).toString(),
                           FnMoveCol(m, 3, 1)(0, 2).toString(), FnMoveCol(m, 3, 1)(0, 3).toString()}),
              QStringList({"0", "3", "1", "2"}));
}

TEST(LeadingCauses, ANullValueIsStoredAsAnErrorAndAddsNothing) {
    clearErrorStore();
    Result r = daly({1, 2});
    r.array.array()(0, 0, 0, 1, 0, kDalyIDALY) = Cell::null();
    const Cell t = FnCauseTotals(r.array, r.labels, kDalyIDALY, 0);
    EXPECT_EQ(t.array()(0, 0, 0, 1, 1).toDouble(), 2);
    EXPECT_EQ(errorStoreCount(), 1);
    EXPECT_EQ(ErrStore().array()(0, 2).toString(), QString("FnCauseTotals"));
    clearErrorStore();
}

namespace {

MeasureSource idaly(const Result& r) {
    return {r.array, r.labels, kDalyIDALY};
}

} // namespace

TEST(NLeadingCauses, WithoutResultsTheReportSaysSoAndShowsNothing) {
    ScriptedPrompts prompts;
    ScopedPromptService scope(&prompts);
    const Result r = daly({1, 2});
    EXPECT_FALSE(procNLeadCausDALY({Cell(), r.labels, kDalyIDALY}, BurdenMeasure::IDALY, 0, 0, 0, "10", name));
    EXPECT_FALSE(procNLeadCausDALY({r.array, Cell(), kDalyIDALY}, BurdenMeasure::IDALY, 0, 0, 0, "10", name));
    ASSERT_EQ(prompts.shown().size(), 2);
    EXPECT_EQ(prompts.shown()[0].text, QString("The present result cannot be shown. Please Calculate the daly again"));
    EXPECT_EQ(prompts.shown()[0].icon, Icon::Information);
}

TEST(NLeadingCauses, AnEmptyOrZeroNAsksAndOkTakesTenCancelShowsNothing) {
    ScriptedPrompts prompts;
    ScopedPromptService scope(&prompts);
    QList<double> twelve;
    for (int c = 0; c < 12; ++c)
        twelve << c + 1.0;
    const Result r = daly(twelve);
    prompts.answer(Answer::Ok);
    const auto table = procNLeadCausDALY(idaly(r), BurdenMeasure::IDALY, 0, 0, 0, "", name);
    ASSERT_TRUE(table.has_value());
    EXPECT_EQ(table->rows.size(0), 10);
    EXPECT_EQ(table->heads, QStringList({"Cob Code", "Cob Description", "IDALY", "IDALY Percentage"}));
    ASSERT_EQ(prompts.shown().size(), 1);
    EXPECT_EQ(prompts.shown()[0].text, QString("Enter a valid number for NLeading Cause\nDo you want The Default as 10"));
    EXPECT_EQ(prompts.shown()[0].title, QString("Value foe N Leading cause not set"));
    EXPECT_EQ(prompts.shown()[0].buttons, Buttons::OkCancel);
    prompts.answer(Answer::Cancel);
    EXPECT_FALSE(procNLeadCausDALY(idaly(r), BurdenMeasure::IDALY, 0, 0, 0, "0", name).has_value());
    EXPECT_EQ(prompts.unanswered(), 0);
    // A number is taken as it stands, without a question.
    EXPECT_EQ(procNLeadCausDALY(idaly(r), BurdenMeasure::IDALY, 0, 0, 0, "3", name)->rows.size(0), 3);
    EXPECT_EQ(prompts.shown().size(), 2);
}

TEST(NLeadingCauses, ACauseWithoutDataStandsLastWithZero) {
    ScriptedPrompts prompts;
    ScopedPromptService scope(&prompts);
    Result r = daly({3, 1, 2});
    CellArray& a = r.array.array();
    for (int m = 0; m < 2; ++m)
        a(0, 0, 0, 0, m, kDalyIDALY) = Cell(); // C00 has no data in unit 0
    const auto table = procNLeadCausDALY(idaly(r), BurdenMeasure::IDALY, 0, 0, 0, "10", name);
    ASSERT_TRUE(table.has_value());
    EXPECT_EQ(column(table->rows, 0), QStringList({"C02", "C01", "C00"}));
    EXPECT_EQ(table->rows(2, 2).toDouble(), 0.0);
    EXPECT_EQ(column(table->rows, 3), QStringList({"66.667", "33.333", "0.000"}));
}

TEST(NLeadingCauses, TheMeasuresAndWhereEachStands) {
    EXPECT_EQ(burdenMeasureNamed("idaly"), BurdenMeasure::IDALY);
    EXPECT_EQ(burdenMeasureNamed(" PYLD "), BurdenMeasure::PYLD);
    EXPECT_FALSE(burdenMeasureNamed("DALY").has_value());
    Computation comp;
    comp.ArrYll = Cell(1.0);
    comp.ArrYld = Cell(2.0);
    EXPECT_EQ(measureSource(comp, BurdenMeasure::YLL).result, Cell(1.0));
    EXPECT_EQ(measureSource(comp, BurdenMeasure::YLL).slot, kYllYLL);
    EXPECT_EQ(measureSource(comp, BurdenMeasure::PYLD).result, Cell(2.0));
    EXPECT_EQ(measureSource(comp, BurdenMeasure::PYLD).slot, kYldPYLD);
    EXPECT_EQ(measureSource(comp, BurdenMeasure::PDALY).slot, kDalyPDALY);
}
