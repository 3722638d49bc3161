#pragma once
// The cause grid with sequelae (frmShowRslt): a result of one unit, year and set flattened into a row
// for each cause and age-sex group (code, description, the group's label, the value of the measure),
// and, under a cause that holds its sequelae (the nested array of the cause's first group), a row for
// each sequela and group, the sequela's name from _DctBDMSqla. The same for a unit of an aggregate level
// (the rolled array holds the sequelae added over its BPUs). The sequela-level grid holds one cause's
// sequela rows alone; a cause without sequelae shows "There is no Sqla Existing for this Cobcode".
//
//   Adwbpucollapse, AdwPag2collapse               -> collapseWithSequelae
//   AdwbpucollapseSqla, AdwbpucollapseSqlaPag2    -> sequelaRows
//   InsSqla, InsSqlaPag2                          -> the sequela rows inserted under their cause

#include "database/db_connection.h"
#include "results/result_tables.h"

#include <functional>
#include <optional>

namespace vesk {

// The heads: "Causes", "Description", "ASG" and the measure.
QStringList collapseHeads(const ResultSource& source);

// Every cause of unit `unit`, year `year`, set `dap`, each followed by its sequela rows; `name` gives a
// cause's description and `sequelaName` a sequela's. Values rounded as the tables round them.
std::optional<ResultTable> collapseWithSequelae(const ResultSource& source, int unit, int year, int dap, int decimals,
                                                const std::function<QString(const QString&)>& name,
                                                const std::function<QString(const QString&)>& sequelaName);

// The sequela rows of cause index `cause` alone; std::nullopt after "There is no Sqla Existing for this
// Cobcode" when it has none.
std::optional<ResultTable> sequelaRows(const ResultSource& source, int cause, int unit, int year, int dap, int decimals,
                                       const std::function<QString(const QString&)>& sequelaName);

// A sequela's name: "select Sequela from _DctBDMSqla where ucase(SqlaCd) = " the upper-case code.
QString FnSequelaName(const DbConnection& db, const QString& code);

} // namespace vesk
