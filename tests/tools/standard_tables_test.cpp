// Single-year standard life tables: the interpolation methods, the e(100) closures, and the shipped
// tables against their published abridged values.

#include "demography/life_table_check.h"
#include "reference_products.h"
#include "standard_tables.h"

#include <QFile>
#include <cmath>
#include <gtest/gtest.h>

using namespace vesk;
using namespace vesk::refgen;

namespace {

const QString kRefdata = QStringLiteral(VESK_SOURCE_DIR "/data/refdata");

const ReferenceInputs& inputs() {
    static const ReferenceInputs in = [] {
        QString error;
        auto r = readReferenceInputs(kRefdata, &error);
        if (!r)
            ADD_FAILURE() << error.toStdString();
        return r.value_or(ReferenceInputs{});
    }();
    return in;
}

const ReferenceProducts& products() {
    static const ReferenceProducts p = [] {
        QString error;
        auto r = makeReferenceProducts(inputs(), &error);
        if (!r)
            ADD_FAILURE() << error.toStdString();
        return r.value_or(ReferenceProducts{});
    }();
    return p;
}

double rounded4(double v) {
    return std::round(v * 1e4) / 1e4;
}

// The table as written (4 decimals) meets the published values at their ages and falls strictly.
void expectReproducesAndFalls(const std::vector<double>& single, const AbridgedExpectancy& published,
                              const char* what) {
    ASSERT_EQ(single.size(), 101u) << what;
    for (size_t i = 0; i < published.ages.size(); ++i)
        EXPECT_NEAR(rounded4(single[static_cast<size_t>(published.ages[i])]), published.ex[i], 0.005)
            << what << " age " << published.ages[i];
    for (size_t a = 1; a < single.size(); ++a)
        EXPECT_LT(rounded4(single[a]), rounded4(single[a - 1])) << what << " age " << a;
}

} // namespace

TEST(PiecewiseExponential, HazardCarriesBothEndsOfTheInterval) {
    const auto mu = pweHazard(79.36, 75.38, 4);
    ASSERT_TRUE(mu.has_value());
    EXPECT_GT(*mu, 0);
    EXPECT_NEAR(pweExpectancy(*mu, 4, 75.38), 79.36, 1e-12);
    EXPECT_DOUBLE_EQ(pweExpectancy(*mu, 0, 75.38), 75.38);
    // With the constant hazard mu, survivorship over the interval is exp(-4 mu), and e(x) is the
    // years lived in the interval plus the survivors' e(x+n): an independent form of the same sum.
    const double p = std::exp(-4 * *mu);
    EXPECT_NEAR((1 - p) / *mu + p * 75.38, 79.36, 1e-12);
}

TEST(PiecewiseExponential, RefusesAnIntervalThatWouldNeedFallingMortality) {
    EXPECT_FALSE(pweHazard(90, 80, 5).has_value()); // 90 > 5 + 80
    EXPECT_TRUE(pweHazard(85, 80, 5).has_value());
    EXPECT_NEAR(*pweHazard(85, 80, 5), 0, 1e-12);
    EXPECT_FALSE(pweHazard(0, 1, 5).has_value());
}

TEST(Geometric, InterpolatesTheRatioEvenly) {
    const AbridgedExpectancy t{{0, 4}, {16, 1}};
    const auto e = geometricSingleYears(t);
    ASSERT_EQ(e.size(), 5u);
    EXPECT_DOUBLE_EQ(e[0], 16);
    EXPECT_NEAR(e[1], 8, 1e-12);
    EXPECT_NEAR(e[2], 4, 1e-12);
    EXPECT_NEAR(e[3], 2, 1e-12);
    EXPECT_DOUBLE_EQ(e[4], 1);
}

TEST(Gompertz, ClosedFormAgreesWithNumericalIntegration) {
    for (auto [m, B] : {std::pair{0.09, 0.106}, {0.5, 0.08}, {0.02, 0.12}, {3.0, 0.1}}) {
        const double h = 0.001;
        double sum = 0;
        for (int k = 0; k < 200000; ++k) {
            const double t0 = k * h, t1 = t0 + h, tm = t0 + h / 2;
            auto s = [&](double t) { return std::exp(-(m / B) * std::expm1(B * t)); };
            sum += h / 6 * (s(t0) + 4 * s(tm) + s(t1));
        }
        EXPECT_NEAR(gompertzExpectancy(m, B), sum, 1e-10) << m << " " << B;
    }
}

