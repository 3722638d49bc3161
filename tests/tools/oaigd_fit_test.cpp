// The open-interval regression: the stable-population integrals against closed forms, and the least
// squares fits against their normal equations.

#include "coale_demeny_data.h"
#include "oaigd_fit.h"
#include "standard_tables.h"

#include <cmath>
#include <gtest/gtest.h>

using namespace vesk;
using namespace vesk::refgen;

namespace {

const CoaleDemenyData& data() {
    return vesk::test::coaleDemenyData();
}

const std::vector<OaigdFit>& fits() {
    static const std::vector<OaigdFit> f = fitOaigd(data());
    return f;
}

// Deaths and their age moment over [a, a+5] below 80 in closed form: constant hazard mu, survivors
// l(a) exp(-mu (x - a)), discount exp(-r x).
std::array<double, 2> closedSegment(const CdLifeTable& t, int row, double r) {
    const double a = t.age[row], la = t.lx[row], mu = std::log(la / t.lx[row + 1]) / 5, k = mu + r;
    const double w = mu * la * std::exp(-r * a); // density at a
    const double e = std::exp(-k * 5);
    const double d0 = w * (1 - e) / k;
    const double d1 = w * ((a / k + 1 / (k * k)) - e * ((a + 5) / k + 1 / (k * k)));
    return {d0, d1};
}

} // namespace

// Stationary population: the deaths above 10 are the survivors at 10, and the mean years lived
// after B by those dying above B are e(B) of the same l(x).
TEST(StableDeaths, StationaryCaseMatchesSurvivorshipAndExpectancy) {
    for (CdFamily f : {CdFamily::West, CdFamily::North, CdFamily::East, CdFamily::South})
        for (CdSex s : {CdSex::Female, CdSex::Male})
            for (int level : {1, 13, 25}) {
                const CdLifeTable t = coaleDemenyTable(data(), f, s, level);
                const StableDeaths d = stableDeaths(t, 0);
                EXPECT_LT(cdSurvivorship(t, kTopAge), 1e-40);
                EXPECT_NEAR(d.deathsAbove[0], t.lx[3], 1e-12); // l(10)
                EXPECT_NEAR(d.deathsAbove[14], t.l80, 1e-12);
                // Above 80: e(B) of the Gompertz tail in closed form.
                for (int boai : {80, 85}) {
                    const double eB = gompertzExpectancy(cdHazard(t, boai), t.kappa);
                    EXPECT_NEAR(d.meanExcessAge(boai), eB, 1e-8) << level << " " << boai;
                }
                // Below 80: years lived segment by segment in closed form, then the tail.
                for (int boai : {45, 60, 75}) {
                    double years = t.l80 * gompertzExpectancy(t.m80, t.kappa);
                    for (int row = 3; row < kCdRegressed; ++row) {
                        if (t.age[row] < boai)
                            continue;
                        const double mu = std::log(t.lx[row] / t.lx[row + 1]) / 5;
                        years += t.lx[row] * -std::expm1(-5 * mu) / mu;
                    }
                    EXPECT_NEAR(d.meanExcessAge(boai), years / cdSurvivorship(t, boai), 1e-8)
                        << level << " " << boai;
                }
                // And the model table's own e80, whose tail is summed by the trapezoid rule on 0.2 years.
                EXPECT_NEAR(d.meanExcessAge(80), t.ex[17], 2e-3);
            }
}

TEST(StableDeaths, GrowingPopulationMatchesClosedFormBelow80) {
    const CdLifeTable t = coaleDemenyTable(data(), CdFamily::South, CdSex::Male, 9);
    for (double r : {-0.01, 0.025, 0.04}) {
        const StableDeaths d = stableDeaths(t, r);
        // Deaths between 10 and 80, and their age moment.
        double d0 = 0, d1 = 0;
        for (int row = 3; row < kCdRegressed; ++row) {
            const auto seg = closedSegment(t, row, r);
            d0 += seg[0], d1 += seg[1];
        }
        EXPECT_NEAR(d.deathsAbove[0] - d.deathsAbove[14], d0, 1e-12 * d0) << r;
        EXPECT_NEAR(d.ageMomentAbove[0] - d.ageMomentAbove[14], d1, 1e-11 * d1) << r;
        // The tail by a grid ten times finer.
        const StableDeaths fine = stableDeaths(t, r, 0.001);
        EXPECT_NEAR(d.deathsAbove[14], fine.deathsAbove[14], 1e-13) << r;
        EXPECT_NEAR(d.meanExcessAge(85), fine.meanExcessAge(85), 1e-10) << r;
        // Faster growth means younger deaths: a higher share of them below 45.
        EXPECT_GT(d.ratio(), 0);
        EXPECT_LT(d.ratio(), 1);
    }
    EXPECT_GT(stableDeaths(t, -0.01).ratio(), stableDeaths(t, 0.04).ratio());
}

TEST(OaigdFit, ThirtySixRowsInFamilyAndAgeOrder) {
    ASSERT_EQ(fits().size(), 36u);
    const CdFamily order[] = {CdFamily::West, CdFamily::North, CdFamily::East, CdFamily::South};
    for (size_t i = 0; i < fits().size(); ++i) {
        EXPECT_EQ(fits()[i].family, order[i / 9]);
        EXPECT_EQ(fits()[i].boai, 45 + 5 * static_cast<int>(i % 9));
        EXPECT_EQ(fits()[i].n, 550);
        EXPECT_GT(fits()[i].r2, 0.8) << i;
        EXPECT_LE(fits()[i].r2, 1.0) << i;
        EXPECT_GT(fits()[i].rmse, 0) << i;
        EXPECT_LE(fits()[i].rmse, fits()[i].maxAbsError) << i;
    }
    EXPECT_EQ(oaigdGrowthRates().size(), 11u);
    EXPECT_DOUBLE_EQ(oaigdGrowthRates().front(), -0.010);
    EXPECT_DOUBLE_EQ(oaigdGrowthRates().back(), 0.040);
}

// The residuals of a least squares fit are orthogonal to each regressor, and their root mean square
// is the reported RMSE: recomputed here from the 550 stable populations.
TEST(OaigdFit, ResidualsSatisfyTheNormalEquations) {
    for (size_t which : {size_t{4}, size_t{22}, size_t{35}}) {
        const OaigdFit& fit = fits()[which];
        double sum = 0, sumRatio = 0, sumExp = 0, sse = 0, sst = 0, mean = 0;
        std::vector<double> ys;
        for (CdSex s : {CdSex::Female, CdSex::Male})
            for (int level = 1; level <= 25; ++level) {
                const CdLifeTable t = coaleDemenyTable(data(), fit.family, s, level);
                for (double r : oaigdGrowthRates()) {
                    const StableDeaths d = stableDeaths(t, r);
                    const double y = d.meanExcessAge(fit.boai);
                    const double e = y - (fit.a + fit.b * d.ratio() + fit.c * std::exp(r));
                    sum += e, sumRatio += e * d.ratio(), sumExp += e * std::exp(r), sse += e * e;
                    ys.push_back(y), mean += y;
                }
            }
        mean /= static_cast<double>(ys.size());
        for (double y : ys)
            sst += (y - mean) * (y - mean);
        EXPECT_NEAR(sum, 0, 1e-7);
        EXPECT_NEAR(sumRatio, 0, 1e-7);
        EXPECT_NEAR(sumExp, 0, 1e-7);
        EXPECT_NEAR(std::sqrt(sse / 550), fit.rmse, 1e-9);
        EXPECT_NEAR(1 - sse / sst, fit.r2, 1e-9);
    }
}
