#pragma once
// FnOIAGD: the mean age at death in an open last age interval, less its start (BOAI), by the
// regression of the settings file's [OAIGD] block on the stable populations of the Coale-Demeny
// model life tables (Coale, Demeny & Vaughan 1983; the fit and its errors: data/README.md):
//
//   y = a + b·Ratio + c·exp(PGR)
//
// Ratio = deaths above 45 / deaths above 10; PGR the annual growth rate as a fraction (0.02 for 2 per
// cent), used in exp() as it is, never divided by 100. One row of coefficients for each family
// (WEST, NORTH, EAST, SOUTH) and BOAI 45, 50, ..., 85; field 0 family, 1 BOAI, 2 a, 3 b, 4 c.
//
// A missing term falls away: no Ratio gives c·exp(PGR) + a, no PGR a + Ratio·b, neither a alone.
// A BOAI outside the nine gives Null; no row for the family and BOAI gives Empty. The family is
// compared upper-cased. Units: years. The fit covers Ratio about 0.19 to 0.99 and PGR -0.01 to 0.04;
// beyond them the formula extrapolates, which the calculator and the command line refuse.

#include "foundation/settings.h"
#include "platform/cell.h"
#include "platform/cell_array.h"

#include <QString>
#include <optional>

namespace vesk {

inline constexpr double kOaigdLowestGrowth = -0.01, kOaigdHighestGrowth = 0.04;

// A fault of the arithmetic (an overflow of exp) throws RuntimeError.
Cell FnOIAGD(const QString& family, int boai, std::optional<double> ratio, std::optional<double> pgr,
             const CellArray& table);
Cell FnOIAGD(const QString& family, int boai, std::optional<double> ratio, std::optional<double> pgr);

// Whether `boai` is one of the nine starts of the fit.
bool isOaigdBoai(double boai);

// Why a growth rate cannot be used with the fit (outside -0.01 to 0.04, or given in per cent), or
// empty when it can.
QString oaigdGrowthRateRefusal(double pgr);

} // namespace vesk
