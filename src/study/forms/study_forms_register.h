#pragma once
// The forms that define a study reach the frame's menu through here: Study -> Population Units
// (mnu_BPUES), File -> Dictionaries (mnu_cgroups, also the toolbar's "Dictionaries"), and the two
// outlines of the View menu (mnu_CauseGrps, mnu_popunits_outline). Each form is single: opening it
// again replaces the one shown. Called once at start, before the frame is built.

namespace vesk {

void registerStudyDefinitionForms();

} // namespace vesk
