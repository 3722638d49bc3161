#pragma once
// The disability weights sheet of the Inputs window (MSFlgDWT): a row per cause of the study, or,
// for a cause with sequelae, a row per sequela under the sequela's code; a column per age group of
// the weights' own fixed set, "U0-4", "U05-14", "U15-44", "U45-59", "U60-w", whatever the study's
// YLD labels. Stored in DatDwt (BDSId, YEAR, COBCd: the cause or the sequela, ASG: the U label,
// Dwt). A weight lies from 0 to 1; one outside is refused and cannot be let through. A blank cell
// stores no row.

#include "database/db_connection.h"
#include "inputs/demography_store.h"
#include "platform/grid_model.h"

#include <QStringList>

namespace vesk {

// A row of the sheet: the code stored in COBCd (a cause, or a sequela of one) and its name.
struct WeightRow {
    QString code;
    QString name;
    QString cause; // the cause the row belongs to (the code itself for a cause without sequelae)
};

// The study and year the weights belong to.
struct WeightsKey {
    QString study;
    int year = 0;
};

inline constexpr int kWeightFixedCols = 2; // code, name

QStringList weightLabels();
void layoutWeightsGrid(GridModel& grid, const QList<WeightRow>& rows);
// fillWithTabData: the stored weights of the study and year; true when there were any.
bool fillWithTabData(GridModel& grid, const WeightsKey& key, DbConnection& db);
// Confirm: every cell checked, the one question when the study has weights already (No: Declined),
// then every row of the sheet edited or added, in one transaction.
ConfirmResult confirmWeights(const GridModel& grid, const WeightsKey& key, DbConnection& db);
// Update: the rows of the cause in force only (its own row, or the rows of its sequelae), edited or
// added, with no question.
ConfirmResult updateWeights(const GridModel& grid, const WeightsKey& key, const QString& cause,
                            const QList<WeightRow>& rows, DbConnection& db);

// Export: the sheet written out row by row, a row whose code has weights already asking first
// (Yes overwrites that row's weights, No passes it over); the rows written go in one transaction.
ConfirmResult exportWeights(const GridModel& grid, const WeightsKey& key, DbConnection& db);

} // namespace vesk
