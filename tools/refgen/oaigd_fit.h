#pragma once
// The coefficients of the open-interval age at death ([OAIGD]): for each Coale-Demeny family and
// start BOAI of the open interval (45, 50, ..., 85), an ordinary least squares fit of
//     y = a + b·Ratio + c·exp(r)
// over the stable populations of the 25 levels x 2 sexes x 11 growth rates r = -0.010, -0.005, ...,
// 0.040 per year (fractions, not per cent), where in the stable population of a table and a rate
//     d(x)  = exp(-r·x)·l(x)·mu(x)       the density of deaths at age x,
//     Ratio = D(45) / D(10),  D(B) = integral of d over [B, 130]   (deaths above 45 / above 10),
//     y     = integral over [B, 130] of (x - B)·d(x) dx / D(B)     (mean age at death above B, less B).
// l(x) and mu(x) are those of the model table: constant hazard between the tabulated lx below 80,
// the Gompertz tail above (see demography/coale_demeny.h); survivorship at 130 is below 1e-40 at every
// level, so the integrals stop there. Simpson's rule on 0.01-year steps within 5-year segments whose
// ends are the breaks of the hazard.
//
// In the stationary case (r = 0), D(10) = l(10) - l(130) and y = e(B) of the same l(x): the tests
// hold the integration to both.

#include "demography/coale_demeny.h"

#include <array>
#include <vector>

namespace vesk::refgen {

inline constexpr std::array<int, 9> kBoai{45, 50, 55, 60, 65, 70, 75, 80, 85};
inline constexpr double kTopAge = 130;

// D(B) and the integral of x·d(x) over [B, 130], for B = 10, 15, ..., 125 (index (B - 10) / 5).
struct StableDeaths {
    std::array<double, 24> deathsAbove{}, ageMomentAbove{};
    double ratio() const { return deathsAbove[7] / deathsAbove[0]; } // D(45) / D(10)
    double meanExcessAge(int boai) const;                            // y for B = boai
};

StableDeaths stableDeaths(const CdLifeTable& table, double r, double step = 0.01);

struct OaigdFit {
    CdFamily family = CdFamily::West;
    int boai = 0;
    double a = 0, b = 0, c = 0;
    double r2 = 0;   // 1 - SSE / SST
    double rmse = 0; // sqrt(SSE / n), years
    double maxAbsError = 0;
    double ratioMin = 0, ratioMax = 0; // the range of Ratio over the design
    int n = 0;
};

// The growth rates of the design: -0.010 to 0.040 by 0.005.
std::vector<double> oaigdGrowthRates();

// The 36 fits, family by family in the order West, North, East, South, and BOAI 45 to 85 within each.
std::vector<OaigdFit> fitOaigd(const CoaleDemenyData& data);

} // namespace vesk::refgen
