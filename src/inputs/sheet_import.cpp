#include "inputs/sheet_import.h"

#include "inputs/cause_import.h"
#include "inputs/demography_import.h"
#include "inputs/epi_import.h"
#include "inputs/foreign_file.h"
#include "inputs/foreign_types.h"
#include "inputs/import_common.h"
#include "inputs/parameters_sheet.h"
#include "inputs/small_sheet_import.h"
#include "inputs/inputs_study.h"
#include "inputs/sheet_texts.h"
#include "platform/prompts.h"
#include "platform/texts.h"

namespace vesk {

namespace t = sheet_texts;

std::optional<InputSheet> inputSheetNamed(const QString& name) {
    static const QList<QPair<QString, InputSheet>> names{
        {QStringLiteral("population"), InputSheet::Population}, {QStringLiteral("asdr"), InputSheet::DeathRates},
        {QStringLiteral("demography"), InputSheet::Demography}, {QStringLiteral("csm"), InputSheet::Causes},
        {QStringLiteral("epi"), InputSheet::Epi},               {QStringLiteral("sequela-epi"), InputSheet::SequelaEpi},
        {QStringLiteral("weights"), InputSheet::Weights}};
    for (const auto& [n, sheet] : names)
        if (n == name)
            return sheet;
    return std::nullopt;
}

namespace {

SheetImportResult importCauseSheet(StudyContext& context, const InputsStudy& study, const SheetUnit& unit,
                                   const SheetImportRequest& r) {
    GridModel grid;
    layoutCauseGrid(grid, study.causes, study.yllLabels);
    if (!importCauses(CauseImport{unit, r.file, r.table}, grid))
        return SheetImportResult::Ended;
    return confirmCauses(grid, unit, *context.StudyDB).outcome == ConfirmResult::Outcome::Stored
               ? SheetImportResult::Stored
               : SheetImportResult::Ended;
}

// Whether `file` holds rows of the unit, year, cause (and sequela): the file's own test, without
// its messages, so that a script imports each cause the file has and passes over the others.
bool holdsRowsOf(const SheetImportRequest& r, const EpiKey& key) {
    const CellArray rows = FnReadArrFile(r.file, isWorksheetKind(foreignKind(r.file)) ? key.unit.bpuId : r.table);
    if (rows.rank() != 2 || rows.size(1) < 4)
        return false;
    for (int i = 0; i < rows.size(0); ++i)
        if (rows(i, 0).toString().trimmed().compare(key.unit.bpuId, Qt::CaseInsensitive) == 0 &&
            rows(i, 2).toString().trimmed().compare(key.cause, Qt::CaseInsensitive) == 0 &&
            (key.sequela.isEmpty() || rows(i, 3).toString().trimmed().compare(key.sequela, Qt::CaseInsensitive) == 0))
            return true;
    return false;
}

// The epidemiological sheet of every cause (and sequela) the file holds rows of, each imported and
// confirmed as the sheet's buttons do it.
SheetImportResult importEpiSheets(StudyContext& context, const InputsStudy& study, const SheetUnit& unit,
                                  const SheetImportRequest& r) {
    QList<EpiKey> keys;
    for (int i = 0; i < study.causes.size(); ++i) {
        EpiKey key;
        key.unit = unit;
        key.cause = study.causes[i].code;
        if (r.sheet == InputSheet::Epi) {
            keys << key;
            continue;
        }
        for (const QString& sequela : study.sequelae.value(i)) {
            key.sequela = sequela;
            keys << key;
        }
    }
    int imported = 0;
    for (const EpiKey& key : keys) {
        if (!holdsRowsOf(r, key))
            continue;
        GridModel grid;
        layoutEpiGrid(grid, study.yldLabels);
        CellArray memory;
        if (!importEpi(EpiImport{key, r.file, r.table}, grid) ||
            Commitdata(grid, key, false, memory, *context.StudyDB).outcome != ConfirmResult::Outcome::Stored)
            return SheetImportResult::Ended;
        ++imported;
    }
    if (imported == 0) {
        prompts().ask(text(t::kNotInSourcePart1) + unit.term + text(t::kNotInSourcePart2) + r.file +
                          text(t::kNotInSourcePart3),
                      Buttons::Ok, Icon::Critical);
        return SheetImportResult::Ended;
    }
    return SheetImportResult::Stored;
}

// The parameters of the unit, or the weights of the study, imported and confirmed.
SheetImportResult importSmallSheet(StudyContext& context, const InputsStudy& study, const SheetUnit& unit,
                                   const SheetImportRequest& r) {
    GridModel grid;
    ConfirmResult confirmed;
    if (r.sheet == InputSheet::Demography) {
        layoutParametersGrid(grid);
        if (!importParameters(unit, r.file, r.table, grid))
            return SheetImportResult::Ended;
        confirmed = confirmParameters(grid, unit, *context.StudyDB);
    } else {
        layoutWeightsGrid(grid, weightRowsOf(study));
        const WeightsKey key{study.studyId, unit.year};
        if (!importWeights(key, study.term, r.file, r.table, grid))
            return SheetImportResult::Ended;
        confirmed = confirmWeights(grid, key, *context.StudyDB);
    }
    return confirmed.outcome == ConfirmResult::Outcome::Stored ? SheetImportResult::Stored : SheetImportResult::Ended;
}

} // namespace

SheetImportResult importSheetFile(StudyContext& context, const SheetImportRequest& r) {
    const auto study = openInputsStudy(context);
    if (!study)
        return SheetImportResult::Ended;
    const QString bpu = r.bpu.trimmed();
    if (!study->units.contains(bpu, Qt::CaseInsensitive)) {
        prompts().ask(text(t::kNoSuchUnitPart1) + study->studyId + text(t::kNoSuchUnitPart2) + study->term + u' ' +
                          bpu + u'.',
                      Buttons::Ok, Icon::Critical);
        return SheetImportResult::Ended;
    }
    const SheetUnit unit{bpu, r.year.value_or(study->year), study->term};
    if (r.sheet == InputSheet::Causes)
        return importCauseSheet(context, *study, unit, r);
    if (r.sheet == InputSheet::Epi || r.sheet == InputSheet::SequelaEpi)
        return importEpiSheets(context, *study, unit, r);
    if (r.sheet == InputSheet::Demography || r.sheet == InputSheet::Weights)
        return importSmallSheet(context, *study, unit, r);
    const DemographyKind kind =
        r.sheet == InputSheet::Population ? DemographyKind::Population : DemographyKind::DeathRates;
    DemographyImport im;
    im.kind = kind;
    im.unit = SheetUnit{bpu, r.year.value_or(study->year), study->term};
    im.path = r.file;
    im.table = r.table;
    GridModel grid;
    layoutDemographyGrid(grid, study->pndAges);
    if (!importDemography(im, grid))
        return SheetImportResult::Ended;
    DemographyConfirm c;
    c.kind = kind;
    c.unit = im.unit;
    c.lastPndAge = study->pndAges.last();
    CellArray memory;
    return confirmDemography(c, grid, memory, *context.StudyDB).outcome == ConfirmResult::Outcome::Stored
               ? SheetImportResult::Stored
               : SheetImportResult::Ended;
}

} // namespace vesk
