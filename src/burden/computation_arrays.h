#pragma once
// The shapes of the computation's arrays, named once. Every working and result array is a
// six-dimensional, zero-based CellArray with the same index order, so that one loop nest walks
// inputs and results alike:
//
//   (year, BPU, DAP, cause, age-sex group, measure slot)
//
// The cell (y, b, d, c, 0, 0) of a cause with sequelae holds a nested (sequela, age-sex group, slot)
// array, whose slots are those of the outer array; the cause-level cells then hold the sum over the
// sequelae. Which slots an array has, and what each holds, is below; an Empty cell was never
// assigned, a Null one could not be computed.
//
// The single-year population and deaths (ArrPop4D, ArrDth4D) and the basic arrays they are built
// from have four dimensions instead: (year, BPU, age row, column).

#include "burden/parameter_sets.h"

#include <array>

namespace vesk {

// --- The six dimensions, as CellArray dimension numbers.
inline constexpr int kComputationRank = 6;
inline constexpr int kDimYear = 0;  // study years: 0 .. upper bound of VctrYrLst
inline constexpr int kDimBPU = 1;   // population units: 0 .. upper bound of VctrBPULst
inline constexpr int kDimDAP = 2;   // parameter sets: 0 .. last row of MtxDAP
inline constexpr int kDimCause = 3; // causes: 0 .. last row of MtxCobCd
inline constexpr int kDimAsg = 4;   // age-sex groups of the array's own classification
inline constexpr int kDimSlot = 5;  // measure slot, see each array

// The inputs (ArrADWIP, ArrDBC, ArrAGD) hold no parameter set: their DAP index is always this.
inline constexpr int kInputDap = 0;
// ArrAGD and the per-death YLL hold no cause: their cause index is always this.
inline constexpr int kNoCause = 0;

// --- Sequelae: where a cause keeps its nested array, and the nested array's own shape.
inline constexpr int kSequelaHolderAsg = 0;  // age-sex index of the cell holding the nested array
inline constexpr int kSequelaHolderSlot = 0; // its slot
inline constexpr int kSqlaRank = 3;
inline constexpr int kSqlaDimSequela = 0; // one row a sequela of the cause
inline constexpr int kSqlaDimAsg = 1;     // age-sex groups, as in the outer array
inline constexpr int kSqlaDimSlot = 2;    // slots, as in the outer array
inline constexpr int kSqlaCodeAsg = 0;    // (s, 0, 0) holds the sequela's SqlaCd
inline constexpr int kSqlaCodeSlot = 0;

// --- ArrADWIP: the epidemiological inputs by YLD group, from DatADW or DatADWSqla.
inline constexpr int kAdwipAsg = 1;       // age-sex group label (ASG)
inline constexpr int kAdwipAgo = 2;       // average age of onset (ago)
inline constexpr int kAdwipDurn = 3;      // duration in years (DURN)
inline constexpr int kAdwipDwt = 4;       // disability weight, from MtxDwt
inline constexpr int kAdwipIncident = 5;  // incident cases: rate i x population of the group
inline constexpr int kAdwipAgp = 6;       // average age of the prevalent cases (AGP)
inline constexpr int kAdwipPrevalent = 7; // prevalent cases: rate p x population of the group
inline constexpr int kAdwipLastSlot = 7;

// --- ArrDBC: deaths by cause and YLL group.
inline constexpr int kDbcAsg = 1;    // age-sex group label
inline constexpr int kDbcDeaths = 2; // deaths from this cause
inline constexpr int kDbcLastSlot = 2;

// --- ArrAGD: age at death by YLL group (cause index kNoCause).
inline constexpr int kAgdAsg = 0; // age-sex group label
inline constexpr int kAgdAge = 1; // age at death in years, or Null
inline constexpr int kAgdLastSlot = 1;

// --- ArrYLLPerDeath: YLL of one death by DAP and YLL group (cause index kNoCause); lives for one run.
inline constexpr int kYllPerDeathAsg = 0;   // age-sex group label
inline constexpr int kYllPerDeathValue = 1; // YLL of one death, or Null
inline constexpr int kYllPerDeathLastSlot = 1;

// --- ArrYld: years lived with disability by YLD group.
inline constexpr int kYldAsg = 1;  // age-sex group label
inline constexpr int kYldIYLD = 2; // incidence-based YLD
inline constexpr int kYldPYLD = 3; // prevalence-based YLD
inline constexpr int kYldLastSlot = 3;

// --- ArrYll: years of life lost by YLL group.
inline constexpr int kYllAsg = 1; // age-sex group label
inline constexpr int kYllYLL = 2; // years of life lost
inline constexpr int kYllLastSlot = 2;

// --- ArrDaly: YLL + YLD on the shorter of the two age-sex classifications.
inline constexpr int kDalyAsg = 1;   // age-sex group label
inline constexpr int kDalyIDALY = 2; // YLL + IYLD
inline constexpr int kDalyPDALY = 3; // YLL + PYLD
inline constexpr int kDalyLastSlot = 3;

// --- MtxDAP: (selected sets, kDapId .. kDapC); the columns are those of parameter_sets.h.
inline constexpr int kDapLastColumn = kDapC;

// --- MtxCobCd: (causes, 0..1).
inline constexpr int kCobCdCode = 0;     // COBCd
inline constexpr int kCobCdSequelae = 1; // Empty, or the array of the cause's SqlaCd

// --- MtxDwt: (causes, 0 ..); a cause with sequelae holds a nested matrix, a row a sequela, in column 1.
inline constexpr int kDwtCobCd = 0;       // COBCd
inline constexpr int kDwtFirstWeight = 1; // the first weight of DatDwt; the n-th group reads column n + 1
inline constexpr int kDwtWeightCycle = 5; // groups beyond the fifth go round the same five columns

// --- The basic arrays of population and deaths, and their single-year forms ArrPop4D and ArrDth4D:
// (year, BPU, age row, column). A basic row is one basic age interval, a single-year row one year of
// age with the open interval last; the columns are the same in both.
inline constexpr int kAgeArrRank = 4;
inline constexpr int kAgeDimYear = 0;
inline constexpr int kAgeDimBPU = 1;
inline constexpr int kAgeDimRow = 2;
inline constexpr int kAgeDimColumn = 3;
inline constexpr int kAgeBai = 0;    // BAI, the start age of the row
inline constexpr int kAgeWidth = 1;  // next row's BAI minus this one's; kOpenWidth in the last row
inline constexpr int kAgeFemale = 2; // female value
inline constexpr int kAgeMale = 3;   // male value
inline constexpr int kAgeBoth = 4;   // female + male
inline constexpr int kAgeLastColumn = 4;
inline constexpr const char* kOpenWidth = "W"; // width of the open interval

// --- ArrPopYLD, ArrDthYLL: a basic array mapped to age-sex groups, (year, BPU, age-sex group, 0..1).
inline constexpr int kAsgMapRank = 4;
inline constexpr int kAsgMapDimYear = 0;
inline constexpr int kAsgMapDimBPU = 1;
inline constexpr int kAsgMapDimAsg = 2;
inline constexpr int kAsgMapDimSlot = 3;
inline constexpr int kAsgMapAsg = 0;   // age-sex group label
inline constexpr int kAsgMapValue = 1; // sum of the rows inside the group
inline constexpr int kAsgMapLastSlot = 1;

// --- The label arrays ArrYldLbl, ArrYllLbl, ArrDalyLbl: one entry per dimension of the result.
inline constexpr int kLblEntries = 6;
inline constexpr int kLblYears = 0;    // VctrYrLst
inline constexpr int kLblBPUs = 1;     // VctrBPULst
inline constexpr int kLblDAPs = 2;     // DAP ids, column kDapId of MtxDAP
inline constexpr int kLblCauses = 3;   // COBCd, column kCobCdCode of MtxCobCd
inline constexpr int kLblAsgs = 4;     // VctrYLDAsg, VctrYLLAsg, or the labels ArrDaly holds
inline constexpr int kLblMeasures = 5; // the measure names below, one per slot
inline constexpr std::array<const char*, kYldLastSlot + 1> kYldMeasureNames{"Sqla", "ASG", "IYLD", "PYLD"};
inline constexpr std::array<const char*, kYllLastSlot + 1> kYllMeasureNames{"Sqla", "ASG", "YLL"};
inline constexpr std::array<const char*, kDalyLastSlot + 1> kDalyMeasureNames{"Sqla", "ASG", "IDALY",
                                                                              "PDALY"};

} // namespace vesk
