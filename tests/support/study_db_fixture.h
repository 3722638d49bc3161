#pragma once
// The one study-database ground of the tests: a temporary folder, scripted prompts installed for
// the fixture's life, a new study file made from the definition and opened, one current study
// whose scheme names the levels, statements with bound values and rows read back. A plain class,
// so that GoogleTest fixtures and Qt Test objects alike hold it; each reports failures its own way
// from the error texts these functions return.

#include "database/db_connection.h"
#include "database/db_create.h"
#include "database/study_context.h"
#include "foundation/error_store.h"
#include "platform/prompts.h"
#include "query_rows.h"

#include <QSqlError>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace vesk::test {

class StudyDbFixture {
public:
    // The prompts installed, the study context and the error store cleared.
    StudyDbFixture() : installed_(std::make_unique<ScopedPromptService>(&prompts)) {
        studyContext() = StudyContext{};
        clearErrorStore();
    }
    virtual ~StudyDbFixture() {
        studyContext() = StudyContext{};
        clearErrorStore();
        db.reset();
        installed_.reset();
    }
    StudyDbFixture(const StudyDbFixture&) = delete;
    StudyDbFixture& operator=(const StudyDbFixture&) = delete;

    // A path in the temporary folder.
    QString path(const QString& name) const { return dir.filePath(name); }

    // A new study file `name` in the temporary folder, made from the definition: its path, or ""
    // with the reason in `error`.
    QString createStudy(const QString& name, QString* error) {
        const QString made = path(name);
        return createStudyFile(made, error) ? made : QString();
    }

    // A new "study.vdb" opened as `db` and as the context's StudyDB, with the study S1 (2000) current
    // and the scheme SCH, whose levels are "District", "Province" and "Nation". The prompts shown
    // on the way are forgotten. False with the reason in `error`.
    bool openCurrentStudy(QString* error) {
        file = createStudy(QStringLiteral("study.vdb"), error);
        if (file.isEmpty())
            return false;
        db = DbConnection::open(file, error);
        if (!db)
            return false;
        StudyContext& c = studyContext();
        c.StudyDB = db;
        c.InitTblNames();
        if (!addStudy(QStringLiteral("S1"), 2000, true, QStringLiteral("SCH"), error))
            return false;
        c.CurBDSId = QStringLiteral("S1");
        c.CurPAGSch = QStringLiteral("SCH");
        c.InitPAGScheme();
        prompts.clear();
        return true;
    }

    // A study row of `db` (and its scheme's row of levels when the scheme is new); `current` marks
    // it Slct; the study's own column of the cause dictionary. An empty scheme is stored as Null,
    // without a row of levels.
    bool addStudy(const QString& id, int year, bool current, const QString& scheme, QString* error) {
        const QVariant schemeValue = scheme.isEmpty() ? QVariant() : QVariant(scheme);
        if (!exec(*db,
                  QStringLiteral(
                      "INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES (?, ?, ?, ?, ?)"),
                  {id, year, QStringLiteral("Study ") + id, schemeValue, current ? 1 : 0}, error))
            return false;
        const QStringList known = queryRows(
            *db, QStringLiteral("SELECT count(*) FROM _DfnBPUPAGDscrptrs WHERE PAGSch = ?"), {scheme});
        if (!scheme.isEmpty() && known.value(0) == u"0" &&
            !exec(*db,
                  QStringLiteral(
                      "INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES (?, ?, ?, ?)"),
                  {scheme, QStringLiteral("District"), QStringLiteral("Province"), QStringLiteral("Nation")},
                  error))
            return false;
        return exec(*db, QStringLiteral("ALTER TABLE _DctBDM ADD COLUMN \"%1\" BOOLEAN").arg(id), {}, error);
    }

    // Runs a statement with bound values; false with the statement and the engine's text in `error`.
    static bool exec(const DbConnection& on, const QString& sql, const QVariantList& values, QString* error) {
        QSqlError e;
        if (on.exec(sql, values, &e))
            return true;
        if (error)
            *error = sql + QStringLiteral(": ") + e.text();
        return false;
    }

    QTemporaryDir dir;
    QString file;
    std::shared_ptr<DbConnection> db;
    ScriptedPrompts prompts;

private:
    std::unique_ptr<ScopedPromptService> installed_;
};

} // namespace vesk::test
