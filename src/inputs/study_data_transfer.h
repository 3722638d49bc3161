#pragma once
// File -> Export -> Study Data, without its Save As dialog, and the way back: the population
// (DatPOP), the age-specific death rates (DatASDR), the cause-specific mortality proportions (DatCSM),
// the epidemiological estimates (DatADW) and the disability weights (DatDwt) of the current study, a
// table for each unit and year (the weights, which belong to the study, for each year). An export of
// all study data also writes the sequelae's estimates (DatADWSqla) and the demographic parameters
// (DatDmgphyPrmtrs), which have no item of their own: with them it holds every table that Zap -> All
// Study Data empties but the results, which a computation makes again, and serves as the back-up that
// the zap's warning speaks of.
//
// The population, rates and estimates go out as their rows stand. The proportions go out as a cross
// table (the old TRANSFORM ... PIVOT, done here in code): BPUID, COBCD, YEAR and a column for each
// age-sex group, the average of CSMP in each cell (one value, the key being unique). The weights go
// out as SQLACD, SEQUELA and a column for each group, the greatest weight in each cell; the sequela's
// name comes from _DctBDMSqla, and a weight of a cause without sequelae keeps its row with no name
// (the old inner join dropped it). A cell of no row is blank. The group columns stand in the order
// in which the groups first come in the table. The stamp UpdDt of the proportions has no place in the
// cross table and does not go out.
//
// Where the tables go: a workbook or database file takes them all, named POP_<unit>_<year>, ASDR_...,
// CSMP_..., EPI_..., SEPI_..., DMG_..., DWT_<year>. Text files, dBase tables and Lotus worksheets (one
// sheet of 8192 rows, which a study's data outgrow) are files of their own in the chosen file's
// folder: Population_<unit>_<year>, ASDR_..., CSMP_..., EpiEst_..., SqlaEpiEst_..., Demography_...
// and CSMP_<year> for the weights (the stem the weights always had); a worksheet's range is named as
// the table in a workbook (short enough for a Lotus range name). A cross
// table in a text file has its field names on its first line.
//
// Import (for vesk-cli import --what data) reads the tables an export of the study writes, for the
// study's units and years, and puts their rows into the study in one transaction: the rows of a unit
// and year (of a year, for the weights) replace the study's rows there, after one question when the
// study has such rows. A bad row or a file cut short undoes the whole import.

#include "database/study_context.h"
#include "inputs/dictionary_transfer.h"
#include "inputs/transfer_tables.h"

#include <QString>
#include <optional>

namespace vesk {

enum class StudyData { Population, DeathRates, Proportions, Epi, Weights, SequelaEpi, Demography };

// The five of the menu in its order (mnu_expAll runs them so, then the two without an item).
const std::array<StudyData, 5>& studyDataKinds();
const char* studyDataItem(StudyData kind); // mnu_exp_Pop ...; nullptr for the two without an item
QString studyDataLabel(StudyData kind);    // "(Population)" ...
QString studyDataTable(StudyData kind);    // DatPOP ...

// The table of a unit and year (the unit is ignored for the weights) as it goes to a file.
std::optional<TableRows> studyDataRows(const DbConnection& db, const QString& study, StudyData kind,
                                       const QString& bpu, int year, QSqlError* error);
// Its name in a worksheet or database file, and the path of its file for a text or dBase export
// chosen as `path`.
QString studyDataTableName(StudyData kind, const QString& bpu, int year);
QString studyDataFilePath(StudyData kind, const QString& path, const QString& bpu, int year);

// Which units and years: all of the study's, or the one given.
struct StudyDataScope {
    std::optional<QString> bpu;
    std::optional<int> year;
};

// The export of one kind (or of all seven, std::nullopt) for the units and years of the context.
TransferResult exportStudyData(const StudyContext& context, std::optional<StudyData> kind,
                               const QString& path, const StudyDataScope& scope = {});

// The import of what such an export wrote at `path`, for one kind or all seven.
TransferResult importStudyData(const StudyContext& context, std::optional<StudyData> kind,
                               const QString& path, const StudyDataScope& scope = {});

} // namespace vesk
