#include "inputs/parameters_sheet.h"

#include "inputs/demography_sheet.h"
#include "inputs/sheet_texts.h"
#include "inputs/sheet_writes.h"
#include "platform/csv.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <cmath>

namespace vesk {

namespace col = parameters_col;
namespace t = sheet_texts;

QStringList coaleDemenyFamilies() {
    QStringList out;
    for (const char* family : t::kFamilies)
        out << text(family);
    return out;
}

void layoutParametersGrid(GridModel& grid) {
    grid.setFixedRows(1);
    grid.setFixedCols(0);
    grid.setCols(3);
    grid.setRows(2);
    grid.clear();
    grid.setTextMatrix(0, col::kFamily, text(t::kHeadFamily));
    grid.setTextMatrix(0, col::kGrowth, text(t::kHeadGrowth));
    grid.setTextMatrix(0, col::kInfantMortality, text(t::kHeadInfantMortality));
    grid.setCurrent(1, col::kFamily);
}

bool loadParameters(GridModel& grid, const SheetUnit& unit, DbConnection& db) {
    auto q = db.query(QStringLiteral("SELECT Cdmdl, PGR, IMR FROM DatDmgphyPrmtrs WHERE BPUID = ? AND YEAR = ?"),
                      {unit.bpuId, unit.year});
    if (!q || !q->next())
        return false;
    grid.setTextMatrix(1, col::kFamily, q->value(0).toString());
    for (const int c : {col::kGrowth, col::kInfantMortality})
        grid.setTextMatrix(1, c, q->value(c).isNull() ? QString() : shortestNumber(q->value(c).toDouble()));
    return true;
}

namespace {

ConfirmResult refuse(int column) {
    prompts().ask(text(t::kInvalidInput), Buttons::Ok, Icon::Critical);
    return {ConfirmResult::Outcome::Refused, 1, column};
}

} // namespace

ConfirmResult confirmParameters(const GridModel& grid, const SheetUnit& unit, DbConnection& db) {
    const QString family = grid.textMatrix(1, col::kFamily).trimmed();
    const auto growth = cellFigure(grid.textMatrix(1, col::kGrowth));
    const auto infants = cellFigure(grid.textMatrix(1, col::kInfantMortality));
    if (!coaleDemenyFamilies().contains(family))
        return refuse(col::kFamily);
    if (!growth || !std::isfinite(*growth))
        return refuse(col::kGrowth);
    if (!infants || !std::isfinite(*infants) || *infants < 0)
        return refuse(col::kInfantMortality);
    auto there = db.query(QStringLiteral("SELECT count(*) FROM DatDmgphyPrmtrs WHERE BPUID = ? AND YEAR = ?"),
                          {unit.bpuId, unit.year});
    const bool exists = there && there->next() && there->value(0).toInt() > 0;
    if (exists && prompts().ask(text(t::kParametersExistPart1) + unit.term + text(t::kParametersExistPart2),
                                Buttons::YesNo, Icon::Question) != Answer::Yes)
        return {ConfirmResult::Outcome::Declined};
    QSqlError error;
    const bool ok =
        exists ? db.exec(QStringLiteral("UPDATE DatDmgphyPrmtrs SET Cdmdl = ?, PGR = ?, IMR = ? "
                                        "WHERE BPUID = ? AND YEAR = ?"),
                         {family, *growth, *infants, unit.bpuId, unit.year}, &error)
               : db.exec(QStringLiteral("INSERT INTO DatDmgphyPrmtrs (Cdmdl, PGR, IMR, BPUID, YEAR) "
                                        "VALUES (?, ?, ?, ?, ?)"),
                         {family, *growth, *infants, unit.bpuId, unit.year}, &error);
    if (!ok) {
        showSheetWriteFailure(error);
        return {ConfirmResult::Outcome::Failed};
    }
    prompts().ask(exists ? text(t::kParametersUpdated) : text(t::kStoredParameters) + db.path(), Buttons::Ok,
                  Icon::Information);
    return {ConfirmResult::Outcome::Stored};
}

} // namespace vesk
