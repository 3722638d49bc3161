#include "inputs/weights_sheet.h"

#include "inputs/demography_sheet.h"
#include "inputs/sheet_texts.h"
#include "inputs/sheet_writes.h"
#include "platform/csv.h"
#include "platform/prompts.h"
#include "platform/texts.h"

#include <QHash>
#include <QSqlQuery>
#include <variant>

namespace vesk {

namespace t = sheet_texts;

QStringList weightLabels() {
    QStringList out;
    for (const char* label : t::kWeightLabels)
        out << text(label);
    return out;
}

void layoutWeightsGrid(GridModel& grid, const QList<WeightRow>& rows) {
    const QStringList labels = weightLabels();
    grid.setRedraw(false);
    grid.setFixedRows(1);
    grid.setFixedCols(kWeightFixedCols);
    grid.setCols(kWeightFixedCols + static_cast<int>(labels.size()));
    grid.setRows(1 + std::max<int>(1, static_cast<int>(rows.size())));
    grid.clear();
    grid.setTextMatrix(0, 0, QStringLiteral("COBCd"));
    grid.setTextMatrix(0, 1, QStringLiteral("Disease"));
    for (int j = 0; j < labels.size(); ++j)
        grid.setTextMatrix(0, kWeightFixedCols + j, labels[j]);
    for (int i = 0; i < rows.size(); ++i) {
        grid.setTextMatrix(i + 1, 0, rows[i].code);
        grid.setTextMatrix(i + 1, 1, rows[i].name);
    }
    grid.setRedraw(true);
}

bool fillWithTabData(GridModel& grid, const WeightsKey& key, DbConnection& db) {
    auto q = db.query(QStringLiteral("SELECT COBCd, ASG, Dwt FROM DatDwt WHERE BDSId = ? AND YEAR = ?"),
                      {key.study, key.year});
    bool any = false;
    while (q && q->next()) {
        any = true;
        for (int r = 1; r < grid.rows(); ++r) {
            if (grid.textMatrix(r, 0).compare(q->value(0).toString(), Qt::CaseInsensitive) != 0)
                continue;
            for (int c = kWeightFixedCols; c < grid.cols(); ++c)
                if (grid.textMatrix(0, c) == q->value(1).toString() && !q->value(2).isNull())
                    grid.setTextMatrix(r, c, shortestNumber(q->value(2).toDouble()));
        }
    }
    return any;
}

namespace {

struct WeightCell {
    QString code;
    QString label;
    double weight;
};

QList<int> everyRow(const GridModel& grid) {
    QList<int> rows;
    for (int r = 1; r < grid.rows(); ++r)
        rows << r;
    return rows;
}

// The filled cells of the rows in `rowNumbers`, or the refusal of the first weight outside 0 to 1.
std::variant<QList<WeightCell>, ConfirmResult> weightCells(const GridModel& grid, const QList<int>& rowNumbers) {
    QList<WeightCell> cells;
    for (const int r : rowNumbers)
        for (int c = kWeightFixedCols; c < grid.cols(); ++c) {
            const auto w = cellFigure(grid.textMatrix(r, c));
            if (!w)
                continue;
            if (!(*w >= 0.0 && *w <= 1.0)) {
                prompts().ask(text(t::kWeightOutOfRange), Buttons::Ok, Icon::Critical);
                return ConfirmResult{ConfirmResult::Outcome::Refused, r, c};
            }
            cells << WeightCell{grid.textMatrix(r, 0), grid.textMatrix(0, c), *w};
        }
    return cells;
}

bool writeWeights(DbConnection& db, const WeightsKey& key, const QList<WeightCell>& cells, QSqlError* error) {
    return inOneTransaction(db, [&](QSqlError* e) {
        QSqlQuery update(db.database()), insert(db.database());
        if (!update.prepare(QStringLiteral("UPDATE DatDwt SET Dwt = ? WHERE BDSId = ? AND YEAR = ? AND COBCd = ? "
                                           "AND ASG = ?")) ||
            !insert.prepare(QStringLiteral("INSERT INTO DatDwt (Dwt, BDSId, YEAR, COBCd, ASG) VALUES (?, ?, ?, ?, ?)"))) {
            *e = update.lastError().isValid() ? update.lastError() : insert.lastError();
            return false;
        }
        for (const WeightCell& cell : cells)
            if (!editOrAdd(update, insert, {cell.weight, key.study, key.year, cell.code, cell.label}, e))
                return false;
        return true;
    }, error);
}

ConfirmResult stored(DbConnection& db, const WeightsKey& key, const QList<WeightCell>& cells, const char* done) {
    QSqlError error;
    if (!writeWeights(db, key, cells, &error)) {
        showSheetWriteFailure(error);
        return {ConfirmResult::Outcome::Failed};
    }
    prompts().ask(text(done) + db.path(), Buttons::Ok, Icon::Information);
    return {ConfirmResult::Outcome::Stored};
}

} // namespace

ConfirmResult confirmWeights(const GridModel& grid, const WeightsKey& key, DbConnection& db) {
    auto checked = weightCells(grid, everyRow(grid));
    if (auto* refused = std::get_if<ConfirmResult>(&checked))
        return *refused;
    auto there = db.query(QStringLiteral("SELECT count(*) FROM DatDwt WHERE BDSId = ?"), {key.study});
    if (there && there->next() && there->value(0).toInt() > 0 &&
        prompts().ask(text(t::kWeightsExist), Buttons::YesNo, Icon::Question) != Answer::Yes)
        return {ConfirmResult::Outcome::Declined};
    return stored(db, key, std::get<QList<WeightCell>>(checked), t::kStoredWeights);
}

ConfirmResult exportWeights(const GridModel& grid, const WeightsKey& key, DbConnection& db) {
    auto checked = weightCells(grid, everyRow(grid));
    if (auto* refused = std::get_if<ConfirmResult>(&checked))
        return *refused;
    QList<WeightCell> kept;
    QHash<QString, bool> overwrite; // by code: asked once for each row that has weights
    for (const WeightCell& cell : std::get<QList<WeightCell>>(checked)) {
        if (!overwrite.contains(cell.code)) {
            auto q = db.query(QStringLiteral("SELECT count(*) FROM DatDwt WHERE BDSId = ? AND YEAR = ? AND COBCd = ?"),
                              {key.study, key.year, cell.code});
            const bool there = q && q->next() && q->value(0).toInt() > 0;
            overwrite.insert(cell.code, !there || prompts().ask(text(t::kWeightsRowExists), Buttons::YesNo,
                                                                Icon::Question) == Answer::Yes);
        }
        if (overwrite.value(cell.code))
            kept << cell;
    }
    return stored(db, key, kept, t::kStoredWeights);
}

ConfirmResult updateWeights(const GridModel& grid, const WeightsKey& key, const QString& cause,
                            const QList<WeightRow>& rows, DbConnection& db) {
    QList<int> ofCause;
    for (int i = 0; i < rows.size(); ++i)
        if (rows[i].cause.compare(cause, Qt::CaseInsensitive) == 0)
            ofCause << i + 1;
    auto checked = weightCells(grid, ofCause);
    if (auto* refused = std::get_if<ConfirmResult>(&checked))
        return *refused;
    return stored(db, key, std::get<QList<WeightCell>>(checked), t::kUpdatedWeights);
}

} // namespace vesk
