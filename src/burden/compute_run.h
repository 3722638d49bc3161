#pragma once
// A computation of the current study from its tables to its stored results, without a window: the
// loaders (burden/input_loaders.h) in their fixed order, the orchestrator procBDNKernel over the
// kernel loops (burden/kernel_loops.h), and the three stores (burden/stored_results.h), each step
// named in the progress text and the timed ones written to Time.stp. The DALY computation window
// and `vesk-cli compute` both run it; the window adds the choice of parameter sets, the sounds and
// the messages at the end.
//
// A run stops early only where the inputs cannot be built: no population or death rates (the
// single-year arrays), no ages at death, no deaths by cause, no epidemiological array. A failure
// inside the loops goes to the error store and the run goes on; a failed DALY array leaves YLD and
// YLL in place, and they are stored.

#include "burden/computation.h"
#include "burden/computation_helpers.h"
#include "database/study_context.h"
#include "foundation/time_log.h"
#include "platform/cell_array.h"
#include "platform/progress.h"

#include <QString>

namespace vesk {

// procBDNKernel: FnBDNParams records and checks the inputs (kept in ArrBDNParams), then YLD, YLL
// per death and YLL, DALY and the labels, each step's text on `bar` with the value 5.
void procBDNKernel(const KernelInputs& in, const Cell& VctrYLDAsg, const Cell& VctrYLLAsg, Computation& comp,
                   Progress* bar);

// The current study of the open study file as a computation needs it (the loading chain's loaders:
// the study, its year, age-sex groups, causes and their sequelae, units and demographic parameters);
// false when one of them found nothing to compute on, after its message.
bool openComputationStudy(StudyContext& study);

enum class RunEnd {
    Stored,              // results computed and stored, ArrDaly an array
    NotComputed,         // YLD and YLL stored, but ArrDaly could not be formed
    NoDemographicInputs, // no population or no death rates
    NoAgd,               // the ages at death could not be built
    NoDbc,               // the deaths by cause could not be built
    NoAdwip,             // the epidemiological inputs could not be built
};

struct RunOutcome {
    RunEnd end = RunEnd::Stored;
    QString message; // the text the run ends with, as the window shows it
};

// The study's population by single year of age, as a run builds it (Build4DArrPopData, then Newp with
// Sprague's panels from `settingsFile`, the program's own settings file when it is empty); Empty when
// DatPOP has no row.
Cell singleYearPopulation(const StudyContext& study, const QString& settingsFile = QString());

// The run for the parameter sets of comp.MtxDAP on the standard life table MtxLTS: Time.stp opened
// by `log` (its start line), the inputs loaded into `comp`, the kernel run, the results stored. `bar`
// shows the step's text and progress. Sprague's panels come from `settingsFile`, the program's own
// settings file when it is empty.
RunOutcome runComputation(StudyContext& study, Computation& comp, const CellArray& MtxLTS, Progress* bar,
                          TimeLog& log, const QString& settingsFile = QString());

} // namespace vesk
