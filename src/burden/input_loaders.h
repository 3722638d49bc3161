#pragma once
// The loaders of a computation: the study's tables turned into the working arrays of
// burden/computation_arrays.h, in the order the driver calls them:
//
//   Build4DArrPopData, Newp, BldDthArr, Newp, AGDARR, FnChkCSMTotals, DBCProc, LoadDwt, LoadADWIP
//
// Population and deaths come in by basic age interval (DatPOP; DatASDR's rates times DatPOP's
// population of the same interval, formed by the database), are made single-year (Newp) and are
// summed into the YLL and YLD age-sex groups (FnMapBasicToAsg). Deaths by cause are the unit's deaths
// of a group times the cause's share (DatCSM.CSMP); the epidemiological inputs are the rates of
// DatADW (DatADWSqla for a sequela) times the population of the group, with the disability weights
// of DatDwt.
//
// Records meet the age-sex groups by position alone: the n-th record of a cause, in the binary order
// of ASG, goes to the n-th group of the sorted label vector. A count of records other than the number
// of groups is shown once for each cause and unit; DBCProc loads the rows all the same, LoadADWIP
// leaves the cause out. Each table is read once for each unit (DatPOP, DatASDR, DatCSM, DatADW,
// DatADWSqla) or once for the run (DatDwt, the totals of CSMP) and indexed in memory: the rows and
// their order are those of a query for each cause and sequela, at a fraction of the cost. Reads
// without an order of their own take the order of insertion (rowid).
//
// A failure inside a cell goes to the error store under the loader's name and the load goes on;
// messages go through the prompt service with an OK button.

#include "burden/computation_study.h"
#include "platform/cell.h"
#include "platform/progress.h"

#include <QString>
#include <functional>

namespace vesk {

// What the loaders read of the study besides its tables.
using LoaderStudy = ComputationStudy;

// Where the loaders report progress.
using LoaderProgress = ComputationProgress;

// Build4DArrPopData: (years, units, rows, kAgeBai .. kAgeBoth) from DatPOP, one row a record of the
// year and unit in insertion order; the rows are the distinct BAI of DatPOP. A unit without records
// is reported ("There is no population available for " and the unit) and keeps Null cells. Empty
// when DatPOP has no row.
Cell Build4DArrPopData(const LoaderStudy& s);
// BldDthArr: the same shape from DatASDR's rates times DatPOP's population of the same interval, the
// rows the distinct BAI of DatASDR; Empty when DatASDR has no row.
Cell BldDthArr(const LoaderStudy& s);

// AGDARR over the study: the unit's demographic parameters (the row of the study year, else its first
// row; none: "Message from AGD procedure : Demographic parameters are not set for the BPUs under "
// and the study, and Null parameters). False when the YLL labels are missing.
bool loadAgesAtDeath(const LoaderStudy& s, const Cell& ArrPop4D, const Cell& ArrDth4D, Cell& ArrAGD);

// FnChkCSMTotals: for each unit and YLL group whose CSMP over all causes and years sums above 1
// (strictly), error -20 "CSMP sum for <unit>[<group>] is greater than 1" into the error store.
void FnChkCSMTotals(const LoaderStudy& s);
inline constexpr double kCsmTotalError = -20.0;

// DBCProc: ArrDBC (years, units, 1, causes, YLL groups, 0..2), slot kDbcAsg the record's ASG and
// slot kDbcDeaths its CSMP times the deaths of the group (ArrDth4D mapped to the YLL groups). False,
// after its message, when the study, the years, the units or the causes are missing.
bool DBCProc(const LoaderStudy& s, const Cell& ArrDth4D, const LoaderProgress& p, Cell& ArrDBC);

// LoadDwt: MtxDwt (causes, 0 .. CLng((YLD groups) / 2)), column 0 the cause, column n + 1 the n-th
// weight of DatDwt under the cause's code; a cause with sequelae holds in column 1 a matrix with a row
// for each sequela, filled the same way from the weights under the sequela's code.
Cell LoadDwt(const LoaderStudy& s);

// LoadADWIP: ArrADWIP (years, units, 1, causes, YLD groups, 0..7) from DatADW, and for a cause with
// sequelae the nested (sequelae, YLD groups, 0..7) arrays from DatADWSqla. The weight of group n is
// MtxDwt's column n + 1, or (n mod 5) + 1 beyond the fifth; incident and prevalent cases are the
// rates i and P times the group's population (ArrPop4D mapped to the YLD groups), and stay Empty
// where that population is Null. False, after its message, when the study or its years are missing.
bool LoadADWIP(const LoaderStudy& s, const Cell& MtxDwt, const Cell& ArrPop4D, const LoaderProgress& p,
               Cell& ArrADWIP);

} // namespace vesk
