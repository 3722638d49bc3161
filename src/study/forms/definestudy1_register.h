#pragma once
// Makes Study Setup reachable: the frame opens DEFINESTUDY1 for Study -> Setup (mnu_SSetup) and at
// the end of File -> New (with the tabs for a first study) through the opener registered here.
// The desktop program calls registerStudySetup() once, before the frame is built.

namespace vesk {

void registerStudySetup();

} // namespace vesk
