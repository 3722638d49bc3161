#pragma once
// The words of Study Setup (DEFINESTUDY1, "Define Study"): captions, messages and titles, kept to
// the letter, misspellings and blanks included.

#include "platform/texts.h"

#include <QString>

namespace vesk::setup_texts {

// The one text() of every texts header, for the places that name it as this header's own.
using vesk::text;

// The form and its tabs.
inline constexpr const char* kCaption = "Define Study";
inline constexpr const char* kTabStudy = "Define Study";
inline constexpr const char* kTabAgeGroups = "Age Groups";
inline constexpr const char* kTabPopUnits = "Pop Units -  Aggt. Schema";
inline constexpr const char* kTabCauses = "Causes of Burden";
inline constexpr const char* kApply = "Apply";
inline constexpr const char* kClose = "Close";

// Tab "Define Study".
inline constexpr const char* kOptNewStudy = "Define new Study";
inline constexpr const char* kOptPickStudy = "Pick an existing Study";
inline constexpr const char* kStudyIdCaption = " Study Id (Max 5 Chrs)";
inline constexpr const char* kStudyTitleCaption = "Study Title";
inline constexpr const char* kYearCaption = "Year";
inline constexpr const char* kIdStartsWithDigit = "The StudyId should start with a character";
inline constexpr const char* kIdNotAlphanumeric = "No data other than alphabets and Numerics is allowed ";
inline constexpr const char* kIdBlankOnLeave = "Study Id Cannot Be Blank:";
inline constexpr const char* kIdBlankTitle = "vesk";
inline constexpr const char* kTitleStartsWithSpace = "The Studytitle should not begin with the space";
inline constexpr const char* kBadYear = "Not a valid Entry for Date";

inline constexpr const char* kNewIdBlank = "Study id is blank append record is not possibe";
inline constexpr const char* kNewYearBlank = "Year is blank append record is not possibe";
inline constexpr const char* kNewTitleBlank = "Study title is blank append record is not possibe";
inline constexpr const char* kAlreadyExists = " is already exist in the data base";
inline constexpr const char* kExistingIdBlank = "Study id is blank append record is not possibe ";
inline constexpr const char* kExistingYearBlank = "Year is blank append record is not possibe'";
inline constexpr const char* kExistingTitleBlank = "Studytitle is blank append record is not possibe";
inline constexpr const char* kNothingCurrent = "Please select a Study from -Pick an existing study ";
// A study id that a field of the cause dictionary already carries cannot become a column.
inline constexpr const char* kIdIsDictionaryField =
    " is the name of a field of the Cause of Burden dictionary, please choose another Study Id";

inline constexpr const char* kStudyColumns[5] = {"Study Id", "Year", "Study Title", "PAG", "Slct"};
// Twips: the record selector, then the five columns.
inline constexpr int kStudyColumnWidths[6] = {400, 750, 700, 2800, 700, 600};

inline constexpr const char* kDeleteQuestion = " Do U want to delete the selected study";
inline constexpr const char* kDeleteCurrent =
    "Please select the current study the current study should be different from the study to be deleted";
inline constexpr const char* kDeleteCurrentTitle = "Study Deletion";
inline constexpr const char* kDeleteDetails1 = "The BDSID- ";
inline constexpr const char* kDeleteDetails2 = " you have selected have the following details";
inline constexpr const char* kDeleteMapped = " Following BPUS are mapped - ";
inline constexpr const char* kDeleteNotMapped = " Following BPUS are not mapped - ";
inline constexpr const char* kDeleteProceed =
    " Do You want to proceed further with the data for the mapped been deleted? ";

inline constexpr const char* kBuiltInDap = "Built in DAP Set";
inline constexpr const char* kAddlDap = "Additional DAP Set for Sensitivity Analysis";
inline constexpr const char* kDapColumns[5] = {"DAP Id", "r", "K", "Beta", "C"};
// The heading of the column of "False" or "True".
inline constexpr const char* kDapChoice = "Select";
inline constexpr const char* kYetToBeDeveloped = "Yet to be developed";

// Tab "Age Groups".
inline constexpr const char* kYllHeading = "YLL";
inline constexpr const char* kYldHeading = "YLD";
inline constexpr const char* kPndHeading = "PND";
inline constexpr const char* kOptAfresh = " Define afresh";
inline constexpr const char* kOptPickAges = " Pick from existing study";
inline constexpr const char* kOptDisplayAges = "Display Existing";
inline constexpr const char* kAgeNote =
    "Note:  To  remove  a  row from the YLL or YLD  grids You can press  Delete [Del] Key.To add a new row "
    "move to the last row and press [Enter].";
inline constexpr const char* kDeleteRow = "Are you sure to delete the row ?";
inline constexpr const char* kDeleteRowTitle = "Vesk";
inline constexpr const char* kRedefine1 = "For ";
inline constexpr const char* kRedefine2 = " age definitions already exists do you want to redefine ";
inline constexpr const char* kRedefineSure = " Are sure you want to redefine it";
inline constexpr const char* kNoAgeDefinitionsBefore = "No Age Defination defined Previously";
inline constexpr const char* kNoCurrentRecords = "No current records";
inline constexpr const char* kEnterAgeGroups =
    "Please enter Age sex group definitions for  YLL,YLD,PND in Age Groups Tab ";
inline constexpr const char* kDataUnderAsg1 = "For ";
inline constexpr const char* kDataUnderAsg2 = " There exist data for these Asg in the ";
inline constexpr const char* kDataUnderAsg3 = " please refer to the ";
inline constexpr const char* kDataUnderAsg4 = " Table in ";
inline constexpr const char* kDataUnderAsgTitle = "vesk";
inline constexpr const char* kAsgTableYll = "Datcsm";
inline constexpr const char* kAsgTableYld = "Datadw";
inline constexpr const char* kAsgTableOther = "Datpop & DatAsdr";
inline constexpr const char* kRedefineAgeSure = "Are you sure you want to Redefine the Age Defination ";
inline constexpr const char* kNoRecordsOnGrid = "No records on Grid Append record is not possible";
inline constexpr const char* kNoRecordsOnGridTitle = "VESK";
inline constexpr const char* kNewDatabaseCreated1 = "New Database Created.";
inline constexpr const char* kNewDatabaseCreated2 =
    "You need to build up causes of burden dictionaries and maps.";
inline constexpr const char* kNewDatabaseCreated3 =
    "You can either build it up manually using File-Dictionaries or Import using File-Import.";
inline constexpr const char* kNewDatabaseCreatedTitle = "New Database Created";

// Tab "Pop Units -  Aggt. Schema".
inline constexpr const char* kOptNewSchema = "Define New Schema";
inline constexpr const char* kOptPickSchema = "Pick an existing Schema";
inline constexpr const char* kOptDisplaySchema = "Display Current Schema";
inline constexpr const char* kSchemaHeading =
    "Here Give Generic Terms for    Population Units and Aggregates";
inline constexpr const char* kBpuLevel = "Basic Population Units (BPU)";
inline constexpr const char* kPag1Level = "Level - 1 Population Aggregates";
inline constexpr const char* kSchemaExists1 = " Already PAGSch : ";
inline constexpr const char* kSchemaExists2 = "record exist in the _DfnBPUPAGDscrptrs";
inline constexpr const char* kNoSchemas = "No Population Aggregate Schema in the Database";
inline constexpr const char* kNoRecords = "NO RECORDS";
inline constexpr const char* kSchemaBlank = "PAGSch is blank Append record is not possible";
inline constexpr const char* kBpuBlank = "BPUDscrptr are not entered";
inline constexpr const char* kPag1Blank = "PAG1Dscrptr are not entered";
inline constexpr const char* kPag2Blank = "PAG2Dscrptr are not entered";

// Tab "Causes of Burden".
inline constexpr const char* kSelectAll = "Select all causes in the dictionaries for the current study";
inline constexpr const char* kUnselectAll = "Unselect all causes in the dictionaries for the current study";
inline constexpr const char* kSwap = "Swap";
inline constexpr const char* kCobcdColumns[2] = {"Cobcd", "Cobcdname"};
inline constexpr const char* kPickSequela = "Pick from Existing Sequela:";
inline constexpr const char* kNoSuchCobcd = "This COBcd doesnot exist";
inline constexpr const char* kDictionariesNotImported1 = "Dictionaries are not imported";
inline constexpr const char* kDictionariesNotImported2 =
    "Please import from File - Import  -  Dictinaries and maps";

// Leaving a tab, and the end of a new database.
inline constexpr const char* kApplyChanges = "              Apply Changes";
inline constexpr const char* kApplyChangesTitle = "VESK";
inline constexpr const char* kMinimum1 =
    "You have not entered the minimum parameters required to conduct a study";
inline constexpr const char* kMinimum2 =
    "                                          Do you want to do it now?";
inline constexpr const char* kMinimum3 =
    "Click YES to continue with the study or NO to cancel the study and delete the database";
inline constexpr const char* kMinimumTitle = "Insufficient information to create new database";

// Database errors.
inline constexpr const char* kFieldTooSmall =
    "Please check Actual  field size less than the data what you are entering on the screen";
inline constexpr const char* kFieldTooSmallTitle = "Vesk : warning";

} // namespace vesk::setup_texts
