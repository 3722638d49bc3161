#include "results/chart_export.h"

#include "burden/computation.h"
#include "database/study_context.h"
#include "foundation/chart_export_settings.h"
#include "foundation/settings.h"
#include "inputs/foreign_driver.h"
#include "inputs/xlsx_file.h"
#include "platform/prompts.h"
#include "platform/texts.h"
#include "results/chart_data.h"
#include "results/results_texts.h"

#include <QDir>
#include <QFileInfo>
#include <map>

namespace vesk {

namespace rt = results_texts;

namespace {

// A family's table as rows: its head row, then a row a unit.
QList<QList<Cell>> familyRows(const ChartTable& t) {
    QList<QList<Cell>> rows;
    QList<Cell> head;
    for (const QString& h : t.head)
        head << Cell(h);
    rows << head;
    for (int u = 0; u < t.categories.size(); ++u) {
        QList<Cell> row{Cell(t.categories[u])};
        for (const auto& series : t.values)
            row << Cell(series[std::size_t(u)]);
        rows << row;
    }
    return rows;
}

// The sheets of the workbook: each table placed at its start on its sheet, the sheets in the order
// first named.
QList<BufferedTable> placedSheets(const std::vector<QList<QList<Cell>>>& tables) {
    const ChartExportSettings& s = chartExportSettings();
    QStringList order;
    std::map<QString, std::map<std::pair<int, int>, Cell>> cells;
    for (std::size_t k = 0; k < tables.size() && k < std::size_t(kExportChartCount); ++k) {
        const QString sheet = s.sheetNames[k].isEmpty() ? QStringLiteral("Sheet %1").arg(k + 1) : s.sheetNames[k];
        if (!order.contains(sheet))
            order << sheet;
        const int top = std::max(1, s.startRows[k]) - 1, left = std::max(1, s.startCols[k]) - 1;
        for (int r = 0; r < tables[k].size(); ++r)
            for (int c = 0; c < tables[k][r].size(); ++c)
                cells[sheet][{top + r, left + c}] = tables[k][r][c];
    }
    QList<BufferedTable> out;
    for (const QString& sheet : order) {
        BufferedTable t;
        t.def.name = sheet;
        t.fieldHeads = false;
        int width = 0;
        for (const auto& [at, cell] : cells[sheet]) {
            while (t.rows.size() <= at.first)
                t.rows.append(QList<Cell>());
            QList<Cell>& row = t.rows[at.first];
            while (row.size() <= at.second)
                row.append(Cell());
            row[at.second] = cell;
            width = std::max(width, at.second + 1);
        }
        for (int c = 0; c < width; ++c)
            t.def.fields.append(FieldDef{QStringLiteral("F%1").arg(c), QStringLiteral("Double"), 0});
        out << t;
    }
    return out;
}

QString exportFolder(const StudyContext& study) {
    return QDir(settings().StatOutPath).filePath(study.CurBDSId + QStringLiteral("/Data"));
}

} // namespace

bool procCheckSheetNames() {
    ChartExportSettings& s = chartExportSettings();
    if (!s.sheetNames[0].isEmpty())
        return false;
    if (prompts().ask(text(rt::kSheetNamesMissing), Buttons::YesNo) == Answer::Yes)
        return true;
    for (int k = 0; k < kExportChartCount; ++k) {
        s.sheetNames[std::size_t(k)] = QStringLiteral("Sheet %1").arg(k + 1);
        s.startRows[std::size_t(k)] = 1;
        s.startCols[std::size_t(k)] = 1;
    }
    s.fileName = QStringLiteral("GphData");
    return false;
}

QString chartExportPath(bool pag, const StudyContext& study) {
    const QString name = pag ? QStringLiteral("PagData")
                             : chartExportSettings().fileName.isEmpty() ? QStringLiteral("GphData")
                                                                        : chartExportSettings().fileName;
    return QDir(exportFolder(study)).filePath(name + QStringLiteral(".xlsx"));
}

std::optional<QString> exportChartData(bool pag, const Computation& comp, const StudyContext& study) {
    if (!comp.ArrDaly.isArray() || !comp.ArrYll.isArray() || !comp.ArrYld.isArray()) {
        prompts().ask(text(rt::kExportNotLoaded));
        return std::nullopt;
    }
    QString error;
    const auto data = pag ? procPagGraphs(comp, study, &error) : procBPUGraphs(comp, study, &error);
    if (!data) {
        prompts().ask(error);
        return std::nullopt;
    }
    std::vector<QList<QList<Cell>>> tables = data->percentTables;
    for (const ChartTable& t : data->tables)
        tables.push_back(familyRows(t));
    const QString path = chartExportPath(pag, study);
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) {
        prompts().ask(QStringLiteral("75 Path/File access error: ") + QFileInfo(path).absolutePath());
        return std::nullopt;
    }
    if (QFileInfo::exists(path) && prompts().ask(text(rt::kExportExists), Buttons::YesNo) != Answer::Yes)
        return std::nullopt;
    const QString staged = path + QStringLiteral(".new");
    QFile::remove(staged);
    if (!writeNewWorkbook(staged, placedSheets(tables), &error) ||
        (QFileInfo::exists(path) && !QFile::remove(path)) || !QFile::rename(staged, path)) {
        QFile::remove(staged);
        prompts().ask(QStringLiteral("75 ") + (error.isEmpty() ? QStringLiteral("Path/File access error") : error));
        return std::nullopt;
    }
    prompts().ask(text(rt::kExportStored) + exportFolder(study));
    return path;
}

} // namespace vesk
