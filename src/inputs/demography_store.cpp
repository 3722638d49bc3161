#include "inputs/demography_store.h"

#include "inputs/sheet_texts.h"
#include "inputs/sheet_writes.h"
#include "platform/csv.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QDate>
#include <QSet>
#include <QSqlQuery>
#include <variant>
#include <cmath>

namespace vesk {

namespace col = demography_col;
namespace t = sheet_texts;

namespace {

QString tableOf(DemographyKind kind) {
    return kind == DemographyKind::Population ? QStringLiteral("DatPOP") : QStringLiteral("DatASDR");
}

// One filled row of the sheet, scaled as it is stored.
struct SheetRow {
    double bai = 0;
    double male = 0;
    double female = 0;
};

bool acceptable(DemographyKind kind, double v) {
    if (kind == DemographyKind::Population)
        return v > 0 && v == std::trunc(v);
    return std::isfinite(v) && v >= 0;
}

ConfirmResult refuse(const char* message, int row, int column) {
    prompts().ask(text(message), Buttons::Ok, Icon::Critical);
    return {ConfirmResult::Outcome::Refused, row, column};
}

// The rows to store, or the refusal of the first cell that fails the checks.
// The stored value of a cell: the double a load put behind it while its text and the scale are
// unchanged, else the typed figure scaled.
std::optional<double> figureOf(const DemographyConfirm& c, const GridModel& grid, int row, int column) {
    const QString typed = grid.textMatrix(row, column);
    if (c.loaded && c.loaded->scale == c.scale) {
        const auto it = c.loaded->cells.constFind({row, column});
        if (it != c.loaded->cells.constEnd() && it->first == typed)
            return it->second;
    }
    return storedFigure(typed, c.kind, c.scale);
}

std::variant<QList<SheetRow>, ConfirmResult> checkedRows(const DemographyConfirm& c, const GridModel& grid) {
    QList<SheetRow> rows;
    const char* badCell = c.kind == DemographyKind::Population ? t::kPopulationNotPositive : t::kInvalidInput;
    for (int r = grid.fixedRows(); r < grid.rows(); ++r) {
        const auto male = figureOf(c, grid, r, col::kMale);
        const auto female = figureOf(c, grid, r, col::kFemale);
        if (!male && !female)
            continue;
        if (!male || !acceptable(c.kind, *male))
            return refuse(badCell, r, col::kMale);
        if (!female || !acceptable(c.kind, *female))
            return refuse(badCell, r, col::kFemale);
        rows << SheetRow{cellFigure(grid.textMatrix(r, col::kAge)).value_or(0.0), *male, *female};
    }
    // The count to reach is the last PND age divided by 5, as many rows as five-year groups up to it
    // would make; a set of wider groups has fewer rows than that, and then every row is to be filled.
    const int sheetRows = grid.rows() - grid.fixedRows();
    if (rows.size() < std::min<double>(std::floor(c.lastPndAge / 5.0), sheetRows))
        return refuse(t::kRowsNotFilled, grid.fixedRows(), col::kMale);
    return rows;
}

CellArray memoryRows(const DemographyConfirm& c, const QList<SheetRow>& rows) {
    CellArray memory{static_cast<int>(rows.size()), 6};
    const double today = dateSerial(QDate::currentDate());
    for (int i = 0; i < rows.size(); ++i) {
        memory(i, 0) = Cell(c.unit.bpuId);
        memory(i, 1) = Cell(c.unit.year);
        memory(i, 2) = Cell(rows[i].bai);
        memory(i, 3) = Cell(rows[i].male);
        memory(i, 4) = Cell(rows[i].female);
        memory(i, 5) = Cell::date(today);
    }
    return memory;
}

QSet<double> storedAges(DbConnection& db, const QString& table, const SheetUnit& unit) {
    QSet<double> ages;
    auto q = db.query(QStringLiteral("SELECT Bai FROM %1 WHERE BPUID = ? AND YEAR = ?").arg(table),
                      {unit.bpuId, unit.year});
    while (q && q->next())
        ages.insert(q->value(0).toDouble());
    return ages;
}

// The persons rate stored with a row of rates: weighted by the population of the same age, or 0.
double storedPersonsRate(const SheetRow& row, const QList<AgePopulation>& population) {
    for (const AgePopulation& p : population)
        if (p.bai == row.bai)
            return personsRate(row.male, row.female, p.male, p.female).value_or(0.0);
    return 0.0;
}

// The two statements of a sheet's rows, their values bound in the same order: the figures, the
// date, then the key.
struct RowStatements {
    QString update;
    QString insert;
};

RowStatements statementsFor(DemographyKind kind) {
    if (kind == DemographyKind::Population)
        return {QStringLiteral("UPDATE DatPOP SET M = ?, F = ?, UpdDt = ? WHERE BPUID = ? AND YEAR = ? AND Bai = ?"),
                QStringLiteral("INSERT INTO DatPOP (M, F, UpdDt, BPUID, YEAR, Bai) VALUES (?, ?, ?, ?, ?, ?)")};
    return {QStringLiteral("UPDATE DatASDR SET M = ?, F = ?, P = ?, UpdDt = ? WHERE BPUID = ? AND YEAR = ? AND Bai = ?"),
            QStringLiteral("INSERT INTO DatASDR (M, F, P, UpdDt, BPUID, YEAR, Bai) VALUES (?, ?, ?, ?, ?, ?, ?)")};
}

// Edits or adds every row in one transaction; false, with the engine's error, when one fails, and
// then none of them stays.
bool writeRows(DbConnection& db, const DemographyConfirm& c, const QList<SheetRow>& rows, QSqlError* error) {
    const bool rates = c.kind == DemographyKind::DeathRates;
    const QList<AgePopulation> population = rates ? storedPopulation(db, c.unit) : QList<AgePopulation>{};
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    const RowStatements sql = statementsFor(c.kind);
    return inOneTransaction(db, [&](QSqlError* e) {
        QSqlQuery update(db.database()), insert(db.database());
        if (!update.prepare(sql.update) || !insert.prepare(sql.insert)) {
            *e = update.lastError().isValid() ? update.lastError() : insert.lastError();
            return false;
        }
        for (const SheetRow& row : rows) {
            QVariantList values{row.male, row.female};
            if (rates)
                values << storedPersonsRate(row, population);
            values << today << c.unit.bpuId << c.unit.year << row.bai;
            if (!editOrAdd(update, insert, values, e))
                return false;
        }
        return true;
    }, error);
}

} // namespace

ConfirmResult confirmDemography(const DemographyConfirm& c, const GridModel& grid, CellArray& memory,
                                DbConnection& db) {
    auto checked = checkedRows(c, grid);
    if (auto* refused = std::get_if<ConfirmResult>(&checked))
        return *refused;
    const QList<SheetRow>& rows = std::get<QList<SheetRow>>(checked);
    if (c.holdInMem) {
        memory = memoryRows(c, rows);
        prompts().ask(text(t::kStoredInMemory), Buttons::Ok, Icon::Information);
        return {ConfirmResult::Outcome::InMemory};
    }
    const QSet<double> there = storedAges(db, tableOf(c.kind), c.unit);
    bool overlaps = false;
    for (const SheetRow& row : rows)
        overlaps = overlaps || there.contains(row.bai);
    if (overlaps && prompts().ask(text(t::kExistingDataPart1) + c.unit.term + text(t::kExistingDataPart2),
                                  Buttons::YesNo, Icon::Question) != Answer::Yes)
        return {ConfirmResult::Outcome::Declined};
    QSqlError error;
    if (!writeRows(db, c, rows, &error)) {
        showSheetWriteFailure(error);
        return {ConfirmResult::Outcome::Failed};
    }
    const char* stored = c.kind == DemographyKind::Population ? t::kStoredPopulation : t::kStoredDeathRates;
    prompts().ask(text(stored) + db.path(), Buttons::Ok, Icon::Information);
    return {ConfirmResult::Outcome::Stored};
}

QList<AgePopulation> storedPopulation(DbConnection& db, const SheetUnit& unit) {
    QList<AgePopulation> rows;
    auto q = db.query(QStringLiteral("SELECT Bai, M, F FROM DatPOP WHERE BPUID = ? AND YEAR = ? ORDER BY Bai"),
                      {unit.bpuId, unit.year});
    while (q && q->next())
        rows << AgePopulation{q->value(0).toDouble(), q->value(1).toDouble(), q->value(2).toDouble()};
    return rows;
}

DemographyLoad loadDemography(DemographyKind kind, GridModel& grid, const SheetUnit& unit, double scale,
                              DbConnection& db) {
    DemographyLoad found;
    auto q = db.query(QStringLiteral("SELECT Bai, M, F FROM %1 WHERE BPUID = ? AND YEAR = ? ORDER BY Bai")
                          .arg(tableOf(kind)),
                      {unit.bpuId, unit.year});
    found.figures.scale = scale;
    const auto show = [&](int row, int column, const QVariant& v) {
        const QString text = v.isNull() ? QString() : shownFigure(v.toDouble(), kind, scale);
        grid.setTextMatrix(row, column, text);
        if (!v.isNull())
            found.figures.cells.insert({row, column}, {text, v.toDouble()});
    };
    while (q && q->next()) {
        found.confirmed = true;
        const double bai = q->value(0).toDouble();
        QList<double> ages = demographyAges(grid);
        int row = static_cast<int>(ages.indexOf(bai));
        if (row < 0 && !found.added && !ages.isEmpty() &&
            bai == ages.last() + kClosedLastInterval) {
            // The closed last interval of an earlier Confirm: the sheet switches its last row to hold it.
            grid.setTextMatrix(grid.rows() - 1, col::kSize, shortestNumber(kClosedLastInterval));
            grid.setRows(grid.rows() + 1);
            grid.setTextMatrix(grid.rows() - 1, col::kAge, shortestNumber(bai));
            grid.setTextMatrix(grid.rows() - 1, col::kSize, text(t::kOpenAge));
            found.added = true;
            row = static_cast<int>(ages.size());
        }
        if (row < 0) {
            found.unmatched << bai;
            continue;
        }
        show(grid.fixedRows() + row, col::kMale, q->value(1));
        show(grid.fixedRows() + row, col::kFemale, q->value(2));
    }
    fillPersons(grid, kind, kind == DemographyKind::DeathRates ? storedPopulation(db, unit) : QList<AgePopulation>{});
    return found;
}

} // namespace vesk
