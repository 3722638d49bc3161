#include "inputs/demography_import.h"

#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "inputs/sheet_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

namespace vesk {

namespace col = demography_col;
namespace t = sheet_texts;

namespace {

enum Field { kUnit = 0, kYear = 1, kBai = 2, kMale = 3, kFemale = 4 };
constexpr int kFieldsNeeded = 5;

bool isWorksheet(ForeignKind kind) {
    return kind == ForeignKind::Wk1 || kind == ForeignKind::Xlsx || kind == ForeignKind::Xls;
}

// The question of the kind of file: whether it is laid out as the sheet's table.
QString layoutQuestion(ForeignKind kind, DemographyKind sheet, const QString& term) {
    const bool people = sheet == DemographyKind::Population;
    switch (kind) {
    case ForeignKind::Dbf:
        return text(t::kAskDbf) + term + text(people ? t::kAskPopulationFields : t::kAskDeathRateFields) +
               text(t::kAskDbfTail);
    case ForeignKind::Text:
        return text(t::kAskText) + term + text(people ? t::kAskPopulationTextFields : t::kAskDeathRateTextFields) +
               text(t::kAskTail);
    case ForeignKind::Database:
        return text(t::kAskDatabase) + term + text(people ? t::kAskPopulationFields : t::kAskDeathRateFields) +
               text(t::kAskDatabaseTail);
    default:
        return text(t::kAskWorksheet) + term + text(people ? t::kAskPopulationFields : t::kAskDeathRateFields) +
               text(t::kAskTail);
    }
}

void tell(const QString& message) {
    prompts().ask(message, Buttons::Ok, Icon::Critical);
}

QString unitOf(const CellArray& rows, int i) {
    return rows(i, kUnit).toString().trimmed().toUpper();
}

bool yearMatches(const CellArray& rows, int i, int year) {
    const Cell& v = rows(i, kYear);
    return (v.isNumber() ? v.toDouble() : cellFigure(v.toString()).value_or(-1.0)) == year;
}

std::optional<double> numberOf(const Cell& v) {
    return v.isNumber() ? std::optional<double>(v.toDouble()) : cellFigure(v.toString());
}

// The rows of the file that the tests look at, or nothing when the import ended.
std::optional<CellArray> sourceRows(const DemographyImport& im, ForeignKind kind) {
    QString table = im.table;
    if (kind == ForeignKind::Database && table.isEmpty()) {
        const auto asked = prompts().inputBox(text(t::kAskTableName),
                                              text(im.kind == DemographyKind::Population ? t::kAskTablePopulationTitle
                                                                                         : t::kAskTableDeathRatesTitle));
        if (!asked || asked->trimmed().isEmpty())
            return std::nullopt;
        table = asked->trimmed();
    }
    const CellArray rows = FnReadArrFile(im.path, isWorksheet(kind) ? im.unit.bpuId : table);
    if (rows.rank() != 2 || rows.size(0) == 0) {
        if (isWorksheet(kind) && lastForeignError().number == engine_error::kNoSuchTable)
            tell(text(t::kNoRange));
        else if (lastForeignError().number != 0 && lastForeignError().number != engine_error::kNoSuchTable)
            tell(QString::number(lastForeignError().number) + u' ' + lastForeignError().words);
        else
            tell(text(t::kNotInSourcePart1) + im.unit.term + text(t::kNotInSourcePart2) + im.path +
                 text(t::kNotInSourcePart3));
        return std::nullopt;
    }
    if (rows.size(1) < kFieldsNeeded) {
        tell(text(t::kNotInSourcePart1) + im.unit.term + text(t::kNotInSourcePart2) + im.path +
             text(t::kNotInSourcePart3));
        return std::nullopt;
    }
    return rows;
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
        if (!yearMatches(rows, i, im.unit.year) && (isWorksheet(kind) || kind == ForeignKind::Text)) {
            tell(text(t::kOtherYear));
            return std::nullopt;
        }
        if (yearMatches(rows, i, im.unit.year))
            kept << i;
    }
    if (kind == ForeignKind::Text && !others.isEmpty()) {
        tell(text(t::kTextOtherUnitPart1) + im.unit.term + text(t::kTextOtherUnitPart2));
        return std::nullopt;
    }
    if (isWorksheet(kind) && !others.isEmpty()) {
        tell(text(t::kOtherUnits) + u'\n' + text(t::kOtherUnitsListed) + u'\n' + others.join(u'\n'));
        return std::nullopt;
    }
    if (kept.isEmpty()) {
        tell(text(t::kNotInSourcePart1) + im.unit.term + text(t::kNotInSourcePart2) + im.path +
             text(t::kNotInSourcePart3));
        return std::nullopt;
    }
    return kept;
}

QString shownCell(const Cell& v, const DemographyImport& im) {
    if (v.isNull() || v.isEmpty())
        return QString();
    const auto x = numberOf(v);
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
        tell(text(t::kTooManyAges) + u'\n' + text(t::kTooManyAgesTail));
        return false;
    }
    for (const int i : *kept) {
        const auto bai = numberOf((*rows)(i, kBai));
        if (!bai || !ages.contains(*bai)) {
            tell(text(im.kind == DemographyKind::Population ? t::kOtherAges : t::kOtherDeathAges));
            return false;
        }
    }
    for (int r = grid.fixedRows(); r < grid.rows(); ++r) {
        grid.setTextMatrix(r, col::kMale, QString());
        grid.setTextMatrix(r, col::kFemale, QString());
    }
    for (const int i : *kept) {
        const int r = grid.fixedRows() + static_cast<int>(ages.indexOf(*numberOf((*rows)(i, kBai))));
        grid.setTextMatrix(r, col::kMale, shownCell((*rows)(i, kMale), im));
        grid.setTextMatrix(r, col::kFemale, shownCell((*rows)(i, kFemale), im));
    }
    fillPersons(grid, im.kind);
    return true;
}

} // namespace vesk
