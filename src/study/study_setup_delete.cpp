// Deleting a study, the grids of the tab "Define Study", the minimum of a study and the end of a
// File -> New that lacks it.

#include "database/db_create.h"
#include "foundation/settings.h"
#include "foundation/settings_file.h"
#include "platform/prompts.h"
#include "study/study_setup.h"
#include "study/study_setup_report.h"
#include "study/study_setup_texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace vesk {

namespace t = setup_texts;

namespace {

using setup_texts::text;

// The units of other studies whose BPUID the study does (`in`) or does not (`not in`) hold.
QString unitList(const DbConnection& db, const QString& id, bool held) {
    const QString sql = QStringLiteral("SELECT BPUID FROM _DctBPU WHERE BDSId <> ? AND BPUID %1 "
                                       "(SELECT BPUID FROM _DctBPU WHERE BDSId = ?) ORDER BY rowid")
                            .arg(held ? QStringLiteral("IN") : QStringLiteral("NOT IN"));
    QStringList units;
    auto q = db.query(sql, {id, id});
    while (q && q->next())
        units << q->value(0).toString();
    return units.join(QStringLiteral(", "));
}

// The condition shared by the data deletes: the year, and the units of the study.
const QString kDataCondition =
    QStringLiteral(" WHERE YEAR = ? AND BPUID IN (SELECT BPUID FROM _DctBPU WHERE BDSId = ?)");

QString numberText(double value) {
    return QString::number(value, 'g', 7);
}

} // namespace

bool DeleteStudy(StudyContext& context, const QString& id, int year) {
    const DbConnection& db = *context.StudyDB;
    // 1-2. The units it shares with other studies, and those of the others it does not hold.
    const QString question = text(t::kDeleteDetails1) + id + text(t::kDeleteDetails2) + QLatin1Char('\n') +
                             text(t::kDeleteMapped) + unitList(db, id, true) + text(t::kDeleteNotMapped) +
                             unitList(db, id, false) + text(t::kDeleteProceed);
    if (prompts().ask(question, Buttons::YesNo, Icon::Question) != Answer::Yes)
        return false;
    // 3-4. One test on DatADW governs the deletes of all five data tables.
    auto adw = db.query(QStringLiteral("SELECT 1 FROM DatADW") + kDataCondition + QStringLiteral(" LIMIT 1"),
                        {year, id});
    if (adw && adw->next()) {
        for (const char* table : {"DatADW", "DatADWSqla", "DatASDR", "DatCSM", "DatPOP"})
            if (!execSetupStatement(db, QStringLiteral("DELETE FROM %1").arg(text(table)) + kDataCondition,
                                    {year, id}))
                return false;
    }
    // 5. The study's own rows.
    for (const char* table : {"_DfnAgeGrps", "_DctPAG2", "_DctPAG1", "_DctBPU", "_DctBDS"})
        if (!execSetupStatement(db, QStringLiteral("DELETE FROM %1 WHERE BDSId = ?").arg(text(table)), {id}))
            return false;
    // 6. Its column of the cause dictionary.
    QSqlError e;
    if (!dropStudyColumn(db, id, &e)) {
        showStudySetupDbError(e);
        return false;
    }
    return true;
}

void fillStudyGrid(const QList<StudyRow>& rows, GridModel& grid) {
    grid.setRedraw(false);
    grid.setFixedRows(1);
    grid.setFixedCols(1);
    grid.setCols(6);
    grid.setRows(static_cast<int>(rows.size()) + 1);
    grid.clear();
    for (int c = 0; c < 5; ++c)
        grid.setTextMatrix(0, c + 1, text(t::kStudyColumns[c]));
    for (int r = 0; r < rows.size(); ++r) {
        const StudyRow& row = rows[r];
        const QStringList cells = {row.id, QString::number(row.year), row.title, row.scheme,
                                   row.current ? QStringLiteral("True") : QStringLiteral("False")};
        for (int c = 0; c < cells.size(); ++c)
            grid.setTextMatrix(r + 1, c + 1, cells[c]);
    }
    grid.setRedraw(true);
}

