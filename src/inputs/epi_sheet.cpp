#include "inputs/epi_sheet.h"

#include "inputs/demography_sheet.h"
#include "inputs/sheet_texts.h"
#include "inputs/sheet_writes.h"
#include "platform/csv.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QDate>
#include <QSqlQuery>
#include <cmath>

namespace vesk {

namespace col = epi_col;
namespace t = sheet_texts;

namespace {

constexpr int kMeasures = 5;
// The fields of the measures, in the order of the grid's columns 1 to 5.
const char* const kFields[kMeasures] = {"i", "P", "ago", "DURN", "agp"};

bool bySequela(const EpiKey& key) {
    return !key.sequela.isEmpty();
}

QString tableOf(const EpiKey& key) {
    return bySequela(key) ? QStringLiteral("DatADWSqla") : QStringLiteral("DatADW");
}

// The condition on the key, and its values in order.
QString keyCondition(const EpiKey& key) {
    return bySequela(key) ? QStringLiteral("BPUID = ? AND YEAR = ? AND COBCd = ? AND SqlaCd = ?")
                          : QStringLiteral("BPUID = ? AND YEAR = ? AND COBCd = ?");
}

QVariantList keyValues(const EpiKey& key) {
    QVariantList values{key.unit.bpuId, key.unit.year, key.cause};
    if (bySequela(key))
        values << key.sequela;
    return values;
}

// A measure's figure as stored: the rates divided by their bases, the others as typed.
std::optional<double> storedMeasure(const EpiKey& key, int column, const QString& typed) {
    if (column == col::kIncidence)
        return storedFigure(typed, DemographyKind::DeathRates, key.incidenceBase);
    if (column == col::kPrevalence)
        return storedFigure(typed, DemographyKind::DeathRates, key.prevalenceBase);
    return cellFigure(typed);
}


QStringList labelsOf(const GridModel& grid) {
    QStringList labels;
    for (int r = 1; r < grid.rows(); ++r)
        labels << grid.textMatrix(r, col::kAsg);
    return labels;
}

} // namespace

QString shownMeasure(const EpiKey& key, int column, double stored) {
    if (column == col::kIncidence)
        return shownFigure(stored, DemographyKind::DeathRates, key.incidenceBase);
    if (column == col::kPrevalence)
        return shownFigure(stored, DemographyKind::DeathRates, key.prevalenceBase);
    return shortestNumber(stored);
}

std::optional<QString> lookAtSequelaShares(const EpiKey& key, DbConnection& db) {
    QSqlError error;
    if (db.query(QStringLiteral("SELECT * FROM DatCSMSqla WHERE upper(trim(BPUID)) = ? AND upper(trim(SqlaCd)) = ?"),
                 {key.unit.bpuId.toUpper(), key.sequela.toUpper()}, &error))
        return std::nullopt;
    return QString::number(engineErrorNumber(error)) + u' ' + engineDescription(error);
}

void layoutEpiGrid(GridModel& grid, const QStringList& yldLabels) {
    grid.setRedraw(false);
    grid.setFixedRows(1);
    grid.setFixedCols(1);
    grid.setCols(1 + kMeasures);
    grid.setRows(1 + std::max<int>(1, static_cast<int>(yldLabels.size())));
    grid.clear();
    const char* headings[] = {t::kHeadAsg,   t::kHeadIncidence, t::kHeadPrevalence,
                              t::kHeadOnset, t::kHeadDuration,  t::kHeadPrevalentAge};
    for (int c = 0; c <= kMeasures; ++c)
        grid.setTextMatrix(0, c, text(headings[c]));
    for (int i = 0; i < yldLabels.size(); ++i)
        grid.setTextMatrix(i + 1, col::kAsg, yldLabels[i]);
    grid.setRedraw(true);
}

bool GetData(GridModel& grid, const EpiKey& key, DbConnection& db) {
    for (int r = 1; r < grid.rows(); ++r)
        for (int c = 1; c <= kMeasures; ++c)
            grid.setTextMatrix(r, c, QString());
    auto q = db.query(QStringLiteral("SELECT ASG, i, P, ago, DURN, agp FROM %1 WHERE %2 ORDER BY ASG")
                          .arg(tableOf(key), keyCondition(key)),
                      keyValues(key));
    QList<QVariantList> rows;
    while (q && q->next()) {
        QVariantList row;
        for (int c = 0; c <= kMeasures; ++c)
            row << q->value(c);
        rows << row;
    }
    if (rows.isEmpty())
        return false;
    const QStringList labels = labelsOf(grid);
    if (rows.size() != labels.size()) {
        if (prompts().ask(text(t::kRowsNotTheAgesPart1) + u'\n' + text(t::kRowsNotTheAgesPart2), Buttons::OkCancel,
                          Icon::Warning, text(t::kRowsNotTheAgesTitle)) == Answer::Ok)
            db.exec(QStringLiteral("DELETE FROM %1 WHERE %2").arg(tableOf(key), keyCondition(key)), keyValues(key));
        return false;
    }
    for (const QVariantList& row : rows) {
        const int r = static_cast<int>(labels.indexOf(row[0].toString())) + 1;
        if (r <= 0)
            continue;
        for (int c = 1; c <= kMeasures; ++c)
            grid.setTextMatrix(r, c, row[c].isNull() ? QString() : shownMeasure(key, c, row[c].toDouble()));
    }
    return true;
}

namespace {

struct EpiRow {
    QString asg;
    std::optional<double> measures[kMeasures];
};

bool writeEpiRows(DbConnection& db, const EpiKey& key, const QList<EpiRow>& rows, int* updated,
                  QSqlError* error) {
    const QString today = QDate::currentDate().toString(Qt::ISODate);
    const QString keyFields = bySequela(key) ? QStringLiteral("BPUID, YEAR, COBCd, SqlaCd, ASG")
                                             : QStringLiteral("BPUID, YEAR, COBCd, ASG");
    return inOneTransaction(db, [&](QSqlError* e) {
        QSqlQuery update(db.database()), insert(db.database());
        if (!update.prepare(QStringLiteral("UPDATE %1 SET i = ?, P = ?, ago = ?, DURN = ?, agp = ?, UpdDt = ? "
                                           "WHERE %2 AND ASG = ?")
                                .arg(tableOf(key), keyCondition(key))) ||
            !insert.prepare(QStringLiteral("INSERT INTO %1 (i, P, ago, DURN, agp, UpdDt, %2) VALUES "
                                           "(?, ?, ?, ?, ?, ?, ?, ?, ?, ?%3)")
                                .arg(tableOf(key), keyFields, bySequela(key) ? QStringLiteral(", ?") : QString()))) {
            *e = update.lastError().isValid() ? update.lastError() : insert.lastError();
            return false;
        }
        for (const EpiRow& row : rows) {
            QVariantList values;
            for (const auto& m : row.measures)
                values << (m ? QVariant(*m) : QVariant());
            values << today << keyValues(key) << row.asg;
            bool added = false;
            if (!editOrAdd(update, insert, values, e, &added))
                return false;
            if (!added)
                ++*updated;
        }
        return true;
    }, error);
}

} // namespace

ConfirmResult Commitdata(const GridModel& grid, const EpiKey& key, bool holdInMem, CellArray& memory,
                         DbConnection& db) {
    QList<EpiRow> rows;
    for (int r = 1; r < grid.rows(); ++r) {
        EpiRow row{grid.textMatrix(r, col::kAsg), {}};
        for (int c = 1; c <= kMeasures; ++c) {
            const auto v = storedMeasure(key, c, grid.textMatrix(r, c));
            if (v && !(std::isfinite(*v) && *v >= 0)) {
                prompts().ask(text(t::kInvalidInput), Buttons::Ok, Icon::Critical);
                return {ConfirmResult::Outcome::Refused, r, c};
            }
            row.measures[c - 1] = v;
        }
        rows << row;
    }
    if (holdInMem) {
        memory = CellArray{static_cast<int>(rows.size()), 10};
        const double today = dateSerial(QDate::currentDate());
        for (int i = 0; i < rows.size(); ++i) {
            memory(i, 0) = Cell(rows[i].asg);
            for (int m = 0; m < kMeasures; ++m)
                memory(i, 1 + m) = rows[i].measures[m] ? Cell(*rows[i].measures[m]) : Cell::null();
            memory(i, 6) = Cell(key.unit.bpuId);
            memory(i, 7) = Cell(key.unit.year);
            memory(i, 8) = Cell(bySequela(key) ? key.sequela : key.cause);
            memory(i, 9) = Cell::date(today);
        }
        prompts().ask(text(t::kStoredInMemory), Buttons::Ok, Icon::Information);
        return {ConfirmResult::Outcome::InMemory};
    }
    int updated = 0;
    QSqlError error;
    if (!writeEpiRows(db, key, rows, &updated, &error)) {
        showSheetWriteFailure(error);
        return {ConfirmResult::Outcome::Failed};
    }
    const bool sequela = bySequela(key);
    const QString report = updated > 0 ? text(sequela ? t::kSequelaRecordsUpdated : t::kRecordsUpdated) +
                                             QString::number(updated)
                                       : text(sequela ? t::kSequelaRecordsAdded : t::kRecordsAdded) +
                                             QString::number(rows.size());
    prompts().ask(report, Buttons::Ok, Icon::Information);
    return {ConfirmResult::Outcome::Stored};
}

} // namespace vesk
