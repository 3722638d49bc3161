#pragma once
// Where the forms of the layers below reach the frame: each menu item that opens one of their
// windows, and the openers the frame's own logic asks for (Study Setup). The forms know nothing of
// the frame; they offer plain open functions that take a parent, and the frame's wiring lives here.
// Called once at start, before the frame is built.

namespace vesk {

// Tools -> YLL, IYLD, PYLD and DALY Calculator (mnu_yllcal, mnu_yldcal, mnu_pyldcal, mnu_dcal).
void registerCalculators();
// Study Setup (DEFINESTUDY1) for Study -> Setup (mnu_SSetup) and the end of File -> New (with the
// tabs for a first study); what it asks of the frame is done by the frame, and the parameter sets
// it ticks go to the computation's MtxDAP.
void registerStudySetup();
// Study -> Population Units (mnu_BPUES), File -> Dictionaries (mnu_cgroups, also the toolbar's
// "Dictionaries"), and the two outlines of the View menu (mnu_CauseGrps, mnu_popunits_outline).
// Each form is single: opening it again replaces the one shown. What the study layer asks of the
// frame meanwhile (the menu after a change of units) is done by the frame.
void registerStudyDefinitionForms();
// Compute -> DALYs - Quick and DALYs - Sensitivity Analysis (mnu_Daly, mnu_sens: frmCompDALY in
// its two modes, the errors of a run offered through the frame's error viewer) and Compute -> Load
// Stored Results (mns_lsr: frmLoadStatus).
void registerComputationForms();
// The preferences form (frmVESKSetup) as the frame's Preferences, all of the above, the run-log
// viewers, the import and export of the standard life tables
// (demography/forms/standard_table_commands.h), and the transfers below.
void registerForms();

// File -> Import, Export and Zap (inputs/forms/transfer_commands.h; an import or purge that may have
// changed the study's definitions has the chain load the study again) and the standard life tables'
// import and exports (demography/forms/standard_table_commands.h).
void registerTransfers();

// Results -> Population Pyramid (the BPUs of the study), Tools -> Population Pyramid (frmToolsPP), and
// Reports -> Population / Deaths by age and sex (frmPopDthAS).
void registerPyramids();

// The viewers of the Results menu's tables (results/forms/result_viewer.h), one command for each entry,
// and its charts (Graphs of BPU and PAG1: frmnew, results/forms/frm_new.h).
void registerResultViewers();

} // namespace vesk