bool fillBuiltInDapGrid(StudyContext& context, const Cell& chosenSets, GridModel& grid) {
    const DbConnection& db = *context.StudyDB;
    auto any = db.query(QStringLiteral("SELECT 1 FROM _DctDAP LIMIT 1"));
    if (any && !any->next()) {
        // A new _DctDAP starts from the built-in sets of the program.
        context.InitDAP();
        for (const auto& set : {context.VctrDAP0, context.VctrDAP1, context.VctrDAP2, context.VctrDAP3})
            if (!execSetupStatement(
                    db, QStringLiteral("INSERT INTO _DctDAP (DAPID, r, K, Beta, C) VALUES (?, ?, ?, ?, ?)"),
                    {set[0], set[1], set[2], set[3], set[4]}))
                return false;
    }
    QList<QStringList> rows;
    auto q = db.query(QStringLiteral("SELECT DAPID, r, K, Beta, C FROM _DctDAP ORDER BY DAPID"));
    while (q && q->next()) {
        QStringList row;
        for (int c = 0; c < 5; ++c)
            row << (q->value(c).isNull() ? QString() : numberText(q->value(c).toDouble()));
        rows << row;
    }
    // The rows whose id stands in the chosen sets are ticked.
    QStringList chosen;
    if (chosenSets.isArray() && chosenSets.array().rank() == 2) {
        const CellArray& m = chosenSets.array();
        for (int r = m.lbound(0); r <= m.ubound(0); ++r)
            chosen << numberText(m(r, 0).toDouble());
    }
    grid.setRedraw(false);
    grid.setFixedRows(1);
    grid.setFixedCols(0);
    grid.setCols(6);
    grid.setRows(static_cast<int>(rows.size()) + 1);
    grid.clear();
    for (int c = 0; c < 5; ++c)
        grid.setTextMatrix(0, c, text(t::kDapColumns[c]));
    grid.setTextMatrix(0, kDapChoiceColumn, text(t::kDapChoice));
    for (int r = 0; r < rows.size(); ++r) {
        for (int c = 0; c < 5; ++c)
            grid.setTextMatrix(r + 1, c, rows[r][c]);
        grid.setTextMatrix(r + 1, kDapChoiceColumn,
                           chosen.contains(rows[r][0]) ? QStringLiteral("True") : QStringLiteral("False"));
    }
    grid.setRedraw(true);
    return true;
}

void toggleBuiltInDap(Cell& chosenSets, GridModel& grid, int row) {
    if (row < grid.fixedRows() || row >= grid.rows())
        return;
    const bool on = grid.textMatrix(row, kDapChoiceColumn) == QLatin1String("True");
    grid.setTextMatrix(row, kDapChoiceColumn, on ? QStringLiteral("False") : QStringLiteral("True"));
    QList<int> picked;
    for (int r = grid.fixedRows(); r < grid.rows(); ++r)
        if (grid.textMatrix(r, kDapChoiceColumn) == QLatin1String("True"))
            picked << r;
    if (picked.isEmpty()) {
        chosenSets = Cell();
        return;
    }
    CellArray m{static_cast<int>(picked.size()), 5};
    for (int i = 0; i < picked.size(); ++i)
        for (int c = 0; c < 5; ++c)
            m(i, c) = Cell(grid.textMatrix(picked[i], c));
    chosenSets = Cell(std::move(m));
}

bool FnChkMinStdParameter(const MinimumFields& f) {
    for (const QString* field : {&f.id, &f.years, &f.title, &f.scheme, &f.bpu, &f.pag1, &f.pag2})
        if (field->trimmed().isEmpty())
            return false;
    return f.yllRows > 2 && f.yldRows > 2 && f.pndRows > 2;
}

bool abandonNewDatabase(StudyContext& context, QString* error) {
    // The settings as they were before File -> New: the copy in the temporary folder.
    const QString copy = QDir(preferences().txtTempArea.trimmed()).filePath(QLatin1String(kSettingsFileName));
    const QString target = settingsFilePath();
    if (QFileInfo::exists(copy)) {
        QFile::remove(target);
        QFile::copy(copy, target);
    }
    const QString file = context.StudyDB ? context.StudyDB->path() : StudyContext::studyDatabasePath();
    context.StudyDB.reset();
    context.ClearStudyContext();
    context.CurBDSId.clear();
    context.CurBDSTi.clear();
    context.CurPAGSch.clear();
    context.NewDBDone = false;
    const bool removed = removeStudyFile(file, error);
    // Back to the database the settings name again.
    openfile();
    setupRequests().ask(FrameRequest::plain(FrameRequest::Kind::RearmChain));
    return removed;
}

} // namespace vesk
