#pragma once
// The words of Define Population Units: captions, headings and messages, kept to the letter.

#include "platform/texts.h"

namespace vesk::putext {

inline constexpr const char* FormCaption = "Define Population Units";
inline constexpr const char* EntryScreen = " Entry Screen for the Current Study";

// The options of each level, built from the generic term of the level.
inline constexpr const char* FreshOpening = "Define fresh";
inline constexpr const char* FreshClosing = "s for the current study";
inline constexpr const char* PickOpening = "Pick ";
inline constexpr const char* PickClosing = "s from an existing study";
// The same options as the form carries them before a scheme gives its terms.
inline constexpr const char* FreshPAG2 = "Define fresh PAG2 for the current study";
inline constexpr const char* PickPAG2 = "&Pick PAG2 from an existing study";
inline constexpr const char* FreshPAG1 = "Define fresh PAG1 for the current study";
inline constexpr const char* PickPAG1 = "&Select PAG1from an existing study";
inline constexpr const char* FreshBPU = "Define fresh BPUs for the current study";
inline constexpr const char* PickBPU = "&Select BPUs from an existing study";

// Headings.
inline constexpr const char* Priority = "Priority";
inline constexpr const char* MapBPU = "BPU";
inline constexpr const char* MapPAG1 = "PAG1";
inline constexpr const char* MapTable = "Map Table";
inline constexpr const char* DeleteNote = "Note:To remove a row from the grid,press Delete [Del] Key";
inline constexpr const char* SetButton = "&Set";

// Copying from another study.
inline constexpr const char* NoStudyExist = "NO study exist";
inline constexpr const char* NoPAG1Exist = "NO PAG1id exist";
inline constexpr const char* NoPAG2Exist = "NO PAG2id exist";
inline constexpr const char* NoRecords = "No records";

// Apply.
inline constexpr const char* MapNotSet = " bpu-pag1 map not set:";
inline constexpr const char* IdNotBlank = " Id should not be blank.";
inline constexpr const char* NotMapped1 = "The Following ";
inline constexpr const char* NotMapped2 = " were not mapped with any of the ";
inline constexpr const char* NotMapped3 = "these wil not be saved if they are not mapped.";
inline constexpr const char* Updated = "Population Units updated successfully";
inline constexpr const char* TitleVesk = "Vesk";
inline constexpr const char* TitleVESK = "VESK";

// Deleting.
inline constexpr const char* SureDeleteRow = "Are you sure to delete the row ?";
inline constexpr const char* DeletePAG1Row = "Do you want to delete the Row ?";
inline constexpr const char* PAG1Rows1 = "There are ";
inline constexpr const char* PAG1Rows2 = " Row(s) of data in Bpu Dictionary Mapped to the current PAG1 id ";
inline constexpr const char* PAG1Rows3 = "These will be lost if the current pagid is deleted.";
inline constexpr const char* PAG1Rows4 = "Do you still want to continue ?";

// A text longer than its field (the engine's error 3163).
inline constexpr const char* FieldSize1 =
    "Please check Actual  field size less than the data what you are entering on the screen";
inline constexpr const char* FieldSize2 = "Population Aggregation Scheme id should be maximum of 3 char";
inline constexpr const char* FieldSize3 = "Basic Population  unit id should contain maximun of 5 characters";

// The form needs a current study; the words of the loading chain say where to get one.
inline constexpr const char* NoCurrentStudy = "Select a study from the Study - Setup menu.";

} // namespace vesk::putext
