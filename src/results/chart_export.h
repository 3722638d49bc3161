#pragma once
// The chart data export (Results -> Graph Export Data): the nine data tables behind the charts written
// into a workbook, each on the sheet and from the row and column the preferences give it
// (foundation/chart_export_settings.h). The tables, in order: the four percentage tables (IYLD, YLL,
// IDALY, PDALY by group of causes), then the tables of the five chart families, each with its head row;
// numbers stay numbers. Tables given the same sheet share it. The workbook is an .xlsx written by the
// program's own writer; it goes into the folder <statistical output>/<study>/Data, made when missing, as
// the export's name ("GphData", or the name the preferences hold, for BPUs; "PagData" for PAG1).

#include <QList>
#include <QString>
#include <optional>

namespace vesk {

class Computation;
class StudyContext;

// procCheckSheetNames: with no first sheet name, asks "Sheet Names are not specified. Do you want to
// specify them? "; Yes gives true (the caller opens Preferences at the export tab), No fills the
// defaults (sheets "Sheet 1" to "Sheet 9", rows and columns 1, the file "GphData") and gives false.
// Sheet names set already give false without a question.
bool procCheckSheetNames();

// The file an export writes for the level.
QString chartExportPath(bool pag, const StudyContext& study);

// procExportGraphData (pag false) and procExportPagData (pag true): the export with its messages ("Please
// Load Results from Load Results" without results, the replace question, "The data are stored in the
// file path :" with the folder); the path written, or std::nullopt.
std::optional<QString> exportChartData(bool pag, const Computation& comp, const StudyContext& study);

} // namespace vesk
