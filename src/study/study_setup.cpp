#include "study/study_setup.h"

#include "database/sql_tokens.h"
#include "platform/prompts.h"
#include "study/asg_labels.h"
#include "study/study_setup_input.h"
#include "study/study_setup_report.h"
#include "study/study_setup_texts.h"

namespace vesk {

namespace t = setup_texts;
using sql::quoteName;

namespace {

using setup_texts::text;

void say(const char* message) {
    prompts().ask(text(message));
}

// The old engine's refusal of a text longer than its field reads like this (error 3163).
bool isTooLong(const QSqlError& error) {
    return engineDescription(error).contains(QStringLiteral("is too small to accept the amount of data"));
}

bool studyExists(const DbConnection& db, const QString& id) {
    auto q = db.query(QStringLiteral("SELECT BDSId FROM _DctBDS WHERE BDSId = ?"), {id});
    return q && q->next();
}

QList<int> yearsOf(const DbConnection& db, const QString& id) {
    QList<int> years;
    auto q = db.query(QStringLiteral("SELECT Year FROM _DctBDS WHERE BDSId = ? ORDER BY Year"), {id});
    while (q && q->next())
        years << q->value(0).toInt();
    return years;
}

// A column of the dictionary other than a study's: the id would clash with it.
bool isDictionaryField(const DbConnection& db, const QString& id) {
    static const QStringList own = {QStringLiteral("COBCD"), QStringLiteral("DISEASE"),
                                    QStringLiteral("CLSTRCD"), QStringLiteral("SQLA")};
    return own.contains(id.toUpper()) || !studyColumnName(db, id).isEmpty();
}

StudyApplyResult refused(StudyField focus) {
    StudyApplyResult result;
    result.focus = focus;
    return result;
}

// The messages of a blank id, years and title, the order in which the fields are checked.
struct BlankMessages {
    const char* id;
    const char* years;
    const char* title;
};

// The first blank field, its message said; StudyField::None when the three are filled in.
StudyField firstBlankField(const StudyFields& fields, const BlankMessages& messages) {
    const struct {
        const QString& value;
        const char* message;
        StudyField field;
    } checks[] = {{fields.id, messages.id, StudyField::Id},
                  {fields.years, messages.years, StudyField::Years},
                  {fields.title, messages.title, StudyField::Title}};
    for (const auto& check : checks)
        if (check.value.trimmed().isEmpty()) {
            say(check.message);
            return check.field;
        }
    return StudyField::None;
}

Cell yearVector(int year) {
    CellArray v{1};
    v(0) = Cell(year);
    return Cell(std::move(v));
}

} // namespace

void showStudySetupDbError(const QSqlError& error) {
    if (isTooLong(error)) {
        prompts().ask(text(t::kFieldTooSmall), Buttons::Ok, Icon::Warning, text(t::kFieldTooSmallTitle));
        return;
    }
    prompts().ask(error.nativeErrorCode() + QLatin1Char(' ') + engineDescription(error), Buttons::Ok,
                  Icon::Critical);
}

bool execSetupStatement(const DbConnection& db, const QString& sql, const QVariantList& values) {
    QSqlError e;
    if (db.exec(sql, values, &e))
        return true;
    showStudySetupDbError(e);
    return false;
}

QList<StudyRow> studyRows(const DbConnection& db) {
    QList<StudyRow> rows;
    auto q = db.query(QStringLiteral("SELECT BDSId, Year, BDSTi, PAGSch, Slct FROM _DctBDS ORDER BY rowid"));
    while (q && q->next())
        rows.push_back({q->value(0).toString(), q->value(1).toInt(), q->value(2).toString(),
                        q->value(3).toString(), q->value(4).toInt() != 0});
    return rows;
}

std::optional<StudyRow> currentStudyRow(const DbConnection& db) {
    for (const StudyRow& row : studyRows(db))
        if (row.current)
            return row;
    return std::nullopt;
}

StudyApplyResult applyNewStudy(StudyContext& context, const StudyFields& fields) {
    StudyApplyResult result;
    const StudyField blank = firstBlankField(fields, {t::kNewIdBlank, t::kNewYearBlank, t::kNewTitleBlank});
    if (blank != StudyField::None)
        return refused(blank);
    const QString id = fields.id.trimmed();
    const DbConnection& db = *context.StudyDB;
    if (studyExists(db, id)) {
        prompts().ask(id + text(t::kAlreadyExists));
        return refused(StudyField::Id);
    }
    // The id will name a column: it must be a plain word and no field of the dictionary yet.
    if (!isValidStudyId(id)) {
        prompts().ask(studyIdTextMessage(id).isEmpty() ? text(t::kIdNotAlphanumeric)
                                                       : studyIdTextMessage(id));
        return refused(StudyField::Id);
    }
    if (isDictionaryField(db, id)) {
        prompts().ask(id + text(t::kIdIsDictionaryField));
        return refused(StudyField::Id);
    }
    const auto years = parseStudyYears(fields.years);
    if (!years) {
        say(t::kBadYear);
        return refused(StudyField::Years);
    }
    if (!execSetupStatement(db, QStringLiteral("UPDATE _DctBDS SET Slct = 0")))
        return result;
    for (int i = 0; i < years->size(); ++i)
        if (!execSetupStatement(
                db, QStringLiteral("INSERT INTO _DctBDS (BDSId, Year, BDSTi, Slct) VALUES (?, ?, ?, ?)"),
                {id, (*years)[i], fields.title, i == 0 ? 1 : 0}))
            return result;
    // The new study is the current one: its first year, and the scheme it does not have yet.
    StudyRow current{id, years->first(), fields.title, QString(), true};
    context.ClearStudyContext();
    context.CurBDSId = current.id;
    context.CurBDSTi = current.title;
    context.CurPAGSch.clear();
    context.CurYear = static_cast<qint16>(current.year);
    context.VctrYrLst = yearVector(current.year);
    context.InitPAGScheme();
    setupRequests().ask(FrameRequest::plain(FrameRequest::Kind::LevelCaptions));
    QSqlError e;
    if (!addStudyColumn(db, id, &e)) {
        showStudySetupDbError(e);
        return result;
    }
    result.applied = true;
    result.years = *years;
    return result;
}

StudyApplyResult applyExistingStudy(StudyContext& context, const StudyFields& fields) {
    StudyApplyResult result;
    const StudyField blank =
        firstBlankField(fields, {t::kExistingIdBlank, t::kExistingYearBlank, t::kExistingTitleBlank});
    if (blank != StudyField::None)
        return refused(blank);
    const QString id = fields.id.trimmed();
    const DbConnection& db = *context.StudyDB;
    const auto current = currentStudyRow(db);
    if (!current) {
        say(t::kNothingCurrent);
        return result;
    }
    const auto years = parseStudyYears(fields.years);
    if (!years) {
        say(t::kBadYear);
        return refused(StudyField::Years);
    }
    const QList<int> held = yearsOf(db, id);
    // New years take the scheme the study already has.
    QVariant scheme;
    if (auto q = db.query(QStringLiteral("SELECT PAGSch FROM _DctBDS WHERE BDSId = ? AND PAGSch IS NOT NULL"),
                          {id});
        q && q->next())
        scheme = q->value(0);
    for (int year : *years)
        if (!held.contains(year) &&
            !execSetupStatement(
                db,
                QStringLiteral(
                    "INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES (?, ?, ?, ?, 0)"),
                {id, year, fields.title, scheme}))
            return result;
    result.applied = true;
    result.years = *years;
    return result;
}

bool markCurrentStudy(StudyContext& context, const QString& id, int year) {
    const DbConnection& db = *context.StudyDB;
    if (!execSetupStatement(db, QStringLiteral("UPDATE _DctBDS SET Slct = 0")) ||
        !execSetupStatement(db, QStringLiteral("UPDATE _DctBDS SET Slct = 1 WHERE BDSId = ? AND Year = ?"),
                            {id, year}))
        return false;
    if (const auto row = currentStudyRow(db))
        reloadStudyContext(context, *row);
    return true;
}

void reloadStudyContext(StudyContext& context, const StudyRow& row) {
    context.ClearStudyContext();
    // What derives from the former study's rows goes with them.
    for (Cell* c : {&context.VctrYLLAsg, &context.VctrYLDAsg, &context.VctrPNDAge, &context.MtxCobCd,
                    &context.VctrPAGLst})
        *c = Cell();
    context.CurBDSId = row.id;
    context.CurBDSTi = row.title;
    context.CurPAGSch = row.scheme;
    context.CurYear = static_cast<qint16>(row.year);
    context.VctrYrLst = yearVector(row.year);
    context.InitPAGScheme();
    reloadAgeGroups(context);
    context.InitCobcd();
    // The units, so that the checks of data under the age labels see the new study's units.
    auto q =
        context.StudyDB->query(QStringLiteral("SELECT 1 FROM _DctBPU WHERE BDSId = ? LIMIT 1"), {row.id});
    if (q && q->next()) {
        setupRequests().ask(context.InitBPULst(QStringLiteral("_DctBPU")));
        setupRequests().ask(context.InitPAGLst(QStringLiteral("_DctPAG1")));
    }
    setupRequests().ask(FrameRequest::plain(FrameRequest::Kind::LevelCaptions));
}

void reloadAgeGroups(StudyContext& context) {
    const LoadReport found = context.InitAgeGrps(context.CurBDSId, context.ArrAgeDfn);
    setupRequests().ask(found);
    // The age-sex group labels of the YLL and YLD sets, and the PND column, rebuilt at every load.
    if (found.finding == StudyFinding::AgeDefinitionsFound)
        buildAgeGroupLabels(context);
}

QString studyColumnName(const DbConnection& db, const QString& id) {
    auto q = db.query(QStringLiteral("SELECT name FROM pragma_table_info('_DctBDM')"));
    while (q && q->next()) {
        const QString name = q->value(0).toString();
        if (name.toUpper() == id.trimmed().toUpper())
            return name;
    }
    return {};
}

bool addStudyColumn(const DbConnection& db, const QString& id, QSqlError* error) {
    if (!isValidStudyId(id)) {
        *error = QSqlError(QString(), text(t::kIdNotAlphanumeric), QSqlError::StatementError);
        return false;
    }
    // A Boolean of the old engine is never Null: a cause starts outside the study.
    return db.exec(
        QStringLiteral("ALTER TABLE _DctBDM ADD COLUMN %1 BOOLEAN NOT NULL DEFAULT 0").arg(quoteName(id)), {},
        error);
}

bool dropStudyColumn(const DbConnection& db, const QString& id, QSqlError* error) {
    const QString column = studyColumnName(db, id);
    if (!isValidStudyId(id) || column.isEmpty()) {
        *error = QSqlError(QString(), QStringLiteral("Item not found in this collection."),
                           QSqlError::StatementError, QStringLiteral("3265"));
        return false;
    }
    return db.exec(QStringLiteral("ALTER TABLE _DctBDM DROP COLUMN %1").arg(quoteName(column)), {}, error);
}

} // namespace vesk
