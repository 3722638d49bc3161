#include "inputs/sheet_import.h"

#include "inputs/cause_import.h"
#include "inputs/demography_import.h"
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

} // namespace

SheetImportResult importSheetFile(StudyContext& context, const SheetImportRequest& r) {
    if (r.sheet != InputSheet::Population && r.sheet != InputSheet::DeathRates && r.sheet != InputSheet::Causes)
        return SheetImportResult::NotBuilt;
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
    if (r.sheet == InputSheet::Causes)
        return importCauseSheet(context, *study, SheetUnit{bpu, r.year.value_or(study->year), study->term}, r);
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
