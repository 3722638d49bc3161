#include "inputs/epi_import.h"

#include "inputs/demography_sheet.h"
#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "inputs/sheet_texts.h"
#include "platform/csv.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

namespace vesk {

namespace col = epi_col;
namespace t = sheet_texts;

namespace {

void tell(const QString& message) {
    prompts().ask(message, Buttons::Ok, Icon::Critical);
}

QString question(ForeignKind kind, const QString& term) {
    switch (kind) {
    case ForeignKind::Dbf: return text(t::kAskDbf) + term + text(t::kAskEpiDbfFields);
    case ForeignKind::Text: return text(t::kAskText) + term + text(t::kAskEpiDbfFields);
    case ForeignKind::Database: return text(t::kAskDatabase) + term + text(t::kAskEpiDatabaseFields);
    default: return text(t::kAskWorksheet) + term + text(t::kAskEpiWorksheetFields);
    }
}

std::optional<double> numberOf(const Cell& v) {
    if (v.isNumber())
        return v.toDouble();
    const QString s = v.toString().trimmed();
    return s.isEmpty() ? std::nullopt : std::optional<double>(Val(s));
}

QString keyText(const Cell& v) {
    return v.toString().trimmed().toUpper();
}

QString shown(const EpiKey& key, int column, double stored) {
    if (column == col::kIncidence)
        return shownFigure(stored, DemographyKind::DeathRates, key.incidenceBase);
    if (column == col::kPrevalence)
        return shownFigure(stored, DemographyKind::DeathRates, key.prevalenceBase);
    return shortestNumber(stored);
}

} // namespace

bool importEpi(const EpiImport& im, GridModel& grid) {
    const EpiKey& key = im.key;
    const ForeignKind kind = foreignKind(im.path);
    if (prompts().ask(question(kind, key.unit.term), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return false;
    QString table = im.table;
    if (kind == ForeignKind::Database && table.isEmpty()) {
        const auto asked = prompts().inputBox(text(t::kAskTableName), text(t::kAskEpiTableTitle));
        if (!asked || asked->trimmed().isEmpty())
            return false;
        table = asked->trimmed();
    }
    const bool worksheet = kind == ForeignKind::Wk1 || kind == ForeignKind::Xlsx || kind == ForeignKind::Xls;
    const CellArray rows = FnReadArrFile(im.path, worksheet ? key.unit.bpuId : table);
    const bool bySequela = !key.sequela.isEmpty();
    const int first = bySequela ? 5 : 4; // the column of incidence
    if (rows.rank() != 2 || rows.size(0) == 0 || rows.size(1) < first + 5) {
        tell(text(t::kEpiNoRecords));
        return false;
    }
    const QString id = key.unit.bpuId.trimmed().toUpper();
    QList<int> kept;
    for (int i = 0; i < rows.size(0); ++i) {
        if (keyText(rows(i, 0)) != id) {
            if (kind == ForeignKind::Text) {
                tell(text(t::kTextOtherUnitPart1) + key.unit.term + text(t::kTextOtherUnitPart2));
                return false;
            }
            continue;
        }
        if (numberOf(rows(i, 1)).value_or(-1) == key.unit.year && keyText(rows(i, 2)) == key.cause.toUpper() &&
            (!bySequela || keyText(rows(i, 3)) == key.sequela.toUpper()))
            kept << i;
    }
    if (kept.isEmpty()) {
        tell(text(t::kNotInSourcePart1) + key.unit.term + text(t::kNotInSourcePart2) + im.path +
             text(t::kNotInSourcePart3));
        return false;
    }
    QHash<QString, int> rowOf;
    for (int r = 1; r < grid.rows(); ++r)
        rowOf.insert(grid.textMatrix(r, col::kAsg), r);
    for (const int i : kept)
        if (!rowOf.contains(rows(i, first - 1).toString().trimmed())) {
            tell(text(t::kEpiOtherAges));
            return false;
        }
    for (const int i : kept) {
        const int r = rowOf.value(rows(i, first - 1).toString().trimmed());
        for (int m = 0; m < 5; ++m) {
            const auto v = numberOf(rows(i, first + m));
            grid.setTextMatrix(r, col::kIncidence + m, v ? shown(key, col::kIncidence + m, *v) : QString());
        }
    }
    prompts().ask(text(t::kEpiImported), Buttons::Ok, Icon::Information);
    return true;
}

} // namespace vesk
