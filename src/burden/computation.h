#pragma once
// The computation of the current study: the parameter sets it runs, the inputs loaded for it, its
// results and the labels of their axes. The program holds one, beside the one study context; a
// computation or the load of stored results replaces each array whole. Every member is a Cell that
// holds a CellArray, or is Empty: "not loaded", which every reader tests first. The shapes and the
// meaning of each slot are named in burden/computation_arrays.h.

#include "platform/cell_array.h"

namespace vesk {

class Computation {
public:
    // The selected parameter sets: (sets, kDapId .. kDapC).
    Cell MtxDAP;

    // Inputs of the kernel, (years, BPUs, kInputDap, causes, groups, slots).
    Cell ArrADWIP; // epidemiology by YLD group, slots kAdwipAsg .. kAdwipPrevalent
    Cell ArrDBC;   // deaths by cause and YLL group, slots kDbcAsg, kDbcDeaths
    Cell ArrAGD;   // age at death by YLL group (cause kNoCause), slots kAgdAsg, kAgdAge

    // Results, (years, BPUs, DAPs, causes, groups, slots).
    Cell ArrYld;  // slots kYldAsg, kYldIYLD, kYldPYLD
    Cell ArrYll;  // slots kYllAsg, kYllYLL
    Cell ArrDaly; // slots kDalyAsg, kDalyIDALY, kDalyPDALY; Empty when the age-sex groups do not match

    // Single-year population and deaths, (years, BPUs, single ages, kAgeBai .. kAgeBoth).
    Cell ArrPop4D;
    Cell ArrDth4D;

    // What the orchestrator was given at the last run and what it found of each input (FnBDNParams).
    Cell ArrBDNParams;

    // The axes of each result for the result views: kLblEntries entries, kLblYears .. kLblMeasures.
    Cell ArrYldLbl, ArrYllLbl, ArrDalyLbl;

    // DALE by year, BPU and set (burden/dale.h). It lives from the first DALE run until the program
    // ends: neither a new computation nor clear() empties it.
    Cell ArrDale;

    // What a change of study empties: MtxDAP, the three results and the two single-year arrays, each
    // only where it holds an array. The inputs and the labels stay until the next computation
    // replaces them, as they always have.
    void clear();
};

// The one computation of the program. The study context's ClearStudyContext runs its clear().
Computation& computation();

} // namespace vesk
