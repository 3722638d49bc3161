#pragma once
// File -> Import / Export -> Dictionaries and Maps, without their file dialogs: the six dictionaries
// of causes (groups, subgroups, clusters, causes, sequelae, the sequela-cause map) one by one or all
// together, from and into the five kinds of foreign file.
//
// Import of one: the layout question of the file's kind (No leaves), the overwrite question when
// the table has rows (No leaves), then in one transaction the table emptied (for the causes, the map
// first), the rows read from the file's table named by the settings (GrpDctTblNm...) and appended
// by field position. Import of all: the overwrite question when the groups have rows, then in one
// transaction the six emptied in dependency order and the six read and appended. A file without a
// table's rows stops it with "Data for ... not found"; a refused row with "Unable to append to the
// table" / "Unable to update the table"; either way the transaction is undone, so that no table is
// left part-filled or emptied (the old recover routine, ProcImpDctRecover, emptied them all).
//
// A text file of all six holds sections: a line "[NAME]" for each table named by the settings, its
// rows after it (fields split at ";"), up to a blank line or a line opening with "[". A text file of
// one table is its rows alone. In "_DctBDM" the fourth column reads "Yes" or "No"; the export writes
// it so. Exports write every row and field of the table (the columns of the studies that Study
// Setup added to "_DctBDM" included), the table named by the settings; a dBase folder takes one file
// a table.

#include "database/db_connection.h"
#include "foundation/settings.h"

#include <QString>
#include <optional>

namespace vesk {

enum class DictionaryTable { Groups, SubGroups, Clusters, Causes, Sequelae, Map };

// How an import or export ended. Declined: a question was answered No, nothing changed or written.
enum class TransferResult { Declined, Done, Failed };

// The six in the order of the menu and of an import of all.
const std::array<DictionaryTable, 6>& dictionaryTables();
// The study table, and the name of its table in a foreign file (the settings' name, or the
// study table's own when the settings name none).
QString dictionaryTableName(DictionaryTable which);
QString dictionarySourceName(DictionaryTable which, const VeskSettings& s = settings());
// The import's dialog title, and the menu items of its import and export.
QString dictionaryImportTitle(DictionaryTable which);
const char* dictionaryImportItem(DictionaryTable which);
const char* dictionaryExportItem(DictionaryTable which);
// The layout question asked before reading `path`.
QString dictionaryLayoutQuestion(DictionaryTable which, const QString& path,
                                 const VeskSettings& s = settings());

TransferResult importDictionary(const DbConnection& db, DictionaryTable which, const QString& path,
                                const VeskSettings& s = settings());
// ImpAllDct.
TransferResult ImpAllDct(const DbConnection& db, const QString& path, const VeskSettings& s = settings());

// ImpDctTxtAll: the rows of the section "[name]" of a text file of all dictionaries; an empty
// array when the file has no such section; std::nullopt with `error` when the file cannot be read.
std::optional<CellArray> ImpDctTxtAll(const QString& path, const QString& name, QString* error = nullptr);

// FnExpData for the keys "GRPDCT" ... "MAPDCT" (one table) and "ALLDCT" (std::nullopt: all six).
TransferResult exportDictionary(const DbConnection& db, std::optional<DictionaryTable> which,
                                const QString& path, const VeskSettings& s = settings());

} // namespace vesk
