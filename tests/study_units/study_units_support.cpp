#include "study_units_support.h"
#include "query_rows.h"

#include "database/db_create.h"
#include "database/study_context.h"
#include "platform/cell.h"
#include "foundation/error_store.h"

#include <QCoreApplication>
#include <QSqlRecord>

namespace vesk::test {

namespace {
// The SQL driver is a plugin; an application object makes its loading the same as in the program.
int argc = 1;
char arg0[] = "test_study_units";
char* argv[] = {arg0, nullptr};
QCoreApplication app(argc, argv);
} // namespace

void StudyDbTest::SetUp() {
    ASSERT_TRUE(dir.isValid());
    installed_ = std::make_unique<ScopedPromptService>(&prompts);
    studyContext() = StudyContext{};
    clearErrorStore();
    file = dir.filePath(QStringLiteral("study.vdb"));
    QString error;
    ASSERT_TRUE(createStudyFile(file, &error)) << error.toStdString();
    db = DbConnection::open(file, &error);
    ASSERT_TRUE(db) << error.toStdString();
    StudyContext& c = studyContext();
    c.StudyDB = db;
    c.InitTblNames();
    addStudy(QStringLiteral("S1"), 2000, true, QStringLiteral("SCH"));
    c.CurBDSId = QStringLiteral("S1");
    c.CurPAGSch = QStringLiteral("SCH");
    c.InitPAGScheme();
    prompts.clear();
}

void StudyDbTest::TearDown() {
    studyContext() = StudyContext{};
    clearErrorStore();
    db.reset();
    installed_.reset();
}

void StudyDbTest::addStudy(const QString& id, int year, bool current, const QString& scheme) {
    exec(QStringLiteral("INSERT INTO _DctBDS (BDSId, Year, BDSTi, PAGSch, Slct) VALUES (?, ?, ?, ?, ?)"),
         {id, year, QStringLiteral("Study ") + id, scheme.isEmpty() ? QVariant() : QVariant(scheme),
          current ? 1 : 0});
    if (!scheme.isEmpty() &&
        value(QStringLiteral("SELECT count(*) FROM _DfnBPUPAGDscrptrs WHERE PAGSch = ?"), {scheme}) == u"0")
        exec(QStringLiteral("INSERT INTO _DfnBPUPAGDscrptrs (PAGSch, BPU, PAG1, PAG2) VALUES (?, ?, ?, ?)"),
             {scheme, QStringLiteral("District"), QStringLiteral("Province"), QStringLiteral("Nation")});
    // The study's own column of the cause dictionary.
    exec(QStringLiteral("ALTER TABLE _DctBDM ADD COLUMN \"%1\" BOOLEAN").arg(id));
}

void StudyDbTest::exec(const QString& sql, const QVariantList& values) {
    QSqlError e;
    EXPECT_TRUE(db->exec(sql, values, &e)) << sql.toStdString() << ": " << e.text().toStdString();
}

QStringList StudyDbTest::rows(const QString& sql, const QVariantList& values) {
    QString error;
    const QStringList out = queryRows(*db, sql, values, &error);
    EXPECT_TRUE(error.isEmpty()) << error.toStdString();
    return out;
}

QString StudyDbTest::value(const QString& sql, const QVariantList& values) {
    const QStringList r = rows(sql, values);
    return r.isEmpty() ? QString() : r.first();
}

} // namespace vesk::test
