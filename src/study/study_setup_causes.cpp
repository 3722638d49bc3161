#include "study/study_setup_causes.h"

#include "database/sql_tokens.h"
#include "platform/prompts.h"
#include "study/cause_dictionary.h"
#include "study/study_setup.h"
#include "study/study_setup_report.h"
#include "study/study_setup_texts.h"

namespace vesk {

namespace t = setup_texts;
using sql::quoteName;

namespace {

using setup_texts::text;

// The study's column quoted, or empty.
QString column(const DbConnection& db, const QString& studyId) {
    const QString name = studyColumnName(db, studyId);
    return name.isEmpty() || !isPlainIdentifier(name) ? QString() : quoteName(name);
}

// The menu entries of inputs and computation.
const QStringList kCauseItems = {QStringLiteral("mnu_studyInp"), QStringLiteral("mnu_Daly"),
                                 QStringLiteral("mnu_Compute")};

} // namespace

bool fillCauseGrid(const DbConnection& db, const QString& studyId, GridModel& grid) {
    grid.setRedraw(false);
    grid.setFixedRows(1);
    grid.setFixedCols(0);
    grid.setCols(3);
    grid.setRows(1);
    grid.clear();
    const QString col = column(db, studyId);
    grid.setTextMatrix(0, 0, QStringLiteral("Cobcd"));
    grid.setTextMatrix(0, 1, QStringLiteral("Disease"));
    grid.setTextMatrix(0, 2, studyColumnName(db, studyId));
    QList<QStringList> rows;
    if (!col.isEmpty()) {
        auto q = db.query(QStringLiteral("SELECT CobCd, Disease, %1 FROM _DctBDM ORDER BY CobCd").arg(col));
        while (q && q->next())
            rows << QStringList{q->value(0).toString(), q->value(1).toString(),
                                q->value(2).toInt() != 0 ? QStringLiteral("True") : QStringLiteral("False")};
    }
    grid.setRows(static_cast<int>(rows.size()) + 1);
    for (int r = 0; r < rows.size(); ++r)
        for (int c = 0; c < 3; ++c)
            grid.setTextMatrix(r + 1, c, rows[r][c]);
    grid.setRedraw(true);
    return !col.isEmpty();
}

bool toggleCause(const DbConnection& db, const QString& studyId, GridModel& grid, int row) {
    const QString col = column(db, studyId);
    if (col.isEmpty() || row < grid.fixedRows() || row >= grid.rows())
        return false;
    const bool on = grid.textMatrix(row, kCauseChoiceColumn) != QLatin1String("True");
    if (!execSetupStatement(db, QStringLiteral("UPDATE _DctBDM SET %1 = ? WHERE CobCd = ?").arg(col),
                            {on ? 1 : 0, grid.textMatrix(row, 0)}))
        return false;
    grid.setTextMatrix(row, kCauseChoiceColumn, on ? QStringLiteral("True") : QStringLiteral("False"));
    return true;
}

bool setAllCauses(const DbConnection& db, const QString& studyId, bool selected) {
    const QString col = column(db, studyId);
    return !col.isEmpty() &&
           execSetupStatement(db, QStringLiteral("UPDATE _DctBDM SET %1 = ?").arg(col), {selected ? 1 : 0});
}

bool swapCauses(const DbConnection& db, const QString& studyId) {
    const QString col = column(db, studyId);
    return !col.isEmpty() &&
           execSetupStatement(
               db, QStringLiteral("UPDATE _DctBDM SET %1 = CASE WHEN %1 <> 0 THEN 0 ELSE 1 END").arg(col));
}

int applyCauses(StudyContext& context, const QString& studyId) {
    const DbConnection& db = *context.StudyDB;
    const QString col = column(db, studyId);
    if (col.isEmpty())
        return -1;
    int count = 0;
    auto q = db.query(QStringLiteral("SELECT count(*) FROM _DctBDM WHERE %1 <> 0").arg(col));
    if (q && q->next())
        count = q->value(0).toInt();
    setupRequests().ask(FrameRequest::switchItems(kCauseItems, count > 0));
    context.MtxCobCd = Cell();
    context.InitCobcd();
    return count;
}

QList<std::pair<QString, QString>> sequelaList(const DbConnection& db) {
    QList<std::pair<QString, QString>> list;
    auto q = db.query(QStringLiteral("SELECT SqlaCd, Sequela FROM _DctBDMSqla ORDER BY rowid"));
    while (q && q->next())
        list.push_back({q->value(0).toString(), q->value(1).toString()});
    if (list.isEmpty())
        prompts().ask(text(t::kDictionariesNotImported1) + QLatin1Char('\n') +
                      text(t::kDictionariesNotImported2));
    return list;
}

void fillSequelaCauseGrid(const DbConnection& db, const QString& sqlaCd, GridModel& grid) {
    QList<QStringList> rows;
    auto q = db.query(QStringLiteral("SELECT CobCd, Disease FROM _DctBDM WHERE CobCd IN "
                                     "(SELECT cobcd FROM _MapBDMSqla WHERE SqlaCd = ?) ORDER BY CobCd"),
                      {sqlaCd});
    while (q && q->next())
        rows << QStringList{q->value(0).toString(), q->value(1).toString()};
    grid.setRedraw(false);
    grid.setFixedRows(1);
    grid.setFixedCols(0);
    grid.setCols(2);
    grid.setRows(static_cast<int>(rows.size()) + 2);
    grid.clear();
    grid.setTextMatrix(0, 0, text(t::kCobcdColumns[0]));
    grid.setTextMatrix(0, 1, text(t::kCobcdColumns[1]));
    for (int r = 0; r < rows.size(); ++r)
        for (int c = 0; c < 2; ++c)
            grid.setTextMatrix(r + 1, c, rows[r][c]);
    grid.setCurrent(grid.rows() - 1, 0);
    grid.setRedraw(true);
}

std::optional<QString> causeName(const DbConnection& db, const QString& cobcd) {
    auto q = db.query(QStringLiteral("SELECT Disease FROM _DctBDM WHERE CobCd = ?"), {cobcd.trimmed()});
    if (q && q->next())
        return q->value(0).toString();
    prompts().ask(text(t::kNoSuchCobcd));
    return std::nullopt;
}

bool mapCauseToSequela(const DbConnection& db, const QString& sqlaCd, const QString& cobcd) {
    const QString cause = cobcd.trimmed();
    return causeName(db, cause) && CauseDictionary(db).mapSequela(sqlaCd, cause);
}

bool unmapCauseFromSequela(const DbConnection& db, const QString& sqlaCd, const QString& cobcd) {
    return CauseDictionary(db).removeSequelaMap(cobcd.trimmed(), sqlaCd);
}

} // namespace vesk
