#include "inputs/cause_import.h"

#include "inputs/cause_sheet.h"
#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "inputs/import_common.h"
#include "inputs/sheet_texts.h"
#include "platform/csv.h"
#include "platform/prompts.h"
#include "platform/runtime.h"
#include "platform/texts.h"

#include <QFileInfo>

namespace vesk {

namespace t = sheet_texts;

namespace {

// The source as a table with its field names, or nothing when the import ended.
struct Source {
    CellArray rows;
    QStringList names;
};

std::optional<Source> readSource(const CauseImport& im, ForeignKind kind) {
    if (!QFileInfo::exists(im.path)) {
        tellImportRefusal(text(t::kImportFileMissing));
        return std::nullopt;
    }
    const auto table = sourceTableName(kind, im.table, im.unit.bpuId, text(t::kImportCausesTitle) + im.unit.term);
    if (!table)
        return std::nullopt;
    Source s;
    s.rows = FnReadArrFile(im.path, *table, &s.names);
    if (lastForeignError().number == engine_error::kNoSuchTable) {
        tellImportRefusal(text(t::kNoTableOrRange) + u'\n' + text(t::kNoTableOrRangeHint));
        return std::nullopt;
    }
    if (kind == ForeignKind::Text && s.rows.rank() == 2 && s.rows.size(0) > 0) {
        // A text file names its fields on its first line.
        s.names.clear();
        for (int j = 0; j < s.rows.size(1); ++j)
            s.names << s.rows(0, j).toString().trimmed();
        CellArray body{s.rows.size(0) - 1, s.rows.size(1)};
        for (int i = 1; i < s.rows.size(0); ++i)
            for (int j = 0; j < s.rows.size(1); ++j)
                body(i - 1, j) = s.rows(i, j);
        s.rows = body;
    }
    return s;
}

int fieldOf(const QStringList& names, const QString& name) {
    for (int j = 0; j < names.size(); ++j)
        if (names[j].trimmed().compare(name, Qt::CaseInsensitive) == 0)
            return j;
    return -1;
}

} // namespace

bool importCauses(const CauseImport& im, GridModel& grid) {
    const ForeignKind kind = foreignKind(im.path);
    if (prompts().ask(layoutQuestionHead(kind) + im.unit.term + text(t::kAskCausesFields), Buttons::YesNo, Icon::Question) !=
        Answer::Yes)
        return false;
    const auto source = readSource(im, kind);
    if (!source)
        return false;
    const int unitField = fieldOf(source->names, QStringLiteral("BPUID"));
    const int yearField = fieldOf(source->names, QStringLiteral("Year"));
    const int causeField = fieldOf(source->names, QStringLiteral("COBCd"));
    if (unitField < 0 || yearField < 0 || causeField < 0 || source->rows.rank() != 2) {
        tellImportRefusal(text(t::kImportNotExpectedFormat));
        return false;
    }
    QStringList fileLabels;
    for (int j = 0; j < source->names.size(); ++j)
        if (j != unitField && j != yearField && j != causeField && source->names[j].compare(QLatin1String("UpdDt"), Qt::CaseInsensitive) != 0)
            fileLabels << source->names[j].trimmed();
    QStringList sheetLabels;
    for (int c = kCauseFixedCols; c < grid.cols(); ++c)
        sheetLabels << grid.textMatrix(0, c);
    bool sameLabels = fileLabels.size() == sheetLabels.size();
    for (const QString& label : sheetLabels)
        sameLabels = sameLabels && fieldOf(fileLabels, label) >= 0;
    if (!sameLabels &&
        prompts().ask(text(t::kYllLabelsChanged), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return false;
    const QString id = im.unit.bpuId.trimmed().toUpper();
    for (int r = 1; r < grid.rows() - 1; ++r) {
        const QString cause = grid.textMatrix(r, 0).toUpper();
        for (int i = 0; i < source->rows.size(0); ++i) {
            const CellArray& rows = source->rows;
            if (rows(i, unitField).toString().trimmed().toUpper() != id ||
                sourceNumber(rows(i, yearField)).value_or(-1) != im.unit.year ||
                rows(i, causeField).toString().trimmed().toUpper() != cause)
                continue;
            for (int c = kCauseFixedCols; c < grid.cols(); ++c) {
                const int field = fieldOf(source->names, grid.textMatrix(0, c));
                const auto v = field >= 0 ? sourceNumber(rows(i, field)) : std::nullopt;
                grid.setTextMatrix(r, c, v ? shortestNumber(*v) : QString());
            }
        }
    }
    procAddTotals(grid);
    prompts().ask(text(t::kCausesImported), Buttons::Ok, Icon::Information);
    return true;
}

} // namespace vesk
