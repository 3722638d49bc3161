#pragma once
// The words of the study database: every message, title and log literal of creation, the
// structure check and the study context, kept to the letter.

#include <QString>

namespace vesk::dbtext {

// File -> New.
inline const QString NewDatabaseTitle = QStringLiteral("New Database");
inline const QString DatabaseFilter = QStringLiteral("VESK Database (*.vdb)");
inline const QString DatabaseSuffix = QStringLiteral("vdb");
inline const QString FileExistsReplace = QStringLiteral("File Already Exists.Do you want to Replace");
inline const QString NewDatabaseError = QStringLiteral("Error from New Database Creation:");

// Structure check: messages.
inline const QString DatabaseNotPresent =
    QStringLiteral("Database not present in the location specified,please check the database path in the "
                   "File - Setup.");
inline const QString FieldNotPresent1 = QStringLiteral("The field ");
inline const QString FieldNotPresent2 = QStringLiteral(" is not present in the table ");
inline const QString FieldNotPresent3 =
    QStringLiteral(" of the VESK Database. Please update the VESK Database and run the application.");
inline const QString TableNotPresent1 = QStringLiteral("The table ");
inline const QString TableNotPresent2 =
    QStringLiteral(" is not present in the VESK Database. Please update the VESK Database and run the "
                   "application.");
inline const QString AttributeOpen1 = QStringLiteral("The field ");
inline const QString AttributeOpen2 = QStringLiteral(", present in the table ");
inline const QString AttributeClose =
    QStringLiteral(". Please open a valid VESK Database or use File->New menu to create a valid database. "
                   "Click OK to continue");
// The middle parts, in the order of the comparisons; the four that open a quotation mark leave it open.
inline const QString AttributeMiddle[7] = {
    QStringLiteral(" of the VESK Database, does not have the datatype "),
    QStringLiteral(" of the VESK Database, does not have the size "),
    QStringLiteral(" of the VESK Database, does not have the default value "),
    QStringLiteral(" of the VESK Database, does not have the validation rule '"),
    QStringLiteral(" of the VESK Database, does not have the validation text '"),
    QStringLiteral(" of the VESK Database, does not have the 'Required' property set to '"),
    QStringLiteral(" of the VESK Database, does not have the 'Allow Zero Length' property set to '"),
};

// Structure check: vskstru.log.
inline const QString StructureLogName = QStringLiteral("vskstru.log");
inline const QString LogArrayProperties = QStringLiteral("Array Properties:   ");
inline const QString LogTableProperties = QStringLiteral("Table Properties   :");
inline const QString LogGap = QStringLiteral("     ");
inline const QString LogMissing1 = QStringLiteral("The field ");
inline const QString LogMissing2 = QStringLiteral(" present in table ");
inline const QString LogMissing3 = QStringLiteral(" is either misspelt or missing.");

// Study context.
inline const QString ErrorFromInitBDS = QStringLiteral(" Error from InitBDS  ");
inline const QString TooManyStudies =
    QStringLiteral("Too many studies were selected as current. Deselecting all. You will have to select one "
                   "study to be current at a time.");
inline const QString NoPAGScheme =
    QStringLiteral(" No Population Aggregate Scheme are defined, Please fill up the required defination");
inline const QString NoStudyEntry = QStringLiteral("No entry in the Dictionary of Studies");
inline const QString NoneCurrent1 =
    QStringLiteral("At least one Study has been defined in the currently open database.");
inline const QString NoneCurrent2 = QStringLiteral("But none has been marked as current.");
inline const QString NoneCurrent3 = QStringLiteral("Select a study from the Study - Setup menu.");
inline const QString PAGSchNotInBDS =
    QStringLiteral("Error : Population Aggregate Scheme is not defined in the _DctBDS.");
inline const QString NoPAGSchRecords =
    QStringLiteral(" There are no records defined in Population Aggregate Scheme");
inline const QString NoDscrptrsTable = QStringLiteral(
    "_DfnBPUPAGDscrptrs table is does not exists in the database, Please make sure it exists in "
    "the database");
inline const QString NoAgeDefinitions = QStringLiteral("Please define Age definitions for Current Study");
inline const QString NoPAGs = QStringLiteral("No PAGs defined for the Study ");
inline const QString NoBPUs = QStringLiteral("No BPUs defined for the Study ");
inline const QString NoBDMRecords = QStringLiteral("There are no Records in the BDM Dictionary");
inline const QString CobcdsNotDeclared = QStringLiteral("The Cobcds are not declared in _DctBdm ");
inline const QString InitCobcdSource = QStringLiteral("InitCobcd ");
inline const QString SqlaNoMap1 = QStringLiteral("The Sqla is checked in _DctBdm for cobcd ");
inline const QString SqlaNoMap2 = QStringLiteral("  but not defined in _MapBdmSqla");
inline const QString SqlaNull1 = QStringLiteral("The Sqla ");
inline const QString SqlaNull2 = QStringLiteral(" is checked in _DctBdm but not defined in _MapBdmSqla");
inline const QString NoDmgphyTable = QStringLiteral("DatDmgphyPrmtrs table is not present in the Database.");

// Fall-backs of the level captions when no scheme names them.
inline const QString CaptionPAG2 = QStringLiteral("PAG2");
inline const QString CaptionBPU = QStringLiteral("Detail Tables");
inline const QString CaptionPAG1 = QStringLiteral("PAG1");

// Content in memory.
inline const QString NoResultsInMemory = QStringLiteral("No results in memory ");
inline const QString ContentInMemoryTitle = QStringLiteral("Content in memory");

} // namespace vesk::dbtext
