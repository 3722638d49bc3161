#pragma once
// The words of the study database: every message, title and log literal of creation, the
// structure check and the study context, kept to the letter.

#include "platform/texts.h"

namespace vesk::dbtext {

// File -> New.
inline constexpr const char* NewDatabaseTitle = "New Database";
inline constexpr const char* DatabaseFilter = "VESK Database (*.vdb)";
inline constexpr const char* DatabaseSuffix = "vdb";
inline constexpr const char* FileExistsReplace = "File Already Exists.Do you want to Replace";
inline constexpr const char* NewDatabaseError = "Error from New Database Creation:";

// Structure check: messages.
inline constexpr const char* DatabaseNotPresent =
    "Database not present in the location specified,please check the database path in the "
    "File - Setup.";
inline constexpr const char* FieldNotPresent1 = "The field ";
inline constexpr const char* FieldNotPresent2 = " is not present in the table ";
inline constexpr const char* FieldNotPresent3 =
    " of the VESK Database. Please update the VESK Database and run the application.";
inline constexpr const char* TableNotPresent1 = "The table ";
inline constexpr const char* TableNotPresent2 =
    " is not present in the VESK Database. Please update the VESK Database and run the "
    "application.";
inline constexpr const char* AttributeOpen1 = "The field ";
inline constexpr const char* AttributeOpen2 = ", present in the table ";
inline constexpr const char* AttributeClose =
    ". Please open a valid VESK Database or use File->New menu to create a valid database. "
    "Click OK to continue";
// The middle parts, in the order of the comparisons; the four that open a quotation mark leave it open.
inline constexpr const char* AttributeMiddle[7] = {
    " of the VESK Database, does not have the datatype ",
    " of the VESK Database, does not have the size ",
    " of the VESK Database, does not have the default value ",
    " of the VESK Database, does not have the validation rule '",
    " of the VESK Database, does not have the validation text '",
    " of the VESK Database, does not have the 'Required' property set to '",
    " of the VESK Database, does not have the 'Allow Zero Length' property set to '",
};

// Structure check: vskstru.log.
inline constexpr const char* StructureLogName = "vskstru.log";
inline constexpr const char* LogArrayProperties = "Array Properties:   ";
inline constexpr const char* LogTableProperties = "Table Properties   :";
inline constexpr const char* LogGap = "     ";
inline constexpr const char* LogMissing1 = "The field ";
inline constexpr const char* LogMissing2 = " present in table ";
inline constexpr const char* LogMissing3 = " is either misspelt or missing.";

// Study context.
inline constexpr const char* ErrorFromInitBDS = " Error from InitBDS  ";
inline constexpr const char* TooManyStudies =
    "Too many studies were selected as current. Deselecting all. You will have to select one "
    "study to be current at a time.";
inline constexpr const char* NoPAGScheme =
    " No Population Aggregate Scheme are defined, Please fill up the required defination";
inline constexpr const char* NoStudyEntry = "No entry in the Dictionary of Studies";
inline constexpr const char* NoneCurrent1 =
    "At least one Study has been defined in the currently open database.";
inline constexpr const char* NoneCurrent2 = "But none has been marked as current.";
inline constexpr const char* NoneCurrent3 = "Select a study from the Study - Setup menu.";
inline constexpr const char* PAGSchNotInBDS =
    "Error : Population Aggregate Scheme is not defined in the _DctBDS.";
inline constexpr const char* NoPAGSchRecords = " There are no records defined in Population Aggregate Scheme";
inline constexpr const char* NoDscrptrsTable =
    "_DfnBPUPAGDscrptrs table is does not exists in the database, Please make sure it exists in "
    "the database";
inline constexpr const char* NoAgeDefinitions = "Please define Age definitions for Current Study";
inline constexpr const char* NoPAGs = "No PAGs defined for the Study ";
inline constexpr const char* NoBPUs = "No BPUs defined for the Study ";
inline constexpr const char* NoBDMRecords = "There are no Records in the BDM Dictionary";
inline constexpr const char* CobcdsNotDeclared = "The Cobcds are not declared in _DctBdm ";
inline constexpr const char* InitCobcdSource = "InitCobcd ";
inline constexpr const char* SqlaNoMap1 = "The Sqla is checked in _DctBdm for cobcd ";
inline constexpr const char* SqlaNoMap2 = "  but not defined in _MapBdmSqla";
inline constexpr const char* SqlaNull1 = "The Sqla ";
inline constexpr const char* SqlaNull2 = " is checked in _DctBdm but not defined in _MapBdmSqla";
inline constexpr const char* NoDmgphyTable = "DatDmgphyPrmtrs table is not present in the Database.";

// Fall-backs of the level captions when no scheme names them.
inline constexpr const char* CaptionPAG2 = "PAG2";
inline constexpr const char* CaptionBPU = "Detail Tables";
inline constexpr const char* CaptionPAG1 = "PAG1";

// Content in memory.
inline constexpr const char* NoResultsInMemory = "No results in memory ";
inline constexpr const char* ContentInMemoryTitle = "Content in memory";

} // namespace vesk::dbtext
