#pragma once
// Everything the generator makes from the published reference data: the two single-year standard
// life tables of the settings file, the five Sprague panels, the 36 open-interval fits, and the three
// importable standard tables.

#include "demography/coale_demeny.h"
#include "oaigd_fit.h"
#include "standard_tables.h"

#include <QString>
#include <array>
#include <optional>
#include <vector>

namespace vesk::refgen {

using Panel = std::array<std::array<double, 5>, 5>; // [year in group][group of the window]

// The published inputs, as read from the reference data folder.
struct ReferenceInputs {
    AbridgedExpectancy standardFemale, standardMale; // ages 0, 1, 5, ..., 95
    AbridgedExpectancy gbd2019;                      // both sexes, 0, 1, 5, ..., 95
    std::vector<double> gbd2021, whoFrontier;        // both sexes, single years 0..100
    std::array<Panel, 5> panels{};                   // by settings block: [PANEL 0] .. [PANEL 4]
    CoaleDemenyData cd;
};

std::optional<ReferenceInputs> readReferenceInputs(const QString& refdataFolder, QString* error);

struct SingleYearStandard {
    std::vector<double> female, male; // index = age, 0..100
};

struct ReferenceProducts {
    // e(100) closures.
    double maleE100 = 0;    // West female level 25, T100 / l100
    GompertzFit femaleTail; // fitted to female e(85), e(90), e(95)
    double femaleE100 = 0;
    GompertzFit maleTailCheck; // the same fit on the male column, as a check against maleE100
    GompertzFit gbd2019Tail;   // fitted to GBD 2019 e(85), e(90), e(95)
    double gbd2019E100 = 0;

    SingleYearStandard kro;        // piecewise exponential
    SingleYearStandard who;        // geometric
    std::array<Panel, 5> panels{}; // as published, by settings block
    std::vector<OaigdFit> oaigd;   // 36 rows

    std::vector<double> gbd2019Single, gbd2021Single, whoFrontierSingle; // both sexes, 0..100
};

// Computes every product; std::nullopt with a message when an interval admits no solution.
std::optional<ReferenceProducts> makeReferenceProducts(const ReferenceInputs& in, QString* error);

// The abridged table with e(100) appended.
AbridgedExpectancy closedAt100(const AbridgedExpectancy& table, double e100);

} // namespace vesk::refgen
