#pragma once
// Confirm and load of the population and death-rate sheets (demography_sheet.h) against their
// tables, DatPOP and DatASDR: BPUID, YEAR, Bai, M, F (and P for the rates), UpdDt.
//
// Confirm checks the sheet, then either keeps the figures in memory (HoldInMem: the form's array of
// the sheet, no table touched) or writes them. The checks cannot be overridden:
//   - a population row with any figure needs both, each a positive whole number once multiplied (a
//     zero or a fraction is refused); a rate row needs both, each a number not below 0 (0 is a rate);
//   - the rows filled on both sexes must be at least the last PND age divided by 5, or every row
//     of the sheet where its groups are wider and it has fewer.
// A refusal names the cell it stands on. Before writing, the rows of the unit and year already in
// the table raise one question; No leaves the table as it was. The rows go in as one transaction
// (edited where the unit, year and age are there, added where not): a failure midway leaves the
// table as it was and says so, with the engine's number and description. DatASDR.P is the
// population-weighted persons rate of the same age where the unit and year have population rows,
// else 0.

#include "database/db_connection.h"
#include "inputs/demography_sheet.h"
#include "platform/cell_array.h"

#include <QHash>
#include <QPair>

namespace vesk {

// The unit and year in force, and the generic word for a unit that the messages use.
struct SheetUnit {
    QString bpuId;
    int year = 0;
    QString term;
};

// The figures a load put into the sheet: for each cell, its text and the stored double behind it.
// A cell still showing that text at Confirm, through the same scale, stores that very double, so
// that a sheet confirmed again unchanged stores the same numbers whatever the scale (a scale that
// is no power of ten cannot show every double as a text that goes back to it).
struct LoadedFigures {
    double scale = 1;
    QHash<QPair<int, int>, QPair<QString, double>> cells; // (row, column) -> (text, stored)
};

struct DemographyConfirm {
    DemographyKind kind = DemographyKind::Population;
    SheetUnit unit;
    double lastPndAge = 0; // the last lower age of the study's PND set
    double scale = 1;      // the multiplier (population) or the denominator (rates)
    bool holdInMem = false;
    const LoadedFigures* loaded = nullptr; // what the last load showed, if any
};

struct ConfirmResult {
    enum class Outcome {
        Refused,  // a check failed: the message was shown, the sheet stands on (row, col)
        Declined, // the user kept the rows that were there
        InMemory, // HoldInMem: the figures went into `memory`, no table changed
        Stored,   // the rows are in the table
        Failed    // the engine refused a row: nothing was stored, the reason was shown
    };
    Outcome outcome = Outcome::Refused;
    int row = -1;
    int col = -1;
};

// Confirm of the sheet in `grid`. `memory` receives, with HoldInMem, one row per filled sheet row:
// BPU id, year, BAI, male, female (scaled as they would be stored) and the date.
ConfirmResult confirmDemography(const DemographyConfirm& c, const GridModel& grid, CellArray& memory,
                                DbConnection& db);

// The population rows of the unit and year, as stored (for the persons of the rate sheet).
QList<AgePopulation> storedPopulation(DbConnection& db, const SheetUnit& unit);

// What a load found.
struct DemographyLoad {
    bool confirmed = false; // the table held rows of the unit and year
    bool added = false;     // they include the closed-interval row under the PND ages: the grid
                            // switched its last row to hold it
    QList<double> unmatched; // stored ages that are not rows of the sheet (changed definitions)
    LoadedFigures figures;   // the texts shown and the doubles behind them
};

// Fills the figures of the unit and year from the table into a grid laid out by
// layoutDemographyGrid, through `scale` in the reverse sense (a population divided by the
// multiplier, a rate multiplied by the denominator), and the persons column.
DemographyLoad loadDemography(DemographyKind kind, GridModel& grid, const SheetUnit& unit, double scale,
                              DbConnection& db);

} // namespace vesk
