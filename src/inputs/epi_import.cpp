#include "inputs/epi_import.h"

#include "inputs/demography_sheet.h"
#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "inputs/import_common.h"
#include "inputs/sheet_texts.h"
#include "platform/csv.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

namespace vesk {

namespace col = epi_col;
namespace t = sheet_texts;

namespace {

QString question(ForeignKind kind, const QString& term) {
    const char* fields = kind == ForeignKind::Database ? t::kAskEpiDatabaseFields
                         : isWorksheetKind(kind)       ? t::kAskEpiWorksheetFields
                                                       : t::kAskEpiDbfFields;
    return layoutQuestionHead(kind) + term + text(fields);
}

QString keyText(const Cell& v) {
    return v.toString().trimmed().toUpper();
}

} // namespace

bool importEpi(const EpiImport& im, GridModel& grid) {
    const EpiKey& key = im.key;
    const ForeignKind kind = foreignKind(im.path);
    if (prompts().ask(question(kind, key.unit.term), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return false;
    const auto table = sourceTableName(kind, im.table, key.unit.bpuId, text(t::kAskEpiTableTitle));
    if (!table)
        return false;
    const CellArray rows = FnReadArrFile(im.path, *table);
    const bool bySequela = !key.sequela.isEmpty();
    const int first = bySequela ? 5 : 4; // the column of incidence
    if (rows.rank() != 2 || rows.size(0) == 0 || rows.size(1) < first + 5) {
        tellImportRefusal(text(t::kEpiNoRecords));
        return false;
    }
    const QString id = key.unit.bpuId.trimmed().toUpper();
    QList<int> kept;
    for (int i = 0; i < rows.size(0); ++i) {
        if (keyText(rows(i, 0)) != id) {
            if (kind == ForeignKind::Text) {
                tellImportRefusal(text(t::kTextOtherUnitPart1) + key.unit.term + text(t::kTextOtherUnitPart2));
                return false;
            }
            continue;
        }
        if (sourceNumber(rows(i, 1)).value_or(-1) == key.unit.year && keyText(rows(i, 2)) == key.cause.toUpper() &&
            (!bySequela || keyText(rows(i, 3)) == key.sequela.toUpper()))
            kept << i;
    }
    if (kept.isEmpty()) {
        tellImportRefusal(notInSourceMessage(key.unit.term, im.path));
        return false;
    }
    QHash<QString, int> rowOf;
    for (int r = 1; r < grid.rows(); ++r)
        rowOf.insert(grid.textMatrix(r, col::kAsg), r);
    for (const int i : kept)
        if (!rowOf.contains(rows(i, first - 1).toString().trimmed())) {
            tellImportRefusal(text(t::kEpiOtherAges));
            return false;
        }
    for (const int i : kept) {
        const int r = rowOf.value(rows(i, first - 1).toString().trimmed());
        for (int m = 0; m < 5; ++m) {
            const auto v = sourceNumber(rows(i, first + m));
            grid.setTextMatrix(r, col::kIncidence + m, v ? shownMeasure(key, col::kIncidence + m, *v) : QString());
        }
    }
    prompts().ask(text(t::kEpiImported), Buttons::Ok, Icon::Information);
    return true;
}

} // namespace vesk
