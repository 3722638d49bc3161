#pragma once
// The imports of the two small sheets. The demographic parameters: from a worksheet (the range
// named after the unit), a dBase or database table or a text file, fields by position: BPU id,
// year, Coale-Demeny family, growth rate, infant mortality rate; the row of the unit and year goes
// into the sheet. The weights: from a text file (";" between fields), a worksheet (the range named
// after the study) or a dBase or database table, fields by position: study, code (a cause, or a
// sequela under its own code), name, then the five groups U0-4, U05-14, U15-44, U45-59, U60-w; each
// row of the study whose code is a row of the sheet fills it. Both after the question of the kind,
// and both need Confirm like typed figures.

#include "inputs/demography_store.h"
#include "inputs/weights_sheet.h"
#include "platform/grid_model.h"

namespace vesk {

bool importParameters(const SheetUnit& unit, const QString& path, const QString& table, GridModel& grid);
bool importWeights(const WeightsKey& key, const QString& term, const QString& path, const QString& table,
                   GridModel& grid);

} // namespace vesk
