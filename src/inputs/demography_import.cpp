#include "inputs/demography_import.h"

#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "inputs/import_common.h"
#include "inputs/sheet_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

namespace vesk {

namespace col = demography_col;
namespace t = sheet_texts;

namespace {

enum Field { kUnit = 0, kYear = 1, kBai = 2, kMale = 3, kFemale = 4 };
constexpr int kFieldsNeeded = 5;

// The question of the kind of file: whether it is laid out as the sheet's table.
QString layoutQuestion(ForeignKind kind, DemographyKind sheet, const QString& term) {
    const bool people = sheet == DemographyKind::Population;
    const QString fields = kind == ForeignKind::Text
                               ? text(people ? t::kAskPopulationTextFields : t::kAskDeathRateTextFields)
                               : text(people ? t::kAskPopulationFields : t::kAskDeathRateFields);
    const char* tail = kind == ForeignKind::Dbf        ? t::kAskDbfTail
                       : kind == ForeignKind::Database ? t::kAskDatabaseTail
                                                       : t::kAskTail;
    return layoutQuestionHead(kind) + term + fields + text(tail);
}

QString unitOf(const CellArray& rows, int i) {
    return rows(i, kUnit).toString().trimmed().toUpper();
}

bool yearMatches(const CellArray& rows, int i, int year) {
    return sourceNumber(rows(i, kYear)).value_or(-1.0) == year;
}

// The rows of the file that the tests look at, or nothing when the import ended.
std::optional<CellArray> sourceRows(const DemographyImport& im, ForeignKind kind) {
    const auto table = sourceTableName(
        kind, im.table, im.unit.bpuId,
        text(im.kind == DemographyKind::Population ? t::kAskTablePopulationTitle : t::kAskTableDeathRatesTitle));
    if (!table)
        return std::nullopt;
    const CellArray rows = FnReadArrFile(im.path, *table);
    const int failure = lastForeignError().number;
    if (rows.rank() == 2 && rows.size(0) > 0 && rows.size(1) >= kFieldsNeeded)
        return rows;
    if (isWorksheetKind(kind) && failure == engine_error::kNoSuchTable)
        tellImportRefusal(text(t::kNoRange));
    else if (failure != 0 && failure != engine_error::kNoSuchTable)
        tellImportRefusal(QString::number(failure) + u' ' + lastForeignError().words);
    else
        tellImportRefusal(notInSourceMessage(im.unit.term, im.path));
    return std::nullopt;
}

// The rows of the unit and year, after the tests of the whole source; nothing when one failed.
std::optional<QList<int>> unitRows(const DemographyImport& im, ForeignKind kind, const CellArray& rows) {
    const QString id = im.unit.bpuId.trimmed().toUpper();
    QList<int> kept;
    QStringList others;
    for (int i = 0; i < rows.size(0); ++i) {
        if (unitOf(rows, i) != id) {
            if (!others.contains(rows(i, kUnit).toString()))
                others << rows(i, kUnit).toString();
            continue;
        }
        if (!yearMatches(rows, i, im.unit.year) && (isWorksheetKind(kind) || kind == ForeignKind::Text)) {
            tellImportRefusal(text(t::kOtherYear));
            return std::nullopt;
        }
        if (yearMatches(rows, i, im.unit.year))
            kept << i;
    }
    if (kind == ForeignKind::Text && !others.isEmpty()) {
        tellImportRefusal(text(t::kTextOtherUnitPart1) + im.unit.term + text(t::kTextOtherUnitPart2));
        return std::nullopt;
    }
    if (isWorksheetKind(kind) && !others.isEmpty()) {
        tellImportRefusal(text(t::kOtherUnits) + u'\n' + text(t::kOtherUnitsListed) + u'\n' + others.join(u'\n'));
        return std::nullopt;
    }
    if (kept.isEmpty()) {
        tellImportRefusal(notInSourceMessage(im.unit.term, im.path));
        return std::nullopt;
    }
    return kept;
}

QString shownCell(const Cell& v, const DemographyImport& im) {
    if (v.isNull() || v.isEmpty())
        return QString();
    const auto x = sourceNumber(v);
    return x ? shownFigure(*x, im.kind, im.scale) : v.toString();
}

} // namespace

QString importTitle(DemographyKind kind, const QString& term) {
    return text(kind == DemographyKind::Population ? t::kImportPopulationTitle : t::kImportDeathRatesTitle) + term;
}

bool importDemography(const DemographyImport& im, GridModel& grid) {
    const ForeignKind kind = foreignKind(im.path);
    if (prompts().ask(layoutQuestion(kind, im.kind, im.unit.term), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return false;
    const auto rows = sourceRows(im, kind);
    if (!rows)
        return false;
    const auto kept = unitRows(im, kind, *rows);
    if (!kept)
        return false;
    const QList<double> ages = demographyAges(grid);
    if (kept->size() > ages.size()) {
        tellImportRefusal(text(t::kTooManyAges) + u'\n' + text(t::kTooManyAgesTail));
        return false;
    }
    for (const int i : *kept) {
        const auto bai = sourceNumber((*rows)(i, kBai));
        if (!bai || !ages.contains(*bai)) {
            tellImportRefusal(text(im.kind == DemographyKind::Population ? t::kOtherAges : t::kOtherDeathAges));
            return false;
        }
    }
    for (int r = grid.fixedRows(); r < grid.rows(); ++r) {
        grid.setTextMatrix(r, col::kMale, QString());
        grid.setTextMatrix(r, col::kFemale, QString());
    }
    for (const int i : *kept) {
        const int r = grid.fixedRows() + static_cast<int>(ages.indexOf(*sourceNumber((*rows)(i, kBai))));
        grid.setTextMatrix(r, col::kMale, shownCell((*rows)(i, kMale), im));
        grid.setTextMatrix(r, col::kFemale, shownCell((*rows)(i, kFemale), im));
    }
    fillPersons(grid, im.kind);
    return true;
}

} // namespace vesk
