#include "inputs/small_sheet_import.h"

#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "inputs/import_common.h"
#include "inputs/parameters_sheet.h"
#include "inputs/sheet_texts.h"
#include "platform/csv.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

namespace vesk {

namespace t = sheet_texts;

namespace {

// The rows of the source, or nothing when the import ended (the table asked for and not given, or
// no rows at all).
std::optional<CellArray> sourceRows(const QString& path, const QString& table, const QString& range,
                                    const QString& title, const QString& notThere) {
    const ForeignKind kind = foreignKind(path);
    const auto name = sourceTableName(kind, table, range, title);
    if (!name)
        return std::nullopt;
    const CellArray rows = FnReadArrFile(path, *name);
    if (rows.rank() != 2 || rows.size(0) == 0) {
        tellImportRefusal(isWorksheetKind(kind) && lastForeignError().number == engine_error::kNoSuchTable
                              ? text(t::kNoRange)
                              : notThere);
        return std::nullopt;
    }
    return rows;
}

QString shownNumber(const Cell& v) {
    const auto x = sourceNumber(v);
    return x ? shortestNumber(*x) : QString();
}

} // namespace

bool importParameters(const SheetUnit& unit, const QString& path, const QString& table, GridModel& grid) {
    const ForeignKind kind = foreignKind(path);
    if (prompts().ask(layoutQuestionHead(kind) + unit.term + text(t::kAskParametersFields), Buttons::YesNo, Icon::Question) !=
        Answer::Yes)
        return false;
    const QString notThere = notInSourceMessage(unit.term, path);
    const auto rows = sourceRows(path, table, unit.bpuId, text(t::kImportParametersTitle) + unit.term, notThere);
    if (!rows)
        return false;
    if (rows->size(1) < 5) {
        tellImportRefusal(text(t::kImportNotExpectedFormat));
        return false;
    }
    for (int i = 0; i < rows->size(0); ++i) {
        if ((*rows)(i, 0).toString().trimmed().compare(unit.bpuId, Qt::CaseInsensitive) != 0 ||
            sourceNumber((*rows)(i, 1)).value_or(-1) != unit.year)
            continue;
        grid.setTextMatrix(1, parameters_col::kFamily, (*rows)(i, 2).toString().trimmed());
        grid.setTextMatrix(1, parameters_col::kGrowth, shownNumber((*rows)(i, 3)));
        grid.setTextMatrix(1, parameters_col::kInfantMortality, shownNumber((*rows)(i, 4)));
        return true;
    }
    tellImportRefusal(notThere);
    return false;
}

bool importWeights(const WeightsKey& key, const QString& term, const QString& path, const QString& table,
                   GridModel& grid) {
    const ForeignKind kind = foreignKind(path);
    const QString asked = kind == ForeignKind::Text  ? text(t::kAskWeightsText)
                          : kind == ForeignKind::Wk1 ? text(t::kAskWeightsLotus)
                          : isWorksheetKind(kind)    ? text(t::kAskWeightsExcel)
                                                     : text(t::kAskWeightsText);
    if (prompts().ask(asked, Buttons::YesNo, Icon::Question) != Answer::Yes)
        return false;
    const QString notThere = notInSourceMessage(term, path);
    const auto rows = sourceRows(path, table, key.study, text(t::kImportWeightsTitle) + term, notThere);
    if (!rows)
        return false;
    const int groups = static_cast<int>(weightLabels().size());
    if (rows->size(1) < 3 + groups) {
        tellImportRefusal(text(t::kImportNotExpectedFormat));
        return false;
    }
    int filled = 0;
    for (int i = 0; i < rows->size(0); ++i) {
        if ((*rows)(i, 0).toString().trimmed().compare(key.study, Qt::CaseInsensitive) != 0)
            continue;
        for (int r = 1; r < grid.rows(); ++r) {
            if (grid.textMatrix(r, 0).compare((*rows)(i, 1).toString().trimmed(), Qt::CaseInsensitive) != 0)
                continue;
            for (int g = 0; g < groups; ++g)
                grid.setTextMatrix(r, kWeightFixedCols + g, shownNumber((*rows)(i, 3 + g)));
            ++filled;
        }
    }
    if (filled == 0) {
        tellImportRefusal(notThere);
        return false;
    }
    return true;
}

} // namespace vesk
