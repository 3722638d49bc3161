#include "db_test_support.h"

#include "database/db_create.h"
#include "database/study_context.h"
#include "foundation/error_store.h"
#include "foundation/settings.h"

#include <QCoreApplication>
#include <QFile>

namespace vesk::test {

namespace {
// The SQL driver is a plugin; an application object makes its loading the same as in the program.
int argc = 1;
char arg0[] = "test_database";
char* argv[] = {arg0, nullptr};
QCoreApplication app(argc, argv);
} // namespace

void DbTest::SetUp() {
    ASSERT_TRUE(dir.isValid());
    installed_ = std::make_unique<ScopedPromptService>(&prompts);
    settings() = VeskSettings{};
    preferences() = PreferencesControls{};
    settings().StatOutPath = dir.path() + u'/';
    studyContext() = StudyContext{};
    clearErrorStore();
}

void DbTest::TearDown() {
    studyContext() = StudyContext{};
    clearErrorStore();
    installed_.reset();
}

QString DbTest::path(const QString& name) const {
    return dir.filePath(name);
}

QString DbTest::newStudyFile(const QString& name) {
    QString error;
    const QString file = path(name);
    EXPECT_TRUE(createStudyFile(file, &error)) << error.toStdString();
    return file;
}

std::shared_ptr<DbConnection> DbTest::openDb(const QString& file) {
    QString error;
    auto db = DbConnection::open(file, &error);
    EXPECT_TRUE(db) << error.toStdString();
    return db;
}

void DbTest::exec(DbConnection& db, const QString& sql, const QVariantList& values) {
    QSqlError e;
    EXPECT_TRUE(db.exec(sql, values, &e)) << sql.toStdString() << ": " << e.text().toStdString();
}

QString DbTest::readText(const QString& file) {
    QFile f(file);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(f.readAll());
}

} // namespace vesk::test
