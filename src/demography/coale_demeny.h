#pragma once
// Coale-Demeny regional model life tables (West, North, East, South; females and males; levels 1
// to 25), generated from their published regression rule.
//
// Source: Coale A.J., Demeny P. & Vaughan B., Regional Model Life Tables and Stable Populations,
// 2nd ed., Academic Press 1983. For family F, sex S and level i, with e10 the expectation of life
// at 10 that defines the level, and the 17 age groups x = 0, 1, 5, ..., 75:
//
//   qA = lin_a[x] + lin_b[x]·e10                 (linear regression of nqx on e10)
//   qL = 10^(log_a[x] + log_b[x]·e10) / 10000    (log-linear regression)
//   s  = (lin_b / log_b) / (ln 10 · qL)           (ratio of the two slopes at qL)
//   nqx = qA            when qA <= qL and s < 1
//       = qL            when qA <= qL and s >= 1
//       = (qA + qL) / 2 when qA > qL
//
// lx is the product of (1 - nqx) up to l80 = l75·(1 - 5q75). Above 80 a Gompertz hazard:
//   nL75 = 5·l75·(1 - q75) + 2.5·l75·q75,  m77.5 = l75·q75 / nL75,
//   m105 = 0.613 + 1.75·q75 (females) or 0.551 + 1.75·q75 (males),
//   κ = ln(m105 / m77.5) / 27.5,  m80 = m77.5·e^(2.5κ),
//   l(80 + t) = l80·exp(-(m80/κ)(e^(κt) - 1)),
// with nL80, nL85, nL90, nL95 and T100 by the trapezoid rule on a 0.2-year grid up to age 121.
// The last row (95+) is open: its nLx is the years lived from 95 to 100, and T95 = nL95 + T100.
//
// nax: 1a0 and 4a1 by the rules of UN Manual X (Indirect Techniques for Demographic Estimation,
// 1983), Table 164: a linear function of q0 below q0 = 0.100 and a constant from there on; 2.25 for
// 5-9, 2.6 for 10-14 to 70-74, 2.5 above. nLx = n·l(x+n) + nax·ndx below 80; ex = Tx / lx.
//
// The coefficients are read from three CSV files of the program's reference data folder
// (refdata/ beside the program): cd_regression_coefficients.csv, cd_level_e10.csv and
// cd_a0_4a1_rules.csv. Units: ages and expectancies in years, lx with radix 1.

#include <QString>
#include <array>
#include <optional>

namespace vesk {

enum class CdFamily { West, North, East, South };
enum class CdSex { Female, Male };

inline constexpr int kCdAgeGroups = 21; // 0, 1, 5, ..., 95+
inline constexpr int kCdRegressed = 17; // 0 to 75: the groups with a regression
inline constexpr int kCdLevels = 25;

// The published generation rule of one family and sex.
struct CdSexCoefficients {
    std::array<double, kCdRegressed> linA{}, linB{}, logA{}, logB{};
    std::array<double, kCdLevels> e10{};             // level 1 to 25
    double a0Intercept = 0, a0Slope = 0, a0High = 0; // 1a0 = intercept + slope·q0, or high
    double a1Intercept = 0, a1Slope = 0, a1High = 0; // 4a1 likewise
};

struct CoaleDemenyData {
    std::array<std::array<CdSexCoefficients, 2>, 4> table; // [family][sex]
    const CdSexCoefficients& of(CdFamily f, CdSex s) const {
        return table[static_cast<int>(f)][static_cast<int>(s)];
    }
};

// One model life table: 21 rows, ages 0, 1, 5, ..., 95 (the last open, its width NaN).
struct CdLifeTable {
    CdFamily family = CdFamily::West;
    CdSex sex = CdSex::Female;
    int level = 0;
    double e10 = 0;
    std::array<double, kCdAgeGroups> age{}, n{}, nqx{}, lx{}, ndx{}, nLx{}, nmx{}, nax{}, Tx{}, ex{};
    // The Gompertz tail above 80: l(80 + t) = l80·exp(-(m80/kappa)(e^(kappa·t) - 1)).
    double l80 = 0, m80 = 0, kappa = 0;
    double T100 = 0; // years lived above 100
    double e100() const { return T100 / tailSurvivorship(20.0); }
    double tailSurvivorship(double t) const;
};

// Reads the three coefficient files from `folder`; std::nullopt with a message naming the file and
// the fault when one is missing, short or unreadable.
std::optional<CoaleDemenyData> loadCoaleDemenyData(const QString& folder, QString* error);

// The reference data folder beside the running program: <program folder>/refdata.
QString referenceDataFolder();

// The table of a family, sex and level 1..25 (the caller checks the level).
CdLifeTable coaleDemenyTable(const CoaleDemenyData& data, CdFamily family, CdSex sex, int level);

// Survivorship l(x) and force of mortality mu(x) of a model table at any age x >= 0: piecewise
// exponential (constant hazard) between the tabulated lx below 80, the Gompertz tail above.
double cdSurvivorship(const CdLifeTable& t, double x);
double cdHazard(const CdLifeTable& t, double x);

// Names: "West", "North", "East", "South" (compared case-blind); sex "F"/"M" or "Female"/"Male".
std::optional<CdFamily> cdFamilyFromName(const QString& name);
std::optional<CdSex> cdSexFromName(const QString& name);
QString cdFamilyName(CdFamily f); // "West"
QString cdSexLetter(CdSex s);     // "F" or "M"

} // namespace vesk
