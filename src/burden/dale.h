#pragma once
// Disability-adjusted life expectancy (DALE) of each study year, BPU and parameter set, after a
// computation or a load of stored results.
//
// The fraction of time lived in disability at each age is the incidence-based YLD of all causes of a
// YLD group over the group's population (the YLD of a year read as the share of that year's
// person-time lived in disability; the prevalence-based YLD plays no part). The life table engine
// (demography/life_table.h) runs on the unit's death rates by the Standard method with IMR 0, its
// denominator 1000 and growth 0, once for females, males and both, with the fractions as its Adjust
// vector, and gives two expectations at birth from its first row:
//
//   DALE  the table's adjusted expectation: Ex(0) - Ex(0) x Adjust(0). Each column is reduced by its own
//         row's fraction, so this figure depends on the fraction of the first age row alone.
//   HE    the Sullivan health expectancy (Sullivan 1971, "A single index of mortality and morbidity",
//         HSMHA Health Reports 86): the adjusted person-years Lx(i) x (1 - Adjust(i)) summed over all
//         rows and divided by l(0). Equal to Ex(0) when every fraction is 0.
//
// ArrDale, (years, BPUs, DAPs, 0..9), zero-based:
//   0 BPU id, 1 E0_F, 2 DALE_F, 3 E0_M, 4 DALE_M, 5 E0_P, 6 DALE_P, 7 HE_F, 8 HE_M, 9 HE_P.
// A table that fails (its error shown by the engine, or stored) leaves that sex's cells Empty.
//
// The working arrays:
//   ArrASDRAll   (years, BPUs, rows, 0..3): BAI, F, M, P of DatASDR, in the order the rows were stored;
//                rows past a unit's last stay Empty
//   ArrYldTot    (years, BPUs, DAPs, 0, YLD groups, 0..2): label, IYLD and PYLD summed over the causes
//   ArrDaleFrac  (years, BPUs, DAPs, 0, age rows, 0..3): "A" + the F label without its sex letter, the
//                fraction of females, of males, of both; the groups stand as all F, then all M, with the
//                same ages in the same order (the labels' sorted order)

#include "database/db_connection.h"
#include "platform/cell.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace vesk {

class Computation;
class StudyContext;

namespace dale_slot {
inline constexpr int kRegion = 0, kE0F = 1, kDaleF = 2, kE0M = 3, kDaleM = 4, kE0P = 5, kDaleP = 6, kHeF = 7,
                     kHeM = 8, kHeP = 9, kLast = 9;
} // namespace dale_slot

// The output names of the slots 1..9, and those of a file that keeps ArrDale.
QStringList daleFieldNames();

// FnLoadASDRAll: DatASDR read once, by year of `years` and unit of `units`. Empty (and `noData` true)
// when the table has no row; std::nullopt with `error` when the engine fails.
std::optional<Cell> FnLoadASDRAll(const DbConnection& db, const Cell& years, const Cell& units, bool* noData,
                                  QString* error);

// FnSumYldCauses: ArrYldTot from ArrYld; a Null or Empty measure adds nothing.
Cell FnSumYldCauses(const Cell& arrYld);

// FnDaleFractions: ArrDaleFrac from ArrYldTot and the population of the YLD groups (FnMapBasicToAsg,
// (years, BPUs, groups, 0..1)), matched by label. A division that fails (a population of 0, or none)
// goes to the error store and leaves that fraction Empty.
Cell FnDaleFractions(const Cell& arrYldTot, const Cell& population);

// FnRatesFor: (rows, 0..1) of BAI and the rate of `sex` ("F", "M", anything else both) of one year and
// unit, for FnLifeTable; the rows up to the first without a BAI.
Cell FnRatesFor(const Cell& arrASDRAll, int year, int unit, const QString& sex);

// FnAdjustFor: the Adjust vector, a cell for each row of `rates`: each age row of the fractions gives its
// fraction, rounded half to even to 4 decimals, to the rates rows with start <= BAI < end, or BAI >=
// start for an open row. A row no age row covers, or whose fraction is Empty, stays Empty (no
// disability).
Cell FnAdjustFor(const Cell& arrDaleFrac, int year, int unit, int dap, const QString& sex, const Cell& rates);

// FnFracValid: false when any element exceeds 1.
bool FnFracValid(const Cell& adjust);

// The three figures of one table: Ex(0), the adjusted Ex(0) (the table's last column) and the
// Sullivan expectancy; std::nullopt when `table` is no array.
struct DaleFigures {
    Cell e0, dale, he;
};
std::optional<DaleFigures> daleFigures(const Cell& table);

// The whole computation into comp.ArrDale, for the sets of comp.MtxDAP on comp.ArrYld: DatASDR, the YLD
// totals, the population of the YLD groups (comp.ArrPop4D, built from the study's population when a
// load of stored results left it empty; `settingsFile` as the computation takes it), the fractions and
// the tables. A fraction above 1 stores error -25 under "Dale Calculation" with the BPU and the run
// goes on. What stops it early is shown and returned false: no DatASDR rows ("No data present in
// DatASDR TAble"), an engine failure.
bool computeDale(StudyContext& study, Computation& comp, const QString& settingsFile = QString());

// procCompDALE: computeDale, then the report: with an empty error store "DALE Computation is done
// Succesfully", otherwise the offer to view the errors (one, or a few) under "DALE Calculation", Yes
// calling `showErrors` while the store still holds them; the store is emptied either way. True when
// ArrDale was computed.
bool procCompDALE(StudyContext& study, Computation& comp, const std::function<void()>& showErrors,
                  const QString& settingsFile = QString());

// The rows of one year and DAP for a grid or a file: (BPUs, 0..9) of ArrDale, values rounded half to
// even to `decimals` when `decimals` is given.
Cell daleRows(const Cell& arrDale, int year, int dap, std::optional<int> decimals = std::nullopt);

} // namespace vesk
