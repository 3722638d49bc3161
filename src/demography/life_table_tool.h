#pragma once
// The life table tool without its window: the ladder of ages, the checks of Generate, the call of
// FnLifeTable and the table as the tool shows and saves it. Messages go through the prompt service
// where they arise, as the window showed them; the window and `vesk-cli lifetable` both call here.

#include "demography/coale_demeny.h"
#include "foundation/settings.h"
#include "platform/cell_array.h"

#include <QStringList>
#include <optional>
#include <vector>

namespace vesk {

// "Initial age groups (IAG)": "0 , 1-4 ...", "0 , 1 , 2-4 ...", "0-5 ...", "0-10 ...".
enum class InitialAgeGroups { ZeroOneFour, ZeroOneTwoFour, ZeroFive, ZeroTen };

// cmdGenAgeGrps: the start ages from 0 to `lastAge`. The initial groups come first (0 and 1; 0, 1
// and 2; 0; 0), the middle groups start at 5 (at 10 after "0-10") and go by `step` (5 or 10) on
// multiples of it up to the last age, which must be filled and divide by the step. std::nullopt
// after the message.
std::optional<std::vector<int>> lifeTableAgeLadder(const QString& lastAge, InitialAgeGroups first, int step);

// What the tool's fields hold, as typed.
struct LifeTableToolInput {
    CellArray grid; // rows of age, rate and, under Keyfitz, population, as typed (texts)
    QString imr, imrDenominator, pgr, asdrDenominator, greville, kfLower, kfUpper;
    qint16 method = 0;
};

// The tool's result: the life table without its three adjusted columns (12 columns, 13 under Keyfitz
// and Reed-Merrell), its heads and the field names of a saved table.
struct LifeTableToolResult {
    CellArray table;
    QStringList heads;
    QStringList fieldNames;
};

// cmdLTGen: the checks in the tool's order, each stopping with its message; the limits and the
// Greville constant go into `s` as the tool sets them; the rates divided by the ASDR denominator;
// IMR, its denominator and PGR to whole numbers, halves to even; then FnLifeTable with `s`.
// std::nullopt after a message (the engine's error box, or "Unable to compute life table:").
std::optional<LifeTableToolResult> generateLifeTable(const LifeTableToolInput& in, VeskSettings& s);

// The heads of a method's table, and the field names of a saved one.
QStringList lifeTableHeads(qint16 method);
QStringList lifeTableFieldNames(qint16 method);

// A numeric cell as the result grid shows it: rounded to `decimals` by the picture "#." and one "#"
// for each place; other cells as they are.
QString lifeTableShown(const Cell& c, int decimals);

// A Coale-Demeny model table as the result window shows it (heads age, n, nqx, lx, ndx, nLx, nmx,
// nax, Tx, ex; the open row's n "W"), so that a computed table can be set beside a model one.
LifeTableToolResult modelLifeTableView(const CdLifeTable& t);
// The model's ages and rates as the tool's grid takes them (texts, the shortest that read back to
// the same double): nmx of the closed groups and l95 / T95 for the open one.
CellArray modelRatesGrid(const CdLifeTable& t);

} // namespace vesk
