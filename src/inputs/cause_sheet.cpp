#include "inputs/cause_sheet.h"

#include "inputs/demography_sheet.h"
#include "inputs/sheet_texts.h"
#include "inputs/sheet_writes.h"
#include "platform/csv.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QDate>
#include <QHash>
#include <QSet>
#include <QSqlQuery>
#include <cmath>

namespace vesk {

namespace t = sheet_texts;

namespace {

int totalRow(const GridModel& grid) {
    return grid.rows() - 1;
}

QString causeOf(const GridModel& grid, int row) {
    return grid.textMatrix(row, 0);
}

QString labelOf(const GridModel& grid, int column) {
    return grid.textMatrix(0, column);
}

bool sumIsOne(double sum) {
    return std::fabs(sum - 1.0) <= kSumToOneTolerance;
}

} // namespace

void layoutCauseGrid(GridModel& grid, const QList<StudyCause>& causes, const QStringList& labels) {
    grid.setRedraw(false);
    grid.setFixedRows(1);
    grid.setFixedCols(kCauseFixedCols);
    grid.setCols(kCauseFixedCols + static_cast<int>(labels.size()));
    grid.setRows(static_cast<int>(causes.size()) + 2);
    grid.clear();
    grid.setTextMatrix(0, 0, QStringLiteral("COBCd"));
    grid.setTextMatrix(0, 1, QStringLiteral("Disease"));
    for (int j = 0; j < labels.size(); ++j)
        grid.setTextMatrix(0, kCauseFixedCols + j, labels[j]);
    for (int i = 0; i < causes.size(); ++i) {
        grid.setTextMatrix(i + 1, 0, causes[i].code);
        grid.setTextMatrix(i + 1, 1, causes[i].name);
    }
    grid.setTextMatrix(totalRow(grid), 1, text(t::kHeadTotal));
    grid.setRedraw(true);
}

bool isProportion(const QString& typed) {
    const auto v = cellFigure(typed);
    return !v || (*v >= 0.0 && *v <= 1.0);
}

bool procAddTotals(GridModel& grid) {
    bool allOne = true;
    for (int c = kCauseFixedCols; c < grid.cols(); ++c) {
        double sum = 0.0;
        for (int r = 1; r < totalRow(grid); ++r)
            sum += cellFigure(grid.textMatrix(r, c)).value_or(0.0);
        grid.setTextMatrix(totalRow(grid), c, shortestNumber(sum));
        allOne = allOne && sumIsOne(sum);
    }
    return allOne;
}

bool addTotals(GridModel& grid) {
    const bool allOne = procAddTotals(grid);
    if (!allOne)
        prompts().ask(text(t::kSubtotalsNotOne), Buttons::Ok, Icon::Warning);
    return allOne;
}

bool checkTotals(GridModel& grid) {
    const bool allOne = addTotals(grid);
    if (allOne)
        prompts().ask(text(t::kSubtotalsAllOne), Buttons::Ok, Icon::Information);
    return allOne;
}

bool loadCauses(GridModel& grid, const SheetUnit& unit, DbConnection& db) {
    QHash<QString, int> rowOf, columnOf;
    for (int r = 1; r < totalRow(grid); ++r)
        rowOf.insert(causeOf(grid, r).toUpper(), r);
    for (int c = kCauseFixedCols; c < grid.cols(); ++c)
        columnOf.insert(labelOf(grid, c), c);
    auto q = db.query(QStringLiteral("SELECT COBCd, ASG, CSMP FROM DatCSM WHERE BPUID = ? AND YEAR = ?"),
                      {unit.bpuId, unit.year});
    bool any = false;
    while (q && q->next()) {
        any = true;
        const int r = rowOf.value(q->value(0).toString().toUpper(), -1);
        const int c = columnOf.value(q->value(1).toString(), -1);
        if (r > 0 && c >= kCauseFixedCols && !q->value(2).isNull())
            grid.setTextMatrix(r, c, shortestNumber(q->value(2).toDouble()));
    }
    procAddTotals(grid);
    return any;
}

namespace {

// The cells that a Confirm would store, or the first that is no proportion.
struct CauseCell {
    int row;
    int column;
    std::optional<double> value;
};

// Edits the row of each cell, or adds it where there is none and the value is not 0 or blank.
bool writeCauses(DbConnection& db, const SheetUnit& unit, const QList<CauseCell>& cells, const GridModel& grid,
                 QSqlError* error) {
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    return inOneTransaction(db, [&](QSqlError* e) {
        QSqlQuery update(db.database()), insert(db.database());
        if (!update.prepare(QStringLiteral("UPDATE DatCSM SET CSMP = ?, UpdDt = ? "
                                           "WHERE BPUID = ? AND YEAR = ? AND COBCd = ? AND ASG = ?")) ||
            !insert.prepare(QStringLiteral("INSERT INTO DatCSM (CSMP, UpdDt, BPUID, YEAR, COBCd, ASG) "
                                           "VALUES (?, ?, ?, ?, ?, ?)"))) {
            *e = update.lastError().isValid() ? update.lastError() : insert.lastError();
            return false;
        }
        for (const CauseCell& cell : cells) {
            const double value = cell.value.value_or(0.0);
            const QVariantList values{value, today, unit.bpuId, unit.year, causeOf(grid, cell.row),
                                      labelOf(grid, cell.column)};
            // A cell of 0 or blank edits what is there and adds nothing.
            if (!(value == 0.0 ? editRows(update, values, e) : editOrAdd(update, insert, values, e)))
                return false;
        }
        return true;
    }, error);
}

// Whether the table holds a row of the unit and year for a cause and label of the sheet.
bool anyStored(DbConnection& db, const SheetUnit& unit, const GridModel& grid) {
    QSet<QString> onSheet;
    for (int r = 1; r < totalRow(grid); ++r)
        for (int c = kCauseFixedCols; c < grid.cols(); ++c)
            onSheet.insert(causeOf(grid, r).toUpper() + u'\n' + labelOf(grid, c));
    auto q = db.query(QStringLiteral("SELECT COBCd, ASG FROM DatCSM WHERE BPUID = ? AND YEAR = ?"),
                      {unit.bpuId, unit.year});
    while (q && q->next())
        if (onSheet.contains(q->value(0).toString().toUpper() + u'\n' + q->value(1).toString()))
            return true;
    return false;
}

} // namespace

ConfirmResult confirmCauses(GridModel& grid, const SheetUnit& unit, DbConnection& db) {
    QList<CauseCell> cells;
    for (int r = 1; r < totalRow(grid); ++r)
        for (int c = kCauseFixedCols; c < grid.cols(); ++c) {
            if (!isProportion(grid.textMatrix(r, c))) {
                prompts().ask(text(t::kProportionOutOfRange), Buttons::Ok, Icon::Critical);
                return {ConfirmResult::Outcome::Refused, r, c};
            }
            cells << CauseCell{r, c, cellFigure(grid.textMatrix(r, c))};
        }
    if (!procAddTotals(grid) &&
        prompts().ask(text(t::kConfirmAnyway), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return {ConfirmResult::Outcome::Declined};
    if (anyStored(db, unit, grid) &&
        prompts().ask(text(t::kCausesExistPart1) + unit.term + text(t::kCausesExistPart2), Buttons::YesNo,
                      Icon::Question) != Answer::Yes)
        return {ConfirmResult::Outcome::Declined};
    QSqlError error;
    if (!writeCauses(db, unit, cells, grid, &error)) {
        showSheetWriteFailure(error);
        return {ConfirmResult::Outcome::Failed};
    }
    prompts().ask(text(t::kStoredCauses) + db.path(), Buttons::Ok, Icon::Information);
    return {ConfirmResult::Outcome::Stored};
}

} // namespace vesk
