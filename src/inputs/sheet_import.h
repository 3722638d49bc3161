#pragma once
// A sheet's import followed by its Confirm, for the study file the context names, as the sheet's
// Import and Confirm buttons do them one after the other: the same questions (answered by whatever
// prompt service is installed), the same tests and messages, the same rows stored. For analysts who
// prepare inputs by script (vesk-cli import).

#include "database/study_context.h"

#include <QString>
#include <optional>

namespace vesk {

enum class InputSheet { Population, DeathRates, Demography, Causes, Epi, SequelaEpi, Weights };

// The sheet named as the command line names it: population, asdr, demography, csm, epi,
// sequela-epi, weights.
std::optional<InputSheet> inputSheetNamed(const QString& name);

struct SheetImportRequest {
    InputSheet sheet = InputSheet::Population;
    QString bpu;
    std::optional<int> year; // the study's year when not given
    QString file;
    QString table; // a database file's table
};

enum class SheetImportResult {
    Stored,  // the rows are in the study file
    Ended    // a check, a question or the engine ended it; its message was shown
};

SheetImportResult importSheetFile(StudyContext& context, const SheetImportRequest& request);

} // namespace vesk
