#pragma once
// Stored rows that no longer fit the study's age definitions, met when a tab of the Inputs window
// opens: the population and death rates of a unit and year whose lower ages are not those of the
// PND set (nor the closed interval over its last age), and the cause-of-death proportions whose
// labels are not those of the YLL set. The user is asked whether to delete them (Yes: the rows of
// the unit and year go, in one transaction, and the sheets show blank) or to keep them (No: a
// message says that the definitions are to be changed back). This is the only place where data
// rows are removed for a change of definitions.

#include "database/db_connection.h"
#include "inputs/demography_store.h"

#include <QStringList>

namespace vesk {

enum class ChangedRows {
    Fit,     // nothing stored, or everything stored fits
    Deleted, // the user let them go
    Kept     // the user kept them
};

ChangedRows askAboutChangedPndAges(DbConnection& db, const SheetUnit& unit, const QList<double>& pndAges);
ChangedRows askAboutChangedYllLabels(DbConnection& db, const SheetUnit& unit, const QStringList& yllLabels);

} // namespace vesk