TEST(Gompertz, FitRecoversAKnownCurve) {
    const GompertzFit truth{85, 0.12, 0.105, 0};
    const auto fit =
        fitGompertz({85, 90, 95}, {truth.expectancy(85), truth.expectancy(90), truth.expectancy(95)});
    EXPECT_NEAR(fit.A, 0.12, 1e-6);
    EXPECT_NEAR(fit.B, 0.105, 1e-6);
    EXPECT_NEAR(fit.expectancy(100), truth.expectancy(100), 1e-6);
}

TEST(StandardTables, ClosuresAt100) {
    EXPECT_NEAR(products().maleE100, 1.4611, 5e-5);
    // The same Gompertz closure on the male column lands within 0.01 of the model's value: the
    // check behind the female closure.
    EXPECT_NEAR(products().maleTailCheck.expectancy(100), products().maleE100, 0.01);
    EXPECT_GT(products().femaleE100, products().maleE100);
    EXPECT_LT(products().femaleE100, inputs().standardFemale.ex.back());
    EXPECT_LT(products().femaleTail.rss, 0.01);
}

TEST(StandardTables, KroAndWhoReproduceThePublishedStandard) {
    expectReproducesAndFalls(products().kro.female, inputs().standardFemale, "KRO female");
    expectReproducesAndFalls(products().kro.male, inputs().standardMale, "KRO male");
    expectReproducesAndFalls(products().who.female, inputs().standardFemale, "WHO female");
    expectReproducesAndFalls(products().who.male, inputs().standardMale, "WHO male");
    EXPECT_NEAR(products().kro.male[100], 1.4611, 5e-5);
    EXPECT_DOUBLE_EQ(products().kro.female[100], products().femaleE100);
    EXPECT_DOUBLE_EQ(products().who.female[100], products().femaleE100);
}

TEST(StandardTables, ImportableTablesFollowTheirSources) {
    expectReproducesAndFalls(products().gbd2019Single, inputs().gbd2019, "GBD 2019");
    for (size_t a = 0; a <= 100; ++a) {
        EXPECT_DOUBLE_EQ(products().gbd2021Single[a], inputs().gbd2021[a]);
        EXPECT_DOUBLE_EQ(products().whoFrontierSingle[a], inputs().whoFrontier[a]);
    }
    EXPECT_NEAR(products().gbd2021Single[0], 89.9580397, 1e-9);
    EXPECT_NEAR(products().whoFrontierSingle[100], 2.79, 1e-12);
}

// The committed files of data/standard_tables, read as the import reads a text table (texts split at
// "|" after the tags), pass the consistency check.
TEST(StandardTables, ShippedImportFilesPassTheConsistencyCheck) {
    for (const char* name : {"who_ghe_frontier.txt", "gbd2021_reference.txt", "gbd2019_reference.txt"}) {
        QFile f(QStringLiteral(VESK_SOURCE_DIR "/data/standard_tables/") + name);
        ASSERT_TRUE(f.open(QIODevice::ReadOnly)) << name;
        const QStringList lines = QString::fromLatin1(f.readAll()).split(QStringLiteral("\r\n"));
        ASSERT_EQ(lines.value(0), QStringLiteral("[User Defined Tables]")) << name;
        QStringList columns[3];
        for (const QString& line : lines)
            for (int c = 0; c < 3; ++c)
                if (line.startsWith(QStringList{"[BAI]:", "[EXF]:", "[EXM]:"}[c]))
                    columns[c] = line.mid(6).split(u'|');
        ASSERT_EQ(columns[0].size(), 101) << name;
        CellArray table({101, 3});
        for (int i = 0; i < 101; ++i)
            for (int c = 0; c < 3; ++c)
                table(i, c) = columns[c].value(i);
        EXPECT_TRUE(DoChk(table)) << name;
        EXPECT_EQ(columns[1], columns[2]) << name << ": both sexes share one column";
    }
}
