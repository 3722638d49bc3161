#include "forms_support.h"
#include "query_rows.h"

#include "database/db_create.h"
#include "database/study_context.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"

#include <QSqlRecord>
#include <QtTest>

namespace vesk::test {

StudyFixture::StudyFixture() {
    installed_ = std::make_unique<ScopedPromptService>(&prompts);
    studyContext() = StudyContext{};
    clearErrorStore();
    file = dir.filePath(QStringLiteral("study.vdb"));
    QString error;
    if (!createStudyFile(file, &error))
        qFatal("%s", qPrintable(error));
    db = DbConnection::open(file, &error);
    // The preferences name the file, as the program's own settings would.
    preferences().txtwklocation = dir.path();
    preferences().txtVESKObj = QStringLiteral("study.vdb");
    settings().StatOutPath = dir.path() + u'/';
    StudyContext& c = studyContext();
    c.StudyDB = db;
    c.InitTblNames();
    addStudy(QStringLiteral("S1"), 2000, true);
    c.CurBDSId = QStringLiteral("S1");
    c.CurPAGSch = QStringLiteral("SCH");
    c.InitPAGScheme();
    prompts.clear();
}

StudyFixture::~StudyFixture() {
    studyContext() = StudyContext{};
    preferences() = PreferencesControls{};
    settings() = VeskSettings{};
    clearErrorStore();
    db.reset();
    installed_.reset();
}

void StudyFixture::addStudy(const QString& id, int year, bool current, const QString& scheme) {
    exec(QStringLiteral("INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES (?, ?, ?, ?, ?)"),
         {id, year, QStringLiteral("Study ") + id, scheme, current ? 1 : 0});
    if (value(QStringLiteral("SELECT count(*) FROM _DfnBPUPAGDscrptrs WHERE PAGSch = ?"), {scheme}) == u"0")
        exec(QStringLiteral("INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES (?, ?, ?, ?)"),
             {scheme, QStringLiteral("District"), QStringLiteral("Province"), QStringLiteral("Nation")});
    exec(QStringLiteral("ALTER TABLE _DctBDM ADD COLUMN \"%1\" BOOLEAN").arg(id));
}

bool StudyFixture::exec(const QString& sql, const QVariantList& values) {
    QSqlError e;
    const bool ok = db->exec(sql, values, &e);
    if (!ok)
        qWarning("%s: %s", qPrintable(sql), qPrintable(e.text()));
    return ok;
}

QStringList StudyFixture::rows(const QString& sql, const QVariantList& values) {
    QString error;
    const QStringList out = queryRows(*db, sql, values, &error);
    if (!error.isEmpty())
        qWarning("%s", qPrintable(error));
    return out;
}

QString StudyFixture::value(const QString& sql, const QVariantList& values) {
    const QStringList r = rows(sql, values);
    return r.isEmpty() ? QString() : r.first();
}

} // namespace vesk::test
