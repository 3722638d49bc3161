#pragma once
// The words of Define Population Units: captions, headings and messages, kept to the letter.

#include <QString>

namespace vesk::putext {

inline const QString FormCaption = QStringLiteral("Define Population Units");
inline const QString EntryScreen = QStringLiteral(" Entry Screen for the Current Study");

// The options of each level, built from the generic term of the level.
inline const QString FreshOpening = QStringLiteral("Define fresh");
inline const QString FreshClosing = QStringLiteral("s for the current study");
inline const QString PickOpening = QStringLiteral("Pick ");
inline const QString PickClosing = QStringLiteral("s from an existing study");
// The same options as the form carries them before a scheme gives its terms.
inline const QString FreshPAG2 = QStringLiteral("Define fresh PAG2 for the current study");
inline const QString PickPAG2 = QStringLiteral("&Pick PAG2 from an existing study");
inline const QString FreshPAG1 = QStringLiteral("Define fresh PAG1 for the current study");
inline const QString PickPAG1 = QStringLiteral("&Select PAG1from an existing study");
inline const QString FreshBPU = QStringLiteral("Define fresh BPUs for the current study");
inline const QString PickBPU = QStringLiteral("&Select BPUs from an existing study");

// Headings.
inline const QString Priority = QStringLiteral("Priority");
inline const QString MapBPU = QStringLiteral("BPU");
inline const QString MapPAG1 = QStringLiteral("PAG1");
inline const QString MapTable = QStringLiteral("Map Table");
inline const QString DeleteNote = QStringLiteral("Note:To remove a row from the grid,press Delete [Del] Key");
inline const QString SetButton = QStringLiteral("&Set");

// Copying from another study.
inline const QString NoStudyExist = QStringLiteral("NO study exist");
inline const QString NoPAG1Exist = QStringLiteral("NO PAG1id exist");
inline const QString NoPAG2Exist = QStringLiteral("NO PAG2id exist");
inline const QString NoRecords = QStringLiteral("No records");

// Apply.
inline const QString MapNotSet = QStringLiteral(" bpu-pag1 map not set:");
inline const QString IdNotBlank = QStringLiteral(" Id should not be blank.");
inline const QString NotMapped1 = QStringLiteral("The Following ");
inline const QString NotMapped2 = QStringLiteral(" were not mapped with any of the ");
inline const QString NotMapped3 = QStringLiteral("these wil not be saved if they are not mapped.");
inline const QString Updated = QStringLiteral("Population Units updated successfully");
inline const QString TitleVesk = QStringLiteral("Vesk");
inline const QString TitleVESK = QStringLiteral("VESK");

// Deleting.
inline const QString SureDeleteRow = QStringLiteral("Are you sure to delete the row ?");
inline const QString DeletePAG1Row = QStringLiteral("Do you want to delete the Row ?");
inline const QString PAG1Rows1 = QStringLiteral("There are ");
inline const QString PAG1Rows2 =
    QStringLiteral(" Row(s) of data in Bpu Dictionary Mapped to the current PAG1 id ");
inline const QString PAG1Rows3 = QStringLiteral("These will be lost if the current pagid is deleted.");
inline const QString PAG1Rows4 = QStringLiteral("Do you still want to continue ?");

// A text longer than its field (the engine's error 3163).
inline const QString FieldSize1 =
    QStringLiteral("Please check Actual  field size less than the data what you are entering on the screen");
inline const QString FieldSize2 =
    QStringLiteral("Population Aggregation Scheme id should be maximum of 3 char");
inline const QString FieldSize3 =
    QStringLiteral("Basic Population  unit id should contain maximun of 5 characters");

// The form needs a current study; the words of the loading chain say where to get one.
inline const QString NoCurrentStudy = QStringLiteral("Select a study from the Study - Setup menu.");

} // namespace vesk::putext
